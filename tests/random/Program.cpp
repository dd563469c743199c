#include "Program.h"

#include "Calibration.h"
#include "Devices.h"
#include "Luck.h"
#include "Result.h"
#include "SessionStore.h"
#include "TaskDialog.h"
#include "WebViewer.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

#include <dirent.h>
#include <unistd.h>

namespace {
constexpr int longestStep = 200; // ms that go by before the windows are looked at
} // namespace

Program::Program(Luck &luck, Fail fail, std::function<void()> look)
    : m_luck(luck)
    , m_fail(std::move(fail))
    , m_look(std::move(look))
    , m_books(QFileInfo(m_root.path(QString())).absoluteFilePath())
    , m_boxHandling([this](QWidget *, const messages::Message &message) { answerBox(message); })
    , m_desktop([this](const QUrl &) { return m_luck.falls(0.5); },
                [this](const desktop::Question &) {
                    return m_luck.falls(0.5) ? QString() : QStringLiteral("/nowhere/report.pdf");
                })
{
    writeRoot();
    connect(&m_giveUp, &TaskTimer::timeout, this, &Program::giveUp);
    qApp->installEventFilter(this);
}

Program::~Program()
{
    qApp->removeEventFilter(this);
}

/// A calibrated screen, two patients who can be tested without training, and two who can't; a
/// template for the reports of half of the tasks.
void Program::writeRoot()
{
    m_root.write(QStringLiteral("Parameters/screen.pix"), {"\0\0\1\x04\0\0\1\x05\0\0\0\1", 12});
    m_root.write(QStringLiteral("Parameters/patients_list.txt"),
                 "Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;283;483;850\r\n"
                 "Mr.;M\xc3\xbcller;Jos\xc3\xa9 \xc5\x81;29.02.1948;3;1;4;1;5;9;2;17;4633;33\r\n"
                 "Mr.;Berg;;03.04.1961;0;0;0;0;0;0;0;0;0;0\r\n"
                 ";;;01.01.1900;12;12;12;12;12;12;12;0;67;0\r\n");
    for (const int task : {1, 3})
        m_root.write(QStringLiteral("Languages/En/Kelmoran_Task%1.html").arg(task),
                     "<p>v_firstName v_lastName v_trials</p>");
}

void Program::start()
{
    m_pending.clear();
    m_shown = nullptr;
    m_window.reset();
    sessionStore() = SessionStore();
    m_books.runBegins();
    m_window = std::make_unique<Kelmoran>();
    m_ended = false;
    ++m_starts;

    m_tasks = m_window->findChildren<TaskDialog *>();
    m_timers.clear();
    m_topLevels = {m_window.get()};
    for (TaskDialog *task : std::as_const(m_tasks)) {
        m_timers.append(task->findChildren<TaskTimer *>(QString(), Qt::FindDirectChildrenOnly));
        task->result().setPrinting(false);
        // The print dialog is the toolkit's, with an event loop of its own.
        task->result().findChild<QPushButton *>(QStringLiteral("pb_printer"))->hide();
        m_topLevels.append(&task->result());
        connect(task, &TaskDialog::stageEntered, this, &Program::noteStage);
        connect(task->findChild<QPushButton *>(QStringLiteral("pb_go")), &QPushButton::clicked,
                this, [this] { m_books.blockBegins(); });
    }
    m_window->webViewer().setLayingOut(false);
    m_topLevels.append(&m_window->webViewer());
    for (QWidget *dialog : m_window->findChildren<QWidget *>()) {
        if (dialog->isWindow() && qobject_cast<QDialog *>(dialog))
            m_topLevels.append(dialog);
    }
    m_shortcutButtons.clear();
    for (QAbstractButton *button : m_window->findChildren<QAbstractButton *>()) {
        if (!button->shortcut().isEmpty())
            m_shortcutButtons.append(button);
    }
    m_window->show();
    devices::settle();
    observe();
}

/// With waits of 0 ms the trials follow each other without an end, and without a moment of virtual
/// time: the assessor presses Escape.
void Program::noteStage()
{
    constexpr int most = 2000;
    ++m_changes;
    m_sameMoment = now() == m_lastStage ? m_sameMoment + 1 : 0;
    m_lastStage = now();
    if (m_sameMoment == most)
        m_giveUp.start(0);
}

void Program::giveUp()
{
    m_giveUp.stop();
    if (TaskDialog *shown = task()) {
        ++m_spins;
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(shown, &escape);
        demand(!shown->isVisible(), QStringLiteral("Escape ends trials without a wait"));
    }
}

TaskDialog *Program::task() const
{
    const auto shown = std::find_if(m_tasks.cbegin(), m_tasks.cend(),
                                    [](const TaskDialog *task) { return task->isVisible(); });
    return shown == m_tasks.cend() ? nullptr : *shown;
}

QList<TaskTimer *> Program::running(const TaskDialog *task) const
{
    QList<TaskTimer *> timers;
    const qsizetype number = m_tasks.indexOf(task);
    if (number < 0)
        return timers;
    for (TaskTimer *timer : m_timers.at(number)) {
        if (timer->isActive())
            timers.append(timer);
    }
    return timers;
}

bool Program::logIsOpen()
{
    DIR *descriptors = ::opendir("/proc/self/fd");
    if (!descriptors)
        qFatal("no list of the open files");
    bool open = false;
    while (const dirent *entry = ::readdir(descriptors)) {
        char name[512] = {};
        const auto length = ::readlinkat(::dirfd(descriptors), entry->d_name, name, sizeof name);
        const QByteArray file(name, std::max<qsizetype>(length, 0));
        open = open || file.endsWith("/Results/output.csv") || file.endsWith("/Results/timing.csv");
    }
    ::closedir(descriptors);
    return open;
}

void Program::pass(int ms)
{
    const qint64 end = now() + ms;
    do {
        qint64 next = std::min(end, now() + longestStep);
        for (const Pending &pending : m_pending)
            next = std::min(next, std::max(pending.due, now()));
        m_target = next;
        m_time.advance(int(next - now()));
        m_target = -1;
        devices::settle();
        fireShortcuts();
        observe();
    } while (now() < end && !m_ended);
}

void Program::answerBox(const messages::Message &message)
{
    demand(!message.title.isEmpty() && !message.text.isEmpty(), QStringLiteral("a box has a text"));
    ++m_boxes;
    ++m_changes;
    // While a box is open the timers go on beating. Inside a step of time no further than its end.
    const int most = m_target < 0 ? 3000 : int(m_target - now());
    if (most > 0 && m_luck.falls(0.7))
        m_time.advance(m_luck.below(most) + 1);
    devices::settle();
}

void Program::noteShortcuts()
{
    for (QAbstractButton *button : std::as_const(m_shortcutButtons)) {
        if (!button->isDown())
            continue;
        const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(button);
        for (const auto &timer : timers) {
            const bool known =
                std::any_of(m_pending.cbegin(), m_pending.cend(), [&](const Pending &p) {
                    return p.button == button && p.timer == timer.timerId;
                });
            if (!known)
                m_pending.push_back({button, timer.timerId, now() + timer.interval});
        }
    }
}

void Program::fireShortcuts()
{
    const auto isDue = [this](const Pending &pending) { return pending.due <= now(); };
    std::vector<Pending> due;
    std::copy_if(m_pending.cbegin(), m_pending.cend(), std::back_inserter(due), isDue);
    std::erase_if(m_pending, isDue);
    for (const Pending &pending : due) {
        if (!pending.button)
            continue;
        QTimerEvent event(pending.timer);
        QCoreApplication::sendEvent(pending.button, &event);
        devices::settle();
    }
}

QList<QWidget *> Program::windows() const
{
    QList<QWidget *> shown;
    for (QWidget *window : m_topLevels) {
        if (window->isVisible())
            shown.append(window);
    }
    // A task covers the screen, a dialog its parent.
    std::stable_sort(shown.begin(), shown.end(), [this](const QWidget *a, const QWidget *b) {
        const auto height = [this](const QWidget *w) {
            if (qobject_cast<const TaskDialog *>(w))
                return 0;
            return w == m_window.get() ? 2 : 1;
        };
        return height(a) < height(b);
    });
    return shown;
}

void Program::activate(QWidget *window)
{
    window->raise();
    window->activateWindow();
    devices::settle();
}

void Program::observe()
{
    if (m_ended)
        return;
    // Every other window goes with the main window, also a task.
    m_ended = !m_window->isVisible();
    noteShortcuts();
    TaskDialog *shown = task();
    demand(std::count_if(m_tasks.cbegin(), m_tasks.cend(),
                         [](const TaskDialog *task) { return task->isVisible(); }) <= 1,
           QStringLiteral("one task at a time has the screen"));
    if (shown && shown != m_shown) {
        ++m_begun;
        m_books.runBegins();
        m_fixedDuration =
            m_window->findChild<QCheckBox *>(QStringLiteral("cb_fixedDuration"))->isChecked() &&
            m_tasks.indexOf(shown) >= 0 && shown->objectName() != QLatin1String("Test4Class");
    }
    m_books.chosen(sessionStore().patientName);
    if (sessionStore().newPatient)
        m_books.expectRegistration();
    const QString wrong = m_books.check();
    demand(wrong.isEmpty(), wrong);
    m_look();
    if (shown) {
        const auto *number = shown->findChild<QLineEdit *>(QStringLiteral("le_number"));
        if (!number->isModified())
            m_books.wants(number->text().toInt());
    } else if (m_shown && !m_ended) {
        demand(!logIsOpen(), QStringLiteral("no log is open when no task is on the screen"));
    }
    for (const TaskDialog *hidden : std::as_const(m_tasks))
        demand(m_ended || hidden == shown || running(hidden).isEmpty(),
               QStringLiteral("no chain runs when its task isn't on the screen"));
    m_shown = shown;
    if (!m_ended)
        demand(std::any_of(m_window->children().cbegin(), m_window->children().cend(),
                           [](const QObject *child) {
                               const auto *timer = qobject_cast<const TaskTimer *>(child);
                               return timer && timer->isActive();
                           }),
               QStringLiteral("the main window beats as long as it is there"));

    // The window manager gives the focus to what is in front when a window has gone.
    const QList<QWidget *> all = windows();
    QWidget *active = QApplication::activeWindow();
    if (!all.isEmpty() && !QApplication::activePopupWidget() && (!active || !active->isVisible()))
        activate(all.constFirst());
}

bool Program::eventFilter(QObject *watched, QEvent *event)
{
    if (watched->isWidgetType() && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        ++m_changes;
    // The menu of a date has an event loop of its own, in which nobody would play on.
    return event->type() == QEvent::ContextMenu && qobject_cast<QAbstractSpinBox *>(watched);
}

void Program::demand(bool kept, const QString &promise) const
{
    if (!kept)
        m_fail(promise);
}
