#include "StudyOptions.h"

#include <QCommandLineParser>

#include <algorithm>
#include <functional>
#include <thread>

namespace {

// The functions below each read one argument into the options and return a complaint, empty if all
// is well.

QString readWhole(const QString &text, int least, int greatest, int &value)
{
    bool ok = false;
    const int read = text.toInt(&ok);
    if (!ok || read < least || read > greatest)
        return QStringLiteral("\"%1\" is no number from %2 to %3")
            .arg(text, QString::number(least), QString::number(greatest));
    value = read;
    return {};
}

QString readRuns(const QString &text, StudyOptions &options)
{
    return readWhole(text, 1, 10'000'000, options.settings.visits);
}

QString readSeed(const QString &text, StudyOptions &options)
{
    bool ok = false;
    options.settings.seed = text.toULongLong(&ok);
    return ok ? QString()
              : QStringLiteral("\"%1\" is no number from 0 to 18446744073709551615").arg(text);
}

QString readOut(const QString &text, StudyOptions &options)
{
    options.folder = text;
    return text.isEmpty() ? QStringLiteral("a folder is needed") : QString();
}

QString readThreads(const QString &text, StudyOptions &options)
{
    return readWhole(text, 1, 1024, options.settings.threads);
}

QString readMissed(const QString &text, StudyOptions &options)
{
    bool ok = false;
    const double share = text.toDouble(&ok);
    options.settings.missed = share;
    return ok && share >= 0.0 && share <= 1.0
               ? QString()
               : QStringLiteral("\"%1\" is no number from 0 to 1").arg(text);
}

QString readStart(const QString &text, StudyOptions &options)
{
    Start &start = options.settings.start;
    if (text == QLatin1String("training") || text == QLatin1String("known")) {
        start.from = text == QLatin1String("known") ? Start::From::Known : Start::From::Training;
        return {};
    }
    start.from = Start::From::Exposure;
    const QString error = readWhole(text, 1, 100'000, start.exposure);
    return error.isEmpty() ? error : error + QStringLiteral(", nor \"training\" or \"known\"");
}

struct Argument
{
    QString name;
    QString valueName;
    QString help;
    std::function<QString(const QString &, StudyOptions &)> read;
};

QList<Argument> arguments()
{
    return {
        {u"runs"_qs, u"N"_qs, u"Visits of each observer, 10000 unless told."_qs, readRuns},
        {u"seed"_qs, u"N"_qs, u"Seed of the draws, 1 unless told."_qs, readSeed},
        {u"out"_qs, u"DIR"_qs, u"Where observers.csv goes; the current folder unless told."_qs,
         readOut},
        {u"threads"_qs, u"N"_qs, u"All the machine has unless told; the table is the same."_qs,
         readThreads},
        {u"missed"_qs, u"SHARE"_qs,
         u"Share of trials without an answer in time, 0 to 1; none unless told."_qs, readMissed},
        {u"start"_qs, u"training|known|MS"_qs,
         u"Where a test begins: where a simulated training ends (unless told otherwise), at the "
         "observer's known threshold, or at so many ms."_qs,
         readStart},
    };
}

void declare(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Lets the staircase measure simulated observers whose threshold is known, writes what it "
        "found to observers.csv, and prints one line with the number of staircases and the time.\n"
        "Exit codes: 0 done, 1 the table can't be written, 2 bad arguments."_qs);
    parser.addOption({{u"h"_qs, u"help"_qs}, u"Show this help."_qs});
    for (const Argument &argument : arguments())
        parser.addOption({argument.name, argument.help, argument.valueName});
}

QString readAll(const QCommandLineParser &parser, StudyOptions &options)
{
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("unexpected argument \"%1\"")
            .arg(parser.positionalArguments().constFirst());
    for (const Argument &argument : arguments()) {
        if (!parser.isSet(argument.name))
            continue;
        const QString error = argument.read(parser.value(argument.name), options);
        if (!error.isEmpty())
            return QStringLiteral("--%1: %2").arg(argument.name, error);
    }
    return {};
}

} // namespace

StudyOptions StudyOptions::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    declare(parser);
    StudyOptions options;
    options.settings.threads = std::max(1, int(std::thread::hardware_concurrency()));
    const bool understood = parser.parse(arguments);
    if (parser.isSet(u"help"_qs)) {
        options.wish = Wish::Help;
        options.text = parser.helpText();
        return options;
    }
    options.text = understood ? readAll(parser, options) : parser.errorText();
    if (!options.text.isEmpty())
        options.wish = Wish::Complain;
    return options;
}
