#include "Fuzz.h"
#include "catalogue.h"

#include <QTranslator>

// An input is a catalogue of the program's texts.

using fuzz::demand;

namespace {

const fuzz::PrivateRoot &root()
{
    static const fuzz::PrivateRoot root;
    return root;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray catalogue(reinterpret_cast<const char *>(data), qsizetype(size));
    root().write(QStringLiteral("Languages/Dekelmoran_de.qm"), catalogue);
    QTranslator translator;
    const bool loaded = loadCatalogue(translator, QStringLiteral("../Languages/Dekelmoran_de.qm"));
    for (const char *text : {"Error", "OK", "Training"}) {
        const QString word = translator.translate("Kelmoran", text);
        const QString numbered = translator.translate("Test1", text, nullptr, 2);
        demand(loaded || (word.isEmpty() && numbered.isEmpty()), "what isn't taken says nothing");
    }
    root().demandNothingOutside();
    return 0;
}
