#pragma once

#include "Books.h"
#include "DataRoot.h"
#include "Kelmoran.h"
#include "TaskTimer.h"
#include "VirtualTime.h"
#include "desktop.h"

#include <QList>
#include <QPointer>
#include <QSet>

#include <functional>
#include <memory>
#include <vector>

class Luck;
class QAbstractButton;
class TaskDialog;

/// The whole program in a data root of its own, in virtual time: it is started, and started again
/// when it has ended. Boxes are answered at random. What isn't as it must be goes to `fail`.
class Program : public QObject
{
    Q_OBJECT

public:
    using Fail = std::function<void(const QString &what)>;

    /// @param look called behind every event and every step of time
    Program(Luck &luck, Fail fail, std::function<void()> look);
    ~Program() override;

    /// A start of the program on what lies in the data root.
    void start();
    bool hasEnded() const { return m_ended; }

    Kelmoran &window() const { return *m_window; }
    Books &books() { return m_books; }
    const DataRoot &root() const { return m_root; }
    qint64 now() const { return m_time.nanoseconds() / 1'000'000; } ///< ms

    /// The task that has the screen; none if the main window has.
    TaskDialog *task() const;
    /// The timers of a task that are running.
    QList<TaskTimer *> running(const TaskDialog *task) const;
    /// One of the logs of trials is open.
    static bool logIsOpen();
    /// True for the run in hand: it was begun under "Fixed duration".
    bool fixedDuration() const { return m_fixedDuration; }

    /// Time goes by.
    void pass(int ms);
    /// Behind every event: the windows are in order, the files are looked at.
    void observe();

    /// Every visible window, the one in front first.
    QList<QWidget *> windows() const;
    void activate(QWidget *window);

    /// Whether a button was pressed by its shortcut, and will click in a moment.
    bool shortcutIsDown() const { return !m_pending.empty(); }
    int boxes() const { return m_boxes; }
    int starts() const { return m_starts; }
    int begun() const { return m_begun; }
    int spins() const { return m_spins; }
    int changes() const { return m_changes; } ///< of the stage, or of what is shown

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answerBox(const messages::Message &message);
    void noteStage();
    void giveUp();
    void noteShortcuts();
    void fireShortcuts();
    void writeRoot();
    void demand(bool kept, const QString &promise) const;

    /// A click by a shortcut is made a tenth of a second later, by a timer of the toolkit.
    struct Pending
    {
        QPointer<QAbstractButton> button;
        int timer = 0;
        qint64 due = 0; ///< ms
    };

    Luck &m_luck;
    const Fail m_fail;
    const std::function<void()> m_look;
    DataRoot m_root{DataRoot::Folders::Missing};
    VirtualTime m_time{VirtualTime::Mode::Stepped};
    Books m_books;
    messages::Handling m_boxHandling;
    desktop::Handling m_desktop;
    std::unique_ptr<Kelmoran> m_window;
    QList<TaskDialog *> m_tasks;
    QList<QList<TaskTimer *>> m_timers; ///< of each task
    QList<QWidget *> m_topLevels;
    QList<QAbstractButton *> m_shortcutButtons;
    std::vector<Pending> m_pending;
    const TaskDialog *m_shown = nullptr; ///< the task at the last look
    bool m_fixedDuration = false;
    bool m_ended = true;
    qint64 m_target = -1; ///< ms, the end of the step of time in hand; -1 between steps

    TaskTimer m_giveUp;
    qint64 m_lastStage = -1; ///< ms
    int m_sameMoment = 0;    ///< stages entered in one millisecond
    int m_spins = 0;

    int m_boxes = 0;
    int m_starts = 0;
    int m_begun = 0;
    int m_changes = 0;
};
