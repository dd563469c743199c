#include "MemoryDesk.h"

#include <QApplication>
#include <QEventLoop>
#include <QSet>
#include <QSignalSpy>
#include <QWebEngineView>

#include <unistd.h>

/// What the report is told of a test: read from the page as it is laid out.
class tst_Test4Report : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aReportHoldsTheScoresInTheirOrder();
    void aReportCountsTheValidTrials();
    void aReportWithoutALineShowsThatThereIsNone();
    void aReportBearsTheFirstCrossOfTheLastTrial();
};

namespace {

constexpr int patience = 60000; // ms, for the first start of the browser on a busy machine

/// A desk whose reports are laid out, with this text as the template.
void writeTemplate(MemoryDesk &desk, const QByteArray &body)
{
    desk.root.write(QString::fromLatin1(MemoryDesk::reportTemplate),
                    "<html><body>" + body + "</body></html>");
    desk.task.result().setPrinting(true);
}

/// Presses "Results" and reads the page.
QString report(MemoryDesk &desk)
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

QString rounded(const QString &score, int decimals = 0)
{
    return QString::number(score.toDouble(), 'f', decimals);
}

/// A trial whose distances are multiples of a quarter of a millimetre.
bool answerTrial(MemoryDesk &desk, int first, int last)
{
    const QList<QPoint> places = desk.runToQuestion();
    if (places.size() < 2)
        return false;
    desk.answer(places.constLast() + QPoint(last, 0), places.constFirst() + QPoint(first, 0));
    return desk.finishTrial();
}

} // namespace

void tst_Test4Report::aReportHoldsTheScoresInTheirOrder()
{
    MemoryDesk desk;
    writeTemplate(desk, "v_trials v_session, v_t4_average_f v_t4_average_l v_t4_error, v_t4l_slope "
                        "v_t4l_r2, v_t4_slope v_t4_intercept v_t4_r2");
    desk.startTest();
    for (int trial = 0; trial < 30; ++trial) {
        // Grows with the load, falls with practice, and scatters.
        const QList<QPoint> places = desk.runToQuestion();
        const int first = 30 * int(places.size()) - trial + trial * 37 % 11;
        desk.answer(places.constLast() + QPoint(20 + trial * 29 % 17, 0),
                    places.constFirst() - QPoint(0, first));
        QVERIFY(desk.finishTrial());
    }
    QVERIFY(desk.shown("pb_results"));
    const QStringList row = desk.rows("Results/results_T4.csv").constLast();
    QVERIFY(row[13].toDouble() > 1.15);
    const QSet<QString> whole{rounded(row[11]), rounded(row[12]), rounded(row[14])};
    QCOMPARE(whole.size(), 3); // none can stand for another one
    QCOMPARE(report(desk),
             QStringLiteral("30 05, %1 %2 0.0, %3 %4, %5 %6 %7")
                 .arg(rounded(row[11]), rounded(row[12]), rounded(row[16], 3), rounded(row[17], 3),
                      rounded(row[13], 1), rounded(row[14]), rounded(row[15], 3)));
}

void tst_Test4Report::aReportCountsTheValidTrials()
{
    MemoryDesk desk;
    writeTemplate(desk, "v_trials v_t4_error");
    desk.go({});
    desk.type("le_number", QStringLiteral("4"));
    desk.click("pb_go");
    QVERIFY(desk.runTrials(2));
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.key(Qt::Key_E);
    QVERIFY(desk.runTrials(3));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(report(desk), QStringLiteral("5 20.0"));
}

void tst_Test4Report::aReportWithoutALineShowsThatThereIsNone()
{
    MemoryDesk desk;
    sessionStore().sessionNb[3] = 12;
    writeTemplate(desk, "v_session, v_t4_average_f v_t4_average_l v_t4_error, v_t4l_slope, "
                        "v_t4_slope v_t4_intercept, v_t4_r2 v_t4l_r2");
    desk.startTest();
    QVERIFY(desk.runTrials(30)); // every distance is 1 mm
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(report(desk), QStringLiteral("12, 1 1 0.0, 0.000, 1.0 1, nan nan"));
}

void tst_Test4Report::aReportBearsTheFirstCrossOfTheLastTrial()
{
    MemoryDesk desk;
    writeTemplate(desk, "v_l_name v_f_name v_dob v_date v_time v_duration");
    desk.go({});
    desk.type("le_number", QStringLiteral("2"));
    const QDateTime start = desk.time.currentDateTime();
    desk.click("pb_go");
    QVERIFY(answerTrial(desk, 40, 20));
    desk.key(Qt::Key_P);
    desk.time.advance(190'000);
    desk.click("pb_continue");
    QVERIFY(desk.reach(2));
    const QDateTime last = desk.time.currentDateTime();
    QVERIFY(desk.reach(4));
    desk.time.advance(130'000); // two minutes of thinking
    QVERIFY(answerTrial(desk, 40, 20));
    QVERIFY(desk.shown("pb_results"));
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
    tst_Test4Report test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Test4Report.moc"
