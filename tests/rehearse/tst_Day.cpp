#include "DataRoot.h"
#include "Footprint.h"
#include "Kelmoran.h"
#include "Rehearsal.h"
#include "VirtualTime.h"
#include "startup.h"

#include <QApplication>
#include <QTest>

#include <memory>
#include <optional>

/// A day of tests in one run of the program: round by round a new patient is registered and takes
/// the tests of the buttons, with instruction and training. What the program holds behind a round
/// is no more than what it held when it was warm.
class tst_Day : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void roundsOfTestsLeaveNothingBehind();
    void roundsOfReportsLeaveNothingBehind();
};

namespace {

constexpr qint64 kibibyte = 1024;
constexpr int buttons = 7;
constexpr int kindsOfReports = 4; // the last three buttons have the report of the first
constexpr int patience = 30'000;  // ms, for the browser's processes to go on a busy machine

/// A soak asks for a day.
std::optional<int> wantedRounds()
{
    bool told = false;
    const int number = qEnvironmentVariableIntValue("KELMORAN_DAY_ROUNDS", &told);
    return told ? std::optional(number) : std::nullopt;
}

/// The main window on a data root of its own, which stays open all day.
class Day
{
public:
    explicit Day(bool reports)
        : m_reports(reports)
        , m_buttons(reports && !wantedRounds() ? kindsOfReports : buttons)
    {
        for (int task = 1; task <= 4; ++task) {
            const QString name = QStringLiteral("Kelmoran_Task%1_en.html").arg(task);
            QFile file(QStringLiteral(KELMORAN_LANGUAGES) + QStringLiteral("/en/") + name);
            if (!file.open(QIODevice::ReadOnly))
                qFatal("no %s", qPrintable(name));
            m_root.write(QStringLiteral("Languages/En/") + name, file.readAll());
        }
        m_window = std::make_unique<Kelmoran>();
        m_window->show();
    }

    /// Why it has failed; empty if all went well.
    QString playRound()
    {
        ++m_round;
        for (int button = 1; button <= m_buttons; ++button) {
            const QString failure = play(button);
            if (!failure.isEmpty())
                return QStringLiteral("round %1, button %2: %3")
                    .arg(QString::number(m_round), QString::number(button), failure);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return {};
    }

    int played() const { return m_played; }

private:
    QString play(int button)
    {
        Options options;
        options.task = button;
        options.patient.lastName = QStringLiteral("ROUND%1").arg(m_round);
        options.instruction = true;
        options.training = true;
        options.report = m_reports;
        options.seed = quint32(m_round * buttons + button);
        int rows = 0;
        Rehearsal rehearsal(options, *m_window, [&](const QByteArray &) { ++rows; });
        const Rehearsal::Ending ending = rehearsal.run();
        if (ending.code != Rehearsal::Done)
            return ending.text;
        m_played += rows;
        return rows == 1 ? QString() : QStringLiteral("no row of scores");
    }

    const bool m_reports;
    const int m_buttons;
    int m_round = 0;
    int m_played = 0;
    DataRoot m_root{DataRoot::Folders::Missing};
    VirtualTime m_time{VirtualTime::Mode::FreeRunning};
    std::unique_ptr<Kelmoran> m_window;
};

/// @param bytesATest that the memory in use may grow by when the program is warm
void playDay(bool reports, qint64 bytesATest)
{
    const int rounds = wantedRounds().value_or(3);
    const int warmUp = (rounds + 1) / 2; // with its second page a view is complete
    Day day(reports);
    Footprint warm;
    int played = 0;
    for (int round = 1; round <= rounds; ++round) {
        const QString failure = day.playRound();
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        if (round > warmUp)
            QTRY_COMPARE_WITH_TIMEOUT(Footprint::now().growthSince(warm), QByteArray(), patience);
        Footprint now = Footprint::now();
        qInfo("%d tests: %s", day.played(), now.summary().constData());
        if (round <= warmUp) {
            now.raiseTo(warm);
            warm = now;
            played = day.played();
        }
    }
    QVERIFY(rounds > warmUp);
    const qint64 grown = (Footprint::now().bytes() - warm.bytes()) / (day.played() - played);
    QVERIFY2(grown < bytesATest, qPrintable(QStringLiteral("%1 bytes a test").arg(grown)));
}

} // namespace

/// The caches of the toolkit fill for some rounds, by up to 3 KiB a test, and the box has an item
/// more with each. Trials that left a hundred bytes each would go beyond the bound.
void tst_Day::roundsOfTestsLeaveNothingBehind()
{
    playDay(false, 8 * kibibyte);
}

/// The caches of the browser fill for longer, by up to 10 KiB a test. A page or a picture that
/// stayed would go beyond the bound.
void tst_Day::roundsOfReportsLeaveNothingBehind()
{
    playDay(true, 64 * kibibyte);
}

int main(int argc, char *argv[])
{
    const LivingObjects objects;
    startup::prepareEnvironment();
    QCoreApplication::setAttribute(
        Qt::AA_ShareOpenGLContexts); // the report's view wants it so early
    const QApplication application(argc, argv);
    tst_Day test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Day.moc"
