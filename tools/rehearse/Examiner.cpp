#include "Examiner.h"

#include "Screen.h"
#include "TaskDialog.h"
#include "hands.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include <algorithm>

// The tests: from the button of the main window to "Main Menu". What comes before stands in
// ExaminerDesk.cpp.

namespace {
constexpr int pace = 1200;        // ms from seeing something to acting on it
constexpr int readingPace = 6000; // ms on a page of the instruction
constexpr int patience = 1000;    // ms for something that the program does by itself

struct NamedBox
{
    QLatin1String name;
    bool checked;
};
} // namespace

Examiner::Examiner(const Options &options, QWidget &window, const Screen &screen, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_window(window)
    , m_frequencySet(!options.frequency)
{
    m_look.setSingleShot(true);
    connect(&m_look, &TaskTimer::timeout, this, &Examiner::look);
    connect(&screen, &Screen::appeared, this, &Examiner::onAppeared);
    connect(&screen, &Screen::vanished, this, &Examiner::onVanished);
}

void Examiner::playTest()
{
    m_playing = true;
    m_pressed = false;
    m_started = false;
    m_leaving = false;
    lookIn(pace);
}

void Examiner::lookIn(int ms)
{
    m_look.start(ms);
}

void Examiner::onAppeared(const QWidget *widget)
{
    if (qobject_cast<const TaskDialog *>(widget))
        m_started = true;
    if (qobject_cast<const QPushButton *>(widget) || widget->isWindow())
        lookIn(pace);
}

void Examiner::onVanished(QWidget *widget)
{
    if (!m_playing || !qobject_cast<TaskDialog *>(widget))
        return;
    if (!m_leaving) { // a box may come that tells why
        lookIn(pace);
        return;
    }
    m_playing = false;
    m_look.stop();
    Q_EMIT left();
}

void Examiner::look()
{
    if (!m_playing)
        return;
    using Step = bool (Examiner::*)();
    // A task comes first: its panel has fields of the same names as the calibration.
    constexpr Step steps[] = {&Examiner::leadTask,        &Examiner::calibrate,
                              &Examiner::fillInPatient,   &Examiner::setFrequency,
                              &Examiner::openPreferences, &Examiner::choosePatient,
                              &Examiner::setCheckBoxes,   &Examiner::pressTest};
    for (const Step step : steps) {
        if ((this->*step)())
            return;
    }
}

bool Examiner::leadTask()
{
    const auto tasks = m_window.findChildren<TaskDialog *>();
    const bool running = std::any_of(tasks.begin(), tasks.end(),
                                     [](const TaskDialog *task) { return task->isRunning(); });
    if (!running)
        return false;
    if (QWidget *menu = Screen::usable(QLatin1String("pb_mainMenu"))) {
        m_leaving = true;
        hands::click(menu);
    } else if (QWidget *next = Screen::usable(QLatin1String("pb_next"))) {
        hands::click(next);
        lookIn(readingPace);
    } else if (QWidget *onwards = Screen::usable(QLatin1String("pb_continue"))) {
        hands::click(onwards);
    } else if (QWidget *go = Screen::usable(QLatin1String("pb_go"))) {
        pressGo(go);
    }
    return true;
}

void Examiner::pressGo(QWidget *go)
{
    // The training sets the number back: only what is typed in front of the test holds.
    if (m_options.number && !m_numberTyped && Screen::isCentred(go)) {
        if (QWidget *number = Screen::usable(QLatin1String("le_number"))) {
            hands::type(number, QString::number(*m_options.number));
            hands::pressOn(number, Qt::Key_Return);
            m_numberTyped = true;
            lookIn(pace);
            return;
        }
    }
    m_numberTyped = false;
    Q_EMIT blockBegins();
    hands::click(go);
}

bool Examiner::setCheckBoxes()
{
    const NamedBox boxes[] = {
        {QLatin1String("cb_withInstruction"), m_options.instruction},
        {QLatin1String("cb_withTraining"), m_options.training},
        {QLatin1String("cb_fixedDuration"), m_options.fixedDuration},
        {QLatin1String("cb_parameters"), m_options.number.has_value()},
        {QLatin1String("cb_subTask"), m_options.task > 4},
    };
    bool changed = false;
    for (const NamedBox &wanted : boxes) {
        auto *box = qobject_cast<QCheckBox *>(Screen::usable(wanted.name));
        if (box && box->isChecked() != wanted.checked) {
            hands::click(box);
            changed = true;
        }
    }
    if (changed)
        lookIn(pace);
    return changed;
}

bool Examiner::pressTest()
{
    if (m_pressed) {
        giveUp();
        return true;
    }
    QWidget *button = Screen::usable(testButton());
    if (!button)
        return false;
    m_pressed = true;
    hands::click(button);
    lookIn(patience);
    return true;
}

void Examiner::giveUp()
{
    m_playing = false;
    if (!m_started)
        Q_EMIT refused(QStringLiteral("\"%1\" starts nothing.").arg(buttonText()));
    else if (m_options.instruction && !m_options.training)
        Q_EMIT brokenOff(QStringLiteral("The instruction was shown; without training no test "
                                        "follows it."));
    else
        Q_EMIT brokenOff(QStringLiteral("The test was broken off before its end."));
}

QLatin1String Examiner::testButton() const
{
    static constexpr QLatin1String buttons[] = {
        QLatin1String("pb_test1"), QLatin1String("pb_test2"), QLatin1String("pb_test3"),
        QLatin1String("pb_test4"), QLatin1String("pb_test5"), QLatin1String("pb_test6"),
        QLatin1String("pb_test7")};
    return buttons[m_options.task - 1];
}

QString Examiner::buttonText() const
{
    const auto *button = m_window.findChild<QPushButton *>(testButton());
    return button ? button->text() : QString(testButton());
}
