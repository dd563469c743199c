#include "Test2.h"

#include "DrawArrow.h"
#include "DrawCross.h"
#include "DrawRectangle.h"
#include "Random.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "attentionLayout.h"
#include "bounded.h"
#include "compass.h"
#include "randomness.h"
#include "rows.h"
#include "tables.h"

#include <QLoggingCategory>
#include <QMouseEvent>

#include <algorithm>

// One trial: foreperiod, cue, wait, target, answer, and what of it counts.

Q_DECLARE_LOGGING_CATEGORY(lcTest2)

namespace {
constexpr int slowest = 2000; // ms; a later answer is none in the test

// The timers of the chain by what they end.
enum { Foreperiod, Cue, Wait, Limit, Closing };
} // namespace

void Test2::sequence0()
{
    beginPictures();
    m_cycleTime = m_cycleClock.restart();
    drawSpentTables();
    m_condition =
        m_subtask == 0 ? std::size_t(playTab3.at(m_tab3Index)) : std::size_t(m_subtask - 1);
    m_ui.le_subtask->setText(QStringLiteral("%1").arg(m_condition + 1));
    hidePointer();

    if (m_condition == Oriented) // it points at the coming target from the start, and never lies
        m_arrow->rotation = compass::_tabRot.at(std::size_t(direction()));
    showFixation(m_condition == Oriented);
    m_markedError = false;
    m_ui.lbl_asterisk->hide();

    m_firstDelay = bounded::sum({randomness::next() % foreperiodSpan, timer01});
    m_ui.le_no->setText(QStringLiteral("%1").arg(m_trialNo + 1));
    paintNow();
    startInterval(m_timers[Foreperiod], m_firstDelay);
    m_invalid = 0;
    enterStage(1);
}

void Test2::drawSpentTables()
{
    using Draw = std::vector<int> (Random::*)() const;
    constexpr std::array<Draw, conditions> draws{&Random::generateRand8_a, &Random::generateRand8_b,
                                                 &Random::generateRand8_c};
    for (std::size_t c = 0; c < conditions; ++c) {
        if (m_tab8Index[c] < compass::directions)
            continue;
        m_tab8Index[c] = 0;
        const std::vector<int> table = m_playTab8[c] = (m_random->*draws[c])();
        qCDebug(lcTest2, "playTab8 %4d %4d %4d %4d %4d %4d %4d %4d", table[0], table[1], table[2],
                table[3], table[4], table[5], table[6], table[7]);
    }
    if (m_tab3Index >= conditions) {
        m_tab3Index = 0;
        playTab3 = m_random->generateRand3();
    }
}

void Test2::showFixation(bool arrow)
{
    m_arrow->setVisible(arrow);
    m_cross->setVisible(!arrow);
}

int Test2::direction() const
{
    const std::vector<int> &table = m_playTab8[m_condition];
    return table.at(std::min(m_tab8Index[m_condition], table.size() - 1));
}

void Test2::sequence1()
{
    ++m_conditionCount[m_condition];
    if (m_condition == Alerted) {
        m_cross->hide();
        m_ui.lbl_asterisk->show();
    }
    paintNow(m_timers[Foreperiod]);
    m_timers[Foreperiod]->stop();
    startInterval(m_timers[Cue], timer02);
    enterStage(2);
}

void Test2::sequence2()
{
    if (m_condition != Oriented) {
        showFixation(false);
        m_ui.lbl_asterisk->hide();
    }
    paintNow(m_timers[Cue]);
    m_cueClock.startAt(shownAt());
    m_timers[Cue]->stop();
    startInterval(m_timers[Wait], timer03);
    enterStage(3);
}

void Test2::sequence3()
{
    const int d = direction();
    qCDebug(lcTest2, "%c %4d %4d", "abc"[m_condition], int(m_tab8Index[m_condition]), d);
    m_target->move(attentionLayout::targetPlace(d, centre()));
    m_targetShown = true;
    m_target->show();
    paintNow(m_timers[Wait]);
    m_rtClock.startAt(shownAt());
    m_timers[Wait]->stop();
    if (m_fixedDuration)
        m_timers[Limit]->start(timer04);
    m_trialStamp = TimeSource::current().currentDateTime();
    enterStage(4);
}

void Test2::answerTask()
{
    if (m_targetShown) {
        m_rt = m_rtClock.elapsedAt(inputMoment());
        m_targetShown = false;
        m_target->hide();
        if (m_condition == Oriented)
            showFixation(false);
        m_timers[Limit]->stop();
    } else if (m_timers[Wait]->isActive()) { // an anticipation: the target is never shown
        m_rt = bounded::sum({m_cueClock.elapsedAt(inputMoment()), -qint64(timer03)});
        m_timers[Wait]->stop();
        m_invalid = 1;
    } else {
        return;
    }
    m_timers[Closing]->start(closingWait(timer05));
    m_ui.le_result->setText(QStringLiteral("%1").arg(m_rt));
}

void Test2::sequence4()
{
    m_targetShown = false;
    m_target->hide();
    m_rt = timer04;
    m_ui.le_result->setText(QStringLiteral("%1").arg(m_rt));
    m_timers[Limit]->stop();
    m_timers[Closing]->start(closingWait(timer05));
    m_invalid = 1;
    qCDebug(lcTest2, "sequence 4");
    enterStage(5);
}

void Test2::endMarkedTrial()
{
    sequence4();
}

void Test2::sequence5()
{
    const int d = direction();
    const int rank = m_conditionCount[m_condition];
    if (m_invalid == 0)
        ++m_tab8Index[m_condition]; // an invalid trial's direction comes again
    if (m_phase == 0)
        logTestTrial(d, rank);
    judgeTrial();
    ++m_trialCount;
    m_timers[Closing]->stop();

    if (m_trialNo == m_number)
        nextBlock();
    else if (!m_markedError) // a struck trial waits for the assessor
        sequence0();
}

void Test2::logTestTrial(int direction, int rank)
{
    QString reactionTime;
    if (m_markedError)
        m_rt = 0;
    else
        reactionTime = QStringLiteral("%1").arg(m_rt);
    if (m_rt > slowest) // too late to count, though its direction is used up
        m_invalid = 1;

    const rows::TrialHead head{m_taskCode, sessionNumber(), m_trialStamp, int(m_condition) + 1,
                               m_trialNo + 1};
    logTrial(head,
             rows::trialT2(rows::identity(), head,
                           {rank, reactionTime, tables::_roseVents.at(std::size_t(direction))},
                           m_invalid),
             m_invalid == 0);
    if (m_invalid == 0) {
        const int condition = playTab3.at(std::min(m_tab3Index, conditions - 1));
        m_table.store(condition, rank, m_rt);
        qCDebug(lcTest2, "testNumber %6d %6d %6d %8.3f", int(m_condition), rank - 1, m_rt,
                double(m_rt));
    }
}

void Test2::judgeTrial()
{
    if (m_invalid != 0) {
        ++m_errors[m_condition];
        --m_conditionCount[m_condition];
        return;
    }
    ++m_tab3Index;
    hidePointer();
    ++m_trialNo;
}

void Test2::nextBlock()
{
    endBlock();
    if (m_phase == 0)
        endTest();
    else if (m_subtask == 1)
        t_sequence1();
    else if (m_subtask == 2)
        t_sequence11();
    else if (m_subtask == 3)
        t_sequence21();
}

void Test2::taskKey(int key)
{
    if (key == Qt::Key_Space && !m_instructing)
        answerTask();
}

void Test2::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    noteInput(*event);
    answerTask();
}
