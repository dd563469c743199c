#include "Fuzz.h"
#include "SessionStore.h"
#include "VisionLayout.h"
#include "screenFile.h"

#include <QtEndian>

#include <array>

// An input is a screen.pix.

using fuzz::demand;

namespace {

const fuzz::PrivateRoot &root()
{
    static const fuzz::PrivateRoot root;
    return root;
}

std::array<int, 3> store()
{
    const SessionStore &store = sessionStore();
    return {store.horzPixel, store.vertPixel, store.frequency};
}

int numberAt(const QByteArray &bytes, qsizetype at)
{
    return at + 4 <= bytes.size() ? qFromBigEndian<qint32>(bytes.constData() + at) : 0;
}

/// Whatever the pitch is, the places of a trial can be computed.
void layOut()
{
    VisionLayout layout(sessionStore().horzPixel, sessionStore().vertPixel);
    layout.setGlobSize(sessionStore().frequency);
    layout.setTriSize(sessionStore().frequency);
    const QPoint centre(640, 512);
    for (int position = 0; position < 6; ++position)
        layout.triangle(position, centre);
    layout.figure(VisionLayout::Left, centre);
    layout.turned(VisionLayout::Right, centre);
    layout.small(VisionLayout::Left, centre);
    layout.inRow(4, centre);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString name = QStringLiteral("Parameters/screen.pix");
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    root().write(name, bytes);
    demand(screenFile::exists() && screenFile::read().isEmpty(), "any file is read");
    const std::array read = store();
    demand(read == std::array{numberAt(bytes, 0), numberAt(bytes, 4), numberAt(bytes, 8)},
           "the numbers are those of the file, 0 for those it lacks");
    layOut();

    demand(screenFile::write().isEmpty(), "the screen is written");
    demand(root().bytes(name).size() == 12, "three numbers are written");
    sessionStore() = SessionStore();
    demand(screenFile::read().isEmpty() && store() == read, "what was written is read");
    demand(root().entries(QStringLiteral("Parameters")).size() == 1, "no copy is left behind");
    root().demandNothingOutside();
    return 0;
}
