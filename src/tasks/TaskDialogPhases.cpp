#include "TaskDialog.h"

#include "Messages.h"
#include "Result.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "patientsList.h"
#include "rows.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLoggingCategory>

#include <algorithm>
#include <array>

// The phases of a run: instruction, training, test, its end, and the way out.

Q_LOGGING_CATEGORY(lcTask, "kelmoran.task", QtCriticalMsg)

void TaskDialog::beginFirstPhase()
{
    switch (m_phase) {
    case 0:
        if (openTrialLog())
            showGoAtCentre();
        break;
    case 2:
        pointAtNext();
        beginTraining();
        break;
    default: // instruction, with training or without
        showMode(Instructions);
        m_instrStep = 0;
        beginInstruction();
        pointAtNext();
        m_widgets.next->show();
    }
}

void TaskDialog::showMode(Mode mode)
{
    m_widgets.mode->setText(m_calibration->isMode(mode));
    m_widgets.mode->show();
}

void TaskDialog::showGoAtCentre()
{
    m_widgets.go->setGeometry(centred(m_widgets.go->width(), m_widgets.go->height()));
    m_widgets.go->show();
    m_widgets.go->setFocus();
}

void TaskDialog::showGoAtCorner()
{
    m_widgets.go->move(m_centerX + m_layoutHalfW - m_widgets.go->width(),
                       m_centerY + m_layoutHalfH - m_widgets.go->height());
    m_widgets.go->show();
}

void TaskDialog::showTraining(const QString &title, int subtask, int number)
{
    hideStimuli();
    m_widgets.next->hide();
    setFocus(); // it went to another button when the last one hid
    showMode(Training);
    m_widgets.instruction->setText(title);
    m_widgets.instruction->show();
    m_subtask = subtask;
    setNumber(number);
    showGoAtCorner();
}

void TaskDialog::beginTest(int number)
{
    m_phase = 0;
    m_trialNo = 0;
    m_trialCount = 0;
    setNumber(number);
    m_widgets.mode->hide();
    hideStimuli();
    setCursor(Qt::ArrowCursor);
    pointAt(centre());
    showGoAtCentre();
    openTrialLog();
}

void TaskDialog::toPb_go()
{
    m_widgets.go->setDown(false);
    m_widgets.instruction->hide();
    m_instructing = false;
    m_widgets.go->hide();
    setFocus(); // answers must reach the dialog
    setCursor(Qt::BlankCursor);
    clearResult();
    m_refreshCounter.ask(); // the first trial asks again, and two answers make a grid
    m_trialNo = 0;
    m_trialCount = 0;
    resetBlock();
    m_widgets.no->setText(QStringLiteral("1"));
    m_cycleClock.start();
    m_validRows.clear();
    m_testClock.start();
    sequence0();
}

void TaskDialog::toPb_continue()
{
    m_widgets.continueButton->setDown(false);
    m_widgets.mode->hide();
    m_widgets.continueButton->hide();
    setFocus();
    continueTrial();
}

void TaskDialog::continueTrial()
{
    sequence0();
}

void TaskDialog::enterStage(int stage)
{
    m_stage = stage;
    Q_EMIT stageEntered(stage);
}

int TaskDialog::closingWait(int withoutFixedDuration)
{
    if (!m_fixedDuration)
        return withoutFixedDuration;
    m_lastDelay = m_cycle - m_cycleClock.elapsed();
    return m_lastDelay;
}

bool TaskDialog::openTrialLog()
{
    const QString error = resultFiles::openTrialLog(m_trialLog);
    if (error.isEmpty()) {
        noteTimingError(resultFiles::openTimingLog(m_timingLog));
        m_worstLate = 0;
        return true;
    }
    refuse(failedToOpen(QString::fromLatin1(resultFiles::trialLogName), error));
    return false;
}

void TaskDialog::refuse(const QString &text)
{
    hide();
    warnOnLight(text);
}

void TaskDialog::breakOff(const QString &text)
{
    stopTimers();
    m_stage = 0;
    writeMarker("interrupted");
    closeLogs();
    refuse(text);
    tellFailures();
}

QString TaskDialog::failedToOpen(const QString &name, const QString &error) const
{
    return translated("Failed to open %1\n%2").arg(name, error);
}

void TaskDialog::warnOnLight(const QString &text)
{
    // A box takes the style of its parent: on black nobody could read it.
    setStyleSheet(QStringLiteral("background-color:rgb(230, 230, 230)"));
    messages::warning(this, translated("Error"), text);
    setStyleSheet(QStringLiteral("background-color:rgb(0, 0, 0)"));
}

void TaskDialog::logTrial(const rows::TrialHead &head, const QByteArray &row, bool valid)
{
    noteLogError(resultFiles::appendRow(m_trialLog, row));
    logTiming(head);
    if (valid)
        m_validRows += row;
}

void TaskDialog::noteLogError(const QString &error)
{
    if (m_logError.isEmpty()) // told at the end: no box opens while a trial runs
        m_logError = error;
}

void TaskDialog::logTiming(const rows::TrialHead &head)
{
    const std::vector<rows::ShownInterval> &intervals = m_pictures.intervals();
    for (const rows::ShownInterval &interval : intervals)
        m_worstLate = std::max(m_worstLate, interval.late());
    const double refresh = m_pictures.refreshes() ? m_pictures.refreshes()->period() : 0;
    noteTimingError(resultFiles::appendRow(m_timingLog, rows::timing(head, intervals, refresh)));
}

void TaskDialog::noteTimingError(const QString &error)
{
    if (m_timingError.isEmpty())
        m_timingError = error;
}

void TaskDialog::closeLogs()
{
    noteLogError(resultFiles::closeLog(m_trialLog));
    noteTimingError(resultFiles::closeLog(m_timingLog));
}

/// A picture that came more than a frame of the screen too late is told under the two buttons.
void TaskDialog::tellLateness()
{
    constexpr std::array<double, 2> frames{1e9 / 60, 1e9 / 120}; // ns, by the screen's frequency
    const bool fast = m_calibration->isFrequency() == 1;
    const double late = double(m_worstLate);
    if (late <= frames[fast ? 1 : 0])
        return;
    constexpr double nanosecondsPerMillisecond = 1e6;
    m_lateNote->setText(tr("At worst a picture came %L1 ms late. Which trials: Results/timing.csv")
                            .arg(late / nanosecondsPerMillisecond, 0, 'f', 0));
    m_lateNote->show();
}

void TaskDialog::endBlock()
{
    stopTimers(); // of a chain that ran beside the one that has come to its end
    m_stage = 0;
    m_testTime = m_testClock.elapsed();
    m_duration = msToQtime(m_testTime);
    qCDebug(lcTask, "%d %d", m_trialNo, m_trialCount);
}

void TaskDialog::endTest()
{
    computeScores();

    const QString patient = m_calibration->isPatientName();
    const QString error =
        patientsList::rewritePatientLine(patient, {{m_taskCode + 3, sessionNumber()}});
    if (!error.isEmpty())
        m_failures.append({QString::fromLatin1(patientsList::name), error});
    resultFiles::createArchive(patient);
    m_failures += resultFiles::appendValidRows(m_validRows, m_validLog);
    m_failures += resultFiles::appendScores(fileNumber(), patient, scoreRow(), m_resultLog);
    seq_escape(true);
}

void TaskDialog::computeScores() {}

int TaskDialog::fileNumber() const
{
    return m_taskCode;
}

resultFiles::Failures TaskDialog::keepThresholds()
{
    return {};
}

void TaskDialog::tellFailures()
{
    if (!m_timingError.isEmpty())
        m_failures.prepend({QString::fromLatin1(resultFiles::timingLogName), m_timingError});
    m_timingError.clear();
    if (!m_logError.isEmpty())
        m_failures.prepend({QString::fromLatin1(resultFiles::trialLogName), m_logError});
    m_logError.clear();
    if (m_failures.isEmpty())
        return;
    QStringList lines;
    for (const auto &failure : qAsConst(m_failures))
        lines.append(failedToOpen(failure.fileName, failure.error));
    m_failures.clear();
    lines.removeDuplicates(); // the list of patients is rewritten twice
    refuse(lines.join(QStringLiteral("\n\n")));
}

void TaskDialog::seq_escape(bool toResults)
{
    stopTimers();
    m_stage = 0;
    followScreen();
    if (m_phase == 0)
        closeLogs();
    m_failures += keepThresholds();
    hideStimuli();
    hideGuides();
    setCursor(Qt::ArrowCursor);
    pointAt(centre());
    for (QWidget *widget :
         std::initializer_list<QWidget *>{m_widgets.continueButton, m_widgets.go, m_widgets.next,
                                          m_widgets.instruction, m_widgets.mode})
        widget->hide();
    m_widgets.results->setVisible(toResults);
    m_widgets.mainMenu->setVisible(toResults);
    if (toResults)
        tellLateness();
    tellFailures();
    if (toResults) {
        if (!isVisible()) { // the box has hidden it
            showFullScreen();
            activateWindow();
        }
        return;
    }
    m_calibration->setEscapeSeq(true);
    close();
}

void TaskDialog::toPb_results()
{
    m_widgets.results->setDown(false);
    leave(true);
    qCDebug(lcTask, "Results");
    close();
    m_result->raise(); // in front of the main window, which comes forward when the task goes
    m_result->activateWindow();
}

void TaskDialog::toPb_mainMenu()
{
    m_widgets.mainMenu->setDown(false);
    leave(false);
    qCDebug(lcTask, "%s", menuWord());
    close();
}

const char *TaskDialog::menuWord() const
{
    return "Main Menu";
}

void TaskDialog::leave(bool showReport)
{
    hide();
    setStyleSheet(QStringLiteral("background-color:rgb(240, 240, 240)"));
    goResult(showReport);
}

void TaskDialog::stopTimers()
{
    for (TaskTimer *timer : findChildren<TaskTimer *>(Qt::FindDirectChildrenOnly))
        timer->stop();
    m_pictures.forget();
}

void TaskDialog::hideStimuli()
{
    for (QWidget *stimulus : m_stimuli)
        stimulus->hide();
}
