#pragma once

#include "ReportView.h"
#include "reportText.h"
#include "ui_Result.h"

#include <QDateTime>
#include <QDialog>
#include <QEventLoopLocker>
#include <QString>

#include <memory>

class QPrinter;
class TaskTimer;

/// The report of a finished test: shown on the screen, filed as a PDF in the patient's folder and,
/// if wished, printed on paper. Each task owns one.
class Result : public QDialog
{
    Q_OBJECT

public:
    explicit Result(QWidget *parent = nullptr);
    ~Result() override;

    /// Off: the template is read and filled, but neither laid out nor printed, and no browser
    /// process is started. It is on at first.
    void setPrinting(bool on);
    /// True from goResultN until the PDF is filed, and while a printer is served. The program stays
    /// alive until then.
    bool isBusy() const;

public Q_SLOTS:
    /// Fills and shows the report of a task and files its PDF half a second later. If `show` is
    /// false it is filed without being seen. The scores follow in the order of the report; numbers
    /// that are none show as "nan" or "inf".
    void goResult1(bool show, const QDateTime &stamp, int session, const QTime &duration,
                   int trials, int central, int errorsA, int reversalsA, int supA, int limitSupA,
                   int infA, int limitInfA, int peripheral, int errorsB, int reversalsB, int supB,
                   int limitSupB, int infB, int limitInfB, int dual, int errorsC, int reversalsC,
                   int supC, int limitSupC, int infC, int limitInfC);
    void goResult2(bool show, const QDateTime &stamp, int session, const QTime &duration,
                   int trials, double neutral, double errorA, double slopeA, double r2A,
                   double alerting, double errorB, double slopeB, double r2B, double orientation,
                   double errorC, double slopeC, double r2C);
    void goResult3(bool show, const QDateTime &stamp, int session, const QTime &duration,
                   int trials, double rt, double error, double slope, double r2,
                   double obliqueLessCardinal, double leftLessRight, double topLessBottom);
    void goResult4(bool show, const QDateTime &stamp, int session, const QTime &duration,
                   int trials, double averageF, double averageL, double error, double lSlope,
                   double lR2, double slope, double intercept, double r2);
    void toPb_printer();
    void to_timer1();
    void to_timer2();
    void to_timer3();
    void to_timer4();

Q_SIGNALS:
    /// A PDF has been filed, or it could not be; then a box has said so.
    void pdfFinished(const QString &path, bool ok);

protected:
    /// The system's print dialog. False if the assessor changed their mind.
    virtual bool choosePrinter(QPrinter &printer);

private:
    void goReport(int task, bool show, const reportText::Head &head,
                  const reportText::Values &scores, TaskTimer *timer);
    void fileReport(int task, bool show, const QString &session, TaskTimer *timer);
    void finishPdf(const QString &path, const QString &error);
    void tellPaper(const QString &path);
    void keepAlive();

    Ui::ResultClass m_ui;
    ReportView m_report;
    TaskTimer *m_timer1;
    TaskTimer *m_timer2;
    TaskTimer *m_timer3;
    TaskTimer *m_timer4;
    bool m_show1 = false;
    bool m_show2 = false;
    bool m_show3 = false;
    bool m_show4 = false;
    QString m_session1;
    QString m_session2;
    QString m_session3;
    QString m_session4;
    bool m_printing = true;
    std::unique_ptr<QEventLoopLocker> m_locker; ///< while a PDF is on its way
};
