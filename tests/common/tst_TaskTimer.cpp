#include "RealTime.h"
#include "TaskClock.h"
#include "TaskTimer.h"
#include "VirtualTime.h"

#include <QEventLoop>
#include <QTest>

#include <memory>

#include <sched.h>

class tst_TaskTimer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTimerFiresAtItsInterval();
    void aTimerRepeatsUntilItIsStopped();
    void aStopInTheSlotEndsARepeatingTimer();
    void aSingleShotTimerFiresOnce();
    void aRestartCountsAnew();
    void aNewIntervalRestartsAnActiveTimer();
    void timersDueTogetherFireInTheOrderOfTheirStart();
    void aNegativeIntervalCountsAsNone();
    void aRepeatingTimerWithoutAnIntervalBeatsEveryMillisecond();
    void theClockGoesOnFromWhereASlotHasMovedIt();
    void aTimerThatIsDestroyedNeverFires();
    void aTimerOutlivesItsTimeSource();
    void theRemainingTimeCountsDown();
    void theClockReadsWholeMilliseconds();
    void anUnstartedClockReadsNothing();
    void theDateRunsWithTheClock();
    void theSeedRunsWithTheSeconds();
    void aFreeRunningClockJumpsFromTimerToTimer();
    void aFreeRunningClockRunsOnInAnEventLoopOfASlot();
    void aFreeRunningClockWaitsForWhatHasBeenPosted();
    void aHeldClockStandsStill();
    void inRealTimeNoTimerIsEarlyAndTheOrderHolds();
    void inRealTimeTimersFireInAnEventLoopOfASlot();
    void inRealTimeARepeatingTimerKeepsToItsGrid();
    void aTimerFiresAtTheMomentThatIsGiven();
    void theClockReadsAMomentThatIsGiven();
    void theStampOfAnInputGivesTheLatestMomentItAllows_data();
    void theStampOfAnInputGivesTheLatestMomentItAllows();
    void inVirtualTimeAnInputIsMadeNow();
    void aWaitEndsAtItsMoment();
    void theProcessIsUrgentForAsLongAsItIsTold();
};

namespace {
/// Appends a word to the list whenever the timer fires.
void note(TaskTimer &timer, QStringList &list, const QString &word)
{
    QObject::connect(&timer, &TaskTimer::timeout, &timer, [&list, word] { list.append(word); });
}
} // namespace

void tst_TaskTimer::aTimerFiresAtItsInterval()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.start(400);
    time.advance(399);
    QVERIFY(fired.isEmpty());
    time.advance(1);
    QCOMPARE(fired, QStringList{QStringLiteral("a")});
}

void tst_TaskTimer::aTimerRepeatsUntilItIsStopped()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.start(15);
    time.advance(150);
    QCOMPARE(fired.size(), 10);
    timer.stop();
    QVERIFY(!timer.isActive());
    time.advance(150);
    QCOMPARE(fired.size(), 10);
}

void tst_TaskTimer::aStopInTheSlotEndsARepeatingTimer()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    int fired = 0;
    connect(&timer, &TaskTimer::timeout, &timer, [&] {
        ++fired;
        QVERIFY(timer.isActive());
        timer.stop();
    });
    timer.start(10);
    time.advance(100);
    QCOMPARE(fired, 1);
}

void tst_TaskTimer::aSingleShotTimerFiresOnce()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.setSingleShot(true);
    timer.start(10);
    time.advance(100);
    QCOMPARE(fired.size(), 1);
    QVERIFY(!timer.isActive());
}

void tst_TaskTimer::aRestartCountsAnew()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.start(100);
    time.advance(60);
    timer.start();
    time.advance(60);
    QVERIFY(fired.isEmpty());
    time.advance(40);
    QCOMPARE(fired.size(), 1);
}

void tst_TaskTimer::aNewIntervalRestartsAnActiveTimer()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.setInterval(30);
    QVERIFY(!timer.isActive());
    timer.start();
    time.advance(20);
    timer.setInterval(50);
    QCOMPARE(timer.interval(), 50);
    time.advance(49);
    QVERIFY(fired.isEmpty());
    time.advance(1);
    QCOMPARE(fired.size(), 1);
}

void tst_TaskTimer::timersDueTogetherFireInTheOrderOfTheirStart()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer first;
    TaskTimer second;
    TaskTimer early;
    QStringList fired;
    note(first, fired, QStringLiteral("first"));
    note(second, fired, QStringLiteral("second"));
    note(early, fired, QStringLiteral("early"));
    second.start(50);
    first.start(100);
    early.start(99);
    second.start(100);
    time.advance(100);
    QCOMPARE(fired, (QStringList{QStringLiteral("early"), QStringLiteral("first"),
                                 QStringLiteral("second")}));
}

void tst_TaskTimer::aNegativeIntervalCountsAsNone()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    timer.setSingleShot(true);
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.start(-250);
    QCOMPARE(timer.interval(), 0);
    QVERIFY(fired.isEmpty()); // from the event loop, not from start()
    time.advance(0);
    QCOMPARE(fired.size(), 1);
}

void tst_TaskTimer::aRepeatingTimerWithoutAnIntervalBeatsEveryMillisecond()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.start(0);
    time.advance(5);
    QCOMPARE(fired.size(), 6);
}

void tst_TaskTimer::theClockGoesOnFromWhereASlotHasMovedIt()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &TaskTimer::timeout, this, [&time] { time.advance(500); });
    timer.start(10);
    time.advance(100);
    QCOMPARE(time.nanoseconds(), 510 * 1'000'000);
}

void tst_TaskTimer::aTimerThatIsDestroyedNeverFires()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    QStringList fired;
    {
        TaskTimer timer;
        note(timer, fired, QStringLiteral("a"));
        timer.start(10);
    }
    time.advance(100);
    QVERIFY(fired.isEmpty());
}

void tst_TaskTimer::aTimerOutlivesItsTimeSource()
{
    TaskTimer timer;
    {
        VirtualTime time(VirtualTime::Mode::Stepped);
        timer.start(10);
        QVERIFY(timer.isActive());
    }
    QVERIFY(!timer.isActive());
    timer.stop();
    QCOMPARE(timer.remainingTime(), -1);
}

void tst_TaskTimer::theRemainingTimeCountsDown()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QCOMPARE(timer.remainingTime(), -1);
    timer.start(100);
    time.advance(30);
    QCOMPARE(timer.remainingTime(), 70);
}

void tst_TaskTimer::theClockReadsWholeMilliseconds()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskClock clock;
    clock.start();
    time.advance(2500);
    QCOMPARE(clock.elapsed(), 2500);
    QCOMPARE(clock.restart(), 2500);
    QCOMPARE(clock.elapsed(), 0);
    time.advance(7);
    QCOMPARE(clock.elapsed(), 7);
}

void tst_TaskTimer::anUnstartedClockReadsNothing()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    time.advance(1000);
    const TaskClock clock;
    QCOMPARE(clock.elapsed(), 0);
}

void tst_TaskTimer::theDateRunsWithTheClock()
{
    const QDateTime start(QDate(2025, 12, 31), QTime(23, 59, 59), Qt::UTC);
    VirtualTime time(VirtualTime::Mode::Stepped, start);
    time.advance(1001);
    QCOMPARE(time.currentDateTime(), QDateTime(QDate(2026, 1, 1), QTime(0, 0, 0, 1), Qt::UTC));
    QCOMPARE(VirtualTime::defaultStart().date(), QDate(2025, 1, 6));
}

void tst_TaskTimer::theSeedRunsWithTheSeconds()
{
    VirtualTime time(VirtualTime::Mode::Stepped, VirtualTime::defaultStart(), 42);
    time.advance(999);
    QCOMPARE(TimeSource::current().seedSeconds(), 42U);
    time.advance(2001);
    QCOMPARE(TimeSource::current().seedSeconds(), 45U);
}

void tst_TaskTimer::aFreeRunningClockJumpsFromTimerToTimer()
{
    VirtualTime time(VirtualTime::Mode::FreeRunning);
    TaskTimer hour;
    TaskTimer minute;
    QEventLoop loop;
    int minutes = 0;
    connect(&minute, &TaskTimer::timeout, &loop, [&] { ++minutes; });
    connect(&hour, &TaskTimer::timeout, &loop, &QEventLoop::quit);
    hour.start(3'600'000);
    minute.start(60'000);
    TaskClock clock;
    clock.start();
    loop.exec();
    QCOMPARE(clock.elapsed(), 3'600'000);
    QCOMPARE(minutes, 59); // the hour was started first, and fires first
}

void tst_TaskTimer::aFreeRunningClockRunsOnInAnEventLoopOfASlot()
{
    VirtualTime time(VirtualTime::Mode::FreeRunning);
    TaskTimer opensBox;
    TaskTimer answersBox;
    QEventLoop outer;
    QStringList order;
    connect(&opensBox, &TaskTimer::timeout, &outer, [&] {
        opensBox.stop();
        QEventLoop box;
        connect(&answersBox, &TaskTimer::timeout, &box, [&] {
            answersBox.stop();
            order.append(QStringLiteral("answered"));
            box.quit();
        });
        answersBox.start(5000);
        box.exec();
        order.append(QStringLiteral("gone on"));
        outer.quit();
    });
    opensBox.start(100);
    outer.exec();
    QCOMPARE(order, (QStringList{QStringLiteral("answered"), QStringLiteral("gone on")}));
}

void tst_TaskTimer::aFreeRunningClockWaitsForWhatHasBeenPosted()
{
    VirtualTime time(VirtualTime::Mode::FreeRunning);
    TaskTimer first;
    TaskTimer later;
    QEventLoop loop;
    QList<qint64> moments;
    connect(&first, &TaskTimer::timeout, &loop, [&] {
        first.stop();
        const auto note = [&] { moments.append(time.nanoseconds() / 1'000'000); };
        const auto noteAndPost = [&, note] {
            note();
            QMetaObject::invokeMethod(&loop, note, Qt::QueuedConnection);
        };
        QMetaObject::invokeMethod(&loop, noteAndPost, Qt::QueuedConnection);
    });
    connect(&later, &TaskTimer::timeout, &loop, &QEventLoop::quit);
    first.start(100);
    later.start(300);
    loop.exec();
    QCOMPARE(moments, (QList<qint64>{100, 100}));
}

void tst_TaskTimer::aHeldClockStandsStill()
{
    VirtualTime time(VirtualTime::Mode::FreeRunning);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.start(10);
    time.hold();
    time.hold();
    time.release();
    // Whatever is in the queue is done with, and still nobody has waited.
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    QVERIFY(fired.isEmpty());
    QCOMPARE(time.nanoseconds(), 0);
    time.release();
    QEventLoop loop;
    connect(&timer, &TaskTimer::timeout, &loop, &QEventLoop::quit);
    loop.exec();
    QCOMPARE(fired.size(), 1);
}

void tst_TaskTimer::inRealTimeNoTimerIsEarlyAndTheOrderHolds()
{
    TaskTimer late;
    TaskTimer early;
    TaskClock clock;
    QEventLoop loop;
    QStringList order;
    note(early, order, QStringLiteral("early"));
    note(late, order, QStringLiteral("late"));
    connect(&late, &TaskTimer::timeout, &loop, &QEventLoop::quit);
    early.setSingleShot(true);
    clock.start();
    late.start(20);
    early.start(5);
    loop.exec();
    QVERIFY(clock.elapsed() >= 20);
    QCOMPARE(order, (QStringList{QStringLiteral("early"), QStringLiteral("late")}));
}

void tst_TaskTimer::inRealTimeTimersFireInAnEventLoopOfASlot()
{
    TaskTimer opensBox;
    TaskTimer answersBox;
    QEventLoop outer;
    bool answered = false;
    opensBox.setSingleShot(true);
    answersBox.setSingleShot(true);
    connect(&opensBox, &TaskTimer::timeout, &outer, [&] {
        QEventLoop box;
        connect(&answersBox, &TaskTimer::timeout, &box, &QEventLoop::quit);
        answersBox.start(1);
        box.exec();
        answered = true;
        outer.quit();
    });
    opensBox.start(0);
    outer.exec();
    QVERIFY(answered);
}

void tst_TaskTimer::inRealTimeARepeatingTimerKeepsToItsGrid()
{
    TaskTimer timer;
    QEventLoop loop;
    TaskClock clock;
    int beats = 0;
    connect(&timer, &TaskTimer::timeout, &loop, [&] {
        if (++beats == 10)
            loop.quit();
    });
    clock.start();
    timer.start(3);
    loop.exec();
    QVERIFY(clock.elapsed() >= 30);
}

void tst_TaskTimer::aTimerFiresAtTheMomentThatIsGiven()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    TaskTimer timer;
    QStringList fired;
    note(timer, fired, QStringLiteral("a"));
    timer.setSingleShot(true);
    timer.startUntil(30'000'000, 100);
    QCOMPARE(timer.interval(), 100);
    time.advance(29);
    QVERIFY(fired.isEmpty());
    time.advance(1);
    QCOMPARE(fired.size(), 1);
}

void tst_TaskTimer::theClockReadsAMomentThatIsGiven()
{
    TaskClock clock;
    clock.startAt(5'000'000);
    QCOMPARE(clock.elapsedAt(14'999'999), 9);
    QCOMPARE(clock.elapsedAt(4'000'000), 0); // a key that came before the picture
}

void tst_TaskTimer::theStampOfAnInputGivesTheLatestMomentItAllows_data()
{
    QTest::addColumn<quint64>("stamp"); // ms
    QTest::addColumn<qint64>("now");    // ns
    QTest::addColumn<qint64>("moment");
    QTest::newRow("handled at once")
        << quint64(5000) << qint64(5'000'200'000) << qint64(5'000'200'000);
    QTest::newRow("handled in the next millisecond")
        << quint64(5000) << qint64(5'001'100'000) << qint64(5'001'000'000);
    QTest::newRow("handled late") << quint64(5000) << qint64(5'040'300'000)
                                  << qint64(5'001'000'000);
    QTest::newRow("the server's 32 bits have run over")
        << quint64(0xffffffff) << (qint64(0x100000000) + 2) * 1'000'000
        << qint64(0x100000000) * 1'000'000;
    QTest::newRow("no stamp") << quint64(0) << qint64(500'000'000) << qint64(500'000'000);
    QTest::newRow("another clock, ahead")
        << quint64(9000) << qint64(5'000'200'000) << qint64(5'000'200'000);
    QTest::newRow("another clock, far behind")
        << quint64(7) << qint64(5'000'200'000) << qint64(5'000'200'000);
}

void tst_TaskTimer::theStampOfAnInputGivesTheLatestMomentItAllows()
{
    QFETCH(quint64, stamp);
    QFETCH(qint64, now);
    QTEST(RealTime::latestMoment(stamp, now), "moment");
}

void tst_TaskTimer::inVirtualTimeAnInputIsMadeNow()
{
    VirtualTime time(VirtualTime::Mode::Stepped);
    time.advance(700);
    QCOMPARE(TimeSource::current().inputMoment(650), 700'000'000);
    QCOMPARE(TimeSource::current().lead(), 0);
}

void tst_TaskTimer::aWaitEndsAtItsMoment()
{
    const RealTime &time = RealTime::instance();
    const qint64 moment = time.nanoseconds() + 300'000;
    time.waitUntil(moment);
    QVERIFY(time.nanoseconds() >= moment);
    time.waitUntil(moment - 1'000'000); // over: it returns at once
}

void tst_TaskTimer::theProcessIsUrgentForAsLongAsItIsTold()
{
    RealTime &time = RealTime::instance();
    time.setUrgent(true);
    // A user without the right to real time keeps the usual order.
    const int scheduling = sched_getscheduler(0) & ~SCHED_RESET_ON_FORK;
    QVERIFY(scheduling == SCHED_RR || scheduling == SCHED_OTHER);
    time.setUrgent(false);
    QCOMPARE(sched_getscheduler(0) & ~SCHED_RESET_ON_FORK, SCHED_OTHER);
}

QTEST_MAIN(tst_TaskTimer)
#include "tst_TaskTimer.moc"
