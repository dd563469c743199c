#include "Test4.h"

#include "DrawCircle.h"
#include "DrawCross.h"
#include "DrawCrossDot.h"
#include "DrawCrossThick.h"
#include "DrawLineSh.h"
#include "Random.h"
#include "TaskTimer.h"
#include "TimeSource.h"
#include "rows.h"

#include <QLoggingCategory>
#include <QMouseEvent>

// One trial: a run of crosses, the two clicks, and the way to the next one.

Q_DECLARE_LOGGING_CATEGORY(lcTest4)

namespace {
constexpr int questionStage = 4;
constexpr int closingStage = 5;
constexpr double unanswered = 9999.0; // mm
constexpr int distanceWidth = 8;
} // namespace

void Test4::toPb_go()
{
    m_skipContinue = true;
    m_blockOver = false;
    TaskDialog::toPb_go();
}

void Test4::showTrialNo()
{
    m_ui.le_no->setText(QStringLiteral("%1").arg(m_trialNo + 1));
}

void Test4::sequence0()
{
    beginPictures();
    m_markedError = false;
    enterStage(0);
    m_cross->show();
    pointAt(m_ui.pb_continue->geometry().center());
    setCursor(Qt::ArrowCursor);
    showTrialNo();
    m_first.distance = unanswered;
    m_last.distance = unanswered;
    m_invalid = 0;
    if (m_skipContinue) {
        m_skipContinue = false;
        toPb_continue();
    } else {
        m_ui.pb_continue->show();
    }
    qCDebug(lcTest4, "sequence 0");
}

void Test4::continueTrial()
{
    hidePointer();
    sequence01();
}

void Test4::sequence01()
{
    paintNow();
    startInterval(m_timers[Wait], m_timer01);
    enterStage(1);
    qCDebug(lcTest4, "sequence 01");
}

int Test4::load()
{
    drawLoads(); // an answer out of turn can end a trial while its run goes on
    return m_loadTab.at(std::size_t(m_loadIndex));
}

void Test4::drawLoads()
{
    if (m_loadIndex < memoryField::loads)
        return;
    m_loadIndex = 0;
    const std::vector<int> tab = m_loadTab = m_random->generateRand6();
    qCDebug(lcTest4, "playTab6 %4d %4d %4d %4d %4d %4d", tab[0], tab[1], tab[2], tab[3], tab[4],
            tab[5]);
}

void Test4::sequence1()
{
    const bool isFirst = m_crossIndex == 0;
    const TaskTimer *ended = isFirst ? m_timers[Wait] : m_timers[Gap];
    m_timers[Wait]->stop(); // it may run beside a run that goes on after an answer out of turn
    drawLoads();
    if (isFirst) {
        m_sectorTab = m_random->generateRand12_3();
    }
    Target &target = isFirst ? m_first : m_last;
    const std::size_t index = memoryField::sectorIndex(m_crossIndex);
    target.sector = m_sectorTab.at(index);
    QLineEdit *edit = isFirst ? m_ui.le_posFirst : m_ui.le_posLast;
    edit->setText(QStringLiteral("%1").arg(target.sector + 1));

    const memoryField::Place place = memoryField::drawn(target.sector);
    target.place = place.around(centre());
    showAt(target.cross, target.place);
    paintNow(ended);
    startInterval(m_timers[Cross], m_timer02);
    if (isFirst)
        m_trialStamp = TimeSource::current().currentDateTime();
    enterStage(2);
    qCDebug(lcTest4, "target%d %8.0f %6d %6d %6d %6d %6d", isFirst ? 1 : 2, double(place.angle),
            target.sector, target.place.x(), target.place.y(), int(index), m_sectorTab[index]);
    qCDebug(lcTest4, "sequence 1");
}

void Test4::showAt(QWidget *widget, const QPoint &place)
{
    widget->move(place - QPoint(m_crossHalf, m_crossHalf));
    widget->show();
}

void Test4::sequence2()
{
    m_first.cross->hide();
    m_last.cross->hide();
    paintNow(m_timers[Cross]);
    startInterval(m_timers[Gap], m_timer03);
    enterStage(3);
    qCDebug(lcTest4, "sequence 2");
}

void Test4::sequence3()
{
    if (m_crossIndex >= load() + memoryField::shortestRun - 1) {
        m_ui.lbl_lastCross->show();
        m_crossIndex = 0;
        setCursor(Qt::ArrowCursor);
        pointAt(centre());
        paintNow(m_timers[Gap]);
        m_acceptClick = true;
        m_askLast = true;
        enterStage(questionStage);
    } else {
        ++m_crossIndex;
        sequence1();
    }
    qCDebug(lcTest4, "sequence 3");
}

void Test4::sequence4()
{
    m_acceptClick = false;
    m_timers[AnswerLimit]->stop();
    m_invalid = 1;
    sequence5();
    qCDebug(lcTest4, "sequence 4");
}

void Test4::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_acceptClick)
        return;
    const QPoint click = event->position().toPoint();
    m_askLast ? answerLast(click) : answerFirst(click);
}

/// Shows the click, and how far from the true place it fell.
void Test4::judge(Target &target, const QPoint &click, QLineEdit *edit)
{
    target.distance = memoryField::distance(click, target.place, m_horzPitch, m_vertPitch);
    target.clicked = target.distance;
    qCDebug(lcTest4, "target %d %6d %6d %8.3f", m_askLast ? 2 : 1, click.x(), click.y(),
            target.distance);
    showAt(target.cross, click);
    edit->setText(QStringLiteral("%L1").arg(target.distance, distanceWidth, 'f', 2));
}

void Test4::answerLast(const QPoint &click)
{
    judge(m_last, click, m_ui.le_distLast);
    m_ui.lbl_lastCross->hide();
    m_ui.lbl_firstCross->show();
    m_askLast = false;
}

void Test4::answerFirst(const QPoint &click)
{
    judge(m_first, click, m_ui.le_distFirst);
    m_ui.lbl_firstCross->hide();
    m_timers[AnswerLimit]->stop();
    m_timers[Closing]->start(m_timer05);
    enterStage(closingStage);
    m_acceptClick = false;
}

void Test4::sequence5()
{
    if (m_phase == 0)
        logTestTrial();
    if (m_invalid) {
        ++m_errors;
        --m_trialNo; // one below where the invalid trial stood
    } else {
        ++m_loadIndex;
        ++m_trialNo;
        ++m_trialCount;
    }
    m_timers[Closing]->stop();
    m_first.cross->hide();
    m_last.cross->hide();
    hidePointer();
    m_ui.lbl_firstCross->hide();
    m_ui.lbl_lastCross->hide();
    if (m_trialNo < m_number)
        sequence0();
    else
        nextBlock();
}

void Test4::logTestTrial()
{
    rows::TrialT4 trial{{}, {}, m_first.sector + 1, m_last.sector + 1};
    if (!m_invalid) {
        trial.distFirst = rows::localNumber(m_first.distance, distanceWidth, 2);
        trial.distLast = rows::localNumber(m_last.distance, distanceWidth, 2);
    }
    const rows::TrialHead head{m_taskCode, sessionNumber(), m_trialStamp, load(), m_trialNo + 1};
    logTrial(head, rows::trialT4(rows::identity(), head, trial, m_invalid), !m_invalid);
    if (m_invalid)
        return;
    qCDebug(lcTest4, "result %6d %6d", load(), m_table.count(load()));
    // With a last cross that was clicked before a pause and not since, the row and the scores
    // differ.
    m_table.store(m_trialNo, load(), m_first.clicked, m_last.clicked);
}

void Test4::nextBlock()
{
    m_blockOver = true;
    m_acceptClick = false; // a strike ends a block in the middle of its questions
    endBlock();
    m_phase == 0 ? endTest() : beginTest(testTrials);
}

// The assessor's keys.

bool Test4::mayPause() const
{
    return m_stage != closingStage && !m_blockOver;
}

/// The trial that was held waits at Continue, under the word.
void Test4::holdTrial(Mode mode)
{
    showMode(mode);
    m_cross->hide();
    if (mode != Pause)
        return;
    stopTimers();
    m_first.cross->hide();
    m_last.cross->hide();
    sequence0();
}

void Test4::endMarkedTrial()
{
    m_invalid = 1;
    sequence5();
}

void Test4::taskKey(int key)
{
    if (key != Qt::Key_S)
        return;
    const bool shown = m_outerRing->isHidden();
    m_outerRing->setVisible(shown);
    m_innerRing->setVisible(shown);
    m_sectorLines->setVisible(shown);
}

bool Test4::eventFilter(QObject *watched, QEvent *event)
{
    // A line edit that still has the focus doesn't take the key of the guides.
    if (event->type() == QEvent::KeyPress && m_stage != 0) {
        auto *press = static_cast<QKeyEvent *>(event);
        if (press->key() == Qt::Key_S && press->modifiers() == Qt::NoModifier) {
            keyPressEvent(press);
            return true;
        }
    }
    return TaskDialog::eventFilter(watched, event);
}

void Test4::hideGuides()
{
    m_outerRing->hide();
    m_innerRing->hide();
    m_sectorLines->hide();
}
