#include "Test3.h"

#include "DrawArrow.h"
#include "DrawCross.h"
#include "PatchBoard.h"
#include "Random.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "bounded.h"
#include "compass.h"
#include "randomness.h"
#include "rows.h"
#include "tables.h"

#include <QKeyEvent>
#include <QLoggingCategory>

// One trial: wait, drift, arrow, Space, direction, and what of it counts.

Q_DECLARE_LOGGING_CATEGORY(lcTest3)

namespace {
constexpr int slowest = 5000; // ms; a later Space is none in the test
} // namespace

void Test3::sequence0()
{
    beginPictures();
    m_cycleTime = m_cycleClock.restart();
    qCDebug(lcTest3, "time %6d ", m_cycleTime);
    m_markedError = false;
    m_paused = false;
    drawSpentTables();
    m_condition = m_subtask == 0 ? playTab3.at(m_tab3Index) : m_subtask - 1;
    m_ui.le_subtask->setText(QStringLiteral("%1").arg(m_condition + 1));
    hidePointer();

    ++m_conditionCount.at(std::size_t(m_condition));
    showFieldAtRest(PatchField::drawn(PatchField::Condition(m_condition), ringPatch()));
    m_cross->show();
    m_arrow->hide();
    m_firstDelay = bounded::sum({randomness::next() % delaySpan, timer01});
    m_ui.le_no->setText(QStringLiteral("%1").arg(m_trialNo + 1));
    paintNow();
    startInterval(m_timers[Wait], m_firstDelay);
    m_goodAnswer = false;
    m_invalid = 0;
    enterStage(1);
}

void Test3::drawSpentTables()
{
    if (m_tab8Index >= PatchField::ringSize) {
        m_tab8Index = 0;
        const std::vector<int> tab = playTab88 = m_random->generateRand8();
        qCDebug(lcTest3, "playTab88 %4d %4d %4d %4d %4d %4d %4d %4d", tab[0], tab[1], tab[2],
                tab[3], tab[4], tab[5], tab[6], tab[7]);
    }
    if (m_tab3Index >= m_conditionCount.size()) {
        m_tab3Index = 0;
        const std::vector<int> tab = playTab3 = m_random->generateRand3();
        qCDebug(lcTest3, "playTab3 %4d %4d %4d", tab[0], tab[1], tab[2]);
    }
}

int Test3::ringPatch() const
{
    return playTab88.at(m_tab8Index);
}

void Test3::showFieldAtRest(const PatchField &field)
{
    m_field = field;
    m_board->setField(field);
    m_board->rest();
    m_board->show();
}

void Test3::showArrow(double rotation)
{
    m_arrow->rotation = rotation;
    m_arrow->update();
    m_arrow->show();
}

void Test3::showPad(bool shown)
{
    for (QPushButton *button :
         {m_ui.pb_right, m_ui.pb_down, m_ui.pb_left, m_ui.pb_up, m_ui.pb_center})
        button->setVisible(shown);
}

void Test3::sequence1()
{
    paintNow(m_timers[Wait]); // the field is there; from now on it drifts
    m_timers[Movement]->start(timerMov);
    m_movStep = 0;
    startInterval(m_timers[Arrow], timer02);
    m_trialStamp = TimeSource::current().currentDateTime();
    enterStage(2);
}

void Test3::sequenceMov()
{
    m_board->drift(m_movStep);
    ++m_movStep;
}

void Test3::sequence2()
{
    m_cross->hide();
    showArrow(compass::_tabRot.at(std::size_t(ringPatch())));
    paintNow(m_timers[Arrow]);
    m_timers[Grace]->start(timer03);
    m_waitSpace = true;
    m_rtClock.startAt(shownAt());
    enterStage(3);
}

void Test3::sequence3()
{
    if (m_fixedDuration)
        m_timers[Limit]->start(timer04);
    enterStage(4);
}

void Test3::answerSpace()
{
    if (m_paused || !m_waitSpace)
        return;
    m_rt = m_rtClock.elapsedAt(inputMoment());
    m_waitSpace = false;
    m_timers[Grace]->stop(); // or the limit would begin behind the pad, and strike a right answer
    m_timers[Limit]->stop();
    m_timers[Movement]->stop();
    m_ui.le_elapsed->setText(QStringLiteral("%1").arg(m_rt));
    reportAnswer();
}

void Test3::sequence4()
{
    m_waitSpace = false;
    m_rt = timer04;
    m_ui.le_elapsed->setText(QStringLiteral("%1").arg(m_rt));
    m_ui.le_result->setText(QStringLiteral("0"));
    m_timers[Movement]->stop();
    reportAnswer();
    m_invalid = 1;
}

void Test3::reportAnswer()
{
    m_cross->hide();
    m_arrow->hide();
    m_board->hide();
    setCursor(Qt::ArrowCursor);
    pointAt(centre());
    showPad(true);
    if (m_fixedDuration)
        m_timers[AnswerLimit]->start(timer05);
    enterStage(5);
}

void Test3::toPb_right()
{
    answer(m_ui.pb_right, 0);
}
void Test3::toPb_down()
{
    answer(m_ui.pb_down, 1);
}
void Test3::toPb_left()
{
    answer(m_ui.pb_left, 2);
}
void Test3::toPb_up()
{
    answer(m_ui.pb_up, 3);
}
void Test3::toPb_center()
{
    constexpr int none = -1;
    answer(m_ui.pb_center, none);
}

void Test3::answer(QPushButton *button, int direction)
{
    button->setDown(false);
    if (m_instructing)
        return;
    m_goodAnswer = m_field.ring.at(std::size_t(ringPatch())) == direction;
    m_ui.le_result->setText(m_goodAnswer ? QStringLiteral("1") : QStringLiteral("0"));
    if (!m_goodAnswer)
        m_invalid = 1;
    resultAnswer();
}

void Test3::sequence5()
{
    resultAnswer();
    m_invalid = 1;
}

void Test3::resultAnswer()
{
    showPad(false);
    m_cross->show();
    setCursor(Qt::BlankCursor);
    showFieldAtRest(m_field);
    m_timers[AnswerLimit]->stop();
    m_timers[Closing]->start(closingWait(timer06));
    enterStage(6);
}

void Test3::sequence6()
{
    if (m_phase == 0)
        logTestTrial();
    qCDebug(lcTest3, "rose %6d", ringPatch());
    if (m_invalid != 0) {
        ++m_errors;
        --m_conditionCount.at(std::size_t(m_condition));
    } else {
        ++m_tab3Index;
        ++m_tab8Index;
        ++m_trialNo;
    }
    ++m_trialCount;
    m_timers[Closing]->stop();

    if (m_trialNo != m_number)
        sequence0();
    else
        nextBlock();
}

void Test3::logTestTrial()
{
    QString reactionTime;
    if (m_markedError)
        m_rt = 0;
    else
        reactionTime = QStringLiteral("%1").arg(m_rt);
    if (m_rt > slowest)
        m_invalid = 1;

    const auto place = std::size_t(ringPatch());
    const rows::TrialHead head{m_taskCode, sessionNumber(), m_trialStamp, m_condition + 1,
                               m_trialNo + 1};
    logTrial(head,
             rows::trialT3(rows::identity(), head,
                           {reactionTime, tables::_roseVents.at(place),
                            tables::_dirMovement.at(std::size_t(m_field.ring.at(place)))},
                           m_invalid),
             m_invalid == 0);
    if (m_invalid == 0) {
        m_table.store(m_trialNo, ringPatch(), m_rt);
        qCDebug(lcTest3, "testNumber %6d %6d %8.3f", m_trialNo, m_rt, double(m_rt));
    }
}

void Test3::nextBlock()
{
    endBlock();
    if (m_phase == 0)
        endTest();
    else
        beginTest(testTrials);
}

bool Test3::awaitsAnswer() const
{
    // While a trial is held the pad is gone.
    return m_stage == 5 && m_ui.pb_center->isVisible();
}

bool Test3::mayPause() const
{
    return awaitsAnswer() || (m_stage == 4 && !m_paused);
}

/// A struck trial shows the word of the instruction, unlike the other tasks.
TaskDialog::Mode Test3::struckMode() const
{
    return Instructions;
}

void Test3::endMarkedTrial()
{
    // It is closed behind "Continue".
}

void Test3::continueTrial()
{
    if (m_markedError)
        sequence5();
    else
        sequence0();
}

void Test3::taskKey(int key)
{
    if (key == Qt::Key_Space)
        answerSpace();
    if (!awaitsAnswer())
        return;
    switch (key) {
    case Qt::Key_Right:
        return toPb_right();
    case Qt::Key_Down:
        return toPb_down();
    case Qt::Key_Left:
        return toPb_left();
    case Qt::Key_Up:
        return toPb_up();
    default:
        return;
    }
}

bool Test3::eventFilter(QObject *watched, QEvent *event)
{
    // At the pad the arrows are answers, not the cursor of a line edit that still has the focus.
    if (event->type() == QEvent::KeyPress && awaitsAnswer()) {
        auto *press = static_cast<QKeyEvent *>(event);
        const int key = press->key();
        if (key == Qt::Key_Right || key == Qt::Key_Down || key == Qt::Key_Left ||
            key == Qt::Key_Up) {
            keyPressEvent(press);
            return true;
        }
    }
    return TaskDialog::eventFilter(watched, event);
}
