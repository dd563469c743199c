#include "Test1.h"

#include "DrawCross.h"
#include "DrawRectangle.h"
#include "TaskTimer.h"

// The instruction and the training: central, peripheral, dual, each shown, tried and trained.

namespace {
constexpr int figures = 10;
constexpr int trainingTrials = 10;
constexpr int behindTheScript = 28;
constexpr int demonstrationPace = 2000; // ms
constexpr int exampleExposure = 1000;   // ms, of one half
constexpr int dualExposure = 2000;      // ms
constexpr int maskExposure = 200;       // ms
} // namespace

void Test1::toPb_next()
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
        m_timers[CentralDemonstration]->stop();
        return i_sequence5();
    case 6:
        beginExamples();
        return i_sequence6();
    case 9:
        leaveExamples();
        if (m_withTraining)
            return t_sequence0();
        return m_mode != 1 ? i_sequence10() : seq_escape(false);
    case 11:
        startTimer(PeripheralDemonstration, demonstrationPace);
        return i_sequence11();
    case 13:
        m_timers[PeripheralDemonstration]->stop();
        return i_sequence13();
    case 14:
        beginExamples();
        return i_sequence14();
    case 17:
        leaveExamples();
        if (m_withTraining)
            return t_sequence10();
        return m_mode != 2 ? i_sequence20() : seq_escape(false);
    case 21:
        startTimer(DualDemonstration, demonstrationPace);
        return i_sequence21();
    case 23:
        m_timers[DualDemonstration]->stop();
        return i_sequence23();
    case 24:
        beginExamples();
        m_exampleCentralDone = true;
        m_examplePeriphDone = true;
        return i_sequence24();
    case 27:
        leaveExamples();
        return m_withTraining ? t_sequence20() : seq_escape(false);
    default:
        if (m_instrStep >= behindTheScript)
            seq_escape(false);
    }
}

void Test1::showPart(Subtask subtask, const QString &title, int nextStep)
{
    m_instructing = true;
    m_subtask = subtask;
    showMode(Instructions);
    m_ui.lbl_instruction->setText(title);
    m_ui.lbl_instruction->show();
    m_ui.pb_next->show();
    setCursor(Qt::ArrowCursor);
    pointAtNext();
    showFigureButtons(false);
    showPositionButtons(false);
    m_cross->hide(); // of a training block
    m_indexFigure = 0;
    m_indexPos = 0;
    m_instrStep = nextStep;
}

void Test1::showExampleTitle(int nextStep)
{
    m_cross->hide();
    hideFigures();
    hideTriangles();
    m_ui.lbl_instruction->setText(m_txtExample);
    m_ui.lbl_instruction->show();
    m_instrStep = nextStep;
}

void Test1::beginExamples()
{
    m_indexFigure = figures; // spent
    m_indexPos = VisionLayout::positions;
    m_ui.lbl_instruction->hide();
    m_ui.pb_next->hide();
    setFocus(); // it went to another button when that one hid
}

/// An example may be left while it is still shown.
void Test1::leaveExamples()
{
    stopTimers();
    hideStimuli();
}

void Test1::maskExample(Timer timer)
{
    hideFigures();
    hideTriangles();
    m_ui.lbl_noise->show();
    m_ui.lbl_mode->hide();
    startTimer(timer, maskExposure);
}

/// The answer buttons of the part; an answer leads to the next example.
void Test1::askExample(int nextStep)
{
    m_ui.lbl_noise->hide();
    m_ui.lbl_mode->show();
    m_ui.pb_next->show();
    if (hasFigures()) {
        showFigureButtons(true);
        ++m_indexFigure;
    }
    if (hasTriangles()) {
        showPositionButtons(true);
        ++m_indexPos;
    }
    m_instrStep = nextStep;
}

void Test1::answerExampleFigure()
{
    if (m_subtask == Dual) {
        m_exampleCentralDone = true;
        i_sequence24();
    } else {
        i_sequence6();
    }
}

void Test1::answerExamplePosition()
{
    if (m_subtask == Dual) {
        m_examplePeriphDone = true;
        i_sequence24();
    } else {
        i_sequence14();
    }
}

void Test1::i_sequence0()
{
    showPart(Central, m_txtCentral, 1);
}

// The five kinds of figure in a row, by their names.
void Test1::i_sequence1()
{
    m_ui.lbl_instruction->hide();
    constexpr int middle = 2;
    for (int kind = 0; kind < int(m_kinds.size()); ++kind) {
        Stimulus *figure = m_kinds[std::size_t(kind)].left;
        figure->move(m_layout.inRow(kind, centre()));
        figure->show();
        QLabel *label = m_kindLabels[std::size_t(kind)];
        label->move(m_centerX + (kind - middle) * VisionLayout::rowStep - label->width() / 2,
                    m_centerY);
        label->show();
    }
    m_instrStep = 2;
}

void Test1::i_sequence2()
{
    hideFigures();
    for (QLabel *label : m_kindLabels)
        label->hide();
    placeStimuli(); // back to their places in a pair
    m_indexFigure = 0;
    startTimer(CentralDemonstration, demonstrationPace);
    i_sequence3();
    m_instrStep = 3;
}

void Test1::i_sequence3()
{
    if (m_indexFigure >= figures)
        m_indexFigure = 0;
    showPair(m_indexFigure);
}

void Test1::i_sequence4()
{
    hideFigures();
    ++m_indexFigure;
    i_sequence3();
}

void Test1::i_sequence5()
{
    showExampleTitle(6);
}

void Test1::i_sequence6()
{
    showFigureButtons(false);
    drawFigures();
    showPair(figure());
    startTimer(CentralExample, exampleExposure);
}

void Test1::i_sequence7()
{
    maskExample(CentralExampleMask);
}
void Test1::i_sequence8()
{
    askExample(9);
}
void Test1::i_sequence10()
{
    showPart(Peripheral, m_txtPeripheral, 11);
}

void Test1::i_sequence11()
{
    m_ui.lbl_instruction->hide();
    if (m_indexPos >= VisionLayout::positions)
        m_indexPos = 0;
    m_cross->show();
    showTriangles(m_indexPos);
    m_instrStep = 13;
}

void Test1::i_sequence12()
{
    hideTriangles();
    ++m_indexPos;
    i_sequence11();
}

void Test1::i_sequence13()
{
    showExampleTitle(14);
}

void Test1::i_sequence14()
{
    m_ui.pb_next->hide();
    showPositionButtons(false);
    drawPositions();
    showTriangles(position());
    startTimer(PeripheralExample, exampleExposure);
}

void Test1::i_sequence15()
{
    maskExample(PeripheralExampleMask);
}
void Test1::i_sequence16()
{
    askExample(17);
}
void Test1::i_sequence20()
{
    showPart(Dual, m_txtDual, 21);
}

void Test1::i_sequence21()
{
    m_ui.lbl_instruction->hide();
    if (m_indexFigure >= figures)
        m_indexFigure = 0;
    if (m_indexPos >= VisionLayout::positions)
        m_indexPos = 0;
    showPair(m_indexFigure);
    showTriangles(m_indexPos);
    m_instrStep = 23;
}

void Test1::i_sequence22()
{
    hideFigures();
    hideTriangles();
    ++m_indexFigure;
    ++m_indexPos;
    i_sequence21();
}

void Test1::i_sequence23()
{
    showExampleTitle(24);
}

void Test1::i_sequence24()
{
    m_ui.pb_next->hide();
    if (m_exampleCentralDone)
        showFigureButtons(false);
    if (m_examplePeriphDone)
        showPositionButtons(false);
    if (!m_exampleCentralDone || !m_examplePeriphDone)
        return;
    drawFigures();
    drawPositions();
    showPair(figure());
    showTriangles(position());
    startTimer(DualExample, dualExposure);
    m_exampleCentralDone = false;
    m_examplePeriphDone = false;
}

void Test1::i_sequence25()
{
    maskExample(DualExampleMask);
}
void Test1::i_sequence26()
{
    askExample(27);
}

void Test1::trainSubtask(Subtask subtask, const QString &title)
{
    m_mode = subtask + 1;
    showTraining(title, subtask, trainingTrials);
    setCursor(Qt::ArrowCursor);
}

/// One step down in the block is enough. Without one the subtask can't be measured.
bool Test1::hasPassed(Subtask subtask)
{
    if (m_state[subtask].trainingOk)
        return true;
    refuse(tr("Exposure time > 4633ms\nCheck visual fields and\n"
              "start training over again for this subtask"));
    return false;
}

void Test1::t_sequence0()
{
    trainSubtask(Central, m_txtCentral);
}

void Test1::t_sequence1()
{
    if (!hasPassed(Central))
        return;
    m_cross->hide();
    m_state[Central].hasThreshold = true;
    if (m_modeAsked == 1)
        t_sequence21();
    else
        m_withInstruction ? i_sequence10() : t_sequence10();
}

void Test1::t_sequence10()
{
    trainSubtask(Peripheral, m_txtPeripheral);
}

void Test1::t_sequence11()
{
    if (!hasPassed(Peripheral))
        return;
    m_cross->hide();
    m_state[Peripheral].hasThreshold = true;
    if (m_modeAsked == 2)
        t_sequence21();
    else
        m_withInstruction ? i_sequence20() : t_sequence20();
}

void Test1::t_sequence20()
{
    trainSubtask(Dual, m_txtDual);
}

void Test1::t_sequence21()
{
    if (m_mode == 3 && !hasPassed(Dual))
        return;
    m_state[Dual].hasThreshold = true;
    if (m_modeAsked == 0)
        m_mode = 0;
    m_withTraining = false;
    for (State &state : m_state)
        state.track.rewind();
    beginTest(mostTrials());
}
