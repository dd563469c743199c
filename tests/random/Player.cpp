#include "Player.h"

#include "Chronicle.h"
#include "Luck.h"
#include "SessionStore.h"
#include "TaskDialog.h"
#include "TaskTimer.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>

#include <algorithm>
#include <array>

namespace {

constexpr int mostPatients = 25; // of a data root: the list is read often

QAbstractButton *usable(const QWidget *window, const char *name)
{
    auto *button = window->findChild<QAbstractButton *>(QLatin1String(name));
    return button && button->isVisible() && button->isEnabled() ? button : nullptr;
}

template <typename Widget>
QList<Widget *> visible(const QWidget *window)
{
    QList<Widget *> found = window->findChildren<Widget *>();
    found.removeIf([window](const Widget *widget) {
        return !widget->isVisible() || widget->window() != window;
    });
    return found;
}

/// Typed in an instant, or pasted: all at once.
constexpr std::array oddTexts{"",
                              "0",
                              "1",
                              "2",
                              "3",
                              "-1",
                              "-5",
                              "5",
                              "abc",
                              "1,5",
                              "1.5",
                              "1,10",
                              "9999",
                              "60",
                              "2147483647",
                              "-2147483648",
                              "2147483648",
                              "1e9",
                              "1e300",
                              "-1e300",
                              "nan",
                              "inf",
                              "-inf",
                              " 7 ",
                              "0x10",
                              "1 000",
                              "%1",
                              ";",
                              "400",
                              "100",
                              "99999",
                              "0.0001",
                              "1234567890123456789012345678901234567890",
                              "\xd9\xa3",
                              "\xe2\x88\x92"
                              "5",
                              "'\"<b>&amp;"};

constexpr std::array actions{"actionAdd_patient",        "actionAssessor",
                             "actionPreferences",        "actionAbout_Kelmoran",
                             "actionPrevious_reports",   "actionInstruction_book",
                             "actionVideo_instructions", "actionPublications"};

} // namespace

Player::Player(Luck &luck, Program::Fail fail)
    : m_luck(luck)
    , m_fail(std::move(fail))
{
}

Player::~Player() = default;

void Player::beginRoot()
{
    if (m_program) {
        m_fail(m_program->books().checkTree());
        m_counts[QStringLiteral("boxes")] += m_program->boxes();
        m_counts[QStringLiteral("spins")] += m_program->spins();
        m_counts[QStringLiteral("starts")] += m_program->starts();
        m_counts[QStringLiteral("tests begun")] += m_program->begun();
        const Books &books = m_program->books();
        m_counts[QStringLiteral("rows")] += books.trials();
        m_counts[QStringLiteral("struck rows")] += books.struck();
        m_counts[QStringLiteral("paused")] += books.paused();
        m_counts[QStringLiteral("interrupted")] += books.interrupted();
        m_counts[QStringLiteral("registered")] += books.registered();
        const QMap<int, int> &finished = books.finishedByTask();
        for (auto it = finished.cbegin(); it != finished.cend(); ++it)
            m_counts[QStringLiteral("finished task %1").arg(it.key())] += it.value();
        m_counts[QStringLiteral("escapes")] += m_rules->escapes();
        m_counts[QStringLiteral("first answers")] += m_rules->answers();
        m_counts[QStringLiteral("data roots")] += 1;
    }
    m_rules.reset();
    m_program.reset();
}

void Player::play(int events)
{
    m_wanted = m_events + events;
    while (m_events < m_wanted) {
        if (!m_program || m_rootLeft <= 0) {
            beginRoot();
            m_program = std::make_unique<Program>(m_luck, m_fail,
                                                  [this] { m_fail(m_rules->checkTrials()); });
            m_rules = std::make_unique<Rules>(*m_program);
            m_rootLeft = m_luck.between(2000, 20000);
            m_program->start();
            m_program->pass(600);
        }
        if (m_program->hasEnded()) {
            chronicle::note(QStringLiteral("the program starts again"));
            m_fail(m_program->books().checkTree());
            m_program->start();
            m_program->pass(m_luck.between(0, 1000));
        }
        const int before = m_events;
        step();
        m_rootLeft -= m_events - before;
        m_moodLeft -= m_events - before;
    }
    beginRoot();
}

void Player::step()
{
    if (m_moodLeft <= 0) {
        m_mood = std::array{Mood::Helpful, Mood::Nervous, Mood::Wild}.at(
            std::size_t(m_luck.weighted({6, 4, 3})));
        m_moodLeft = m_luck.between(100, 1500);
        m_fail(m_program->books().checkTree());
    }
    const int chance = m_mood == Mood::Helpful ? 900 : m_mood == Mood::Nervous ? 450 : 100;
    if (m_luck.below(1000) < chance) {
        help();
    } else {
        const int closes = m_mood == Mood::Helpful ? 0 : 1;
        switch (m_luck.weighted({40, 40, 12, closes, 2, 6})) {
        case 0:
            anyKey();
            break;
        case 1:
            anyMouse();
            break;
        case 2:
            anyEdit();
            break;
        case 3:
            anyClose();
            break;
        case 4:
            anyWindow();
            break;
        default:
            anyEntry();
        }
    }
    if (m_escaped)
        checkEscape();
}

/// Behind an Escape the main window comes back, and a further test can be begun.
void Player::checkEscape()
{
    constexpr int beat = 200; // ms of the main window
    m_escaped = false;
    if (m_luck.falls(0.4))
        return;
    m_program->pass(beat);
    m_fail(m_rules->checkWayBack());
    if (m_program->hasEnded() || m_luck.falls(0.5))
        return;
    m_program->activate(&m_program->window());
    if (QApplication::activePopupWidget())
        return;
    QWidget *button = usable(&m_program->window(), "pb_test2");
    if (!button) {
        m_fail(QStringLiteral("a test button can be used behind a test"));
        return;
    }
    click(button);
    if (!m_program->task())
        m_fail(QStringLiteral("a further test can be begun behind an Escape"));
}

// What the screen asks for.

void Player::help()
{
    if (QWidget *popup = QApplication::activePopupWidget()) {
        strike(popup->inherits("QMenu") && m_luck.falls(0.1) ? Qt::Key_Return : Qt::Key_Escape);
        return;
    }
    if (m_program->changes() != m_changes) {
        m_changes = m_program->changes();
        m_futile = 0;
    }
    constexpr int patience = 150;
    constexpr int tooLong = 60'000; // ms, of a wait that the panel was told
    const auto timers = m_program->running(m_program->task());
    if (std::any_of(timers.cbegin(), timers.cend(),
                    [](const TaskTimer *timer) { return timer->remainingTime() > tooLong; })) {
        strike(Qt::Key_Escape);
        return;
    }
    if (++m_futile > patience) {
        QStringList shown;
        for (const QWidget *window : m_program->windows())
            shown.append(window->objectName());
        m_fail(QStringLiteral("nothing that the screen asks for changes anything any more: %1")
                   .arg(shown.join(u' ')));
        return;
    }
    if (TaskDialog *task = m_program->task()) {
        if (!task->isActiveWindow())
            m_program->activate(task);
        helpInTask(task);
    } else {
        helpAtDesk();
    }
}

void Player::helpInTask(QWidget *task)
{
    if (QAbstractButton *menu = usable(task, "pb_mainMenu"))
        click(m_luck.falls(0.3) ? usable(task, "pb_results") : menu);
    else if (QAbstractButton *next = usable(task, "pb_next"))
        m_luck.falls(0.3) ? strike(Qt::Key_C, QStringLiteral("c")) : click(next);
    else if (QAbstractButton *onwards = usable(task, "pb_continue"))
        m_luck.falls(0.3) ? strike(Qt::Key_C, QStringLiteral("c")) : click(onwards);
    else if (QAbstractButton *go = usable(task, "pb_go"))
        begin(task, go);
    else
        answer(task);
    // Most often on to the next moment of the chain.
    if (m_program->task() == task && m_luck.falls(0.7))
        m_program->pass(untilTheMoment());
}

void Player::begin(QWidget *task, QAbstractButton *go)
{
    auto *number = task->findChild<QLineEdit *>(QStringLiteral("le_number"));
    if (number->isVisible() && m_luck.falls(0.6)) {
        type(number, QString::number(m_luck.between(1, 6)));
        strike(Qt::Key_Return);
    }
    if (go->isVisible() && m_program->task() == task)
        click(go);
}

void Player::answer(QWidget *task)
{
    const QString form = task->objectName();
    const int stage = m_program->task()->stage();
    if (form == QLatin1String("Test1Class") ||
        (form == QLatin1String("Test3Class") && stage == 5)) {
        const auto buttons = visible<QAbstractButton>(task);
        if (form == QLatin1String("Test3Class") && m_luck.falls(0.5))
            strike(m_luck.pick(std::array{Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}));
        else if (!buttons.isEmpty())
            click(m_luck.pick(buttons));
    } else if (form == QLatin1String("Test4Class")) {
        if (stage == 4)
            clickAt(task, {m_luck.below(task->width()), m_luck.below(task->height())},
                    Qt::LeftButton);
    } else if (stage >= 3) {
        // Fast and slow ones, and some that come in the wrong link.
        m_program->pass(m_luck.between(0, m_luck.falls(0.05) ? 6000 : 900));
        if (m_program->task() == task)
            strike(Qt::Key_Space, QStringLiteral(" "));
    }
    if (m_program->task() == task)
        m_program->pass(untilTheMoment());
}

void Player::helpAtDesk()
{
    QWidget *dialog = front();
    if (!dialog)
        return;
    const QString form = dialog->objectName();
    if (dialog != &m_program->window() && !dialog->isActiveWindow())
        m_program->activate(dialog);
    if (form == QLatin1String("CalibrationClass"))
        return fillCalibration(dialog);
    if (form == QLatin1String("NewPatientClass"))
        return fillPatient(dialog);
    if (form == QLatin1String("AssessorClass"))
        return fillAssessor(dialog);
    if (form == QLatin1String("PreferencesClass"))
        return fillPreferences(dialog);
    if (dialog != &m_program->window()) { // a report or a document
        strike(Qt::Key_Escape);
        return;
    }
    m_program->activate(dialog);
    const auto *list = dialog->findChild<QComboBox *>(QStringLiteral("cob_patientName"));
    if (!list->isEnabled())
        m_program->pass(500);
    else if (list->currentIndex() < 0 || m_luck.falls(0.1))
        choosePatient();
    else if (m_luck.falls(0.08))
        trigger(m_luck.pick(actions));
    else if (m_luck.falls(0.5))
        tickBoxes();
    else
        startTest();
}

void Player::fillCalibration(QWidget *dialog)
{
    const auto edits = visible<QLineEdit>(dialog);
    if (edits.isEmpty()) {
        strike(Qt::Key_Escape);
        return;
    }
    const bool odd = m_luck.falls(0.3);
    type(edits.constFirst(), odd ? drawnText() : QString::number(m_luck.between(100, 400)));
    strike(Qt::Key_Return);
}

void Player::fillPatient(QWidget *dialog)
{
    auto *gender = dialog->findChild<QComboBox *>(QStringLiteral("cob_genre"));
    auto *last = dialog->findChild<QLineEdit *>(QStringLiteral("le_lastName"));
    auto *first = dialog->findChild<QLineEdit *>(QStringLiteral("le_firstName"));
    auto *date = dialog->findChild<QDateEdit *>(QStringLiteral("de_dateOfBirth"));
    if (m_program->books().patients() >= mostPatients || m_luck.falls(0.2)) {
        click(usable(dialog, "pb_cancel"));
        return;
    }
    gender->setFocus();
    strike(Qt::Key_Down);
    constexpr std::array names{"Doe", "Berg", "M\xc3\xbcller", "\xce\xa9", "", "..", "O'Neil"};
    type(last, m_luck.falls(0.2) ? drawnText() : QString::fromUtf8(m_luck.pick(names)));
    type(first, m_luck.falls(0.2) ? drawnText()
                                  : QStringLiteral("N%1").arg(m_program->books().patients()));
    date->setDate(QDate(m_luck.between(1901, 2010), m_luck.between(1, 12), m_luck.between(1, 28)));
    if (QAbstractButton *ok = usable(dialog, "pb_ok"))
        click(ok);
}

void Player::fillAssessor(QWidget *dialog)
{
    const auto edits = visible<QLineEdit>(dialog);
    if (!edits.isEmpty())
        type(m_luck.pick(edits), drawnText());
    if (QAbstractButton *button = usable(dialog, m_luck.falls(0.7) ? "pb_ok" : "pb_cancel"))
        click(button);
}

void Player::fillPreferences(QWidget *dialog)
{
    dialog->findChild<QComboBox *>(QStringLiteral("cob_screenFreq"))->setFocus();
    strike(m_luck.falls(0.5) ? Qt::Key_Down : Qt::Key_Up);
    constexpr std::array buttons{"pb_ok", "pb_cancel", "pb_reCalibrate"};
    if (QAbstractButton *button = usable(dialog, m_luck.pick(buttons)))
        click(button);
}

/// By the keyboard: the list of the box is a window of the toolkit that goes by its own clock.
void Player::choosePatient()
{
    auto *list = m_program->window().findChild<QComboBox *>(QStringLiteral("cob_patientName"));
    list->setFocus();
    for (int i = m_luck.between(1, 4); i > 0; --i)
        strike(m_luck.falls(0.7) ? Qt::Key_Down : Qt::Key_Up);
}

void Player::tickBoxes()
{
    struct Wish
    {
        const char *name;
        double chance;
    };
    constexpr std::array wishes{Wish{"cb_withInstruction", 0.15}, Wish{"cb_withTraining", 0.25},
                                Wish{"cb_parameters", 0.6}, Wish{"cb_fixedDuration", 0.3},
                                Wish{"cb_subTask", 0.7}};
    const Wish wish = m_luck.pick(wishes);
    auto *box = qobject_cast<QCheckBox *>(usable(&m_program->window(), wish.name));
    if (box && box->isChecked() != m_luck.falls(wish.chance))
        clickAt(&m_program->window(),
                box->mapTo(&m_program->window(), QPoint(8, box->height() / 2)), Qt::LeftButton);
}

void Player::startTest()
{
    const int number = m_luck.between(1, 7);
    QAbstractButton *button =
        usable(&m_program->window(), qPrintable(QStringLiteral("pb_test%1").arg(number)));
    if (!button)
        return;
    if (m_luck.falls(0.3))
        strike({Qt::Key_0 + number, Qt::ControlModifier, {}, false});
    else
        click(button);
}

void Player::trigger(const char *name)
{
    auto *action = m_program->window().findChild<QAction *>(QLatin1String(name));
    if (!action->isEnabled())
        return;
    make(described(Rules::Kind::Mouse), QStringLiteral("menu: %1").arg(QLatin1String(name)),
         [action] {
             action->trigger();
             devices::settle();
         });
}

// Anything at all.

void Player::anyEntry()
{
    if (m_program->task()) { // its screen covers the menus
        m_program->pass(m_luck.between(0, 3000));
        return;
    }
    if (m_luck.falls(0.02))
        trigger("actionQuitter");
    else
        trigger(m_luck.pick(actions));
}

Qt::KeyboardModifiers Player::drawnModifiers()
{
    if (m_luck.falls(0.85))
        return Qt::NoModifier;
    Qt::KeyboardModifiers drawn;
    for (const auto modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                                Qt::MetaModifier, Qt::KeypadModifier}) {
        if (m_luck.falls(0.35))
            drawn |= modifier;
    }
    return drawn;
}

devices::Key Player::drawnKey()
{
    constexpr std::array ofTheTasks{Qt::Key_Space, Qt::Key_E,  Qt::Key_P,
                                    Qt::Key_S,     Qt::Key_C,  Qt::Key_Left,
                                    Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
    constexpr std::array ofForms{Qt::Key_Return,    Qt::Key_Enter,  Qt::Key_Tab,
                                 Qt::Key_Backtab,   Qt::Key_Home,   Qt::Key_End,
                                 Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_PageUp,
                                 Qt::Key_PageDown,  Qt::Key_Insert};
    constexpr std::array others{
        Qt::Key_Shift,     Qt::Key_Control,    Qt::Key_Alt,       Qt::Key_Meta,
        Qt::Key_AltGr,     Qt::Key_CapsLock,   Qt::Key_NumLock,   Qt::Key_Menu,
        Qt::Key_Help,      Qt::Key_Print,      Qt::Key_Pause,     Qt::Key_Clear,
        Qt::Key_Select,    Qt::Key_VolumeUp,   Qt::Key_MediaPlay, Qt::Key_Back,
        Qt::Key_Multi_key, Qt::Key_Dead_Acute, Qt::Key_unknown,   Qt::Key_Hyper_L,
        Qt::Key_Cancel,    Qt::Key_Yes,        Qt::Key_No,        Qt::Key_Flip,
        Qt::Key_Sleep,     Qt::Key_ScrollLock, Qt::Key_SysReq};
    devices::Key key;
    key.modifiers = drawnModifiers();
    const int escapes = m_mood == Mood::Helpful ? 0 : m_mood == Mood::Nervous ? 1 : 3;
    switch (m_luck.weighted({50, 12, 10, 10, 5, 5, escapes})) {
    case 0:
        key.key = m_luck.pick(ofTheTasks);
        break;
    case 1:
        key.key = m_luck.pick(ofForms);
        break;
    case 2:
        key.key = m_luck.between(Qt::Key_A, Qt::Key_Z);
        break;
    case 3:
        key.key = m_luck.between(Qt::Key_Space, Qt::Key_AsciiTilde);
        break;
    case 4:
        key.key = m_luck.between(Qt::Key_F1, Qt::Key_F35);
        break;
    case 5:
        key.key = m_luck.pick(others);
        break;
    default:
        key.key = Qt::Key_Escape;
        key.modifiers = {};
    }
    if (key.key >= Qt::Key_Space && key.key <= Qt::Key_AsciiTilde && m_luck.falls(0.95)) {
        const QChar letter{ushort(key.key)};
        key.text = key.modifiers & Qt::ShiftModifier ? letter : letter.toLower();
    } else if (m_luck.falls(0.05)) {
        key.text = drawnText();
    }
    // On the desk an Escape ends the program, which is to happen, but not all the time.
    if (key.key == Qt::Key_Escape && m_program->window().isActiveWindow() && m_luck.falls(0.8))
        key.key = Qt::Key_F5;
    if (key.key == Qt::Key_Escape)
        key.text.clear();
    return key;
}

void Player::anyKey()
{
    const devices::Key key = drawnKey();
    switch (m_luck.weighted({70, 10, 10, 10})) {
    case 0:
        strike(key);
        break;
    case 1:
        press(key);
        break;
    case 2:
        release(key);
        break;
    default:
        holdKey(key);
    }
}

/// A held key is a row of presses, as the toolkit marks them, or as the display server sends them:
/// each with a release of the same moment.
void Player::holdKey(const devices::Key &key)
{
    const bool marked = m_luck.falls(0.5);
    press(key);
    for (int i = m_luck.between(1, 8); i > 0; --i) {
        devices::Key again = key;
        again.repeated = marked;
        Rules::Event event = described(Rules::Kind::Release);
        event.key = key.key;
        event.repeated = true;
        const quint64 moment = stamp();
        make(event, QStringLiteral("key %1 let go, held").arg(key.key, 0, 16),
             [&] { devices::release(again, moment); });
        event = described(Rules::Kind::Press);
        event.key = key.key;
        event.repeated = true;
        make(event, QStringLiteral("key %1 pressed, held").arg(key.key, 0, 16),
             [&] { devices::press(again, moment); });
    }
    release(key);
}

void Player::anyMouse()
{
    QWidget *window = front();
    if (!window)
        return;
    QPoint at(m_luck.below(window->width()), m_luck.below(window->height()));
    switch (m_luck.weighted({35, 15, 15, 35})) {
    case 0: {
        const auto buttons = visible<QAbstractButton>(window);
        if (!buttons.isEmpty())
            at = m_luck.pick(buttons)->geometry().center();
        break;
    }
    case 1: { // where a button can't be seen
        const auto buttons =
            window->findChildren<QAbstractButton *>(QString(), Qt::FindDirectChildrenOnly);
        if (!buttons.isEmpty())
            at = m_luck.pick(buttons)->geometry().center();
        break;
    }
    case 2: {
        const auto edits = visible<QLineEdit>(window);
        if (!edits.isEmpty()) {
            QWidget *edit = m_luck.pick(edits);
            at = edit->mapTo(window, edit->rect().center());
        }
        break;
    }
    default:
        break;
    }
    constexpr std::array buttons{Qt::LeftButton, Qt::LeftButton,    Qt::LeftButton,
                                 Qt::LeftButton, Qt::RightButton,   Qt::MiddleButton,
                                 Qt::BackButton, Qt::ForwardButton, Qt::ExtraButton7};
    const Qt::MouseButton button = m_luck.pick(buttons);
    devices::Mouse event{window, at, button, Qt::NoButton, drawnModifiers()};
    switch (m_luck.weighted({40, 10, 10, 10, 10, 10, 10})) {
    case 0:
        clickAt(window, at, button);
        break;
    case 1:
        clickAt(window, at, button);
        if (window->isVisible())
            clickAt(window, at, button);
        break;
    case 2:
        event.held = button;
        mouse("button pressed", &devices::pressButton, event);
        break;
    case 3:
        mouse("button let go", &devices::releaseButton, event);
        break;
    case 4:
        drag(window, at);
        break;
    case 5:
        event.button = Qt::NoButton;
        mouse("mouse moved", &devices::move, event);
        break;
    default:
        make(described(Rules::Kind::Mouse), QStringLiteral("wheel"), [&] {
            const int turn = m_luck.pick(std::array{-120, 120, 15, -1200});
            devices::turnWheel(event, m_luck.falls(0.2) ? QPoint(turn, 0) : QPoint(0, turn),
                               stamp());
        });
    }
}

void Player::drag(QWidget *window, const QPoint &from)
{
    devices::Mouse event{window, from, Qt::LeftButton, Qt::LeftButton, {}};
    mouse("button pressed", &devices::pressButton, event);
    event.button = Qt::NoButton;
    for (int i = m_luck.between(1, 3); i > 0; --i) {
        event.at = {m_luck.below(window->width()), m_luck.below(window->height())};
        mouse("mouse dragged", &devices::move, event);
    }
    event.button = Qt::LeftButton;
    event.held = Qt::NoButton;
    mouse("button let go", &devices::releaseButton, event);
}

void Player::anyEdit()
{
    QWidget *window = front();
    if (!window)
        return;
    const auto edits = visible<QLineEdit>(window);
    if (edits.isEmpty())
        return;
    QLineEdit *edit = m_luck.pick(edits);
    // A drift without a wait beats a thousand times a second, which takes most of a run's time.
    type(edit, edit->objectName() == QLatin1String("le_timerMov")
                   ? QString::number(m_luck.between(1, 99))
                   : drawnText());
    switch (m_luck.weighted({5, 3, 1, 1})) {
    case 0:
        strike(Qt::Key_Return);
        break;
    case 1:
        strike(Qt::Key_Tab);
        break;
    case 2:
        clickAt(window, {10, window->height() - 10}, Qt::LeftButton);
        break;
    default:
        break; // left as it is
    }
}

void Player::anyClose()
{
    const QList<QWidget *> shown = m_program->windows();
    if (shown.isEmpty())
        return;
    QWidget *window = m_luck.falls(0.9) ? shown.constFirst() : m_luck.pick(shown);
    if (window == &m_program->window() && m_luck.falls(0.9))
        return;
    Rules::Event event = described(Rules::Kind::Close);
    event.to = window;
    make(event, QStringLiteral("%1 closed by the window manager").arg(window->objectName()),
         [window] { devices::close(window); });
}

/// The focus goes to another window, and comes back.
void Player::anyWindow()
{
    const QList<QWidget *> shown = m_program->windows();
    if (shown.isEmpty() || QApplication::activePopupWidget())
        return;
    QWidget *window = m_program->task() ? m_program->task() : m_luck.pick(shown);
    make(described(Rules::Kind::Mouse),
         QStringLiteral("%1 comes forward").arg(window->objectName()), [&] {
             m_program->activate(shown.constLast());
             m_program->activate(window);
         });
}

// By the devices.

Rules::Event Player::described(Rules::Kind kind) const
{
    Rules::Event event;
    event.kind = kind;
    event.to = QApplication::activeWindow();
    const TaskDialog *task = m_program->task();
    event.forTask = task && (event.to == task || kind == Rules::Kind::Close) &&
                    !QApplication::activePopupWidget();
    const QWidget *focus = QApplication::focusWidget();
    event.intoText = qobject_cast<const QLineEdit *>(focus) != nullptr;
    return event;
}

template <typename Send>
void Player::make(const Rules::Event &event, const QString &what, Send send)
{
    if (m_program->hasEnded())
        return;
    const TaskDialog *task = m_program->task();
    chronicle::note(QStringLiteral("%1 at %2 ms, %3 stage %4: %5")
                        .arg(m_events)
                        .arg(m_program->now())
                        .arg(task ? task->objectName() : QStringLiteral("desk"))
                        .arg(task ? task->stage() : 0)
                        .arg(what));
    m_rules->look(event);
    const int escapes = m_rules->escapes();
    send();
    ++m_events;
    m_program->observe();
    m_fail(m_rules->check(event));
    // A test button that was pressed by its shortcut begins a test when it clicks.
    m_escaped = (m_escaped || m_rules->escapes() != escapes) && !m_program->shortcutIsDown();
    breathe();
}

void Player::press(const devices::Key &key)
{
    Rules::Event event = described(Rules::Kind::Press);
    event.key = key.key;
    event.repeated = key.repeated;
    make(event,
         QStringLiteral("key %1 pressed, %2").arg(key.key, 0, 16).arg(int(key.modifiers), 0, 16),
         [&] { devices::press(key, stamp()); });
}

void Player::release(const devices::Key &key)
{
    Rules::Event event = described(Rules::Kind::Release);
    event.key = key.key;
    make(event, QStringLiteral("key %1 let go").arg(key.key, 0, 16),
         [&] { devices::release(key, stamp()); });
}

void Player::strike(const devices::Key &key)
{
    press(key);
    release(key);
}

void Player::strike(int key, const QString &text)
{
    strike({key, Qt::NoModifier, text, false});
}

void Player::type(QLineEdit *edit, const QString &text)
{
    if (!edit->isVisible())
        return;
    make(described(Rules::Kind::Mouse), QStringLiteral("into %1").arg(edit->objectName()), [edit] {
        edit->setFocus();
        edit->selectAll();
        devices::settle();
    });
    // As an input method or a paste gives it.
    Rules::Event event = described(Rules::Kind::Press);
    event.key = Qt::Key_unknown;
    make(event, QStringLiteral("types \"%1\"").arg(text), [&] {
        if (QApplication::focusWidget() == edit)
            devices::press({Qt::Key_unknown, Qt::NoModifier, text, false}, stamp());
    });
}

void Player::click(QWidget *widget, Qt::MouseButton button)
{
    clickAt(widget->window(), widget->mapTo(widget->window(), widget->rect().center()), button);
}

void Player::clickAt(QWidget *window, const QPoint &at, Qt::MouseButton button)
{
    devices::Mouse event{window, at, button, button, {}};
    mouse("button pressed", &devices::pressButton, event);
    event.held = Qt::NoButton;
    mouse("button let go", &devices::releaseButton, event);
}

void Player::mouse(const char *what, void (*send)(const devices::Mouse &, quint64),
                   const devices::Mouse &mouse)
{
    if (!mouse.window->isVisible())
        return;
    const QWidget *at = mouse.window->childAt(mouse.at);
    make(described(Rules::Kind::Mouse),
         QStringLiteral("%1 %2 at %3, %4 on %5")
             .arg(QLatin1String(what))
             .arg(int(mouse.button))
             .arg(mouse.at.x())
             .arg(mouse.at.y())
             .arg(at ? at->objectName() : mouse.window->objectName()),
         [&] { send(mouse, stamp()); });
}

// Time and draws.

void Player::breathe()
{
    if (m_program->hasEnded())
        return;
    switch (m_luck.weighted({50, 15, 15, 8, 8, 4})) {
    case 0:
        break;
    case 1:
        m_program->pass(m_luck.between(1, 3));
        break;
    case 2:
        m_program->pass(m_luck.between(1, 60));
        break;
    case 3:
        m_program->pass(untilTheMoment());
        break;
    case 4:
        m_program->pass(m_luck.between(60, 800));
        break;
    default:
        m_program->pass(m_luck.between(800, 6000));
    }
}

/// The chain's next moment, the millisecond before it, or the one behind it.
int Player::untilTheMoment()
{
    const auto timers = m_program->running(m_program->task());
    int longest = -1;
    for (const TaskTimer *timer : timers)
        longest = std::max(longest, timer->remainingTime());
    constexpr int most = 10'000;
    if (longest < 0)
        return m_luck.between(0, 50);
    return std::clamp(std::min(longest, most + 1) + m_luck.between(-1, 1), 0, most);
}

QString Player::drawnText()
{
    if (m_luck.falls(0.2))
        return QString::number(m_luck.between(-100, 5000));
    return QString::fromUtf8(m_luck.pick(oddTexts));
}

QWidget *Player::front() const
{
    const QList<QWidget *> shown = m_program->windows();
    return shown.isEmpty() ? nullptr : shown.constFirst();
}

/// Of an event, in ms. A person's hand makes no two in one.
quint64 Player::stamp()
{
    m_stamp = std::max(m_stamp + 1, quint64(m_program->now()) + 1000);
    return m_stamp;
}

QString Player::summary() const
{
    QString text = QStringLiteral("%1 events").arg(m_events);
    for (auto it = m_counts.cbegin(); it != m_counts.cend(); ++it)
        text += QStringLiteral("\n%1 %2").arg(it.key(), -16).arg(it.value());
    return text;
}

QString Player::missing() const
{
    QStringList names{QStringLiteral("tests begun"), QStringLiteral("rows"),
                      QStringLiteral("escapes"), QStringLiteral("first answers")};
    names.removeIf([this](const QString &name) { return m_counts.value(name) > 0; });
    return names.join(QStringLiteral(", "));
}
