#include "MovementDesk.h"

#include <QApplication>
#include <QEventLoop>
#include <QSignalSpy>
#include <QWebEngineView>

#include <unistd.h>

using namespace column;

/// What the report is told of a test: read from the page as it is laid out.
class tst_Test3Report : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aReportHoldsTheScoresAndTheThreeDifferences();
    void aReportOfAShortTestHasTheDifferencesOfItsMeans();
    void aReportBearsTheLastDrift();
};

namespace {

constexpr int patience = 60000; // ms, for the first start of the browser on a busy machine

/// A desk whose reports are laid out, with this text as the template.
void writeTemplate(MovementDesk &desk, const QByteArray &body)
{
    desk.root.write(QString::fromLatin1(MovementDesk::reportTemplate),
                    "<html><body>" + body + "</body></html>");
    desk.task.result().setPrinting(true);
}

/// Presses "Results" and reads the page.
QString report(MovementDesk &desk)
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

QString rounded(double value, int decimals = 0)
{
    return QString::number(value, 'f', decimals);
}

} // namespace

void tst_Test3Report::aReportHoldsTheScoresAndTheThreeDifferences()
{
    MovementDesk desk;
    writeTemplate(desk, "v_trials v_session, v_t3rt v_t3_error v_t3_slope v_t3_r2, v_t3_oc v_t3_lr "
                        "v_t3_bt");
    desk.startTest();
    // By place clockwise from the right, in ms.
    constexpr std::array<int, 8> times{600, 620, 650, 700, 780, 890, 940, 970};
    for (int trial = 0; trial < 40; ++trial) {
        if (trial % 8 == 1)
            QVERIFY(desk.runTrial(640, false));
        QVERIFY(desk.reach(3));
        QVERIFY(desk.runTrial(times.at(std::size_t(desk.asked()))));
    }
    QVERIFY(desk.shown("pb_results"));
    const QStringList row = desk.rows("Results/results_T3.csv").constLast();
    // 795 - 742.5 is halfway: 53. The others are 790 - 730 and 933.3 - 656.7, above less below.
    QCOMPARE(report(desk), QStringLiteral("45 04, %1 11.1 %2 %3, 53 60 277")
                               .arg(rounded(row[11].toDouble()), rounded(row[13].toDouble()),
                                    rounded(row[14].toDouble(), 3)));
}

void tst_Test3Report::aReportOfAShortTestHasTheDifferencesOfItsMeans()
{
    MovementDesk desk;
    writeTemplate(desk, "v_trials v_t3_error, v_t3_oc v_t3_lr v_t3_bt");
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("1"));
    desk.click("pb_go");
    QVERIFY(desk.reach(3));
    const int place = desk.asked();
    QVERIFY(desk.runTrial(900));
    // 900 / 20 and 900 / 15; by place clockwise from the right.
    constexpr std::array differences{"-45 -60 0", "45 -60 -60", "-45 0 -60", "45 60 -60",
                                     "-45 60 0",  "45 60 60",   "-45 0 60",  "45 -60 60"};
    QCOMPARE(report(desk),
             QStringLiteral("1 0.0, ") + QLatin1String(differences.at(std::size_t(place))));
}

void tst_Test3Report::aReportBearsTheLastDrift()
{
    MovementDesk desk;
    writeTemplate(desk, "v_l_name v_f_name v_dob v_date v_time v_duration");
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("2"));
    desk.click("pb_go");
    const QDateTime start = desk.time.currentDateTime();
    QVERIFY(desk.runTrial(700));
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_P);
    desk.time.advance(130'000);
    desk.click("pb_continue");
    QVERIFY(desk.reach(3));
    const QDateTime drift = desk.time.currentDateTime();
    QVERIFY(desk.runTrial(70'000, false)); // seventy seconds without a Space, and wrong
    QVERIFY(desk.reach(3));
    const QDateTime last = desk.time.currentDateTime();
    QVERIFY(last.time().minute() != drift.time().minute());
    QVERIFY(desk.runTrial(700));
    const auto seconds = int(start.msecsTo(desk.time.currentDateTime()) / 1000);
    desk.time.advance(600'000);
    QCOMPARE(report(desk),
             QStringLiteral("Doe Jane 01.02.1950 06.01.2025 %1 %2")
                 .arg(last.toString(QStringLiteral("hh:mm")),
                      QTime(0, 0).addSecs(seconds).toString(QStringLiteral("mm:ss"))));
}

int main(int argc, char *argv[])
{
    // The browser's sandbox can't be had by root.
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    const QApplication application(argc, argv);
    tst_Test3Report test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Test3Report.moc"
