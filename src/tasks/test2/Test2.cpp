#include "Test2.h"

#include "DrawArrow.h"
#include "DrawCross.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "Result.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "attentionLayout.h"
#include "bounded.h"
#include "compass.h"
#include "rows.h"

#include <QLoggingCategory>

// Set-up, parameters, scores and report.

Q_LOGGING_CATEGORY(lcTest2, "kelmoran.test2", QtCriticalMsg)

namespace {
constexpr int crossSize = 40;
constexpr int arrowSize = 100;
constexpr int targetSize = 2 * attentionLayout::targetHalf;
constexpr int markerGray = 100;

/// The words of the frame, for the catalogues: they are translated in the task's context.
[[maybe_unused]] constexpr const char *frameTexts[] = {
    QT_TRANSLATE_NOOP("Test2", "Error"), QT_TRANSLATE_NOOP("Test2", "Failed to open %1\n%2")};
} // namespace

Test2::Test2(QWidget *parent)
    : TaskDialog(parent)
    , m_cross(new DrawCross(this))
    , m_arrow(new DrawArrow(this))
    , m_target(new DrawRectangle(this))
{
    m_ui.setupUi(this);
    for (DrawGrayRectangle *&marker : m_markers) {
        marker = new DrawGrayRectangle(this);
        marker->gray = markerGray;
    }
    QList<QWidget *> stimuli{m_cross, m_ui.lbl_asterisk, m_arrow, m_target};
    stimuli.append(QList<QWidget *>(m_markers.begin(), m_markers.end()));
    setUpFrame(taskWidgets(m_ui), stimuli);
    hideStimuli();
    m_taskCode = 2;

    constexpr std::array links{&Test2::sequence1,    &Test2::sequence2,    &Test2::sequence3,
                               &Test2::sequence4,    &Test2::sequence5,    &Test2::i_sequence3,
                               &Test2::i_sequence4,  &Test2::i_sequence13, &Test2::i_sequence14,
                               &Test2::i_sequence15, &Test2::i_sequence23, &Test2::i_sequence24,
                               &Test2::i_sequence25};
    for (std::size_t i = 0; i < m_timers.size(); ++i) {
        m_timers[i] = newTimer();
        connect(m_timers[i], &TaskTimer::timeout, this, links[i]);
    }
    connect(m_ui.le_timer01, &QLineEdit::editingFinished, this, &Test2::toLe_timer01);
    connect(m_ui.le_timer02, &QLineEdit::editingFinished, this, &Test2::toLe_timer02);
    connect(m_ui.le_timer03, &QLineEdit::editingFinished, this, &Test2::toLe_timer03);
    connect(m_ui.le_timer04, &QLineEdit::editingFinished, this, &Test2::toLe_timer04);
    connect(m_ui.le_timer05, &QLineEdit::editingFinished, this, &Test2::toLe_timer05);
}

void Test2::goTest2(int subtask, bool withInstruction, bool withTraining, bool parameters,
                    bool fixedDuration)
{
    go({subtask, withInstruction, withTraining, parameters, fixedDuration});
}

void Test2::resetRun()
{
    m_table.clear();
    m_scores = {};
    m_targetShown = false;
}

void Test2::resetBlock()
{
    m_conditionCount.fill(0);
    m_errors.fill(0);
    m_tab3Index = conditions; // spent: the first trial draws
    m_tab8Index.fill(compass::directions);
}

void Test2::placeStimuli()
{
    m_cross->setGeometry(centred(crossSize, crossSize));
    m_ui.lbl_asterisk->setGeometry(
        centred(m_ui.lbl_asterisk->width(), m_ui.lbl_asterisk->height()));
    m_arrow->setGeometry(centred(arrowSize, arrowSize));
    m_target->setGeometry(centred(targetSize, targetSize));
    for (DrawGrayRectangle *marker : m_markers)
        marker->setGeometry(centred(targetSize, targetSize));
}

void Test2::writeDefaults()
{
    m_ui.le_rt_delta->clear();
    m_ui.le_pitch->setText(pitchText(m_calibration->isHorzPitch()));
    writeParameter(m_ui.le_timer01, timer01, 400);
    writeParameter(m_ui.le_timer02, timer02, 100);
    writeParameter(m_ui.le_timer03, timer03, 400);
    writeParameter(m_ui.le_timer04, timer04, 5000);
    writeParameter(m_ui.le_timer05, timer05, 600);
    setNumber(testTrials);
}

int Test2::fullCycle() const
{
    return bounded::sum({timer01, foreperiodSpan, timer02, timer03, timer04, timer05});
}

void Test2::toLe_timer01()
{
    takeTimer(m_ui.le_timer01, timer01);
}
void Test2::toLe_timer02()
{
    takeTimer(m_ui.le_timer02, timer02);
}
void Test2::toLe_timer03()
{
    takeTimer(m_ui.le_timer03, timer03);
}
void Test2::toLe_timer04()
{
    takeTimer(m_ui.le_timer04, timer04);
}
void Test2::toLe_timer05()
{
    takeTimer(m_ui.le_timer05, timer05);
}

int Test2::sessionNumber() const
{
    return m_calibration->isSessionNb_T2();
}

void Test2::computeScores()
{
    m_scores = m_table.compute(m_errors, m_trialCount);
    for (int rank = 1; rank <= AttentionScores::ranks; ++rank) {
        qCDebug(lcTest2, "%8.3f %8.3f %8.3f %8.3f %8.3f %8.3f", m_table.time(Neutral, rank),
                m_table.corrected(Neutral, rank), m_table.time(Alerted, rank),
                m_table.corrected(Alerted, rank), m_table.time(Oriented, rank),
                m_table.corrected(Oriented, rank));
    }
}

QByteArray Test2::scoreRow()
{
    std::array<rows::ConditionT2, conditions> columns;
    for (std::size_t c = 0; c < conditions; ++c) {
        const AttentionScores::Condition &score = m_scores[c];
        columns[c] = {score.value, score.error, score.fit.slope, score.fit.r2};
    }
    return rows::scoresT2(rows::identity(),
                          {m_taskCode, sessionNumber(), TimeSource::current().currentDateTime(),
                           m_duration, m_trialCount},
                          columns);
}

void Test2::goResult(bool show)
{
    const auto &[a, b, c] = m_scores;
    m_result->goResult2(show, m_trialStamp, sessionNumber(), m_duration, m_trialCount, //
                        a.value, a.error, a.fit.slope, a.fit.r2,                       //
                        b.value, b.error, b.fit.slope, b.fit.r2,                       //
                        c.value, c.error, c.fit.slope, c.fit.r2);
}
