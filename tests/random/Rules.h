#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class Program;
class TaskDialog;
class QWidget;

/// What an event may do, told from outside: by what is on the screen and what stands in the files.
class Rules
{
public:
    enum class Kind { Press, Release, Mouse, Close };

    struct Event
    {
        Kind kind = Kind::Press;
        int key = 0;
        bool repeated = false; ///< of a key that is held
        QWidget *to = nullptr; ///< the window that gets it
        bool forTask = false;  ///< a task has the screen, and nothing lies over it
        bool intoText = false; ///< the focus is in a line edit
    };

    explicit Rules(Program &program)
        : m_program(program)
    {
    }

    /// In front of the event.
    void look(const Event &event);
    /// Behind it. Returns what is wrong, empty if nothing is.
    QString check(const Event &event);
    /// Behind any step of time: the trials that have come.
    QString checkTrials();
    /// Behind an Escape that has ended a task, when the main window has had its beat.
    QString checkWayBack() const;

    int escapes() const { return m_escapes; }
    int answers() const { return m_answers; }

private:
    struct Sight
    {
        TaskDialog *task = nullptr;
        QString form;
        int stage = 0;
        bool logOpen = false;
        bool asked = false; ///< an answer is awaited, as far as can be seen
        bool holds = false; ///< "Continue" can be seen
        int trials = 0;
        int struck = 0;
        int paused = 0;
        int interrupted = 0;
        QString answer; ///< what the panel shows of it
        QString answerTime;
    };

    Sight sight(bool withLog) const;
    QString checkKey(const Event &event, const Sight &now);
    QString checkEscape(const Sight &now);
    QString checkPause(const Event &event, const Sight &now);
    QString checkStrike(const Event &event, const Sight &now);
    void noteAnswer(const Sight &now);
    bool runsBeside() const;

    Program &m_program;
    Sight m_before;
    const TaskDialog *m_task = nullptr; ///< the one of the last look
    int m_seen = 0;                     ///< trials that were looked at
    bool m_pending = false;             ///< a struck trial has no row yet
    bool m_beside = false; ///< a second chain may run beside the first: nothing is foretold
    QByteArray m_answer;   ///< the first answer of the trial; empty if there is none yet

    int m_escapes = 0;
    int m_answers = 0;
};
