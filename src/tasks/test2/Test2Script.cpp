#include "Test2.h"

#include "DrawArrow.h"
#include "DrawCross.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "TaskTimer.h"
#include "attentionLayout.h"
#include "compass.h"
#include "randomness.h"

// The instruction and the training: neutral, alerted, oriented, each shown and then tried.

namespace {
constexpr int trainingTrials = 5; // valid ones, a condition
/// The arrow's ninth turn of the demonstration goes past the last direction of the table.
constexpr double pastTheTable = 250.0;

// The timers of the demonstrations, behind the five of the chain.
enum {
    NeutralOn = 5,
    NeutralOff,
    AlertedCue,
    AlertedOn,
    AlertedOff,
    OrientedCue,
    OrientedOn,
    OrientedOff
};
} // namespace

void Test2::toPb_next()
{
    m_ui.pb_next->setDown(false);
    switch (m_instrStep) {
    case 0:
        return i_sequence0();
    case 1:
        return i_sequence1();
    case 2:
        return i_sequence2();
    case 3:
        stopDemonstration(NeutralOn, NeutralOff);
        return m_withTraining ? t_sequence0() : i_sequence10();
    case 11:
        return i_sequence11();
    case 12:
        return i_sequence12();
    case 13:
        stopDemonstration(AlertedCue, AlertedOff);
        return m_withTraining ? t_sequence10() : i_sequence20();
    case 21:
        return i_sequence21();
    case 22:
        return i_sequence22();
    case 23:
        stopDemonstration(OrientedCue, OrientedOff);
        return m_withTraining ? t_sequence20() : seq_escape(false);
    default:
        return;
    }
}

void Test2::stopDemonstration(int firstTimer, int lastTimer)
{
    for (int i = firstTimer; i <= lastTimer; ++i)
        m_timers[std::size_t(i)]->stop();
}

void Test2::beginInstruction()
{
    m_ui.lbl_instruction->setText(tr("Attention\nneutral"));
    m_ui.lbl_instruction->show();
}

// All eight places of the target at once.
void Test2::i_sequence0()
{
    m_instructing = true;
    m_ui.lbl_instruction->hide();
    constexpr int lastDirection = compass::directions - 1;
    m_target->move(attentionLayout::targetPlace(lastDirection, centre()));
    for (int d = 0; d < lastDirection; ++d) {
        DrawGrayRectangle *marker = m_markers[std::size_t(d)];
        marker->move(attentionLayout::targetPlace(d, centre()));
        marker->show();
    }
    m_cross->show();
    m_target->show();
    m_instrStep = 1;
}

void Test2::i_sequence1()
{
    m_cross->hide();
    m_target->hide();
    for (DrawGrayRectangle *marker : m_markers)
        marker->hide();
    showExample(2);
}

void Test2::i_sequence2()
{
    startDemonstration(NeutralOn, 2000, 3);
}
void Test2::i_sequence11()
{
    showExample(12);
}
void Test2::i_sequence12()
{
    startDemonstration(AlertedCue, 1500, 13);
}
void Test2::i_sequence21()
{
    showExample(22);
}
void Test2::i_sequence22()
{
    startDemonstration(OrientedCue, 1500, 23);
}
void Test2::i_sequence10()
{
    showPart(tr("Attention\nalerted"), 11);
}
void Test2::i_sequence20()
{
    showPart(tr("Attention\noriented"), 21);
}

void Test2::showPart(const QString &title, int nextStep)
{
    m_instructing = true;
    setCursor(Qt::ArrowCursor);
    pointAtNext();
    hideStimuli();
    showMode(Instructions);
    m_ui.lbl_instruction->setText(title);
    m_ui.lbl_instruction->show();
    m_ui.pb_next->show();
    m_instrStep = nextStep;
}

void Test2::showExample(int nextStep)
{
    m_ui.lbl_instruction->setText(tr("Example"));
    m_ui.lbl_instruction->show();
    m_instrStep = nextStep;
}

void Test2::startDemonstration(int timer, int interval, int nextStep)
{
    m_ui.lbl_instruction->hide();
    m_cross->show();
    m_tab8Index.fill(0);
    m_timers[std::size_t(timer)]->start(interval);
    m_instrStep = nextStep;
}

/// The demonstrations go round in the order of the compass.
void Test2::showNextTarget(std::size_t condition)
{
    std::size_t &index = m_tab8Index[condition];
    if (index >= compass::directions)
        index = 0;
    m_target->move(attentionLayout::targetPlace(int(index), centre()));
    ++index;
    m_target->show();
}

void Test2::i_sequence3()
{
    m_timers[NeutralOn]->stop();
    showNextTarget(Neutral);
    m_timers[NeutralOff]->start(2000);
}

void Test2::i_sequence4()
{
    m_timers[NeutralOff]->stop();
    m_target->hide();
    m_timers[NeutralOn]->start(2000);
}

void Test2::i_sequence13()
{
    m_timers[AlertedCue]->stop();
    m_cross->hide();
    m_ui.lbl_asterisk->show();
    m_timers[AlertedOn]->start(500);
}

void Test2::i_sequence14()
{
    m_timers[AlertedOn]->stop();
    m_ui.lbl_asterisk->hide();
    m_cross->show();
    showNextTarget(Alerted);
    m_timers[AlertedOff]->start(2000);
}

void Test2::i_sequence15()
{
    m_timers[AlertedOff]->stop();
    m_target->hide();
    m_timers[AlertedCue]->start(1500);
}

void Test2::i_sequence23()
{
    m_timers[OrientedCue]->stop();
    const std::size_t index = m_tab8Index[Oriented];
    m_arrow->rotation =
        index < compass::_tabRot.size() ? double(compass::_tabRot[index]) : pastTheTable;
    showFixation(true);
    m_timers[OrientedOn]->start(randomness::next() % 1200 + 400);
}

void Test2::i_sequence24()
{
    m_timers[OrientedOn]->stop();
    showFixation(false);
    showNextTarget(Oriented);
    m_timers[OrientedOff]->start(2000);
}

void Test2::i_sequence25()
{
    m_timers[OrientedOff]->stop();
    m_target->hide();
    m_timers[OrientedCue]->start(1500);
}

void Test2::beginTraining()
{
    t_sequence0();
}

void Test2::t_sequence0()
{
    showTraining(tr("Attention\nneutral"), 1, trainingTrials);
}

void Test2::t_sequence1()
{
    m_withInstruction ? i_sequence10() : t_sequence10();
}

void Test2::t_sequence10()
{
    showTraining(tr("Attention\nalerted"), 2, trainingTrials);
    setCursor(Qt::ArrowCursor);
    pointAtNext();
}

void Test2::t_sequence11()
{
    m_withInstruction ? i_sequence20() : t_sequence20();
}

void Test2::t_sequence20()
{
    showTraining(tr("Attention\noriented"), 3, trainingTrials);
    setCursor(Qt::ArrowCursor);
    pointAtNext();
}

void Test2::t_sequence21()
{
    m_subtask = 0; // the blocks had one each
    beginTest(testTrials);
}
