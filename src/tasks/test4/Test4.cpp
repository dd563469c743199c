#include "Test4.h"

#include "DrawCircle.h"
#include "DrawCross.h"
#include "DrawCrossDot.h"
#include "DrawCrossThick.h"
#include "DrawLineSh.h"
#include "Result.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "parsed.h"
#include "rows.h"

#include <QLoggingCategory>

// Set-up, parameters, scores and report.

Q_LOGGING_CATEGORY(lcTest4, "kelmoran.test4", QtCriticalMsg)

namespace {
/// The words of the frame, for the catalogues: they are translated in the task's context.
[[maybe_unused]] constexpr const char *frameTexts[] = {
    QT_TRANSLATE_NOOP("Test4", "Error"), QT_TRANSLATE_NOOP("Test4", "Failed to open %1\n%2")};
} // namespace

Test4::Test4(QWidget *parent)
    : TaskDialog(parent)
    , m_cross(new DrawCross(this))
{
    m_first.cross = new DrawCrossThick(this);
    m_last.cross = new DrawCrossThick(this);
    m_first.marker = new DrawCrossDot(this);
    m_last.marker = new DrawCrossDot(this);
    m_outerRing = new DrawCircle(this);
    m_innerRing = new DrawCircle(this);
    m_sectorLines = new DrawLineSh(this);
    m_ui.setupUi(this);
    setUpFrame(taskWidgets(m_ui),
               {m_cross, m_first.cross, m_last.cross, m_first.marker, m_last.marker,
                m_ui.lbl_firstCross, m_ui.lbl_lastCross, m_ui.lbl_localisation});
    hideStimuli();
    Test4::hideGuides();
    m_taskCode = 4;

    constexpr std::array links{&Test4::sequence1, &Test4::sequence2, &Test4::sequence3,
                               &Test4::sequence4, &Test4::sequence5};
    for (std::size_t i = 0; i < timers; ++i) {
        m_timers[i] = newTimer();
        m_timers[i]->setSingleShot(true);
        connect(m_timers[i], &TaskTimer::timeout, this, links[i]);
    }
    connect(m_ui.le_timer01, &QLineEdit::editingFinished, this, &Test4::toLe_timer01);
    connect(m_ui.le_timer02, &QLineEdit::editingFinished, this, &Test4::toLe_timer02);
    connect(m_ui.le_timer03, &QLineEdit::editingFinished, this, &Test4::toLe_timer03);
    connect(m_ui.le_timer04, &QLineEdit::editingFinished, this, &Test4::toLe_timer04);
    connect(m_ui.le_timer05, &QLineEdit::editingFinished, this, &Test4::toLe_timer05);
}

void Test4::goTest4(bool withInstruction, bool withTraining, bool withParameters)
{
    go({.withInstruction = withInstruction,
        .withTraining = withTraining,
        .parameters = withParameters});
}

void Test4::resetRun()
{
    m_table.clear();
    m_scores = {};
    m_blockOver = false;
    m_skipContinue = false;
}

void Test4::resetBlock()
{
    m_errors = 0;
    m_crossIndex = 0;
    m_acceptClick = false;
    m_loadIndex = memoryField::loads; // spent: the first cross draws
    for (QLineEdit *edit : {m_ui.le_posFirst, m_ui.le_distFirst, m_ui.le_posLast, m_ui.le_distLast})
        edit->clear();
}

void Test4::placeStimuli()
{
    constexpr int crossSize = 2 * m_crossHalf;
    constexpr int outer = 2 * (memoryField::innerRadius + memoryField::radii);
    constexpr int inner = 2 * memoryField::innerRadius;
    const QRect middle = centred(crossSize, crossSize);
    for (QWidget *cross : std::initializer_list<QWidget *>{m_cross, m_first.cross, m_last.cross,
                                                           m_first.marker, m_last.marker})
        cross->setGeometry(middle);
    m_outerRing->setGeometry(centred(outer, outer));
    m_innerRing->setGeometry(centred(inner, inner));
    m_sectorLines->setGeometry(centred(outer, outer));
    hideGuides();

    // The questions are asked at the upper left, the localisations are told at the lower left.
    constexpr int questionAbove = 360;
    for (QLabel *question : {m_ui.lbl_firstCross, m_ui.lbl_lastCross}) {
        question->move(m_centerX - m_layoutHalfW + question->width() / 2,
                       m_centerY - question->height() / 2 - questionAbove);
    }
    const QLabel *told = m_ui.lbl_localisation;
    m_ui.lbl_localisation->move(m_centerX - m_layoutHalfW - told->width() / 2,
                                m_centerY + m_layoutHalfH - told->height() / 2);
}

void Test4::writeDefaults()
{
    const auto takePitch = [](QLineEdit *edit, float &pitch, int micrometres) {
        pitch = float(micrometres / 1000.0);
        edit->setText(pitchText(micrometres));
    };
    takePitch(m_ui.le_horzPitch, m_horzPitch, m_calibration->isHorzPitch());
    takePitch(m_ui.le_vertPitch, m_vertPitch, m_calibration->isVertPitch());
    setNumber(testTrials);
    writeParameter(m_ui.le_timer01, m_timer01, 1000);
    writeParameter(m_ui.le_timer02, m_timer02, 500);
    writeParameter(m_ui.le_timer03, m_timer03, 1000);
    writeParameter(m_ui.le_timer04, m_timer04, 5000);
    writeParameter(m_ui.le_timer05, m_timer05, 1000);
    showTrialNo();
}

void Test4::toLe_timer01()
{
    takeTimer(m_ui.le_timer01, m_timer01);
}
void Test4::toLe_timer02()
{
    takeTimer(m_ui.le_timer02, m_timer02);
}
void Test4::toLe_timer03()
{
    takeTimer(m_ui.le_timer03, m_timer03);
}
void Test4::toLe_timer04()
{
    takeTimer(m_ui.le_timer04, m_timer04);
}
void Test4::toLe_timer05()
{
    takeTimer(m_ui.le_timer05, m_timer05);
}

int Test4::sessionNumber() const
{
    return m_calibration->isSessionNb_T4();
}

void Test4::computeScores()
{
    m_scores = m_table.compute(m_errors, m_trialCount);
    for (int rank = 0; rank < testTrials; ++rank)
        qCDebug(lcTest4, "tab %6d", m_table.load(rank));
}

QByteArray Test4::scoreRow()
{
    const MemoryScores::Scores &s = m_scores;
    // The session number in this row is that of the attention task.
    return rows::scoresT4(rows::identity(),
                          {m_taskCode, m_calibration->isSessionNb_T2(),
                           TimeSource::current().currentDateTime(), m_duration, m_trialCount},
                          {s.averageF, s.averageL, s.slope, s.intercept, s.r2, s.practiceF.slope,
                           s.practiceF.r2, s.error});
}

void Test4::goResult(bool show)
{
    const MemoryScores::Scores &s = m_scores;
    m_result->goResult4(show, m_trialStamp, sessionNumber(), m_duration, m_trialCount, s.averageF,
                        s.averageL, s.error, s.practiceF.slope, s.practiceF.r2, s.slope,
                        s.intercept, s.r2);
}

const char *Test4::menuWord() const
{
    return "Results"; // the word of the other button
}
