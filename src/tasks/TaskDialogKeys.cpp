#include "TaskDialog.h"

#include "TimeSource.h"
#include "rows.h"

#include <QCloseEvent>
#include <QKeyEvent>

// The assessor's keys: Escape, P and E.

namespace {
/// The link of most chains in which the patient's answer is awaited.
constexpr int answerStage = 4;
} // namespace

void TaskDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->isAutoRepeat()) // an answer is a press, not a key that is held
        return;
    noteInput(*event);
    switch (event->key()) {
    case Qt::Key_Escape:
        interrupt();
        break;
    case Qt::Key_P:
        if (mayPause() && !m_fixedDuration)
            pause();
        break;
    case Qt::Key_E:
        if (awaitsAnswer() && !m_fixedDuration)
            markError();
        break;
    default:
        taskKey(event->key());
    }
}

void TaskDialog::noteInput(const QInputEvent &event)
{
    m_inputMoment = TimeSource::current().inputMoment(event.timestamp());
}

bool TaskDialog::awaitsAnswer() const
{
    return m_stage == answerStage;
}

bool TaskDialog::mayPause() const
{
    return awaitsAnswer();
}

TaskDialog::Mode TaskDialog::struckMode() const
{
    return Error;
}

void TaskDialog::taskKey(int) {}

void TaskDialog::hideGuides() {}

bool TaskDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (qobject_cast<QPushButton *>(watched)) {
        // By itself a button clicks a tenth of a second behind its shortcut, whatever has come
        // between, and one that is down takes Escape for itself.
        if (event->type() == QEvent::Shortcut)
            return clickForward();
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
            keyPressEvent(static_cast<QKeyEvent *>(event));
            return true;
        }
        return QDialog::eventFilter(watched, event);
    }
    // A line edit of the panel that still has the focus must not swallow an answer, nor the
    // shortcut C.
    if (event->type() == QEvent::KeyPress) {
        auto *press = static_cast<QKeyEvent *>(event);
        const int key = press->key();
        if (press->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
            return false; // Ctrl+C copies
        if (key == Qt::Key_C)
            return clickForward();
        if (m_stage != 0 && (key == Qt::Key_Space || key == Qt::Key_E || key == Qt::Key_P)) {
            keyPressEvent(press);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

bool TaskDialog::clickForward()
{
    for (QPushButton *button : {m_widgets.next, m_widgets.continueButton}) {
        if (button->isVisible()) {
            button->click();
            return true;
        }
    }
    return false;
}

void TaskDialog::showEvent(QShowEvent *event)
{
    TimeSource::current().setUrgent(true);
    QDialog::showEvent(event);
}

void TaskDialog::hideEvent(QHideEvent *event)
{
    TimeSource::current().setUrgent(false);
    QDialog::hideEvent(event);
}

void TaskDialog::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous()) // closed by the window manager
        interrupt();
    QDialog::closeEvent(event);
}

void TaskDialog::interrupt()
{
    writeMarker("interrupted");
    seq_escape(false);
}

void TaskDialog::pause()
{
    writeMarker("paused");
    m_paused = true;
    holdTrial(Pause);
}

void TaskDialog::markError()
{
    m_markedError = true;
    holdTrial(struckMode());
    endMarkedTrial();
}

void TaskDialog::holdTrial(Mode mode)
{
    stopTimers();
    hideStimuli();
    followScreen();
    placeStimuli(); // what the trial had moved goes back to its place
    showMode(mode);
    m_widgets.continueButton->show();
    setCursor(Qt::ArrowCursor);
    pointAt(centre());
}

void TaskDialog::writeMarker(const char *word)
{
    // Outside the test the log is closed, and there is nothing to mark.
    noteLogError(
        resultFiles::appendRow(m_trialLog, rows::marker(rows::identity(), QLatin1String(word))));
}
