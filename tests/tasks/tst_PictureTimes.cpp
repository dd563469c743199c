#include "PictureTimes.h"
#include "TaskTimer.h"
#include "TimeSource.h"

#include <QTest>

namespace {
constexpr qint64 ms = 1'000'000;

/// A time that stands where a test puts it, and that is early as real time is.
class HandTime final : public TimeSource
{
public:
    HandTime() { setCurrent(this); }
    ~HandTime() override { setCurrent(nullptr); }

    qint64 nanoseconds() const override { return now; }
    QDateTime currentDateTime() const override { return {}; }
    quint32 seedSeconds() const override { return 0; }
    qint64 lead() const override { return 2 * ms; }
    void waitUntil(qint64 moment) const override { waitedFor = moment; }

    /// Lets the timer fire that is due now.
    bool fire() { return fireEarliest(); }
    std::optional<qint64> due() const { return earliest(); }

    qint64 now = 0;
    mutable qint64 waitedFor = 0;

protected:
    void wakeAt(std::optional<qint64>) override {}
};
} // namespace

class tst_PictureTimes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anIntervalBeginsWithThePaint();
    void theTimerIsEarlyByTheLeadTheWayToThePaintAndThePaint();
    void thePaintWaitsForItsMoment();
    void oneSlowPaintDoesntCountMuch();
    void aFirstPaintIsExpectedToTakeWhatItWasToldToTake();
    void aLinkOutOfTurnNeitherWaitsNorCounts();
    void aPaintThatEndsNothingIsNoInterval();
    void whatWasForgottenIsNoInterval();
    void aNegativeIntervalCountsAsNone();
    void theIntervalsStandInTheirOrder();
    void onAGridAPictureIsThereWithTheRefresh();
    void onAGridThePaintIsOverInTheMiddleBetweenTwoRefreshes();
    void aMissedRefreshIsAnInterval();
    void onAGridEveryExposureIsExact_data();
    void onAGridEveryExposureIsExact();
    void onAGridNoExposureIsFurtherOutThanWithoutIt();
    void withoutAGridTheShortestExposureCanBeTwiceAsLong();
};

namespace {
/// A paint from this moment to that one.
void paint(HandTime &time, PictureTimes &pictures, const TaskTimer *ended, qint64 from, qint64 to)
{
    time.now = from;
    time.waitedFor = 0;
    pictures.awaitEnd(ended);
    time.now = to;
    pictures.painted(ended, std::max(from, time.waitedFor));
}
} // namespace

void tst_PictureTimes::anIntervalBeginsWithThePaint()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 10 * ms, 11 * ms);
    time.now = 12 * ms; // the picture's link goes on for a while
    pictures.begin(timer, 100);
    QCOMPARE(pictures.shown(), 11 * ms);
    QCOMPARE(time.due(), std::optional((111 - 1 - 2) * ms)); // the next paint may take 1 ms, too
    QCOMPARE(timer.interval(), 100);
    timer.stop();
}

void tst_PictureTimes::theTimerIsEarlyByTheLeadTheWayToThePaintAndThePaint()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    timer.setSingleShot(true);
    paint(time, pictures, nullptr, 0, 0);
    pictures.begin(timer, 100);
    time.now = 98 * ms;
    QVERIFY(time.fire());
    paint(time, pictures, &timer, 99 * ms, 103 * ms); // 1 ms behind the timer; it waits for 100
    pictures.begin(timer, 100);
    QCOMPARE(time.due(), std::optional((203 - 2 - 1 - 3) * ms));
    timer.stop();
}

void tst_PictureTimes::thePaintWaitsForItsMoment()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 0, 0);
    pictures.begin(timer, 100);
    timer.stop();
    paint(time, pictures, &timer, 98 * ms, 100 * ms);
    QCOMPARE(time.waitedFor, 100 * ms);
    QCOMPARE(pictures.intervals().size(), std::size_t(1));
    QCOMPARE(pictures.intervals().front().nominal, 100);
    QCOMPARE(pictures.intervals().front().achieved, 100 * ms);
}

void tst_PictureTimes::oneSlowPaintDoesntCountMuch()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 0, 0);
    for (const qint64 cost : {1 * ms, 1 * ms, 40 * ms}) {
        pictures.begin(timer, 100);
        time.now = *time.due();
        timer.stop();
        pictures.awaitEnd(&timer);
        time.now = time.waitedFor + cost;
        pictures.painted(&timer, time.waitedFor);
    }
    pictures.begin(timer, 100);
    QCOMPARE(time.due(), std::optional(pictures.shown() + (100 - 2 - 1) * ms));
    timer.stop();
}

void tst_PictureTimes::aFirstPaintIsExpectedToTakeWhatItWasToldToTake()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 0, 1 * ms);
    pictures.expectPaint(timer, 7 * ms);
    pictures.begin(timer, 100);
    QCOMPARE(time.due(), std::optional((101 - 7 - 2) * ms));
    timer.stop();
}

void tst_PictureTimes::aLinkOutOfTurnNeitherWaitsNorCounts()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 0, 0);
    pictures.begin(timer, 100);
    paint(time, pictures, &timer, 40 * ms, 41 * ms);
    QCOMPARE(time.waitedFor, 0);
    QVERIFY(pictures.intervals().empty());
    timer.stop();
}

void tst_PictureTimes::aPaintThatEndsNothingIsNoInterval()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 0, 1 * ms);
    paint(time, pictures, &timer, 5 * ms, 6 * ms);
    QVERIFY(pictures.intervals().empty());
    QCOMPARE(pictures.shown(), 6 * ms);
}

void tst_PictureTimes::whatWasForgottenIsNoInterval()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 0, 0);
    pictures.begin(timer, 100);
    timer.stop();
    pictures.forget();
    paint(time, pictures, &timer, 100 * ms, 100 * ms);
    QVERIFY(pictures.intervals().empty());
}

void tst_PictureTimes::aNegativeIntervalCountsAsNone()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    paint(time, pictures, nullptr, 5 * ms, 5 * ms);
    pictures.begin(timer, -20);
    timer.stop();
    paint(time, pictures, &timer, 5 * ms, 6 * ms);
    QCOMPARE(pictures.intervals().front().nominal, 0);
    QCOMPARE(pictures.intervals().front().late(), 1 * ms);
}

void tst_PictureTimes::theIntervalsStandInTheirOrder()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer on;
    TaskTimer off;
    paint(time, pictures, nullptr, 0, 0);
    pictures.begin(on, 50);
    on.stop();
    paint(time, pictures, &on, 50 * ms, 52 * ms);
    pictures.begin(off, 20);
    off.stop();
    paint(time, pictures, &off, 71 * ms, 71 * ms);
    QCOMPARE(pictures.intervals().size(), std::size_t(2));
    QCOMPARE(pictures.intervals().front().late(), 2 * ms);
    QCOMPARE(pictures.intervals().back().late(), -1 * ms);
    pictures.beginTrial();
    QVERIFY(pictures.intervals().empty());
}

void tst_PictureTimes::onAGridAPictureIsThereWithTheRefresh()
{
    HandTime time;
    PictureTimes pictures;
    pictures.beginTrial(RefreshGrid(0, 10.0 * ms));
    paint(time, pictures, nullptr, 11 * ms, 12 * ms);
    QCOMPARE(pictures.shown(), 20 * ms);
}

void tst_PictureTimes::onAGridThePaintIsOverInTheMiddleBetweenTwoRefreshes()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    pictures.beginTrial(RefreshGrid(0, 10.0 * ms));
    paint(time, pictures, nullptr, 11 * ms, 12 * ms);
    pictures.begin(timer, 33);
    QCOMPARE(time.due(), std::optional((45 - 1 - 2) * ms)); // shown at 20, and three refreshes long
    timer.stop();
    paint(time, pictures, &timer, 43 * ms, 45 * ms);
    QCOMPARE(time.waitedFor, 44 * ms);
    QCOMPARE(pictures.intervals().front().nominal, 33);
    QCOMPARE(pictures.intervals().front().achieved, 30 * ms);
}

void tst_PictureTimes::aMissedRefreshIsAnInterval()
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer timer;
    pictures.beginTrial(RefreshGrid(0, 10.0 * ms));
    paint(time, pictures, nullptr, 11 * ms, 12 * ms);
    pictures.begin(timer, 30);
    timer.stop();
    paint(time, pictures, &timer, 44 * ms, 51 * ms);
    QCOMPARE(pictures.intervals().front().late(), 10 * ms);
}

namespace {
/// For how many refreshes a stimulus stands whose paints are each this much late, of nominally so
/// many ms at a rate in Hz, when its onset is asked for this part of a period behind a refresh.
int visibleRefreshes(bool followed, int nominal, double rate, double phase, qint64 lateOn,
                     qint64 lateOff)
{
    HandTime time;
    PictureTimes pictures;
    TaskTimer fixation;
    TaskTimer exposure;
    const double period = 1e9 / rate;
    const RefreshGrid screen(0, period);
    pictures.beginTrial(followed ? std::optional(screen) : std::nullopt);
    const auto first = qint64((100 + phase) * period);
    paint(time, pictures, nullptr, first, first);
    const auto end = [&](TaskTimer &timer, int interval, qint64 late) {
        pictures.begin(timer, interval);
        time.now = *time.due();
        timer.stop();
        pictures.awaitEnd(&timer);
        const qint64 moment = time.waitedFor;
        time.now = moment + late;
        pictures.painted(&timer, moment + late); // the paint itself takes no time
        return screen.nextAfter(time.now);
    };
    const qint64 on = end(fixation, 500, lateOn);
    const qint64 off = end(exposure, nominal, lateOff);
    return int(std::lround(double(off - on) / period));
}
} // namespace

void tst_PictureTimes::onAGridEveryExposureIsExact_data()
{
    QTest::addColumn<double>("rate");
    for (const double rate : {59.94, 60.0, 75.0, 120.0, 144.0})
        QTest::addRow("%g Hz", rate) << rate;
}

void tst_PictureTimes::onAGridEveryExposureIsExact()
{
    QFETCH(double, rate);
    const RefreshGrid screen(0, 1e9 / rate);
    for (const int nominal : {17, 25, 33, 50, 67, 83, 100, 133, 283, 500, 1133, 4633}) {
        for (int tenth = 0; tenth < 10; ++tenth) {
            const double phase = tenth / 10.0 + 0.05;
            // Whatever the phase, and a paint 2 ms early or late beside the other one.
            for (const qint64 late : {-2 * ms, qint64(0), 2 * ms})
                QCOMPARE(visibleRefreshes(true, nominal, rate, phase, -late, late),
                         screen.refreshes(nominal));
        }
    }
}

void tst_PictureTimes::onAGridNoExposureIsFurtherOutThanWithoutIt()
{
    constexpr double rate = 60;
    constexpr double period = 1000 / rate; // ms
    for (int nominal = 10; nominal <= 120; ++nominal) {
        for (int tenth = 0; tenth < 10; ++tenth) {
            const double phase = tenth / 10.0 + 0.05;
            const auto error = [&](bool followed) {
                const int count = visibleRefreshes(followed, nominal, rate, phase, 0, 0);
                return std::abs(count * period - nominal);
            };
            QVERIFY2(error(true) <= error(false) + 1e-9, qPrintable(QString::number(nominal)));
        }
    }
}

void tst_PictureTimes::withoutAGridTheShortestExposureCanBeTwiceAsLong()
{
    // What the grid is for: drawn 0.2 ms before a refresh, 17 ms pass the next one and the one
    // after.
    QCOMPARE(visibleRefreshes(false, 17, 60, 0.985, 0, 0), 2);
    QCOMPARE(visibleRefreshes(true, 17, 60, 0.985, 0, 0), 1);
}

QTEST_GUILESS_MAIN(tst_PictureTimes)
#include "tst_PictureTimes.moc"
