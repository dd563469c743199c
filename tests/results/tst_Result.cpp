#include "DataRoot.h"
#include "Result.h"
#include "TaskTimer.h"
#include "VirtualTime.h"
#include "dataFolders.h"
#include "resultFiles.h"

#include <QApplication>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>
#include <QWebEngineView>

#include <unistd.h>

namespace {

constexpr int patience = 60000; // ms, for the first start of the browser on a busy machine

QString output(const char *program, const QStringList &arguments)
{
    QProcess process;
    process.start(QString::fromLatin1(program), arguments);
    if (!process.waitForFinished(patience))
        qFatal("%s doesn't run", program);
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString textOf(const QString &pdf)
{
    return output(PDFTOTEXT, {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
}

int pagesOf(const QString &pdf)
{
    const QStringList lines = output(PDFINFO, {pdf}).split(u'\n');
    const QStringList found = lines.filter(QStringLiteral("Pages:"));
    return found.isEmpty() ? 0 : found.first().mid(6).trimmed().toInt();
}

QDateTime stamp()
{
    return {QDate(2024, 3, 5), QTime(14, 7, 9)};
}

QTime duration()
{
    return {0, 4, 32};
}

void goResult1(Result &result, bool show)
{
    result.goResult1(show, stamp(), 7, duration(), 61, 132, 1, 8, 150, 0, 117, 1, 233, 2, 9, 251, 0,
                     217, 0, 334, 3, 10, 352, 1, 318, 0);
}

void goResult2(Result &result, bool show)
{
    result.goResult2(show, stamp(), 7, duration(), 101, 412.4, 1.98, -21.3, 0.412, 31.6, 0.0, -15.2,
                     0.311, 47.9, 2.97, -9.7, 0.105);
}

void goResult3(Result &result, bool show)
{
    result.goResult3(show, stamp(), 7, duration(), 43, 655.5, 6.98, -33.3, 0.512, 21.4, -11.6, 5.2);
}

void goResult4(Result &result, bool show)
{
    result.goResult4(show, stamp(), 7, duration(), 33, 12.4, 15.6, 9.09, -0.123, 0.456, 1.26, 7.3,
                     0.789);
}

void goResult(int task, Result &result, bool show)
{
    switch (task) {
    case 1:
        return goResult1(result, show);
    case 2:
        return goResult2(result, show);
    case 3:
        return goResult3(result, show);
    default:
        return goResult4(result, show);
    }
}

/// Counts how often a window has come up.
class Showings : public QObject
{
public:
    explicit Showings(QObject *window) { window->installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject *window, QEvent *event) override
    {
        if (event->type() == QEvent::Show)
            ++count;
        return QObject::eventFilter(window, event);
    }
};

/// An assessor who prints on paper that is a file, or has thought better of it.
class ResultOnPaper : public Result
{
public:
    using Result::Result;

    QString paper;

protected:
    bool choosePrinter(QPrinter &printer) override
    {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(paper);
        return !paper.isEmpty();
    }
};

constexpr QLatin1String archive("Archives/Martin Anne 30.12.1951");

QString pdfName(int task, const QString &session = QStringLiteral("07"))
{
    return QStringLiteral("%1/Output_T%2_S%3_Martin Anne 30.12.1951.pdf")
        .arg(archive, QString::number(task), session);
}

} // namespace

class tst_Result : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyTaskFilesItsReport_data();
    void everyTaskFilesItsReport();
    void noBrowserStandsBeforeTheFirstReport();
    void aReportThatIsNotWantedOnTheScreenIsNeverVisible();
    void aShownReportStaysOpen();
    void aShownReportFillsTheScreensHeight();
    void aMissingTemplateIsToldAndNothingIsFiled();
    void aPdfThatCannotBeWrittenIsTold();
    void aPdfIsReplacedInOneStep();
    void aNameIsATextAndNoMarkup();
    void aNameTooLongForAFileHasItsReport();
    void whatLiesBesideTheTemplateIsFound();
    void noAddressOnTheNetworkIsFetched();
    void scriptsAreOff();
    void aSecondReportWithinTheDelayFilesOnePdf();
    void aReportInTheMiddleOfItsFilingIsNotLostToTheNext();
    void withoutPrintingNothingIsLaidOut();
    void theTemplateIsReadWithoutPrinting();
    void virtualTimeStandsStillWhileAReportIsFiled();
    void theProgramStaysAliveUntilThePdfIsFiled();
    void paperIsPrintedFromTheReport();
    void paperWaitsForThePageAndThePdfForThePaper();
    void paperWaitsForThePdfThatWasFirst();
    void aPrintDialogThatIsCancelledPrintsNothing();
    void aPaperThatCannotBePrintedIsTold();
    void thePrinterButtonBeforeAnyReportDoesNothing();
    void theEnglishAttentionReportIsOnePageWithoutAPlaceholder();

private:
    void writeTemplate(int task, const QByteArray &body) const;
    QString path(const QString &relative) const { return m_root->path(relative); }
    bool isFiled(Result &result) const;

    std::unique_ptr<DataRoot> m_root;
    std::unique_ptr<VirtualTime> m_time;
};

void tst_Result::init()
{
    m_time = std::make_unique<VirtualTime>(VirtualTime::Mode::FreeRunning);
    m_root = std::make_unique<DataRoot>();
    SessionStore &store = sessionStore();
    store.lastName = QStringLiteral("Martin");
    store.firstName = QStringLiteral("Anne");
    store.dob = QDate(1951, 12, 30);
    store.patientName = QStringLiteral("Martin Anne 30.12.1951");
}

void tst_Result::cleanup()
{
    m_root.reset();
    m_time.reset();
}

void tst_Result::writeTemplate(int task, const QByteArray &body) const
{
    m_root->write(QStringLiteral("Languages/En/Kelmoran_Task%1_en.html").arg(task),
                  "<html><head><meta charset='utf-8'></head><body>" + body + "</body></html>");
}

/// Waits until the report's PDF is filed or has failed.
bool tst_Result::isFiled(Result &result) const
{
    QSignalSpy finished(&result, &Result::pdfFinished);
    return finished.wait(patience) && finished.first().at(1).toBool();
}

void tst_Result::everyTaskFilesItsReport_data()
{
    QTest::addColumn<int>("task");
    QTest::addColumn<QByteArray>("scores");
    QTest::addColumn<QString>("shown");
    QTest::newRow("visual perception")
        << 1
        << QByteArray("v_t1_central/v_t1a_errors/v_t1a_reversals/v_t1a_sup/v_t1a_limit_s/"
                      "v_t1a_inf/v_t1a_limit_i, v_t1_peripheral/v_t1b_sup, v_t1_dual/v_t1c_inf")
        << QStringLiteral("132/1/8/150/0/117/1, 233/251, 334/318");
    QTest::newRow("attention") << 2
                               << QByteArray("v_t2a_neutral/v_t2a_error/v_t2a_slope/v_t2a_r2, "
                                             "v_t2b_alerting, v_t2c_orientation/v_t2c_r2")
                               << QStringLiteral("412/ 2.0/-21/0.412, 32, 48/0.105");
    QTest::newRow("movement detection")
        << 3 << QByteArray("v_t3rt/v_t3_error/v_t3_slope/v_t3_r2, v_t3_oc/v_t3_lr/v_t3_bt")
        << QStringLiteral("656/ 7.0/-33/0.512, 21/-12/ 5");
    QTest::newRow("memory") << 4
                            << QByteArray("v_t4_average_f/v_t4_average_l/v_t4_error/v_t4l_slope/"
                                          "v_t4l_r2/v_t4_slope/v_t4_intercept/v_t4_r2")
                            << QStringLiteral("12/ 16/ 9.1/-0.123/0.456/ 1.3/ 7/0.789");
}

void tst_Result::everyTaskFilesItsReport()
{
    QFETCH(int, task);
    QFETCH(QByteArray, scores);
    QFETCH(QString, shown);
    Boxes boxes;
    writeTemplate(task, "<p>" + scores +
                            "</p><p>v_f_name v_l_name, v_dob, v_session, v_date, "
                            "v_time, v_duration</p>");
    Result result;
    goResult(task, result, false);
    QVERIFY(result.isBusy());
    QVERIFY(isFiled(result));
    QVERIFY(!result.isBusy());
    const QString text = textOf(path(pdfName(task)));
    QVERIFY2(text.contains(shown), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("Anne Martin, 30.12.1951, 07, 05.03.2024, 14:07, 04:32")),
             qPrintable(text));
    QCOMPARE(pagesOf(path(pdfName(task))), 1);
}

void tst_Result::noBrowserStandsBeforeTheFirstReport()
{
    const Result result;
    QVERIFY(!result.findChild<QWebEngineView *>());
    QVERIFY(!result.isBusy());
}

void tst_Result::aReportThatIsNotWantedOnTheScreenIsNeverVisible()
{
    Boxes boxes;
    writeTemplate(4, "v_trials");
    Result result;
    const Showings showings(&result);
    goResult4(result, false);
    QVERIFY(isFiled(result));
    QCOMPARE(showings.count, 0);
    QVERIFY(!result.isVisible());
}

void tst_Result::aShownReportStaysOpen()
{
    Boxes boxes;
    writeTemplate(4, "v_trials");
    Result result;
    goResult4(result, true);
    QVERIFY(result.isVisible());
    QVERIFY(isFiled(result));
    QVERIFY(result.isVisible());
    auto *view = result.findChild<QWebEngineView *>(QStringLiteral("webView"));
    QVERIFY(view && view->isVisible());
    QCOMPARE(view->zoomFactor(), 0.99);
    QCOMPARE(result.windowTitle(), QStringLiteral("Result"));
}

void tst_Result::aShownReportFillsTheScreensHeight()
{
    Boxes boxes;
    writeTemplate(3, "v_trials");
    Result result;
    goResult3(result, true);
    const int height = QGuiApplication::primaryScreen()->geometry().height();
    QCOMPARE(result.size(), QSize(1026, height - 100));
    const auto *view = result.findChild<QWebEngineView *>();
    QVERIFY(view);
    QCOMPARE(view->geometry(), QRect(0, 35, 1024, height - 140));
    QVERIFY(isFiled(result));
}

void tst_Result::aMissingTemplateIsToldAndNothingIsFiled()
{
    Boxes boxes;
    Result result;
    goResult2(result, false);
    const QList<messages::Message> told = boxes.take();
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.first().kind, messages::Kind::Information);
    QCOMPARE(told.first().title, QStringLiteral("Unable to open file"));
    QCOMPARE(told.first().text, QStringLiteral("No such file or directory"));
    QVERIFY(!result.isBusy());
    QVERIFY(!m_root->exists(archive));
}

void tst_Result::aPdfThatCannotBeWrittenIsTold()
{
    Boxes boxes;
    writeTemplate(4, "v_trials");
    m_root->block(pdfName(4));
    Result result;
    QSignalSpy finished(&result, &Result::pdfFinished);
    goResult4(result, false);
    QVERIFY(finished.wait(patience));
    QCOMPARE(finished.first().at(1).toBool(), false);
    const QList<messages::Message> told = boxes.take();
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.first().kind, messages::Kind::Warning);
    QCOMPARE(told.first().title, QStringLiteral("Error"));
    QVERIFY2(told.first().text.startsWith(
                 QStringLiteral("Failed to open Output_T4_S07_Martin Anne 30.12.1951.pdf\n")),
             qPrintable(told.first().text));
    QVERIFY(!result.isBusy());
}

void tst_Result::aPdfIsReplacedInOneStep()
{
    Boxes boxes;
    m_root->write(pdfName(4), "the PDF of an earlier run");
    writeTemplate(4, "v_trials trials");
    Result result;
    goResult4(result, false);
    QVERIFY(isFiled(result));
    QVERIFY(textOf(path(pdfName(4))).contains(QStringLiteral("33 trials")));
    QCOMPARE(QDir(path(archive)).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void tst_Result::aNameIsATextAndNoMarkup()
{
    Boxes boxes;
    sessionStore().lastName = QStringLiteral("<b>Ş&amp;</b> %1 v_trials");
    writeTemplate(4, "[v_l_name]");
    Result result;
    goResult4(result, false);
    QVERIFY(isFiled(result));
    const QString text = textOf(path(pdfName(4)));
    QVERIFY2(text.contains(QStringLiteral("[<b>Ş&amp;</b> %1 v_trials]")), qPrintable(text));
}

void tst_Result::aNameTooLongForAFileHasItsReport()
{
    Boxes boxes;
    sessionStore().patientName = QString(300, u'王') + QStringLiteral(" Anne 30.12.1951");
    const QString name = dataFolders::asFileName(sessionStore().patientName);
    resultFiles::createArchive(sessionStore().patientName);
    writeTemplate(4, "[v_f_name]");
    Result result;
    goResult4(result, false);
    QVERIFY(isFiled(result));
    QVERIFY(m_root->exists(QStringLiteral("Archives/%1/Output_T4_S07_%1.pdf").arg(name)));
}

void tst_Result::whatLiesBesideTheTemplateIsFound()
{
    Boxes boxes;
    m_root->write(QStringLiteral("Languages/En/beside.css"), ".unseen { display: none; }");
    writeTemplate(4, "<link rel='stylesheet' href='beside.css'>SEEN<p class='unseen'>HIDDEN</p>");
    Result result;
    goResult4(result, false);
    QVERIFY(isFiled(result));
    const QString text = textOf(path(pdfName(4)));
    QVERIFY(text.contains(QStringLiteral("SEEN")));
    QVERIFY(!text.contains(QStringLiteral("HIDDEN")));
}

void tst_Result::noAddressOnTheNetworkIsFetched()
{
    Boxes boxes;
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    QSignalSpy asked(&server, &QTcpServer::newConnection);
    const QByteArray address = "http://127.0.0.1:" + QByteArray::number(server.serverPort());
    writeTemplate(4, "<link rel='stylesheet' href='" + address + "/a.css'><img src='" + address +
                         "/b.png'><iframe src='" + address + "/c.html'></iframe>SEEN");
    Result result;
    goResult4(result, false);
    QVERIFY(isFiled(result));
    QVERIFY(asked.isEmpty());
    QVERIFY(!server.hasPendingConnections());
    QVERIFY(textOf(path(pdfName(4))).contains(QStringLiteral("SEEN")));
}

void tst_Result::scriptsAreOff()
{
    Boxes boxes;
    writeTemplate(4, "<script>document.write('WRITTEN')</script><noscript>QUIET</noscript>");
    Result result;
    goResult4(result, false);
    QVERIFY(isFiled(result));
    const QString text = textOf(path(pdfName(4)));
    QVERIFY(text.contains(QStringLiteral("QUIET")));
    QVERIFY(!text.contains(QStringLiteral("WRITTEN")));
}

void tst_Result::aSecondReportWithinTheDelayFilesOnePdf()
{
    Boxes boxes;
    writeTemplate(4, "v_trials trials");
    Result result;
    QSignalSpy finished(&result, &Result::pdfFinished);
    result.goResult4(false, stamp(), 6, duration(), 99, 0, 0, 0, 0, 0, 0, 0, 0);
    goResult4(result, false);
    QVERIFY(finished.wait(patience));
    QCOMPARE(finished.size(), 1);
    QVERIFY(!result.isBusy());
    QVERIFY(!m_root->exists(pdfName(4, QStringLiteral("06"))));
    QVERIFY(textOf(path(pdfName(4))).contains(QStringLiteral("33 trials")));
}

void tst_Result::aReportInTheMiddleOfItsFilingIsNotLostToTheNext()
{
    m_time.reset();
    VirtualTime time(VirtualTime::Mode::Stepped);
    Boxes boxes;
    writeTemplate(4, "v_trials trials");
    Result result;
    QSignalSpy finished(&result, &Result::pdfFinished);
    result.goResult4(false, stamp(), 6, duration(), 99, 0, 0, 0, 0, 0, 0, 0, 0);
    time.advance(500);
    goResult4(result, false);
    time.advance(500);
    while (finished.size() < 2)
        QVERIFY(finished.wait(patience));
    QVERIFY(textOf(path(pdfName(4, QStringLiteral("06")))).contains(QStringLiteral("99 trials")));
    QVERIFY(textOf(path(pdfName(4))).contains(QStringLiteral("33 trials")));
    QVERIFY(!result.isBusy());
}

void tst_Result::withoutPrintingNothingIsLaidOut()
{
    m_time.reset();
    VirtualTime time(VirtualTime::Mode::Stepped);
    Boxes boxes;
    writeTemplate(2, "v_trials");
    Result result;
    result.setPrinting(false);
    goResult2(result, false);
    QVERIFY(!result.isBusy());
    time.advance(500);
    QVERIFY(!result.findChild<QWebEngineView *>());
    QVERIFY(!m_root->exists(archive));
    QVERIFY(!result.isBusy());
}

void tst_Result::theTemplateIsReadWithoutPrinting()
{
    Boxes boxes;
    Result result;
    result.setPrinting(false);
    goResult2(result, false);
    QCOMPARE(boxes.take().size(), 1);
}

void tst_Result::virtualTimeStandsStillWhileAReportIsFiled()
{
    Boxes boxes;
    writeTemplate(2, "v_trials");
    Result result;
    TaskTimer later;
    QSignalSpy passed(&later, &TaskTimer::timeout);
    later.start(501);
    goResult2(result, false);
    QVERIFY(isFiled(result));
    QVERIFY(passed.isEmpty());
    QCOMPARE(m_time->nanoseconds(), qint64(500) * 1000 * 1000);
    QVERIFY(passed.wait(patience));
}

void tst_Result::theProgramStaysAliveUntilThePdfIsFiled()
{
    m_time.reset(); // half a second of real time, in which the window is closed
    Boxes boxes;
    writeTemplate(2, "v_trials");
    QWidget window;
    window.show();
    Result result;
    goResult2(result, false);
    QMetaObject::invokeMethod(&window, &QWidget::close, Qt::QueuedConnection);
    QCoreApplication::exec();
    QVERIFY(!window.isVisible());
    QVERIFY(m_root->exists(pdfName(2)));
}

void tst_Result::paperIsPrintedFromTheReport()
{
    Boxes boxes;
    writeTemplate(2, "v_trials trials");
    ResultOnPaper result;
    result.paper = path(QStringLiteral("paper.pdf"));
    goResult2(result, true);
    QVERIFY(isFiled(result));
    auto *view = result.findChild<QWebEngineView *>();
    QVERIFY(view);
    QSignalSpy printed(view, &QWebEngineView::printFinished);
    QTest::mouseClick(result.findChild<QPushButton *>(QStringLiteral("pb_printer")),
                      Qt::LeftButton);
    QVERIFY(result.isBusy());
    QVERIFY(printed.wait(patience));
    QVERIFY(printed.first().first().toBool());
    QVERIFY(!result.isBusy());
    QCOMPARE(pagesOf(result.paper), 1);
}

void tst_Result::paperWaitsForThePageAndThePdfForThePaper()
{
    m_time.reset();
    VirtualTime time(VirtualTime::Mode::Stepped);
    Boxes boxes;
    writeTemplate(2, "v_trials trials");
    ResultOnPaper result;
    result.paper = path(QStringLiteral("paper.pdf"));
    QSignalSpy filed(&result, &Result::pdfFinished);
    goResult2(result, true);
    auto *view = result.findChild<QWebEngineView *>();
    QVERIFY(view);
    QSignalSpy printed(view, &QWebEngineView::printFinished);
    // The page isn't laid out yet.
    QTest::mouseClick(result.findChild<QPushButton *>(QStringLiteral("pb_printer")),
                      Qt::LeftButton);
    connect(view->page(), &QWebEnginePage::loadFinished, &result,
            [clock = &time] { clock->advance(500); });
    QVERIFY(printed.wait(patience));
    QVERIFY(filed.size() == 1 || filed.wait(patience));
    QVERIFY(filed.first().at(1).toBool());
    QCOMPARE(pagesOf(result.paper), 1);
    QVERIFY(textOf(path(pdfName(2))).contains(QStringLiteral("101 trials")));
    QVERIFY(!result.isBusy());
}

void tst_Result::paperWaitsForThePdfThatWasFirst()
{
    m_time.reset();
    VirtualTime time(VirtualTime::Mode::Stepped);
    Boxes boxes;
    writeTemplate(2, "v_trials trials");
    ResultOnPaper result;
    result.paper = path(QStringLiteral("paper.pdf"));
    QSignalSpy filed(&result, &Result::pdfFinished);
    goResult2(result, true);
    auto *view = result.findChild<QWebEngineView *>();
    QVERIFY(view);
    QSignalSpy printed(view, &QWebEngineView::printFinished);
    time.advance(500); // both are wanted before the page is laid out
    result.toPb_printer();
    QVERIFY(printed.wait(patience));
    QCOMPARE(filed.size(), 1);
    QVERIFY(filed.first().at(1).toBool());
    QCOMPARE(pagesOf(result.paper), 1);
    QVERIFY(textOf(path(pdfName(2))).contains(QStringLiteral("101 trials")));
    QVERIFY(!result.isBusy());
}

void tst_Result::aPrintDialogThatIsCancelledPrintsNothing()
{
    Boxes boxes;
    writeTemplate(2, "v_trials");
    ResultOnPaper result;
    goResult2(result, true);
    QVERIFY(isFiled(result));
    result.toPb_printer();
    QVERIFY(!result.isBusy());
}

void tst_Result::aPaperThatCannotBePrintedIsTold()
{
    Boxes boxes;
    writeTemplate(2, "v_trials");
    ResultOnPaper result;
    result.paper = path(QStringLiteral("missing/paper.pdf"));
    goResult2(result, true);
    QVERIFY(isFiled(result));
    auto *view = result.findChild<QWebEngineView *>();
    QVERIFY(view);
    QSignalSpy printed(view, &QWebEngineView::printFinished);
    result.toPb_printer();
    QVERIFY(printed.wait(patience));
    const QList<messages::Message> told = boxes.take();
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.first().title, QStringLiteral("Error"));
    QCOMPARE(told.first().text,
             QStringLiteral("Failed to open paper.pdf\nThe report could not be printed."));
    QVERIFY(!result.isBusy());
}

void tst_Result::thePrinterButtonBeforeAnyReportDoesNothing()
{
    ResultOnPaper result;
    result.paper = path(QStringLiteral("paper.pdf"));
    result.toPb_printer();
    QVERIFY(!result.isBusy());
    QVERIFY(!result.findChild<QWebEngineView *>());
}

void tst_Result::theEnglishAttentionReportIsOnePageWithoutAPlaceholder()
{
    Boxes boxes;
    const auto layOut = [this](const QString &path) {
        QFile file(QStringLiteral(KELMORAN_LANGUAGES "/") + path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_root->write(QStringLiteral("Languages/En/") + QFileInfo(path).fileName(), file.readAll());
    };
    layOut(QStringLiteral("en/Kelmoran_Task2_en.html"));
    layOut(QStringLiteral("kelmoran-report.css"));
    m_root->write(QStringLiteral("Parameters/assessor.txt"),
                  "Dr.;Muster;Erika;Institut für Sehen;Hauptstraße 1;12345;Musterstadt;Land\n");
    Result result;
    goResult2(result, false);
    QVERIFY(isFiled(result));
    const QString pdf = path(pdfName(2));
    const QString text = textOf(pdf);
    QCOMPARE(pagesOf(pdf), 1);
    QVERIFY2(!text.contains(QStringLiteral("v_")), qPrintable(text));
    for (const char *shown : {"Dr. Erika Muster",
                              "Institut für Sehen",
                              "Hauptstraße 1",
                              "12345",
                              "Musterstadt",
                              "Martin",
                              "Anne",
                              "30.12.1951",
                              "05.03.2024",
                              "14:07",
                              "07",
                              "04:32",
                              "101",
                              "412",
                              "2.0",
                              "-21",
                              "0.412",
                              "32",
                              "0.311",
                              "48",
                              "3.0",
                              "-10",
                              "0.105"})
        QVERIFY2(text.contains(QString::fromUtf8(shown)), shown);
}

int main(int argc, char *argv[])
{
    // The browser's sandbox can't be had by root.
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    const QApplication application(argc, argv);
    tst_Result test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Result.moc"
