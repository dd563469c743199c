#include "Test4.h"

#include "DrawCross.h"
#include "DrawCrossDot.h"
#include "DrawCrossThick.h"

// The instruction and the training.

namespace {
constexpr int trainingTrials = 3; // valid ones
constexpr int exampleRadiusExtra = 150;
} // namespace

void Test4::toPb_next()
{
    m_ui.pb_next->setDown(false);
    constexpr int lastStep = 6;
    constexpr std::array steps{&Test4::i_sequence0, &Test4::i_sequence1, &Test4::i_sequence2,
                               &Test4::i_sequence3, &Test4::i_sequence4, &Test4::i_sequence5};
    if (m_instrStep < int(steps.size()))
        (this->*steps[std::size_t(m_instrStep)])();
    else if (m_instrStep == lastStep)
        m_withTraining ? t_sequence0() : seq_escape(false);
}

void Test4::beginInstruction()
{
    m_ui.lbl_instruction->setText(tr("Memory"));
    m_ui.lbl_instruction->show();
}

/// A cross of the example, `angle` degrees clockwise from the top.
void Test4::showExample(Target &target, float angle, const QString &text)
{
    m_ui.lbl_localisation->setText(text);
    m_ui.lbl_localisation->show();
    target.place = memoryField::Place{angle, exampleRadiusExtra}.around(centre());
    showAt(target.cross, target.place);
}

void Test4::i_sequence0()
{
    m_instructing = true;
    m_ui.lbl_instruction->hide();
    m_cross->show();
    showExample(m_first, 35, tr("First localisation to remember"));
    m_instrStep = 1;
}

void Test4::i_sequence1()
{
    m_first.cross->hide();
    showAt(m_first.marker, m_first.place); // stays as a reminder
    showExample(m_last, 275, tr("Second localisation"));
    m_instrStep = 2;
}

void Test4::i_sequence2()
{
    showExample(m_last, 355, tr("Third localisation"));
    m_instrStep = 3;
}

void Test4::i_sequence3()
{
    showExample(m_last, 190, tr("Fourth and last localisation"));
    m_instrStep = 4;
}

void Test4::i_sequence4()
{
    m_ui.lbl_localisation->hide();
    m_first.marker->hide();
    m_last.cross->hide();
    m_ui.lbl_lastCross->show();
    showAt(m_last.marker, m_last.place);
    m_instrStep = 5;
}

void Test4::i_sequence5()
{
    m_ui.lbl_lastCross->hide();
    m_last.marker->hide();
    m_ui.lbl_firstCross->show();
    showAt(m_first.marker, m_first.place);
    m_instrStep = 6;
}

void Test4::beginTraining()
{
    t_sequence0();
}

void Test4::t_sequence0()
{
    m_instructing = false;
    showTraining(tr("Memory"), m_subtask, trainingTrials);
}

void Test4::t_sequence1()
{
    // The only block of training leads into the test.
}
