#include "Test3.h"

#include "DrawArrow.h"
#include "DrawBorder.h"
#include "DrawCross.h"
#include "PatchBoard.h"
#include "TaskTimer.h"

// The instruction and the training.

namespace {
constexpr int trainingTrials = 5; // valid ones
// Where the arrow of the instruction points, degrees clockwise from the right.
constexpr double southWest = 135.0;
constexpr double northWest = 225.0;
constexpr double northEast = 315.0;
constexpr double east = 0.0;
} // namespace

void Test3::toPb_next()
{
    m_ui.pb_next->setDown(false);
    constexpr std::array steps{&Test3::i_sequence0, &Test3::i_sequence1, &Test3::i_sequence2,
                               &Test3::i_sequence3, &Test3::i_sequence4, &Test3::i_sequence5,
                               &Test3::i_sequence6, &Test3::i_sequence7, &Test3::i_sequence8};
    if (m_instrStep < int(steps.size()))
        (this->*steps[std::size_t(m_instrStep)])();
}

void Test3::beginInstruction()
{
    m_ui.lbl_instruction->setText(tr("Movement\ndetection"));
    m_ui.lbl_instruction->show();
}

/// New directions, in which the patches drift if they do.
void Test3::showNewField()
{
    showFieldAtRest(PatchField::drawn(PatchField::Random, 0));
}

void Test3::i_sequence0()
{
    m_instructing = true;
    m_ui.lbl_instruction->hide();
    m_cross->show();
    showNewField();
    m_instrStep = 1;
}

void Test3::i_sequence1()
{
    m_cross->hide();
    showArrow(southWest);
    m_instrStep = 2;
}

void Test3::i_sequence2()
{
    m_border->show();
    m_instrStep = 3;
}

void Test3::i_sequence3()
{
    m_timers[Movement]->start(timerMov);
    m_instrStep = 4;
}

void Test3::i_sequence4()
{
    m_timers[Movement]->stop();
    m_arrow->hide();
    m_cross->hide();
    m_border->hide();
    m_board->hide();
    showPad(true);
    m_instrStep = 5;
}

void Test3::i_sequence5()
{
    showPad(false);
    showNewField();
    showArrow(northWest);
    m_timers[Movement]->start(timerMov);
    m_instrStep = 6;
}

void Test3::i_sequence6()
{
    showArrow(northEast);
    showNewField();
    m_instrStep = 7;
}

void Test3::i_sequence7()
{
    showArrow(east);
    showNewField();
    m_instrStep = 8;
}

void Test3::i_sequence8()
{
    m_timers[Movement]->stop();
    m_arrow->hide();
    m_board->hide();
    m_withTraining ? t_sequence0() : seq_escape(false);
}

void Test3::beginTraining()
{
    t_sequence0();
}

void Test3::t_sequence0()
{
    m_instructing = false;
    showTraining(tr("Movement\ndetection"), m_subtask, trainingTrials);
}

void Test3::t_sequence1()
{
    // The only block of training leads into the test.
}
