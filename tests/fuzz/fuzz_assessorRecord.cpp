#include "FieldValidator.h"
#include "Fuzz.h"
#include "assessorRecord.h"

// An input is a file as it might lie there, and at the same time what an assessor types.

using fuzz::demand;

namespace {

const fuzz::PrivateRoot &root()
{
    static const fuzz::PrivateRoot root;
    return root;
}

QString recordFile()
{
    return QStringLiteral("Parameters/assessor.txt");
}

QString typed(const QString &text)
{
    QString field = text;
    int position = 0;
    FieldValidator(FieldValidator::Use::Text).validate(field, position);
    return field;
}

void tryRecord(const QByteArray &input)
{
    QStringList record;
    for (const QByteArray &field : input.split(';'))
        record.append(typed(QString::fromUtf8(field)));
    record.first() = QStringLiteral("Dr."); // chosen from a box
    record.resize(assessorRecord::Country + 1);
    demand(assessorRecord::write(record).isEmpty(), "a record is written");
    const auto again = assessorRecord::read();
    demand(again && *again == record, "a record is read as it was typed");
    const QByteArray bytes = root().bytes(recordFile());
    demand(bytes.count('\n') == 1 && bytes.endsWith('\n'), "a record is one line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    root().write(recordFile(), input);
    const auto record = assessorRecord::read();
    demand(record && !record->isEmpty(), "any file is read as a record");
    demand(!assessorRecord::fullName(*record).contains(u'\n'), "a record is of one line");
    demand(root().bytes(recordFile()) == input, "reading leaves the file");

    tryRecord(input);
    demand(root().entries(QStringLiteral("Parameters")).size() == 1, "no copy is left behind");
    root().demandNothingOutside();
    return 0;
}
