#include "Test3.h"

#include "DrawArrow.h"
#include "DrawBorder.h"
#include "DrawCross.h"
#include "PatchBoard.h"
#include "Result.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "bounded.h"
#include "parsed.h"
#include "rows.h"

#include <QLoggingCategory>

// Set-up, parameters, scores and report.

Q_LOGGING_CATEGORY(lcTest3, "kelmoran.test3", QtCriticalMsg)

namespace {
constexpr int crossSize = 40;
constexpr int arrowSize = 100;
constexpr int borderSize = 62;
/// The frame of the instruction stands around the ring patch in the south-west.
constexpr QPoint borderOffset(-115, 53);

/// The words of the frame, for the catalogues: they are translated in the task's context.
[[maybe_unused]] constexpr const char *frameTexts[] = {
    QT_TRANSLATE_NOOP("Test3", "Error"), QT_TRANSLATE_NOOP("Test3", "Failed to open %1\n%2")};
} // namespace

Test3::Test3(QWidget *parent)
    : TaskDialog(parent)
    , m_board(new PatchBoard(this))
    , m_cross(new DrawCross(this))
    , m_arrow(new DrawArrow(this))
    , m_border(new DrawBorder(this))
{
    m_ui.setupUi(this);
    setUpFrame(taskWidgets(m_ui), {m_board, m_cross, m_arrow, m_border, m_ui.pb_right, m_ui.pb_down,
                                   m_ui.pb_left, m_ui.pb_up, m_ui.pb_center});
    hideStimuli();
    m_taskCode = 3;

    constexpr std::array links{&Test3::sequence1,  &Test3::sequence2, &Test3::sequence3,
                               &Test3::sequence4,  &Test3::sequence5, &Test3::sequence6,
                               &Test3::sequenceMov};
    for (std::size_t i = 0; i < timers; ++i) {
        m_timers[i] = newTimer();
        m_timers[i]->setSingleShot(i != Movement);
        connect(m_timers[i], &TaskTimer::timeout, this, links[i]);
    }
    connect(m_ui.pb_right, &QPushButton::clicked, this, &Test3::toPb_right);
    connect(m_ui.pb_down, &QPushButton::clicked, this, &Test3::toPb_down);
    connect(m_ui.pb_left, &QPushButton::clicked, this, &Test3::toPb_left);
    connect(m_ui.pb_up, &QPushButton::clicked, this, &Test3::toPb_up);
    connect(m_ui.pb_center, &QPushButton::clicked, this, &Test3::toPb_center);
    connect(m_ui.le_timer01, &QLineEdit::editingFinished, this, &Test3::toLe_timer01);
    connect(m_ui.le_timer02, &QLineEdit::editingFinished, this, &Test3::toLe_timer02);
    connect(m_ui.le_timer03, &QLineEdit::editingFinished, this, &Test3::toLe_timer03);
    connect(m_ui.le_timer04, &QLineEdit::editingFinished, this, &Test3::toLe_timer04);
    connect(m_ui.le_timer05, &QLineEdit::editingFinished, this, &Test3::toLe_timer05);
    connect(m_ui.le_timer06, &QLineEdit::editingFinished, this, &Test3::toLe_timer06);
    connect(m_ui.le_timerMov, &QLineEdit::editingFinished, this, &Test3::toLe_timerMov);
}

void Test3::goTest3(int subtask, bool withInstruction, bool withTraining, bool parameters,
                    bool fixedDuration)
{
    go({subtask, withInstruction, withTraining, parameters, fixedDuration});
}

void Test3::resetRun()
{
    m_table.clear();
    m_scores = {};
    m_waitSpace = false;
    m_movStep = 0;
}

void Test3::resetBlock()
{
    m_conditionCount.fill(0);
    m_errors = 0;
    // Spent: the first trial draws.
    m_tab3Index = m_conditionCount.size();
    m_tab8Index = PatchField::ringSize;
    m_ui.le_elapsed->clear();
}

void Test3::placeStimuli()
{
    m_board->setGeometry(centred(PatchBoard::side, PatchBoard::side));
    m_board->rest();
    m_cross->setGeometry(centred(crossSize, crossSize));
    m_arrow->setGeometry(centred(arrowSize, arrowSize));
    m_border->setGeometry(QRect(centre() + borderOffset, QSize(borderSize, borderSize)));

    const QRect middle = centred(m_ui.pb_center->width(), m_ui.pb_center->height());
    m_ui.pb_center->setGeometry(middle);
    m_ui.pb_right->setGeometry(middle.translated(middle.width(), 0));
    m_ui.pb_left->setGeometry(middle.translated(-middle.width(), 0));
    m_ui.pb_down->setGeometry(middle.translated(0, middle.height()));
    m_ui.pb_up->setGeometry(middle.translated(0, -middle.height()));
}

void Test3::writeDefaults()
{
    writeParameter(m_ui.le_timer01, timer01, 400);
    writeParameter(m_ui.le_timer02, timer02, 0);
    writeParameter(m_ui.le_timer03, timer03, 500);
    writeParameter(m_ui.le_timer04, timer04, 2500);
    writeParameter(m_ui.le_timer05, timer05, 2500);
    writeParameter(m_ui.le_timer06, timer06, 600);
    writeParameter(m_ui.le_timerMov, timerMov, 15);
    setNumber(testTrials);
    m_ui.le_rt_delta->clear();
    m_ui.le_pitch->setText(pitchText(m_calibration->isHorzPitch()));
}

int Test3::fullCycle() const
{
    return bounded::sum({timer01, delaySpan, timer02, timer03, timer04, timer05, timer06});
}

void Test3::toLe_timer01()
{
    takeTimer(m_ui.le_timer01, timer01);
}
void Test3::toLe_timer02()
{
    takeTimer(m_ui.le_timer02, timer02);
}
void Test3::toLe_timer03()
{
    takeTimer(m_ui.le_timer03, timer03);
}
void Test3::toLe_timer04()
{
    takeTimer(m_ui.le_timer04, timer04);
}
void Test3::toLe_timer05()
{
    takeTimer(m_ui.le_timer05, timer05);
}
void Test3::toLe_timer06()
{
    takeTimer(m_ui.le_timer06, timer06);
}
void Test3::toLe_timerMov()
{
    timerMov = parsed::toInt(m_ui.le_timerMov->text());
}

int Test3::sessionNumber() const
{
    return m_calibration->isSessionNb_T3();
}

void Test3::computeScores()
{
    m_scores = m_table.compute(m_errors, m_trialCount);
    for (int rank = 0; rank < std::min(m_conditionCount[0], MovementScores::ranks); ++rank)
        qCDebug(lcTest3, "%8.3f %8.3f", m_table.time(rank), m_table.corrected(rank));
}

QByteArray Test3::scoreRow()
{
    const MovementScores::Scores &s = m_scores;
    return rows::scoresT3(rows::identity(),
                          {m_taskCode, sessionNumber(), TimeSource::current().currentDateTime(),
                           m_duration, m_trialCount},
                          {s.rt, s.error, s.fit.slope, s.fit.r2, s.oblique, s.cardinal, s.left,
                           s.right, s.top, s.bottom});
}

void Test3::goResult(bool show)
{
    const MovementScores::Scores &s = m_scores;
    m_result->goResult3(show, m_trialStamp, sessionNumber(), m_duration, m_trialCount, s.rt,
                        s.error, s.fit.slope, s.fit.r2, s.oblique - s.cardinal, s.left - s.right,
                        s.top - s.bottom);
}
