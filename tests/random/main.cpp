#include "Chronicle.h"
#include "HeldKeys.h"
#include "Luck.h"
#include "Player.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QStyleHints>

#include <cstdio>
#include <cstdlib>
#include <limits>

// A random assessor and a random patient play the whole program in virtual time. A run of one seed
// is always the same.

namespace {

constexpr int coverage = 5000; // events in which tests must have been played

/// What the toolkit remarks on odd values is no fault of the program.
void dropRemarks(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtFatalMsg || type == QtCriticalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

/// What the toolkit does by the clock on the wall is made the same on every machine.
void stopWallClock()
{
    QStyleHints *hints = QGuiApplication::styleHints();
    hints->setCursorFlashTime(0);
    hints->setKeyboardInputInterval(std::numeric_limits<int>::max());
}

void fail(const QString &what)
{
    if (what.isEmpty())
        return;
    chronicle::note(QStringLiteral("not kept: %1").arg(what));
    chronicle::print();
    std::_Exit(EXIT_FAILURE);
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" SCREEN);
    qputenv("QT_HASH_SEED", "0");
    qInstallMessageHandler(dropRemarks);
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("random_assessor"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    HeldKeys heldKeys;
    application.installEventFilter(&heldKeys);
    stopWallClock();

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("seed"), QStringLiteral("of the draws"), QStringLiteral("S"),
                      QStringLiteral("1")});
    parser.addOption({QStringLiteral("events"), QStringLiteral("to be made"), QStringLiteral("N"),
                      QStringLiteral("20000")});
    parser.process(application);
    const qulonglong seed = parser.value(QStringLiteral("seed")).toULongLong();
    const int events = parser.value(QStringLiteral("events")).toInt();
    chronicle::begin(QStringLiteral("random_assessor --seed %1 --events %2").arg(seed).arg(events));

    Luck luck(seed);
    QString missing;
    {
        Player player(luck, fail);
        player.play(events);
        std::printf("seed %llu\n%s\n", seed, qPrintable(player.summary()));
        missing = player.missing();
    }
    if (events >= coverage && !missing.isEmpty()) {
        std::fprintf(stderr, "seed %llu: never came about: %s\n", seed, qPrintable(missing));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
