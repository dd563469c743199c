#include "FieldValidator.h"
#include "Fuzz.h"
#include "patientsList.h"

#include <fuzzer/FuzzedDataProvider.h>

// The first line of an input is a patient to be registered (gender;last name;first name), what
// follows is the list, and the last bytes say which patient gets which number into which field.

using fuzz::demand;

namespace {

const fuzz::PrivateRoot &root()
{
    static const fuzz::PrivateRoot root;
    return root;
}

QString listFile()
{
    return QStringLiteral("Parameters/patients_list.txt");
}

/// The list as a person sees it in an editor: the patients' lines without their endings, and what
/// lies from the first empty line on.
struct Seen
{
    QList<QByteArray> patients;
    QByteArray behind;
};

Seen seen(const QByteArray &list)
{
    Seen all;
    QByteArray rest = list;
    while (!rest.isEmpty()) {
        auto [line, next] = fuzz::firstLine(rest);
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.isEmpty())
            break;
        all.patients.append(line);
        rest = next;
    }
    all.behind = rest;
    return all;
}

void demandRewritten(const QByteArray &before, const QByteArray &after, int field, int number)
{
    QList<QByteArray> fields = before.split(';');
    while (fields.size() <= field)
        fields.append(QByteArray());
    fields[field] = QByteArray::number(number);
    demand(after == fields.join(';'), "a rewrite changes its own field and no other byte");
}

void tryRewrite(const QByteArray &list, int chosen, int field, int number)
{
    root().write(listFile(), list);
    const auto patients = patientsList::read();
    const Seen before = seen(list);
    demand(patients && patients->size() == before.patients.size(), "every patient is read");
    if (patients->isEmpty())
        return;

    const QString key = patientsList::key(patients->at(chosen % patients->size()));
    demand(patientsList::key(patientsList::find(key)) == key, "a patient in the list is found");
    demand(patientsList::rewritePatientLine(key, {{field, number}}).isEmpty(),
           "a rewrite goes well");
    const Seen after = seen(root().bytes(listFile()));
    demand(after.behind == before.behind, "what is behind an empty line stays");
    demand(after.patients.size() == before.patients.size(), "no line is lost");
    for (qsizetype i = 0; i < patients->size(); ++i) {
        if (patientsList::key(patients->at(i)) == key)
            demandRewritten(before.patients.at(i), after.patients.at(i), field, number);
        else
            demand(after.patients.at(i) == before.patients.at(i), "the others' lines stay");
    }
    demand(patientsList::find(key).value(field) == QString::number(number),
           "what was written is read");
}

QString typed(const QByteArray &text)
{
    QString name = QString::fromUtf8(text);
    int position = 0;
    FieldValidator(FieldValidator::Use::Key).validate(name, position);
    return name;
}

void tryRegistration(const QByteArray &list, const QByteArray &newcomer)
{
    const QDate born(1950, 3, 2);
    const QList<QByteArray> parts = newcomer.split(';');
    const QString lastName = typed(parts.value(1));
    const QString firstName = typed(parts.value(2));
    root().write(listFile(), list);
    const auto before = patientsList::read();
    demand(patientsList::append(QStringLiteral("Mrs."), lastName, firstName, born).isEmpty(),
           "a registration goes well");
    const auto after = patientsList::read();
    demand(before && after && after->size() == before->size() + 1, "there is one patient more");
    demand(after->first(before->size()) == *before, "those who were there read as before");
    const QStringList fields = after->constLast();
    demand(fields.value(patientsList::LastName) == lastName &&
               fields.value(patientsList::FirstName) == firstName &&
               fields.value(patientsList::DateOfBirth) == QStringLiteral("02.03.1950") &&
               fields.size() == patientsList::FieldCount,
           "a registered patient is read as typed");
    demand(root().bytes(listFile()).size() >= list.size(), "a registration takes nothing away");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider provider(data, size);
    const int number = provider.ConsumeIntegral<int>();
    const int chosen = provider.ConsumeIntegral<uint8_t>();
    const int field =
        provider.ConsumeIntegralInRange<int>(patientsList::SessionT1, patientsList::FieldCount - 1);
    const std::string text = provider.ConsumeRemainingBytesAsString();
    const auto [newcomer, list] = fuzz::firstLine(QByteArray::fromStdString(text));

    tryRewrite(list, chosen, field, number);
    tryRegistration(list, newcomer);
    demand(root().entries(QStringLiteral("Parameters")).size() == 1 &&
               root().entries(QStringLiteral("bin")).isEmpty(),
           "no copy of the list is left behind");
    root().demandNothingOutside();
    return 0;
}
