#include "Result.h"

#include "Messages.h"
#include "ReportPage.h"
#include "SessionStore.h"
#include "TaskTimer.h"
#include "assessorRecord.h"
#include "dataFolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QTextStream>

Q_LOGGING_CATEGORY(lcResult, "kelmoran.result", QtCriticalMsg)

namespace {

constexpr int pdfDelay = 500;    // ms, for the page to be laid out
constexpr int dialogSpare = 100; // pixels of the screen's height that the dialog leaves free
constexpr int viewSpare = 140;

reportText::Head head(const QDateTime &stamp, const QString &session, const QTime &duration,
                      int trials)
{
    const SessionStore &store = sessionStore();
    return {store.firstName, store.lastName, store.dob, stamp, session, duration, trials};
}

QString dataRoot()
{
    QDir folder = QDir::current();
    folder.cdUp();
    return folder.absolutePath();
}

QString pdfPath(int task, const QString &session)
{
    const QString key = dataFolders::asFileName(sessionStore().patientName);
    return QStringLiteral("%1Output_T%2_S%3_%4.pdf")
        .arg(dataFolders::archiveOf(key), QString::number(task), session, key);
}

} // namespace

Result::Result(QWidget *parent)
    : QDialog(parent)
    , m_report(this)
    , m_timer1(new TaskTimer(this))
    , m_timer2(new TaskTimer(this))
    , m_timer3(new TaskTimer(this))
    , m_timer4(new TaskTimer(this))
{
    m_ui.setupUi(this);
    connect(m_ui.pb_printer, &QPushButton::clicked, this, &Result::toPb_printer);
    connect(m_timer1, &TaskTimer::timeout, this, &Result::to_timer1);
    connect(m_timer2, &TaskTimer::timeout, this, &Result::to_timer2);
    connect(m_timer3, &TaskTimer::timeout, this, &Result::to_timer3);
    connect(m_timer4, &TaskTimer::timeout, this, &Result::to_timer4);
    connect(&m_report, &ReportView::pdfFinished, this, &Result::finishPdf);
    connect(&m_report, &ReportView::paperFailed, this, &Result::tellPaper);
    connect(&m_report, &ReportView::changed, this, &Result::keepAlive);
}

Result::~Result() = default;

void Result::setPrinting(bool on)
{
    m_printing = on;
}

bool Result::isBusy() const
{
    const bool waiting = m_timer1->isActive() || m_timer2->isActive() || m_timer3->isActive() ||
                         m_timer4->isActive();
    return (waiting && m_printing) || m_report.isBusy();
}

void Result::goResult1(bool show, const QDateTime &stamp, int session, const QTime &duration,
                       int trials, int central, int errorsA, int reversalsA, int supA,
                       int limitSupA, int infA, int limitInfA, int peripheral, int errorsB,
                       int reversalsB, int supB, int limitSupB, int infB, int limitInfB, int dual,
                       int errorsC, int reversalsC, int supC, int limitSupC, int infC,
                       int limitInfC)
{
    m_show1 = show;
    m_session1 = reportText::sessionText(session);
    const QList<int> scores{central,    errorsA, reversalsA, supA, limitSupA, infA, limitInfA,
                            peripheral, errorsB, reversalsB, supB, limitSupB, infB, limitInfB,
                            dual,       errorsC, reversalsC, supC, limitSupC, infC, limitInfC};
    goReport(1, show, head(stamp, m_session1, duration, trials), reportText::scoreValues(scores),
             m_timer1);
}

void Result::goResult2(bool show, const QDateTime &stamp, int session, const QTime &duration,
                       int trials, double neutral, double errorA, double slopeA, double r2A,
                       double alerting, double errorB, double slopeB, double r2B,
                       double orientation, double errorC, double slopeC, double r2C)
{
    m_show2 = show;
    m_session2 = reportText::sessionText(session);
    const QList<double> scores{neutral, errorA, slopeA,      r2A,    alerting, errorB,
                               slopeB,  r2B,    orientation, errorC, slopeC,   r2C};
    goReport(2, show, head(stamp, m_session2, duration, trials), reportText::scoreValues(2, scores),
             m_timer2);
}

void Result::goResult3(bool show, const QDateTime &stamp, int session, const QTime &duration,
                       int trials, double rt, double error, double slope, double r2,
                       double obliqueLessCardinal, double leftLessRight, double topLessBottom)
{
    m_show3 = show;
    m_session3 = reportText::sessionText(session);
    const QList<double> scores{rt,           error, slope, r2, obliqueLessCardinal, leftLessRight,
                               topLessBottom};
    goReport(3, show, head(stamp, m_session3, duration, trials), reportText::scoreValues(3, scores),
             m_timer3);
}

void Result::goResult4(bool show, const QDateTime &stamp, int session, const QTime &duration,
                       int trials, double averageF, double averageL, double error, double lSlope,
                       double lR2, double slope, double intercept, double r2)
{
    m_show4 = show;
    m_session4 = reportText::sessionText(session);
    const QList<double> scores{averageF, averageL, error, lSlope, lR2, slope, intercept, r2};
    goReport(4, show, head(stamp, m_session4, duration, trials), reportText::scoreValues(4, scores),
             m_timer4);
}

void Result::goReport(int task, bool show, const reportText::Head &head,
                      const reportText::Values &scores, TaskTimer *timer)
{
    const int screenHeight = QGuiApplication::primaryScreen()->geometry().height();
    resize(width(), screenHeight - dialogSpare);
    if (m_printing) {
        QWidget &view = m_report.view();
        view.resize(view.width(), screenHeight - viewSpare);
        view.setStyleSheet(QStringLiteral("background-color:rgb(255, 255, 255)"));
    }
    if (show)
        setVisible(true);

    const QString path = reportText::templatePath(dataRoot(), task, sessionStore().language);
    qCDebug(lcResult, "%s", qPrintable(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        messages::information(this, tr("Unable to open file"), file.errorString());
        return;
    }
    QTextStream stream(&file);
    stream.setEncoding(QStringConverter::Utf8);
    const QString text = reportText::filled(
        stream.readAll(), reportText::headValues(head, assessorRecord::read()) + scores);
    if (m_printing)
        m_report.open(text, QUrl::fromLocalFile(path));
    timer->start(pdfDelay);
    keepAlive();
}

void Result::to_timer1()
{
    fileReport(1, m_show1, m_session1, m_timer1);
}

void Result::to_timer2()
{
    fileReport(2, m_show2, m_session2, m_timer2);
}

void Result::to_timer3()
{
    fileReport(3, m_show3, m_session3, m_timer3);
}

void Result::to_timer4()
{
    fileReport(4, m_show4, m_session4, m_timer4);
}

void Result::fileReport(int task, bool show, const QString &session, TaskTimer *timer)
{
    timer->stop();
    if (m_printing)
        m_report.filePdf(pdfPath(task, session));
    if (!show)
        close();
    keepAlive();
}

void Result::finishPdf(const QString &path, const QString &error)
{
    if (!error.isEmpty())
        messages::warning(this, tr("Error"),
                          tr("Failed to open %1\n%2").arg(QFileInfo(path).fileName(), error));
    Q_EMIT pdfFinished(path, error.isEmpty());
}

void Result::tellPaper(const QString &path)
{
    const QString error = ReportPage::tr("The report could not be printed.");
    messages::warning(this, tr("Error"),
                      path.isEmpty()
                          ? error
                          : tr("Failed to open %1\n%2").arg(QFileInfo(path).fileName(), error));
}

void Result::keepAlive()
{
    if (!isBusy())
        m_locker.reset();
    else if (!m_locker)
        m_locker = std::make_unique<QEventLoopLocker>();
}

void Result::toPb_printer()
{
    auto printer = std::make_unique<QPrinter>(QPrinter::ScreenResolution);
    if (!choosePrinter(*printer))
        return;
    m_report.print(std::move(printer));
    qCDebug(lcResult, "print");
}

bool Result::choosePrinter(QPrinter &printer)
{
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(tr("Print Document"));
    return dialog.exec() == QDialog::Accepted;
}
