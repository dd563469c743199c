#include "TaskDialog.h"

#include "Messages.h"
#include "Random.h"
#include "Result.h"
#include "Statistic.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "parsed.h"
#include "randomness.h"
#include "screens.h"

#include <QCoreApplication>
#include <QCursor>
#include <QLocale>
#include <QScreen>

// Set-up: the dialog, its widgets, and a run's way from the button to the first phase.

TaskDialog::TaskDialog(QWidget *parent)
    : QDialog(parent)
    , m_result(std::make_unique<Result>())
    , m_calibration(new Calibration(this))
    , m_random(new Random(this))
    , m_statistic(new Statistic(this))
    , m_lateNote(new QLabel(this))
{
    m_lateNote->setObjectName(QStringLiteral("lbl_late"));
    m_lateNote->setAlignment(Qt::AlignCenter);
    m_lateNote->setStyleSheet(QStringLiteral("color: rgb(255, 255, 255)"));
    m_lateNote->hide();
    setFocusPolicy(Qt::StrongFocus);
    m_result->setAttribute(Qt::WA_QuitOnClose, false); // it goes with the main window
}

TaskDialog::~TaskDialog()
{
    // A line edit that loses the focus because it is destroyed would act on a task that is no more.
    for (const QWidget *widget : qAsConst(m_panel))
        widget->disconnect(this);
}

void TaskDialog::setUpFrame(const TaskWidgets &widgets, const QList<QWidget *> &stimuli)
{
    m_widgets = widgets;
    m_stimuli = stimuli;
    m_panel.clear();
    // The panel is every line edit with its label: "le_no" with "lbl_no".
    for (QLineEdit *edit : findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly)) {
        m_panel.append(edit);
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::returnPressed, this, qOverload<>(&QWidget::setFocus));
        const QString label = QStringLiteral("lbl_") + edit->objectName().sliced(3);
        if (auto *widget = findChild<QLabel *>(label, Qt::FindDirectChildrenOnly))
            m_panel.append(widget);
    }

    connect(widgets.go, &QPushButton::clicked, this, &TaskDialog::toPb_go);
    connect(widgets.next, &QPushButton::clicked, this, &TaskDialog::toPb_next);
    connect(widgets.continueButton, &QPushButton::clicked, this, &TaskDialog::toPb_continue);
    connect(widgets.results, &QPushButton::clicked, this, &TaskDialog::toPb_results);
    connect(widgets.mainMenu, &QPushButton::clicked, this, &TaskDialog::toPb_mainMenu);
    connect(widgets.number, &QLineEdit::editingFinished, this, &TaskDialog::toLe_number);

    for (QPushButton *button : findChildren<QPushButton *>()) {
        button->setAutoDefault(false); // Return in a line edit presses nothing
        button->installEventFilter(this);
    }
    for (QPushButton *button : {widgets.next, widgets.continueButton})
        button->setShortcut(Qt::Key_C); // last: a new text would drop it
}

TaskTimer *TaskDialog::newTimer()
{
    return new TaskTimer(this);
}

QString TaskDialog::translated(const char *text) const
{
    // The words of the frame are translated where the task's own are.
    return QCoreApplication::translate(metaObject()->className(), text);
}

void TaskDialog::go(const Options &options)
{
    takeScreen();
    setCursor(Qt::ArrowCursor);
    stopTimers();
    randomness::seedFromClock();

    m_withInstruction = options.withInstruction;
    m_withTraining = options.withTraining;
    m_fixedDuration = options.fixedDuration;
    m_subtask = options.subtask;
    m_phase = (options.withInstruction ? 1 : 0) + (options.withTraining ? 2 : 0);
    m_instructing = options.withInstruction;
    m_stage = 0;
    m_logError.clear();
    m_timingError.clear();
    m_failures.clear();
    m_validRows.clear();
    m_trialNo = 0;
    m_trialCount = 0;
    m_markedError = false;
    m_paused = false;
    m_duration = msToQtime(0);
    m_trialStamp = TimeSource::current().currentDateTime();
    clearResult();
    resetRun();
    resetBlock();

    takeCentre();
    pointAt(centre());
    placeStimuli();
    prepareStimuli();
    hideStimuli();

    writeDefaults();
    m_widgets.task->setText(QStringLiteral("%1").arg(m_taskCode));
    if (m_widgets.subtask)
        m_widgets.subtask->setText(QStringLiteral("%1").arg(m_subtask));
    updateCycle();
    showPanel(options.parameters);
    layOutControls();
    if (mayBegin())
        beginFirstPhase();
}

/// The first paint of a widget reads its style and its images: no patient is to wait for that.
void TaskDialog::prepareStimuli()
{
    if (m_isPrepared)
        return;
    m_isPrepared = true;
    // With an odd calibration a stimulus may be larger than any memory: what is beyond isn't seen.
    for (QWidget *stimulus : qAsConst(m_stimuli))
        stimulus->grab({QPoint(), stimulus->size().boundedTo(size())});
}

int TaskDialog::fullCycle() const
{
    return 0; // a task without such an option
}

void TaskDialog::clearResult()
{
    if (m_widgets.result)
        m_widgets.result->clear();
}

bool TaskDialog::mayBegin()
{
    return true;
}

void TaskDialog::takeScreen()
{
    // A style that is given to a window on the screen is worked out for each of its widgets again.
    const QString black = QStringLiteral("background-color:rgb(0, 0, 0)");
    if (styleSheet() != black)
        setStyleSheet(black);
    // Full screen is granted later by the window manager: the size must be right before.
    setGeometry(screens::of(*this)->geometry());
    showFullScreen();
    raise();
    activateWindow();
    m_refreshCounter.watch(winId());
}

void TaskDialog::takeCentre()
{
    m_centerX = width() / 2;
    m_centerY = height() / 2;
}

/// Another resolution, or a screen unplugged, under a run that goes on: all goes to the new middle.
void TaskDialog::followScreen()
{
    if (QPoint(width() / 2, height() / 2) == centre())
        return;
    takeCentre();
    placeControls();
    placeStimuli();
}

void TaskDialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (isRunning() && m_stage == 0) // within a trial nothing moves
        followScreen();
}

void TaskDialog::layOutControls()
{
    placeControls();
    m_lateNote->hide();
    for (QPushButton *button : {m_widgets.results, m_widgets.mainMenu, m_widgets.go, m_widgets.next,
                                m_widgets.continueButton})
        button->hide();
    m_widgets.mode->hide();
    m_widgets.instruction->hide();
}

void TaskDialog::placeControls()
{
    const QPoint bottomRight(m_centerX + m_layoutHalfW, m_centerY + m_layoutHalfH);
    for (QPushButton *button : {m_widgets.next, m_widgets.continueButton})
        button->move(bottomRight.x() - button->width(), bottomRight.y() - button->height());
    m_widgets.mode->move(m_centerX + m_layoutHalfW - m_widgets.mode->width(),
                         m_centerY - m_layoutHalfH);
    m_widgets.instruction->setGeometry(
        centred(m_widgets.instruction->width(), m_widgets.instruction->height()));

    constexpr int aside = 100;
    m_widgets.results->setGeometry(
        centred(m_widgets.results->width(), m_widgets.results->height()).translated(-aside, 0));
    m_widgets.mainMenu->setGeometry(
        centred(m_widgets.mainMenu->width(), m_widgets.mainMenu->height()).translated(aside, 0));

    constexpr int below = 80;
    m_lateNote->setGeometry(
        centred(2 * m_layoutHalfW, m_widgets.results->height()).translated(0, below));
}

void TaskDialog::showPanel(bool shown)
{
    for (QWidget *widget : m_panel)
        widget->setVisible(shown);
}

void TaskDialog::setNumber(int number)
{
    m_number = number;
    m_widgets.number->setText(QStringLiteral("%1").arg(number));
}

void TaskDialog::toLe_number()
{
    setNumber(parsed::toInt(m_widgets.number->text()));
}

void TaskDialog::takeTimer(const QLineEdit *edit, int &parameter)
{
    parameter = parsed::toInt(edit->text());
    updateCycle();
}

void TaskDialog::writeParameter(QLineEdit *edit, int &parameter, int value)
{
    parameter = value;
    edit->setText(QStringLiteral("%1").arg(value));
}

void TaskDialog::updateCycle()
{
    if (!m_fixedDuration)
        return;
    m_cycle = fullCycle();
    m_widgets.timeTc->setText(QStringLiteral("%1").arg(m_cycle));
}

QRect TaskDialog::centred(int width, int height) const
{
    return {m_centerX - width / 2, m_centerY - height / 2, width, height};
}

void TaskDialog::pointAt(const QPoint &place)
{
    QCursor::setPos(mapToGlobal(place));
}

void TaskDialog::pointAtNext()
{
    pointAt(m_widgets.next->geometry().center());
}

void TaskDialog::hidePointer()
{
    pointAt({10, 700});
    setCursor(Qt::BlankCursor);
}

QString TaskDialog::pitchText(int pitch)
{
    return QStringLiteral("%L1").arg(pitch / 1000.0, 8, 'f', 3);
}

QTime TaskDialog::msToQtime(int ms)
{
    const int seconds = ms / 1000;
    return {seconds / 60 / 60, seconds / 60 % 60, seconds % 60, 0};
}
