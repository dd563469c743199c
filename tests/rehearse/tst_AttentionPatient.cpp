#include "AttentionPatient.h"
#include "DrawArrow.h"
#include "DrawRectangle.h"
#include "Rhythm.h"
#include "Screen.h"
#include "VirtualTime.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace {

/// A task as a patient sees it: a target, the cues, the assessor's button. It notes when a Space or
/// a click comes.
class FakeTask : public QDialog
{
    Q_OBJECT

public:
    FakeTask()
    {
        m_asterisk->setObjectName(QStringLiteral("lbl_asterisk"));
        m_go->setObjectName(QStringLiteral("pb_go"));
        for (QWidget *widget :
             std::initializer_list<QWidget *>{m_target, m_arrow, m_asterisk, m_go})
            widget->hide();
        setFocusPolicy(Qt::StrongFocus);
        show();
        QApplication::setActiveWindow(this);
        setFocus();
    }

    /// ms of each answer since the start.
    QList<int> answers;

    DrawRectangle *m_target = new DrawRectangle(this);
    DrawArrow *m_arrow = new DrawArrow(this);
    QLabel *m_asterisk = new QLabel(this);
    QPushButton *m_go = new QPushButton(this);

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Space)
            note();
    }
    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton)
            note();
    }

private:
    void note()
    {
        answers.append(int(TimeSource::current().nanoseconds() / 1'000'000));
        m_target->hide();
    }
};

Observer steady()
{
    Observer observer;
    observer.time.mu = 300.0;
    observer.time.sigma = 0.0;
    observer.time.tau = 0.0;
    observer.learningSlope = 0.0;
    observer.anticipations = 0.0;
    observer.misses = 0.0;
    return observer;
}

} // namespace

class tst_AttentionPatient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aTargetIsAnsweredAfterTheReactionTime();
    void aTargetThatGoesIsNotAnswered();
    void besideAButtonThePatientOnlyWatches();
    void anAlertThatWentOutAMomentAgoHelps();
    void anArrowHelps();
    void theRankCountsTheTargetsOfABlock();
    void anOverlookedTargetIsAnsweredVeryLate();
    void anAnswerCanBeAClick();
    void anAnswerThatWasToldTakesThePlaceOfTheOwnOne();
    void withoutATargetAToldAnswerIsOneMore();
    void aHastyPatientTapsWhereTheNextTargetIsDue();
    void tapsLieCloserThanTheLastWait();
    void aSlowTestIsTappedLater();

private:
    void makePatient(const Observer &observer);

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<FakeTask> m_task;
    std::unique_ptr<Screen> m_screen;
    std::unique_ptr<AttentionPatient> m_patient;
};

void tst_AttentionPatient::init()
{
    m_time = std::make_unique<VirtualTime>(VirtualTime::Mode::Stepped);
    m_task = std::make_unique<FakeTask>();
    m_screen = std::make_unique<Screen>();
}

void tst_AttentionPatient::cleanup()
{
    m_patient.reset();
    m_screen.reset();
    m_task.reset();
    m_time.reset();
}

void tst_AttentionPatient::makePatient(const Observer &observer)
{
    m_patient = std::make_unique<AttentionPatient>(observer, 1, *m_screen);
}

void tst_AttentionPatient::aTargetIsAnsweredAfterTheReactionTime()
{
    makePatient(steady());
    m_time->advance(1000);
    m_task->m_target->show();
    m_time->advance(299);
    QCOMPARE(m_task->answers, QList<int>());
    m_time->advance(1);
    QCOMPARE(m_task->answers, QList<int>{1300});
    m_time->advance(10'000);
    QCOMPARE(m_task->answers.size(), 1);
}

void tst_AttentionPatient::aTargetThatGoesIsNotAnswered()
{
    makePatient(steady());
    m_task->m_target->show();
    m_time->advance(200);
    m_task->m_target->hide();
    m_time->advance(10'000);
    QCOMPARE(m_task->answers, QList<int>());
}

void tst_AttentionPatient::besideAButtonThePatientOnlyWatches()
{
    makePatient(steady());
    m_task->m_go->show();
    m_task->m_target->show();
    m_time->advance(10'000);
    QCOMPARE(m_task->answers, QList<int>());
}

void tst_AttentionPatient::anAlertThatWentOutAMomentAgoHelps()
{
    makePatient(steady());
    m_task->m_asterisk->show();
    m_time->advance(100);
    m_task->m_asterisk->hide();
    m_time->advance(400);
    m_task->m_target->show();
    m_time->advance(1000);
    QCOMPARE(m_task->answers, QList<int>{775});
    m_task->m_target->show(); // at 1500: the alert is long forgotten
    m_time->advance(1000);
    QCOMPARE(m_task->answers, (QList<int>{775, 1800}));
}

void tst_AttentionPatient::anArrowHelps()
{
    makePatient(steady());
    m_task->m_arrow->show();
    m_task->m_target->show();
    m_time->advance(1000);
    QCOMPARE(m_task->answers, QList<int>{260});
}

void tst_AttentionPatient::theRankCountsTheTargetsOfABlock()
{
    Observer observer = steady();
    observer.learningSlope = -100.0;
    makePatient(observer);
    for (const int expected : {300, 1231}) { // 100 ln 2 = 69
        m_task->m_target->show();
        m_time->advance(1000);
        QCOMPARE(m_task->answers.constLast(), expected);
    }
    m_task->m_go->show();
    m_task->m_go->hide();
    m_task->m_target->show();
    m_time->advance(1000);
    QCOMPARE(m_task->answers.constLast(), 2300);
}

void tst_AttentionPatient::anOverlookedTargetIsAnsweredVeryLate()
{
    Observer observer = steady();
    observer.misses = 1.0;
    makePatient(observer);
    m_task->m_target->show();
    m_time->advance(10'000);
    QCOMPARE(m_task->answers, QList<int>{6000});
}

void tst_AttentionPatient::anAnswerCanBeAClick()
{
    Observer observer = steady();
    observer.answer = Observer::Answer::LeftButton;
    makePatient(observer);
    m_task->m_target->show();
    m_time->advance(1000);
    QCOMPARE(m_task->answers, QList<int>{300});
}

void tst_AttentionPatient::anAnswerThatWasToldTakesThePlaceOfTheOwnOne()
{
    makePatient(steady());
    m_task->m_target->show();
    m_patient->answerIn(2500);
    m_time->advance(10'000);
    QCOMPARE(m_task->answers, QList<int>{2500});
}

void tst_AttentionPatient::withoutATargetAToldAnswerIsOneMore()
{
    makePatient(steady());
    m_patient->answerIn(150);
    m_time->advance(400);
    m_task->m_target->show();
    m_time->advance(1000);
    QCOMPARE(m_task->answers, (QList<int>{150, 700}));
}

void tst_AttentionPatient::aHastyPatientTapsWhereTheNextTargetIsDue()
{
    Observer observer = steady();
    observer.anticipations = 1.0;
    makePatient(observer);
    m_task->m_target->show();
    m_time->advance(300);
    QCOMPARE(m_task->answers, QList<int>{300});
    m_time->advance(10'000);
    QCOMPARE(m_task->answers, (QList<int>{300, 1900, 2290, 2680}));
    // A visible alert tells the moment better.
    m_task->m_target->show();
    m_time->advance(1000);
    m_task->m_asterisk->show();
    m_task->m_asterisk->hide();
    const qsizetype before = m_task->answers.size();
    m_time->advance(400);
    QCOMPARE(m_task->answers.size(), before + 1);
}

void tst_AttentionPatient::tapsLieCloserThanTheLastWait()
{
    constexpr int lastWait = 400; // ms before a target, in which a tap counts as an anticipation
    const QList<int> taps = Rhythm::tapsOfTrial();
    QVERIFY(taps.size() > 1);
    for (qsizetype i = 1; i < taps.size(); ++i)
        QVERIFY(taps.at(i) - taps.at(i - 1) < lastWait);
}

void tst_AttentionPatient::aSlowTestIsTappedLater()
{
    Rhythm rhythm;
    rhythm.targetAppeared(1000);
    rhythm.targetGone(1300, true);
    QVERIFY(!rhythm.isSlow());
    rhythm.targetAppeared(8700);
    rhythm.targetGone(9000, true);
    QVERIFY(rhythm.isSlow());
    QCOMPARE(rhythm.taps().constFirst(), 5850);
    // A limit that ran out shortens the pause and teaches nothing.
    rhythm.targetAppeared(16'400);
    rhythm.targetGone(21'400, false);
    rhythm.targetAppeared(23'000);
    QVERIFY(rhythm.isSlow());
    rhythm.reset();
    QVERIFY(!rhythm.isSlow());
}

QTEST_MAIN(tst_AttentionPatient)
#include "tst_AttentionPatient.moc"
