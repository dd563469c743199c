#include "Test1.h"

#include "DrawArrowPeriph.h"
#include "DrawCross.h"
#include "Random.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "exposures.h"
#include "tables.h"

#include <QLoggingCategory>

// One trial: fixation, stimulus, mask, blank, answer, rest, and the step that it makes.

Q_DECLARE_LOGGING_CATEGORY(lcTest1)

namespace {
constexpr int kinds = 5;    // of figures
constexpr int figures = 10; // every kind with its difference on the right, and on the left
constexpr int lastTrainingTrial = 9;
} // namespace

void Test1::toPb_go()
{
    m_startTime = TimeSource::current().currentDateTime();
    if (m_phase == 0) {
        for (State &state : m_state)
            state.track.seed(m_frequency, state.exposure);
    }
    for (const Timer ended : {Exposure, Mask}) // the mask is the largest picture by far
        rehearsePaint(m_timers[ended], m_ui.lbl_noise->geometry());
    TaskDialog::toPb_go();
}

void Test1::startTimer(Timer timer, int ms)
{
    m_timers[timer]->start(ms);
}

void Test1::sequence0()
{
    beginPictures();
    m_instructing = false;
    m_limitReached = 0;
    m_markedError = false;
    m_cycleClock.start();
    setCursor(Qt::BlankCursor); // a trial that was held has shown it
    m_cross->show();
    showRanks();

    if (m_indexSubtask >= int(subtasks)) {
        m_indexSubtask = 0;
        playTab3 = m_random->generateRand3();
    }
    m_subtask = m_mode == 0 ? playTab3.at(std::size_t(m_indexSubtask)) : m_mode - 1;
    m_ui.le_subtask->setText(QStringLiteral("%1").arg(m_subtask + 1));
    // The half that isn't asked for counts as answered, and right.
    m_centralDone = m_centralOk = !hasFigures();
    m_periphDone = m_periphOk = !hasTriangles();

    m_time02 = trialState().exposure;
    m_centralWrong = 0;
    m_periphWrong = 0;
    m_trialError = 0;
    paintNow();
    startInterval(m_timers[Fixation], m_time01);
    enterStage(1);
}

void Test1::drawFigures()
{
    if (m_indexFigure < figures)
        return;
    m_indexFigure = 0;
    const std::vector<int> tab = playTab10 = m_random->generateRand10();
    qCDebug(lcTest1, "playTab10 %4d %4d %4d %4d %4d %4d %4d %4d %4d %4d", tab[0], tab[1], tab[2],
            tab[3], tab[4], tab[5], tab[6], tab[7], tab[8], tab[9]);
}

void Test1::drawPositions()
{
    if (m_indexPos < VisionLayout::positions)
        return;
    m_indexPos = 0;
    const std::vector<int> tab = playTab6 = m_random->generateRand6();
    qCDebug(lcTest1, "playTab6 %4d %4d %4d %4d %4d %4d", tab[0], tab[1], tab[2], tab[3], tab[4],
            tab[5]);
}

int Test1::figure() const
{
    return playTab10.at(std::size_t(m_indexFigure));
}

int Test1::position() const
{
    return playTab6.at(std::size_t(m_indexPos));
}

void Test1::sequence1()
{
    m_cross->hide();
    if (hasFigures()) {
        drawFigures();
        showPair(figure());
    }
    if (hasTriangles()) {
        drawPositions();
        showTriangles(position());
    }
    paintNow(m_timers[Fixation]);
    startInterval(m_timers[Exposure], trialState().exposure);
    m_trialStamp = TimeSource::current().currentDateTime();
    enterStage(2);
}

/// Of a pair one figure is always the standard one; the other stands on the right in the first five
/// pairs and on the left in the last five.
void Test1::showPair(int number)
{
    const Kind &kind = m_kinds.at(std::size_t(number % kinds));
    const Kind &standard = m_kinds[0];
    if (number < kinds) {
        standard.left->show();
        kind.right->show();
    } else {
        kind.left->show();
        standard.right->show();
    }
}

void Test1::showTriangles(int target)
{
    constexpr double halfTurn = 180.0;
    for (int i = 0; i < VisionLayout::positions; ++i) {
        const auto at = std::size_t(i);
        m_arrows[at]->rotation = VisionLayout::_periphAngle[at] + (i == target ? halfTurn : 0.0);
        m_arrows[at]->setGeometry(m_layout.triangle(i, centre()));
        m_arrows[at]->show();
    }
}

void Test1::hideFigures()
{
    for (const Kind &kind : m_kinds) {
        kind.left->hide();
        kind.right->hide();
    }
}

void Test1::hideTriangles()
{
    for (DrawArrowPeriph *arrow : m_arrows)
        arrow->hide();
}

void Test1::sequence2()
{
    m_ui.lbl_mode->hide();
    m_ui.lbl_noise->show();
    hideFigures();
    hideTriangles();
    paintNow(m_timers[Exposure]);
    startInterval(m_timers[Mask], m_time03);
    enterStage(3);
}

void Test1::sequence3()
{
    m_ui.lbl_noise->hide();
    if (m_phase != 0)
        showMode(Training);
    paintNow(m_timers[Mask]);
    startInterval(m_timers[Blank], m_time04);
    enterStage(4);
}

void Test1::sequence4()
{
    showFigureButtons(hasFigures());
    showPositionButtons(hasTriangles());
    setCursor(Qt::ArrowCursor);
    pointAt(centre()); // every answer starts from the same place
    paintNow(m_timers[Blank]);
    if (m_fixedDuration)
        startTimer(Limit, m_time05);
    enterStage(5);
    m_rtClock.startAt(shownAt());
}

void Test1::showFigureButtons(bool shown)
{
    for (QPushButton *button : m_figureButtons)
        button->setVisible(shown);
}

void Test1::showPositionButtons(bool shown)
{
    for (QPushButton *button : m_positionButtons)
        button->setVisible(shown);
}

bool Test1::awaitsAnswer() const
{
    // While a trial is held its buttons are gone.
    return m_stage == 5 && (m_figureButtons[0]->isVisible() || m_positionButtons[0]->isVisible());
}

void Test1::toPb_uniform()
{
    answerFigure(0);
}
void Test1::toPb_shape()
{
    answerFigure(1);
}
void Test1::toPb_contrast()
{
    answerFigure(2);
}
void Test1::toPb_orientation()
{
    answerFigure(3);
}
void Test1::toPb_size()
{
    answerFigure(4);
}
void Test1::toPb_pos0()
{
    answerPosition(0);
}
void Test1::toPb_pos1()
{
    answerPosition(1);
}
void Test1::toPb_pos2()
{
    answerPosition(2);
}
void Test1::toPb_pos3()
{
    answerPosition(3);
}
void Test1::toPb_pos4()
{
    answerPosition(4);
}
void Test1::toPb_pos5()
{
    answerPosition(5);
}

void Test1::answerFigure(int kind)
{
    m_figureButtons.at(std::size_t(kind))->setDown(false);
    if (m_instructing) {
        answerExampleFigure();
        return;
    }
    if (m_stage != 5 || m_centralDone)
        return;
    m_centralOk = figure() % kinds == kind;
    m_figureAnswer = tables::_shapeButton.at(std::size_t(kind));
    sequence5a();
}

void Test1::answerPosition(int place)
{
    m_positionButtons.at(std::size_t(place))->setDown(false);
    if (m_instructing) {
        answerExamplePosition();
        return;
    }
    if (m_stage != 5 || m_periphDone)
        return;
    m_periphOk = position() == place;
    m_positionAnswer = tables::_triDef.at(std::size_t(place));
    sequence5b();
}

void Test1::sequence5a()
{
    m_figure = tables::_shapeDef.at(std::size_t(figure()));
    if (m_subtask == Central)
        m_position.clear();
    ++m_indexFigure;
    m_centralDone = true;
    showFigureButtons(false);
    m_centralWrong = m_centralOk ? 0 : 1;
    if (m_periphDone)
        endAnsweredTrial("5a");
}

void Test1::sequence5b()
{
    m_position = tables::_triDef.at(std::size_t(position()));
    if (m_subtask == Peripheral)
        m_figure.clear();
    ++m_indexPos;
    m_periphDone = true;
    showPositionButtons(false);
    m_periphWrong = m_periphOk ? 0 : 2;
    if (m_centralDone)
        endAnsweredTrial("5b");
}

void Test1::endAnsweredTrial(const char *link)
{
    m_timers[Limit]->stop();
    m_answerTime = m_rtClock.elapsed();
    const bool success = m_centralOk && m_periphOk;
    if (success) {
        ++m_successes;
        qCDebug(lcTest1, "%s success subtask %3d", link, m_subtask);
    }
    m_ui.le_result->setText(success ? QStringLiteral("1") : QStringLiteral("0"));
    if (m_phase == 0)
        stepInTest(success);
    else
        stepInTraining(success);
    showExposure(Subtask(m_subtask));
    closeTrial(closingWait(m_time06));
}

void Test1::stepInTest(bool success)
{
    State &state = trialState();
    m_limitReached = state.track.step(success) ? 1 : 0;
    state.exposure = state.track.exposure();
    qCDebug(lcTest1, "res %3d%3d", state.track.position() + 1, state.track.index());
}

void Test1::stepInTraining(bool success)
{
    State &state = trialState();
    const int last = int(exposures::_t_timer02_T1.size()) - 1;
    if (success && m_trialNo < lastTrainingTrial && state.trainingIndex > 0) {
        --state.trainingIndex;
        state.trainingOk = true;
    } else if (!success && state.trainingIndex < last) {
        ++state.trainingIndex;
    } else {
        return;
    }
    state.exposure = exposures::_t_timer02_T1[std::size_t(state.trainingIndex)];
}

void Test1::closeTrial(int rest)
{
    m_cross->show();
    setCursor(Qt::BlankCursor);
    startTimer(Rest, rest);
    enterStage(6);
}

/// The place of the target of a trial that has no full answer. Behind the answer of the peripheral
/// half this is the next one of the shuffle, if there is one.
void Test1::noteTarget()
{
    if (m_subtask == Central)
        m_position.clear();
    else if (m_indexPos < VisionLayout::positions)
        m_position = tables::_triDef.at(std::size_t(position()));
}

void Test1::endMarkedTrial()
{
    ++trialState().errors;
    if (m_subtask == Peripheral)
        m_figure.clear();
    else if (m_indexFigure < figures)
        m_figure = tables::_shapeDef.at(std::size_t(figure()));
    noteTarget();
    m_trialError = 1;
    sequence6();
}

void Test1::sequence5()
{
    m_ui.le_result->setText(QStringLiteral("0"));
    ++trialState().errors;
    if (m_subtask == Peripheral)
        m_figure.clear();
    noteTarget();
    ++m_indexFigure;
    ++m_indexPos;
    showFigureButtons(false);
    showPositionButtons(false);
    m_trialError = 1;
    m_answerTime = m_time05;
    closeTrial(closingWait(m_time06));
}
