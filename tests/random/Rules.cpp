#include "Rules.h"

#include "Program.h"
#include "SessionStore.h"
#include "TaskDialog.h"
#include "TaskTimer.h"
#include "patientsList.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

bool shows(const QWidget *window, const char *name)
{
    const auto *widget = window->findChild<QWidget *>(QLatin1String(name));
    return widget && widget->isVisible();
}

/// What the program has written into a line edit; nothing if a hand has written there since.
QString textOf(const QWidget *window, const char *name)
{
    const auto *edit = window->findChild<QLineEdit *>(QLatin1String(name));
    return edit && !edit->isModified() ? edit->text() : QString();
}

constexpr char vision[] = "Test1Class";
constexpr char attention[] = "Test2Class";
constexpr char movement[] = "Test3Class";
constexpr char memory[] = "Test4Class";

} // namespace

Rules::Sight Rules::sight(bool withLog) const
{
    Sight seen;
    const Books &books = m_program.books();
    seen.trials = books.trials();
    seen.struck = books.struck();
    seen.paused = books.paused();
    seen.interrupted = books.interrupted();
    seen.task = m_program.task();
    if (!seen.task)
        return seen;
    seen.form = seen.task->objectName();
    seen.stage = seen.task->stage();
    seen.logOpen = withLog && Program::logIsOpen();
    seen.holds = shows(seen.task, "pb_continue");
    seen.answer = textOf(seen.task, "le_result");
    seen.answerTime = textOf(seen.task, "le_elapsed");
    if (seen.form == QLatin1String(vision))
        seen.asked =
            seen.stage == 5 && (shows(seen.task, "pb_uniform") || shows(seen.task, "pb_pos0"));
    else if (seen.form == QLatin1String(movement))
        seen.asked = seen.stage == 5 && shows(seen.task, "pb_center");
    else
        seen.asked = seen.stage == 4;
    return seen;
}

void Rules::look(const Event &event)
{
    const bool withLog =
        event.kind == Kind::Close ||
        (event.kind == Kind::Press &&
         (event.key == Qt::Key_Escape || event.key == Qt::Key_P || event.key == Qt::Key_E));
    m_before = sight(withLog);
    if (m_before.task != m_task) {
        m_task = m_before.task;
        m_pending = false;
        m_beside = false;
        m_answer.clear();
    }
}

QString Rules::check(const Event &event)
{
    const Sight now = sight(false);
    if (!m_before.task || !event.forTask)
        return {};
    if (event.kind == Kind::Close && event.to == m_before.task)
        return checkEscape(now);
    if (event.kind == Kind::Press) {
        const QString wrong = checkKey(event, now);
        if (!wrong.isEmpty())
            return wrong;
    }
    const bool strikes = event.kind == Kind::Press && event.key == Qt::Key_E;
    const bool marks =
        event.kind == Kind::Press && (event.key == Qt::Key_P || event.key == Qt::Key_Escape);
    if (!strikes && now.trials != m_before.trials)
        return QStringLiteral("an event that strikes no trial has written a row");
    if (!marks && now.paused + now.interrupted != m_before.paused + m_before.interrupted)
        return QStringLiteral("an event that neither pauses nor ends a test has written a marker");
    if (event.kind == Kind::Release && event.key != Qt::Key_Space && event.key != Qt::Key_Select &&
        (now.stage != m_before.stage || now.task != m_before.task))
        return QStringLiteral("a key that is let go does nothing");
    noteAnswer(now);
    return {};
}

QString Rules::checkKey(const Event &event, const Sight &now)
{
    if (event.repeated && (now.stage != m_before.stage || now.task != m_before.task ||
                           now.trials != m_before.trials || now.paused != m_before.paused ||
                           now.interrupted != m_before.interrupted || now.holds != m_before.holds))
        return QStringLiteral("a key that is held does nothing");
    if (event.repeated)
        return {};
    switch (event.key) {
    case Qt::Key_Escape:
        return checkEscape(now);
    case Qt::Key_P:
        return checkPause(event, now);
    case Qt::Key_E:
        return checkStrike(event, now);
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_C:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return {};
    default:
        if (now.stage != m_before.stage || now.task != m_before.task || now.holds != m_before.holds)
            return QStringLiteral("a key that has no meaning does nothing");
        return {};
    }
}

QString Rules::checkEscape(const Sight &now)
{
    ++m_escapes;
    if (now.task == m_before.task)
        return QStringLiteral("Escape ends the task");
    if (now.interrupted - m_before.interrupted != (m_before.logOpen ? 1 : 0))
        return QStringLiteral("Escape leaves one marker in a test, and none elsewhere");
    if (now.trials != m_before.trials || now.paused != m_before.paused)
        return QStringLiteral("Escape leaves no row of a trial");
    m_pending = false;
    m_answer.clear();
    return {};
}

QString Rules::checkPause(const Event &event, const Sight &now)
{
    const int marked = now.paused - m_before.paused;
    const bool timed = m_program.fixedDuration();
    if (now.task != m_before.task || now.interrupted != m_before.interrupted)
        return QStringLiteral("P ends nothing");
    if (marked < 0 || marked > (m_before.logOpen && !timed ? 1 : 0))
        return QStringLiteral("P leaves one marker, in a test without \"Fixed duration\"");
    if (timed && (now.stage != m_before.stage || now.holds != m_before.holds))
        return QStringLiteral("P does nothing under \"Fixed duration\"");
    if (marked == 1) {
        m_answer.clear();
        m_pending = false;
        if (!now.holds)
            return QStringLiteral("a paused trial waits at \"Continue\"");
        if (!m_program.running(now.task).isEmpty())
            return QStringLiteral("a pause stops the chain");
    } else if (m_before.asked && m_before.logOpen && !timed && !event.intoText) {
        return QStringLiteral("P pauses a trial that awaits its answer");
    }
    return {};
}

QString Rules::checkStrike(const Event &event, const Sight &now)
{
    const int rows = now.trials - m_before.trials;
    const bool timed = m_program.fixedDuration();
    if (m_before.task != now.task)
        return {}; // the last trial of a test that ends with a box
    if (rows > 1 || (rows == 1 && !m_program.books().last().struck))
        return QStringLiteral("E files at most one row, of a struck trial");
    if (timed && (rows != 0 || now.stage != m_before.stage || now.holds != m_before.holds))
        return QStringLiteral("E does nothing under \"Fixed duration\"");
    const bool atOnce =
        m_before.form == QLatin1String(vision) || m_before.form == QLatin1String(memory);
    if (atOnce && m_before.asked && m_before.logOpen && !timed && !event.intoText && rows != 1)
        return QStringLiteral("E strikes a trial that awaits its answer");
    if (!atOnce && rows != 0)
        return QStringLiteral("the row of a struck trial comes when the trial is closed");
    if (rows == 1)
        m_answer.clear();
    if (!atOnce && m_before.asked && !timed && !event.intoText) {
        if (!now.holds)
            return QStringLiteral("a struck trial waits at \"Continue\"");
        m_pending = m_before.logOpen;
        m_answer.clear();
    }
    return {};
}

/// The first answer of a trial of the attention task is what the panel shows when the target has
/// gone; of the movement task, the time of its Space.
void Rules::noteAnswer(const Sight &now)
{
    if (now.task != m_before.task || !m_answer.isEmpty() || m_pending)
        return;
    if (now.form == QLatin1String(attention) && now.answer != m_before.answer)
        m_answer = now.answer.toLatin1();
    else if (now.form == QLatin1String(movement) && now.answerTime != m_before.answerTime)
        m_answer = now.answerTime.toLatin1();
    if (!m_answer.isEmpty() && !Program::logIsOpen())
        m_answer.clear(); // of a training
    m_answers += m_answer.isEmpty() ? 0 : 1;
}

/// "Continue" behind a strike can start a trial while the struck one is still being closed, and an
/// answer to a paused trial can come within the next one: then two chains run side by side.
bool Rules::runsBeside() const
{
    const TaskDialog *task = m_program.task();
    if (!task)
        return false;
    // At the movement task's pad only its limit runs, if there is one.
    qsizetype most = 1;
    if (task->objectName() == QLatin1String(movement)) {
        constexpr int padStage = 5;
        if (task->stage() < padStage)
            return false;
        most = task->stage() == padStage && !m_program.fixedDuration() ? 0 : 1;
    } else if (task->objectName() != QLatin1String(attention)) {
        return false;
    }
    return m_program.running(task).size() > most;
}

QString Rules::checkTrials()
{
    const Books &books = m_program.books();
    m_beside = m_beside || runsBeside();
    if (books.trials() == m_seen)
        return {};
    const bool one = books.trials() == m_seen + 1;
    m_seen = books.trials();
    const Books::Trial &last = books.last();
    QString wrong;
    if (one && m_pending && !m_beside && !last.struck)
        wrong = QStringLiteral("a struck trial has left no struck row");
    if (one && !m_pending && !m_beside && !m_answer.isEmpty() && !last.struck &&
        last.result != m_answer)
        wrong = QStringLiteral("the first answer was %1, the row has %2")
                    .arg(QString::fromLatin1(m_answer), QString::fromLatin1(last.result));
    m_pending = false;
    m_answer.clear();
    return wrong;
}

QString Rules::checkWayBack() const
{
    if (m_program.hasEnded())
        return {};
    if (m_program.task())
        return QStringLiteral("a task has come back behind an Escape");
    const SessionStore &store = sessionStore();
    if (store.escapeSeq)
        return QStringLiteral("the session number is read back within a beat");
    const QStringList fields = m_program.books().patient(store.patientName);
    for (int i = 0; i < patientsList::sessionCount; ++i) {
        const QString shown =
            textOf(&m_program.window(), qPrintable(QStringLiteral("le_session%1").arg(i + 1)));
        if (shown.toInt() != store.sessionNb.at(std::size_t(i)) ||
            shown != fields.value(patientsList::SessionT1 + i))
            return QStringLiteral("session %1 shows %2 behind an Escape, and the list has %3")
                .arg(QString::number(i + 1), shown, fields.value(patientsList::SessionT1 + i));
    }
    return {};
}
