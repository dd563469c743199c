#include "Test1.h"

#include "DrawArrowPeriph.h"
#include "DrawCross.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "DrawRoundedRectangle.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "bounded.h"
#include "exposures.h"
#include "patientsList.h"

#include <QLoggingCategory>

#include <algorithm>

// Set-up: the dialog, and a run's way from the button to its first phase.

Q_LOGGING_CATEGORY(lcTest1, "kelmoran.test1", QtCriticalMsg)

namespace {
constexpr int interleaved = 150; // most trials of the test, mode 0
constexpr int alone = 50;        // and of a single subtask
constexpr int firstTaskCodeAlone = 5;

/// The words of the frame, for the catalogues: they are translated in the task's context.
[[maybe_unused]] constexpr const char *frameTexts[] = {
    QT_TRANSLATE_NOOP("Test1", "Error"), QT_TRANSLATE_NOOP("Test1", "Failed to open %1\n%2")};
} // namespace

Test1::Test1(QWidget *parent)
    : TaskDialog(parent)
{
    m_ui.setupUi(this);
    createFigures();

    QList<QWidget *> stimuli{m_cross, m_ui.lbl_noise};
    for (const Kind &kind : m_kinds)
        stimuli.append({kind.left, kind.right});
    for (QWidget *arrow : m_arrows)
        stimuli.append(arrow);
    for (QWidget *label : m_kindLabels)
        stimuli.append(label);
    for (QWidget *button : m_figureButtons)
        stimuli.append(button);
    for (QWidget *button : m_positionButtons)
        stimuli.append(button);
    setUpFrame(taskWidgets(m_ui), stimuli);
    hideStimuli();

    connectButtons();
    connectPanel();
    connectTimers();
}

void Test1::createFigures()
{
    m_cross = new DrawCross(this);
    m_rectLeft = new DrawRectangle(this);
    m_rectRight = new DrawRectangle(this);
    m_roundLeft = new DrawRoundedRectangle(this);
    m_roundRight = new DrawRoundedRectangle(this);
    m_grayLeft = new DrawGrayRectangle(this);
    m_grayRight = new DrawGrayRectangle(this);
    m_rotLeft = new DrawRectangle(this);
    m_rotRight = new DrawRectangle(this);
    m_smallLeft = new DrawRectangle(this);
    m_smallRight = new DrawRectangle(this);
    for (DrawArrowPeriph *&arrow : m_arrows)
        arrow = new DrawArrowPeriph(this);

    m_kinds = {{{m_rectLeft, m_rectRight},
                {m_roundLeft, m_roundRight},
                {m_grayLeft, m_grayRight},
                {m_rotLeft, m_rotRight},
                {m_smallLeft, m_smallRight}}};
    m_kindLabels = {m_ui.lbl_i_identical, m_ui.lbl_i_shape, m_ui.lbl_i_contrast,
                    m_ui.lbl_i_orientation, m_ui.lbl_i_size};
    m_figureButtons = {m_ui.pb_uniform, m_ui.pb_shape, m_ui.pb_contrast, m_ui.pb_orientation,
                       m_ui.pb_size};
    m_positionButtons = {m_ui.pb_pos0, m_ui.pb_pos1, m_ui.pb_pos2,
                         m_ui.pb_pos3, m_ui.pb_pos4, m_ui.pb_pos5};
    m_exposureEdits = {m_ui.le_timer02_S1, m_ui.le_timer02_S2, m_ui.le_timer02_S3};
    m_rankEdits = {m_ui.le_noS1, m_ui.le_noS2, m_ui.le_noS3};
}

void Test1::connectButtons()
{
    connect(m_ui.pb_uniform, &QPushButton::clicked, this, &Test1::toPb_uniform);
    connect(m_ui.pb_shape, &QPushButton::clicked, this, &Test1::toPb_shape);
    connect(m_ui.pb_contrast, &QPushButton::clicked, this, &Test1::toPb_contrast);
    connect(m_ui.pb_orientation, &QPushButton::clicked, this, &Test1::toPb_orientation);
    connect(m_ui.pb_size, &QPushButton::clicked, this, &Test1::toPb_size);
    connect(m_ui.pb_pos0, &QPushButton::clicked, this, &Test1::toPb_pos0);
    connect(m_ui.pb_pos1, &QPushButton::clicked, this, &Test1::toPb_pos1);
    connect(m_ui.pb_pos2, &QPushButton::clicked, this, &Test1::toPb_pos2);
    connect(m_ui.pb_pos3, &QPushButton::clicked, this, &Test1::toPb_pos3);
    connect(m_ui.pb_pos4, &QPushButton::clicked, this, &Test1::toPb_pos4);
    connect(m_ui.pb_pos5, &QPushButton::clicked, this, &Test1::toPb_pos5);
}

void Test1::connectPanel()
{
    const auto act = [this](const QLineEdit *edit, void (Test1::*slot)()) {
        connect(edit, &QLineEdit::editingFinished, this, slot);
    };
    act(m_ui.le_timer01, &Test1::toLe_timer01);
    act(m_ui.le_timer02_S1, &Test1::toLe_timer02_S1);
    act(m_ui.le_timer02_S2, &Test1::toLe_timer02_S2);
    act(m_ui.le_timer02_S3, &Test1::toLe_timer02_S3);
    act(m_ui.le_timer03, &Test1::toLe_timer03);
    act(m_ui.le_timer04, &Test1::toLe_timer04);
    act(m_ui.le_timer05, &Test1::toLe_timer05);
    act(m_ui.le_timer06, &Test1::toLe_timer06);
    act(m_ui.le_globSize, &Test1::toLe_globSize);
    act(m_ui.le_shape, &Test1::toLe_shape);
    act(m_ui.le_contrast, &Test1::toLe_contrast);
    act(m_ui.le_orientation, &Test1::toLe_orientation);
    act(m_ui.le_size, &Test1::toLe_size);
    act(m_ui.le_separator, &Test1::toLe_separator);
    act(m_ui.le_triSize, &Test1::toLe_triSize);
    act(m_ui.le_triRatio, &Test1::toLe_triRatio);
    act(m_ui.le_triOffset, &Test1::toLe_triOffset);
}

void Test1::connectTimers()
{
    constexpr std::array links{&Test1::sequence1,    &Test1::sequence2,    &Test1::sequence3,
                               &Test1::sequence4,    &Test1::sequence5,    &Test1::sequence6,
                               &Test1::i_sequence4,  &Test1::i_sequence7,  &Test1::i_sequence8,
                               &Test1::i_sequence12, &Test1::i_sequence15, &Test1::i_sequence16,
                               &Test1::i_sequence22, &Test1::i_sequence25, &Test1::i_sequence26};
    static_assert(links.size() == timers);
    for (std::size_t i = 0; i < timers; ++i) {
        m_timers[i] = newTimer();
        const bool demonstration =
            i == CentralDemonstration || i == PeripheralDemonstration || i == DualDemonstration;
        m_timers[i]->setSingleShot(!demonstration);
        connect(m_timers[i], &TaskTimer::timeout, this, links[i]);
    }
}

void Test1::goTest1(int mode, bool withInstruction, bool withTraining, bool parameters,
                    bool fixedDuration)
{
    m_txtRecognition = tr("Visual\nrecognition");
    m_txtCentral = tr("Central\nvision");
    m_txtPeripheral = tr("Peripheral\nvision");
    m_txtDual = tr("Dual task");
    m_txtExample = tr("Example");
    m_frequency = m_calibration->isFrequency();
    m_mode = mode;
    m_modeAsked = mode;
    m_taskCode = mode == 0 ? 1 : firstTaskCodeAlone + mode - 1;
    const std::array sessions{m_calibration->isSessionNb_T1(), m_calibration->isSessionNb_T5(),
                              m_calibration->isSessionNb_T6(), m_calibration->isSessionNb_T7()};
    m_session = sessions.at(std::size_t(mode));
    go({mode, withInstruction, withTraining, parameters, fixedDuration});
    qCDebug(lcTest1, "width %6d height %6d", width(), height());
    qCDebug(lcTest1, "pixelSize %8.3f %8.3f %8.3f %8.3f", m_calibration->isHorzPitch() / 1000.0,
            m_calibration->isVertPitch() / 1000.0, double(m_layout.pixelH()),
            double(m_layout.pixelV()));
}

void Test1::resetRun()
{
    m_state.fill({});
    readThresholds();
    m_layout = VisionLayout(m_calibration->isHorzPitch(), m_calibration->isVertPitch());
    m_notTrained = false;
    m_startTime = TimeSource::current().currentDateTime();
    m_trialsDone = 0;
    for (QString *text : {&m_figure, &m_figureAnswer, &m_position, &m_positionAnswer})
        text->clear();
}

void Test1::readThresholds()
{
    QStringList fields = patientsList::find(m_calibration->isPatientName());
    if (fields.isEmpty()) { // a patient who isn't on the list: what was read last stands
        const QList<QStringList> all = patientsList::read().value_or(QList<QStringList>());
        fields = all.value(all.size() - 1);
    }
    for (std::size_t s = 0; s < subtasks; ++s) {
        State &state = m_state[s];
        state.exposure = fields.value(patientsList::ThresholdS1 + qsizetype(s)).toInt();
        state.hasThreshold = state.exposure > 0;
        if (state.hasThreshold && m_withTraining)
            state.exposure = exposures::ofTrainedPatient;
        state.trainingIndex = exposures::trainingIndex(state.exposure);
    }
}

void Test1::resetBlock()
{
    for (State &state : m_state) {
        state.errors = 0;
        state.trainingOk = false;
        state.track.rewind();
    }
    for (QLineEdit *edit : m_rankEdits)
        edit->setText(QStringLiteral("1"));
    m_ui.le_no->setText(QStringLiteral("1"));
    m_successes = 0;
    m_centralOk = false;
    m_periphOk = false;
    // Spent: the first trial draws.
    m_indexSubtask = int(subtasks);
    m_indexPos = VisionLayout::positions;
    m_indexFigure = 2 * int(m_kinds.size());
}

void Test1::placeStimuli()
{
    const QPoint middle = centre();
    constexpr int crossSize = 2 * VisionLayout::crossHalf;
    m_cross->setGeometry(centred(crossSize, crossSize));
    m_ui.lbl_noise->setGeometry(centred(m_ui.lbl_noise->width(), m_ui.lbl_noise->height()));

    for (const auto side : {VisionLayout::Left, VisionLayout::Right}) {
        const auto at = [side](const Kind &kind) {
            return side == VisionLayout::Left ? kind.left : kind.right;
        };
        const auto &[identical, shape, contrast, orientation, size] = m_kinds;
        for (Stimulus *figure : {at(identical), at(shape), at(contrast)})
            figure->setGeometry(m_layout.figure(side, middle));
        at(orientation)->setGeometry(m_layout.turned(side, middle));
        at(size)->setGeometry(m_layout.small(side, middle));
    }
    for (int i = 0; i < VisionLayout::positions; ++i) {
        m_arrows[std::size_t(i)]->setGeometry(m_layout.triangle(i, middle));
        QPushButton *button = m_positionButtons[std::size_t(i)];
        button->setGeometry(VisionLayout::positionButton(i, button->size(), middle));
    }

    constexpr int aside = 30;
    constexpr int apart = 70;
    const QSize button = m_ui.pb_shape->size();
    const int left = middle.x() - aside - button.width();
    const int right = middle.x() + aside;
    const int above = middle.y() - apart - button.height();
    const int below = middle.y() + apart;
    m_ui.pb_uniform->move(middle.x() - button.width() / 2, middle.y() - button.height() / 2);
    m_ui.pb_shape->move(left, above);
    m_ui.pb_contrast->move(right, above);
    m_ui.pb_orientation->move(left, below);
    m_ui.pb_size->move(right, below);
}

bool Test1::needs(Subtask subtask) const
{
    return m_modeAsked == 0 || m_modeAsked == subtask + 1;
}

bool Test1::mayBegin()
{
    for (const auto subtask : {Central, Peripheral, Dual}) {
        State &state = m_state[subtask];
        if (!needs(subtask) || state.exposure > 0)
            continue;
        if (m_withTraining)
            state.exposure = exposures::longest;
        else
            m_notTrained = true;
    }
    for (const auto subtask : {Central, Peripheral, Dual})
        showExposure(subtask);
    if (m_phase != 0 || !m_notTrained)
        return true;
    refuse(tr("Unable to start!\nPlease undergo training!"));
    m_calibration->setEscapeSeq(true);
    return false;
}

void Test1::beginInstruction()
{
    switch (m_mode) {
    case 1:
        return i_sequence0();
    case 2:
        return i_sequence10();
    case 3:
        return i_sequence20();
    default:
        m_ui.lbl_instruction->setText(m_txtRecognition);
        m_ui.lbl_instruction->show();
    }
}

void Test1::beginTraining()
{
    switch (m_mode) {
    case 2:
        return t_sequence10();
    case 3:
        return t_sequence20();
    default:
        return t_sequence0();
    }
}

int Test1::mostTrials() const
{
    return m_modeAsked == 0 ? interleaved : alone;
}

int Test1::calculateTc() const
{
    // In training the mode is that of the subtask in hand.
    const int shown = m_mode == 0
                          ? std::max({exposure(Central), exposure(Peripheral), exposure(Dual)})
                          : m_state[std::size_t(m_mode - 1)].exposure;
    return bounded::sum({m_time01, m_time03, m_time04, m_time05, m_time06, shown});
}

int Test1::fullCycle() const
{
    return calculateTc();
}

int Test1::sessionNumber() const
{
    return m_session;
}

int Test1::fileNumber() const
{
    return 1; // the four modes share their files
}
