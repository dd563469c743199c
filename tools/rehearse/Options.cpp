#include "Options.h"

#include "VirtualTime.h"
#include "patientsList.h"
#include "tables.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <functional>

namespace {

// The functions below each read one argument into the options and return a complaint, empty if all
// is well.

QString readWhole(const QString &text, int least, int most, int &value)
{
    bool ok = false;
    const int read = text.toInt(&ok);
    if (!ok || read < least || read > most)
        return QStringLiteral("\"%1\" is no number from %2 to %3")
            .arg(text, QString::number(least), QString::number(most));
    value = read;
    return {};
}

QString readRoot(const QString &text, Options &options)
{
    if (text.isEmpty())
        return QStringLiteral("a folder is needed");
    options.root = QFileInfo(text).absoluteFilePath();
    return {};
}

QString readTask(const QString &text, Options &options)
{
    for (int task = 1; task <= patientsList::sessionCount; ++task) {
        if (text == QStringLiteral("test%1").arg(task)) {
            options.task = task;
            return {};
        }
    }
    return QStringLiteral("\"%1\" is none of test1 to test7").arg(text);
}

QString readPatient(const QString &text, Options &options)
{
    const QStringList fields = text.split(u';');
    if (fields.size() != 4)
        return QStringLiteral("\"%1\" is not \"LAST;FIRST;dd.MM.yyyy;GENDER\"").arg(text);
    const QDate born = QDate::fromString(fields.at(2), QStringLiteral("dd.MM.yyyy"));
    if (!born.isValid())
        return QStringLiteral("\"%1\" is no date of birth, dd.MM.yyyy").arg(fields.at(2));
    const QStringList genders{QStringLiteral("Mr."), QStringLiteral("Mrs."), QString()};
    if (!genders.contains(fields.at(3)))
        return QStringLiteral("\"%1\" is neither Mr. nor Mrs.").arg(fields.at(3));
    options.patient = {fields.at(0), fields.at(1), born, fields.at(3)};
    return {};
}

QString readNumber(const QString &text, Options &options)
{
    int number = 0;
    QString error = readWhole(text, 1, 10'000, number);
    options.number = number;
    return error;
}

QString readSeed(const QString &text, Options &options)
{
    bool ok = false;
    options.seed = text.toUInt(&ok);
    return ok ? QString() : QStringLiteral("\"%1\" is no number from 0 to 4294967295").arg(text);
}

QString readRepeat(const QString &text, Options &options)
{
    return readWhole(text, 1, 10'000, options.repeat);
}

QString readLanguage(const QString &text, Options &options)
{
    const auto it =
        std::find_if(tables::_language.begin(), tables::_language.end(),
                     [&](QLatin1String suffix) { return QString(u'_' + text) == suffix; });
    if (it == tables::_language.end())
        return QStringLiteral("\"%1\" is none of en, fr, de, it, es and nl").arg(text);
    options.language = int(it - tables::_language.begin());
    return {};
}

QString readFrequency(const QString &text, Options &options)
{
    const auto it =
        std::find_if(tables::_frequency.begin(), tables::_frequency.end(), [&](QLatin1String name) {
            return QString(text + QStringLiteral("Hz")) == name;
        });
    if (it == tables::_frequency.end())
        return QStringLiteral("\"%1\" is neither 60 nor 120").arg(text);
    options.frequency = int(it - tables::_frequency.begin());
    return {};
}

QString readStart(const QString &text, Options &options)
{
    options.start = QDateTime::fromString(text, QStringLiteral("yyyy-MM-ddThh:mm:ss"));
    options.start.setTimeSpec(Qt::UTC); // no hour is lost or told twice
    return options.start.isValid()
               ? QString()
               : QStringLiteral("\"%1\" is no date and time, yyyy-MM-ddThh:mm:ss").arg(text);
}

QString readFile(const QString &name, QByteArray &content)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: %2").arg(name, file.errorString());
    content = file.readAll();
    return {};
}

template <typename T>
QString readDescription(const QString &name, T &value)
{
    QByteArray content;
    QString error = readFile(name, content);
    if (!error.isEmpty())
        return error;
    const std::optional<T> read = T::parse(content, error);
    if (!read)
        return QStringLiteral("%1: %2").arg(name, error);
    value = *read;
    return {};
}

struct Argument
{
    QString name;
    QString valueName; ///< empty: a switch
    QString help;
    std::function<QString(const QString &, Options &)> read;
};

QString ignore(const QString &, Options &)
{
    return {};
}

QList<Argument> settings()
{
    return {
        {u"root"_qs, u"DIR"_qs, u"The data root; it is made if it is missing."_qs, readRoot},
        {u"task"_qs, u"test1..test7"_qs, u"The test button to press."_qs, readTask},
        {u"patient"_qs, u"LAST;FIRST;dd.MM.yyyy;GENDER"_qs,
         u"The patient, registered if the list lacks them."_qs, readPatient},
        {u"number"_qs, u"N"_qs, u"Valid trials of the test, typed into the panel."_qs, readNumber},
        {u"seed"_qs, u"N"_qs, u"Seed of the draws and of the patient, 1 unless told."_qs, readSeed},
        {u"repeat"_qs, u"N"_qs, u"Tests to play, one after the other."_qs, readRepeat},
        {u"observer"_qs, u"FILE.json"_qs, u"What the patient is like."_qs,
         [](const QString &name, Options &to) { return readDescription(name, to.observer); }},
        {u"language"_qs, u"xx"_qs, u"en, fr, de, it, es or nl."_qs, readLanguage},
        {u"frequency"_qs, u"60|120"_qs, u"Set in the Preferences before the test."_qs,
         readFrequency},
        {u"keys"_qs, u"FILE"_qs, u"Keys to press at given trials and stages."_qs,
         [](const QString &name, Options &to) { return readDescription(name, to.keys); }},
        {u"start"_qs, u"yyyy-MM-ddThh:mm:ss"_qs, u"The date at which virtual time begins."_qs,
         readStart},
    };
}

QList<Argument> switches()
{
    return {
        {u"instruction"_qs, {}, u"Check \"With instruction\"."_qs, ignore},
        {u"training"_qs, {}, u"Check \"With training\"."_qs, ignore},
        {u"fixed-duration"_qs, {}, u"Check \"Fixed duration\"."_qs, ignore},
        {u"report"_qs, {}, u"Make the PDF report and wait for it."_qs, ignore},
    };
}

void declare(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Plays a whole test with a simulated patient, in virtual time and without a display, "
        "and prints the row of scores.\nExit codes: 0 done, 2 bad arguments, 3 refused by the "
        "program, 4 not gone to the end."_qs);
    parser.addOption({{u"h"_qs, u"help"_qs}, u"Show this help."_qs});
    for (const Argument &argument : settings() + switches())
        parser.addOption({argument.name, argument.help, argument.valueName});
}

/// A trial of the visual perception and of the movement detection task has six stages. One of the
/// working memory task waits for "Continue" before its first of five.
QString checkKeys(const Options &options)
{
    constexpr int mostStages = 6;
    const int last = options.isVision() || options.isMovement() ? mostStages : mostStages - 1;
    const int first = options.isMemory() ? 0 : 1;
    for (const KeyScript::Line &line : options.keys.lines) {
        if (line.stage < first || line.stage > last)
            return QStringLiteral("--keys: a trial of this task has no stage %1").arg(line.stage);
    }
    return {};
}

QString readAll(const QCommandLineParser &parser, Options &options)
{
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("unexpected argument \"%1\"")
            .arg(parser.positionalArguments().constFirst());
    for (const QString &needed : {u"root"_qs, u"task"_qs}) {
        if (!parser.isSet(needed))
            return QStringLiteral("--%1 is needed").arg(needed);
    }
    for (const Argument &argument : settings()) {
        if (!parser.isSet(argument.name))
            continue;
        const QString error = argument.read(parser.value(argument.name), options);
        if (!error.isEmpty())
            return QStringLiteral("--%1: %2").arg(argument.name, error);
    }
    options.instruction = parser.isSet(u"instruction"_qs);
    options.training = parser.isSet(u"training"_qs);
    options.fixedDuration = parser.isSet(u"fixed-duration"_qs);
    options.report = parser.isSet(u"report"_qs);
    if (options.fixedDuration && options.isMemory())
        return QStringLiteral("--fixed-duration: the working memory task has none");
    return checkKeys(options);
}

} // namespace

QString Options::Patient::key() const
{
    return patientsList::key(lastName, firstName, dateOfBirth);
}

Options::Parsed Options::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    declare(parser);
    Parsed parsed;
    parsed.options.start = VirtualTime::defaultStart();
    const bool understood = parser.parse(arguments);
    if (parser.isSet(u"help"_qs)) {
        parsed.wish = Wish::Help;
        parsed.text = parser.helpText();
        return parsed;
    }
    parsed.text = understood ? readAll(parser, parsed.options) : parser.errorText();
    if (!parsed.text.isEmpty())
        parsed.wish = Wish::Complain;
    return parsed;
}
