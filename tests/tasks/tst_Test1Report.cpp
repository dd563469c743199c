#include "VisionDesk.h"

#include <QApplication>
#include <QEventLoop>
#include <QSignalSpy>
#include <QWebEngineView>

#include <cmath>

#include <unistd.h>

/// What the report is told of a test: read from the page as it is laid out.
class tst_Test1Report : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aReportHoldsTheScoresOfItsMode_data();
    void aReportHoldsTheScoresOfItsMode();
    void aReportHasTheTurningPointsCutToMilliseconds();
    void aReportBearsThePressOfGo();
};

namespace {

constexpr int patience = 60000; // ms, for the first start of the browser on a busy machine

constexpr const char *scores =
    "v_t1_central v_t1a_errors v_t1a_reversals v_t1a_sup v_t1a_limit_s v_t1a_inf v_t1a_limit_i, "
    "v_t1_peripheral v_t1b_errors v_t1b_reversals v_t1b_sup v_t1b_limit_s v_t1b_inf v_t1b_limit_i, "
    "v_t1_dual v_t1c_errors v_t1c_reversals v_t1c_sup v_t1c_limit_s v_t1c_inf v_t1c_limit_i";

/// A desk whose reports are laid out, with this text as the template.
void writeTemplate(VisionDesk &desk, const QByteArray &body)
{
    desk.root.write(QString::fromLatin1(VisionDesk::reportTemplate),
                    "<html><body>" + body + "</body></html>");
    desk.task.result().setPrinting(true);
}

/// Right and wrong in turn, by the subtask of each trial.
bool toAndFro(VisionDesk &desk, int trials)
{
    std::array<int, 3> done{};
    for (int trial = 0; trial < trials; ++trial) {
        const auto subtask = std::size_t(desk.text("le_subtask").toInt() - 1);
        if (!desk.runTrial(done.at(subtask)++ % 2 == 0))
            return false;
    }
    return desk.shown("pb_results");
}

/// Presses "Results" and reads the page.
QString report(VisionDesk &desk)
{
    desk.click("pb_results");
    const auto *view = desk.task.result().findChild<QWebEngineView *>();
    if (!view)
        return {};
    QSignalSpy loaded(view->page(), &QWebEnginePage::loadFinished);
    if (!loaded.wait(patience))
        return {};
    QString text;
    QEventLoop reading;
    view->page()->toPlainText([&](const QString &found) {
        text = found;
        reading.quit();
    });
    reading.exec();
    desk.task.result().close();
    return text.simplified();
}

/// The seven numbers of a subtask that went to and fro between two steps.
QString group(int peak, int trough, int errors)
{
    const auto mean = [](double a, double b) { return int(std::exp((a + b) / 2)); };
    const double up = std::log(peak);
    const double down = std::log(trough);
    return QStringLiteral("%1 %2 19 %3 0 %4 0")
        .arg(mean(up, down))
        .arg(errors)
        .arg(mean(up, up))
        .arg(mean(down, down));
}

} // namespace

void tst_Test1Report::aReportHoldsTheScoresOfItsMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("head"); // trials and session
    QTest::addColumn<QString>("groups");
    const auto row = [](const QString &a, const QString &b, const QString &c) {
        return QStringList({a, b, c}).join(QStringLiteral(", "));
    };
    const auto unmeasured = [](int threshold) {
        return QStringLiteral("%1 0 0 0 0 0 0").arg(threshold);
    };
    const QString central = group(283, 217, 2);
    const QString peripheral = group(367, 283, 2);
    const QString dual = group(483, 367, 2);
    QTest::newRow("interleaved") << 0 << "60 02"
                                 << row(central, group(367, 283, 0), group(483, 367, 0));
    QTest::newRow("central") << 1 << "20 06" << row(central, unmeasured(367), unmeasured(483));
    QTest::newRow("peripheral") << 2 << "20 07"
                                << row(unmeasured(283), peripheral, unmeasured(483));
    QTest::newRow("dual") << 3 << "20 08" << row(unmeasured(283), unmeasured(367), dual);
}

void tst_Test1Report::aReportHoldsTheScoresOfItsMode()
{
    QFETCH(const int, mode);
    QFETCH(const QString, head);
    QFETCH(const QString, groups);
    VisionDesk desk;
    writeTemplate(desk, QByteArray("v_trials v_session, ") + scores);
    desk.startTest({.mode = mode});
    int strikes = 0;
    std::array<int, 3> done{};
    while (desk.task.stage() == 1) {
        const auto subtask = std::size_t(desk.text("le_subtask").toInt() - 1);
        if (strikes < 2 && (mode != 0 || subtask == 0)) { // in the interleaved test central ones
            QVERIFY(desk.reach(5));
            desk.key(Qt::Key_E);
            desk.click("pb_continue");
            ++strikes;
        }
        QVERIFY(desk.runTrial(done.at(subtask)++ % 2 == 0));
    }
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(report(desk), head + QStringLiteral(", ") + groups);
}

void tst_Test1Report::aReportHasTheTurningPointsCutToMilliseconds()
{
    VisionDesk desk;
    writeTemplate(desk, "v_t1_central v_t1a_errors v_t1a_sup v_t1a_inf v_t1a_limit_i");
    desk.startTest({.mode = 1, .fixedDuration = true});
    // Every second trial is missed, the others are right and wrong in turn: the peaks lie at two
    // steps, and their mean is 247.8 ms.
    for (int trial = 0; trial < 20; ++trial) {
        QVERIFY(desk.reach(5));
        if (trial % 2 == 0) {
            QVERIFY(desk.runTrial(trial % 4 == 0));
            continue;
        }
        desk.time.advance(5000);
        while (desk.task.stage() == 6)
            desk.time.advance(1);
    }
    QVERIFY(desk.shown("pb_results"));
    const QStringList row = desk.rows("Results/results_T1.csv").constLast();
    QVERIFY(row[14].startsWith(QStringLiteral("247.8")));
    QCOMPARE(report(desk), QStringLiteral("64 10 247 17 4"));
}

void tst_Test1Report::aReportBearsThePressOfGo()
{
    VisionDesk desk;
    writeTemplate(desk, "v_l_name v_f_name v_dob v_date v_time v_duration");
    desk.go({.mode = 1});
    desk.time.advance(61'000); // one minute after nine
    desk.click("pb_go");
    const QDateTime pressed = desk.time.currentDateTime();
    QVERIFY(toAndFro(desk, 20));
    const auto seconds = int(pressed.msecsTo(desk.time.currentDateTime()) / 1000);
    desk.time.advance(600'000);
    const QString length = QTime(0, 0).addSecs(seconds).toString(QStringLiteral("mm:ss"));
    QCOMPARE(report(desk), QStringLiteral("Doe Jane 01.02.1950 06.01.2025 09:01 ") + length);
}

int main(int argc, char *argv[])
{
    // The browser's sandbox can't be had by root.
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    const QApplication application(argc, argv);
    tst_Test1Report test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Test1Report.moc"
