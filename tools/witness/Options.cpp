#include "Options.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

namespace {

Shadow readPlace(const QString &text, QString &error)
{
    static const QRegularExpression form(
        QStringLiteral("^([^=\\s]+)=(\\d{1,5})x(\\d{1,5})\\+(\\d{1,5})\\+(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const Area area{match.captured(4).toInt(), match.captured(5).toInt(), match.captured(2).toInt(),
                    match.captured(3).toInt()};
    if (match.hasMatch() && !area.isEmpty())
        return {match.captured(1).toStdString(), area};
    error = QStringLiteral("\"%1\" is not NAME=WIDTHxHEIGHT+X+Y").arg(text);
    return {{}, {0, 0, 1, 1}};
}

std::uint64_t readWhole(const QString &text, QString &error)
{
    bool ok = false;
    const qulonglong value = text.toULongLong(&ok);
    if (!ok)
        error = QStringLiteral("\"%1\" is no whole number").arg(text);
    return value;
}

bool isForAny(const Errand &errand, const std::vector<Shadow> &places)
{
    return std::any_of(places.begin(), places.end(), [&errand](const Shadow &place) {
        Errand any = errand;
        any.when = Errand::When::Changes;
        return any.isFor(QString::fromStdString(place.name()), 0.0, 0.0);
    });
}

Options complaint(const QString &text)
{
    Options options;
    options.wish = Options::Wish::Complain;
    options.text = text;
    return options;
}

} // namespace

Options Options::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Watches places of the screen and stamps each change with the monotonic clock, in ns. It\n"
        "writes lines of CSV: kind,at_ns,what,hash,brightness,pixels,due_ns. It ends on SIGTERM."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption place(QStringLiteral("place"),
                                   QStringLiteral("A place to watch; may be given again."),
                                   QStringLiteral("NAME=WxH+X+Y"));
    const QCommandLineOption on(
        QStringLiteral("on"),
        QStringLiteral("What to press, and how long after a change; may be given again. WHEN is "
                       "changes, brighter or darker, PRESS key=NAME or button=N, or several of "
                       "them with | between, of which each time one is drawn; MS may be a range, "
                       "200..700. PLACE may be the beginning of names and a *."),
        QStringLiteral("PLACE WHEN PRESS MS"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Of the draws."),
                                  QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption selfTest(QStringLiteral("self-test"),
                                      QStringLiteral("Measures the witness itself and ends."));
    const QCommandLineOption rounds(QStringLiteral("rounds"), QStringLiteral("Of the self-test."),
                                    QStringLiteral("N"), QStringLiteral("500"));
    parser.addOptions({place, on, seed, selfTest, rounds});
    if (!parser.parse(arguments))
        return complaint(parser.errorText());

    Options options;
    QString error;
    const QStringList places = parser.values(place);
    for (const QString &text : places)
        options.places.push_back(readPlace(text, error));
    const QStringList errands = parser.values(on);
    for (const QString &text : errands) {
        options.errands.push_back(Errand::parse(text, error));
        if (error.isEmpty() && !isForAny(options.errands.back(), options.places))
            error = QStringLiteral("\"%1\": no such place is watched").arg(text);
    }
    options.seed = readWhole(parser.value(seed), error);
    const std::uint64_t count = readWhole(parser.value(rounds), error);
    if (error.isEmpty() && (count < 1 || count > 100'000))
        error = QStringLiteral("the rounds are from 1 to 100000");
    options.rounds = int(count);

    if (parser.isSet(help)) {
        options.wish = Wish::Help;
        options.text = parser.helpText();
    } else if (parser.isSet(selfTest)) {
        options.wish = Wish::SelfTest;
    } else if (error.isEmpty() && places.isEmpty()) {
        error = QStringLiteral("there is nothing to watch; give --place or --self-test");
    }
    return error.isEmpty() || options.wish == Wish::Help ? options : complaint(error);
}
