#include "Draws.h"
#include "Observer.h"

#include <QFile>
#include <QTest>

#include <cmath>

class tst_Observer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyDescriptionIsTheTypicalPatient();
    void everyKeyIsTaken();
    void meanAndSpreadBecomeTheThreeParts();
    void whatCannotBeUnderstoodIsRefused_data();
    void whatCannotBeUnderstoodIsRefused();
    void reactionTimesHaveTheirMeanAndSpread();
    void aCueShortensTheAnswerByItsGain();
    void practiceShortensTheAnswerByTheLogarithmOfTheRank();
    void noAnswerIsFasterThanAPersonCanBe();
    void theSameSeedDrawsTheSame();
    void everyKeyOfVisionIsTaken();
    void everyKeyOfMovementIsTaken();
    void everyKeyOfMemoryIsTaken();
    void everyMannerOfAnsweringIsTaken_data();
    void everyMannerOfAnsweringIsTaken();
    void halfIsSeenAtTheThreshold();
    void theChanceOfSeeingRisesWithTheLogarithmOfTheExposure_data();
    void theChanceOfSeeingRisesWithTheLogarithmOfTheExposure();
    void eachFurtherCrossWidensTheSpreadByItsFactor();
    void practiceIsAPowerOfTheRank();
};

namespace {
Observer parsed(const QByteArray &json)
{
    QString error;
    const auto observer = Observer::parse(json, error);
    if (!observer)
        qFatal("%s", qPrintable(error));
    return *observer;
}

void compareSights(const VisionObserver::Sight &one, const VisionObserver::Sight &other)
{
    QCOMPARE(one.threshold, other.threshold);
    QCOMPARE(one.steepness, other.steepness);
    QCOMPARE(one.lapses, other.lapses);
}

void compareTimes(const ResponseTime &one, const ResponseTime &other)
{
    QCOMPARE(one.mu, other.mu);
    QCOMPARE(one.sigma, other.sigma);
    QCOMPARE(one.tau, other.tau);
}

void compareTraces(const MemoryObserver::Trace &one, const MemoryObserver::Trace &other)
{
    QCOMPARE(one.spread, other.spread);
    QCOMPARE(one.growth, other.growth);
}

Observer withoutSpread()
{
    return parsed(R"({"reactionTime": {"mean": 300, "spread": 0}, "learningSlope": 0})");
}
} // namespace

void tst_Observer::anEmptyDescriptionIsTheTypicalPatient()
{
    QFile file(QStringLiteral(KELMORAN_OBSERVERS "/typical.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const Observer typical = parsed(file.readAll());
    const Observer bare = parsed("{}");
    QCOMPARE(typical.time.mu, bare.time.mu);
    QCOMPARE(typical.time.sigma, bare.time.sigma);
    QCOMPARE(typical.time.tau, bare.time.tau);
    QCOMPARE(typical.gainFromAlert, bare.gainFromAlert);
    QCOMPARE(typical.gainFromOrientation, bare.gainFromOrientation);
    QCOMPARE(typical.learningSlope, bare.learningSlope);
    QCOMPARE(typical.anticipations, bare.anticipations);
    QCOMPARE(typical.misses, bare.misses);
    QVERIFY(typical.answer == bare.answer);
    compareSights(typical.vision.central, bare.vision.central);
    compareSights(typical.vision.peripheral, bare.vision.peripheral);
    compareSights(typical.vision.dual, bare.vision.dual);
    QCOMPARE(typical.vision.answerTime.mu, bare.vision.answerTime.mu);
    QCOMPARE(typical.vision.answerTime.sigma, bare.vision.answerTime.sigma);
    QCOMPARE(typical.vision.answerTime.tau, bare.vision.answerTime.tau);
    QVERIFY(typical.vision.answers == bare.vision.answers);
    compareTimes(typical.movement.reactionTime, bare.movement.reactionTime);
    QCOMPARE(typical.movement.obliqueCost, bare.movement.obliqueCost);
    QCOMPARE(typical.movement.misses, bare.movement.misses);
    QCOMPARE(typical.movement.unknown, bare.movement.unknown);
    QCOMPARE(typical.movement.rightDirections, bare.movement.rightDirections);
    compareTimes(typical.movement.answerTime, bare.movement.answerTime);
    QVERIFY(typical.movement.answer == bare.movement.answer);
    compareTraces(typical.memory.first, bare.memory.first);
    compareTraces(typical.memory.last, bare.memory.last);
    QCOMPARE(typical.memory.practice, bare.memory.practice);
    QCOMPARE(typical.memory.confusions, bare.memory.confusions);
    compareTimes(typical.memory.answerTime, bare.memory.answerTime);
}

void tst_Observer::everyKeyIsTaken()
{
    const Observer observer =
        parsed(R"({"reactionTime": {"mu": 1, "sigma": 2, "tau": 3}, "gainFromAlert": -4,
                   "gainFromOrientation": 5.5, "learningSlope": -6, "anticipations": 0.45,
                   "misses": 0, "answer": "left button"})");
    QCOMPARE(observer.time.mu, 1.0);
    QCOMPARE(observer.time.sigma, 2.0);
    QCOMPARE(observer.time.tau, 3.0);
    QCOMPARE(observer.gainFromAlert, -4.0);
    QCOMPARE(observer.gainFromOrientation, 5.5);
    QCOMPARE(observer.learningSlope, -6.0);
    QCOMPARE(observer.anticipations, 0.45);
    QCOMPARE(observer.misses, 0.0);
    QVERIFY(observer.answer == Observer::Answer::LeftButton);
}

void tst_Observer::meanAndSpreadBecomeTheThreeParts()
{
    const Observer observer = parsed(R"({"reactionTime": {"mean": 500, "spread": 100}})");
    QCOMPARE(observer.time.mu + observer.time.tau, 500.0);
    QCOMPARE(std::hypot(observer.time.sigma, observer.time.tau), 100.0);
}

void tst_Observer::whatCannotBeUnderstoodIsRefused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("complaint");
    const auto row = [](const char *name, const char *json, const char *complaint) {
        QTest::newRow(name) << QByteArray(json) << QString::fromLatin1(complaint);
    };
    row("no JSON", "mean 300", "illegal value");
    row("nothing", "", "illegal value");
    row("an array", "[]", "not a JSON object");
    row("an unknown key", R"({"speed": 1})", "unknown key \"speed\"");
    row("an unknown key of two lines", R"({"a\nb\u2028c": 1})", "unknown key \"a b c\"");
    row("an unknown key of the reaction time", R"({"reactionTime": {"median": 300}})",
        "unknown key \"reactionTime.median\"");
    row("a text for a number", R"({"misses": "0.1"})", "\"misses\" is not a number");
    row("a number for an object", R"({"reactionTime": 300})", "\"reactionTime\" is not an object");
    row("a rate above its range", R"({"anticipations": 0.5})",
        "\"anticipations\" is not between 0 and 0.45");
    row("a negative rate", R"({"misses": -0.1})", "\"misses\" is not between 0 and 0.45");
    row("a negative spread", R"({"reactionTime": {"sigma": -1}})",
        "\"reactionTime.sigma\" is not between 0 and 2000");
    row("both descriptions of the reaction time", R"({"reactionTime": {"mean": 300, "tau": 60}})",
        "\"reactionTime\" has mean and spread, or mu, sigma and tau");
    row("an unknown hand", R"({"answer": "enter"})",
        "\"answer\" is not one of \"space\", \"left button\"");
    row("a number for a hand", R"({"answer": 0})",
        "\"answer\" is not one of \"space\", \"left button\"");
    row("a threshold of nothing", R"({"vision": {"dual": {"threshold": 0}}})",
        "\"vision.dual.threshold\" is not between 1 and 10000");
    row("a threshold out of reach", R"({"vision": {"central": {"threshold": 10001}}})",
        "\"vision.central.threshold\" is not between 1 and 10000");
    row("a rise that falls", R"({"vision": {"central": {"steepness": -1}}})",
        "\"vision.central.steepness\" is not between 0 and 100");
    row("more lapses than trials", R"({"vision": {"peripheral": {"lapses": 1.1}}})",
        "\"vision.peripheral.lapses\" is not between 0 and 1");
    row("an unknown key of a part", R"({"vision": {"peripheral": {"slope": 1}}})",
        "unknown key \"vision.peripheral.slope\"");
    row("an unknown part", R"({"vision": {"left": {}}})", "unknown key \"vision.left\"");
    row("a number for a part", R"({"vision": {"dual": 60}})", "\"vision.dual\" is not an object");
    row("an answer time out of range", R"({"vision": {"answerTime": {"mean": 99}}})",
        "\"vision.answerTime.mean\" is not between 100 and 5000");
    row("both descriptions of the answer time",
        R"({"vision": {"answerTime": {"spread": 9, "mu": 900}}})",
        "\"vision.answerTime\" has mean and spread, or mu, sigma and tau");
    row("an unknown manner", R"({"vision": {"answers": "at random"}})",
        "\"vision.answers\" is not one of \"as seen\", \"always right\", \"always wrong\", "
        "\"silent\"");
    row("misses without end", R"({"movement": {"misses": 0.5}})",
        "\"movement.misses\" is not between 0 and 0.45");
    row("never knowing", R"({"movement": {"unknown": 1}})",
        "\"movement.unknown\" is not between 0 and 0.45");
    row("worse than a guess", R"({"movement": {"rightDirections": 0.2}})",
        "\"movement.rightDirections\" is not between 0.25 and 1");
    row("more than all right", R"({"movement": {"rightDirections": 1.01}})",
        "\"movement.rightDirections\" is not between 0.25 and 1");
    row("a cost out of range", R"({"movement": {"obliqueCost": 1001}})",
        "\"movement.obliqueCost\" is not between -1000 and 1000");
    row("an unknown key of movement", R"({"movement": {"lapses": 0}})",
        "unknown key \"movement.lapses\"");
    row("a hand of another task", R"({"movement": {"answer": "space"}})",
        "\"movement.answer\" is not one of \"keys\", \"mouse\"");
    row("a spread out of range", R"({"movement": {"answerTime": {"spread": 2001}}})",
        "\"movement.answerTime.spread\" is not between 0 and 2000");
    row("a negative scatter", R"({"memory": {"first": {"spread": -1}}})",
        "\"memory.first.spread\" is not between 0 and 200");
    row("a scatter beyond the screen", R"({"memory": {"last": {"spread": 201}}})",
        "\"memory.last.spread\" is not between 0 and 200");
    row("a scatter that vanishes", R"({"memory": {"first": {"growth": 0}}})",
        "\"memory.first.growth\" is not between 0.2 and 5");
    row("a growth out of range", R"({"memory": {"last": {"growth": 5.1}}})",
        "\"memory.last.growth\" is not between 0.2 and 5");
    row("an unknown key of a cross", R"({"memory": {"last": {"practice": 0}}})",
        "unknown key \"memory.last.practice\"");
    row("practice out of range", R"({"memory": {"practice": 1.1}})",
        "\"memory.practice\" is not between -1 and 1");
    row("more confusions than runs", R"({"memory": {"confusions": 1.1}})",
        "\"memory.confusions\" is not between 0 and 1");
    row("an unknown key of memory", R"({"memory": {"misses": 0}})",
        "unknown key \"memory.misses\"");
    row("a number for memory", R"({"memory": 7})", "\"memory\" is not an object");
}

void tst_Observer::whatCannotBeUnderstoodIsRefused()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, complaint);
    QString error;
    QVERIFY(!Observer::parse(json, error));
    QCOMPARE(error, complaint);
}

void tst_Observer::reactionTimesHaveTheirMeanAndSpread()
{
    const Observer observer =
        parsed(R"({"reactionTime": {"mu": 300, "sigma": 30, "tau": 80}, "learningSlope": 0})");
    Draws draws(7);
    constexpr int count = 20'000;
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < count; ++i) {
        const double time = observer.reactionTime(Observer::Cue::None, 1, draws);
        sum += time;
        squares += time * time;
    }
    const double mean = sum / count;
    const double spread = std::sqrt(squares / count - mean * mean);
    QVERIFY2(std::abs(mean - 380.0) < 2.5, qPrintable(QString::number(mean)));
    QVERIFY2(std::abs(spread - std::hypot(30.0, 80.0)) < 3.0, qPrintable(QString::number(spread)));
}

void tst_Observer::aCueShortensTheAnswerByItsGain()
{
    const Observer observer = withoutSpread();
    Draws draws(1);
    QCOMPARE(observer.reactionTime(Observer::Cue::None, 5, draws), 300);
    QCOMPARE(observer.reactionTime(Observer::Cue::Alert, 5, draws), 275);
    QCOMPARE(observer.reactionTime(Observer::Cue::Orientation, 5, draws), 260);
}

void tst_Observer::practiceShortensTheAnswerByTheLogarithmOfTheRank()
{
    Observer observer = withoutSpread();
    observer.learningSlope = -20.0;
    Draws draws(1);
    QCOMPARE(observer.reactionTime(Observer::Cue::None, 1, draws), 300);
    QCOMPARE(observer.reactionTime(Observer::Cue::None, 20, draws), 240); // 20 ln 20 = 59.9
}

void tst_Observer::noAnswerIsFasterThanAPersonCanBe()
{
    Observer observer = withoutSpread();
    observer.gainFromAlert = 1000.0;
    Draws draws(1);
    QCOMPARE(observer.reactionTime(Observer::Cue::Alert, 1, draws), int(ResponseTime::fastest));
}

void tst_Observer::theSameSeedDrawsTheSame()
{
    Draws one(42);
    Draws same(42);
    Draws other(43);
    const double first = one.uniform();
    QVERIFY(first > 0.0 && first < 1.0);
    QCOMPARE(same.uniform(), first);
    QVERIFY(other.uniform() != first);
    QVERIFY(one.exponential() >= 0.0);
    QVERIFY(!one.happens(0.0));
    QVERIFY(one.happens(1.0));
}

void tst_Observer::everyKeyOfVisionIsTaken()
{
    const VisionObserver vision =
        parsed(R"({"vision": {"central": {"threshold": 1, "steepness": 2, "lapses": 0.3},
                              "peripheral": {"threshold": 4, "steepness": 5, "lapses": 0.6},
                              "dual": {"threshold": 7, "steepness": 8, "lapses": 0.9},
                              "answerTime": {"mean": 1000, "spread": 100}}})")
            .vision;
    compareSights(vision.central, {1.0, 2.0, 0.3});
    compareSights(vision.peripheral, {4.0, 5.0, 0.6});
    compareSights(vision.dual, {7.0, 8.0, 0.9});
    QCOMPARE(vision.answerTime.mu, 920.0);
    QCOMPARE(vision.answerTime.sigma, 60.0);
    QCOMPARE(vision.answerTime.tau, 80.0);
}

void tst_Observer::everyKeyOfMovementIsTaken()
{
    const MovementObserver movement =
        parsed(R"({"movement": {"reactionTime": {"mu": 1, "sigma": 2, "tau": 3},
                                "obliqueCost": -4.5, "misses": 0.45, "unknown": 0.06,
                                "rightDirections": 0.25, "answer": "mouse",
                                "answerTime": {"mean": 1000, "spread": 100}}})")
            .movement;
    compareTimes(movement.reactionTime, {1.0, 2.0, 3.0});
    QCOMPARE(movement.obliqueCost, -4.5);
    QCOMPARE(movement.misses, 0.45);
    QCOMPARE(movement.unknown, 0.06);
    QCOMPARE(movement.rightDirections, 0.25);
    compareTimes(movement.answerTime, {920.0, 60.0, 80.0});
    QVERIFY(movement.answer == MovementObserver::Answer::Mouse);
}

void tst_Observer::everyKeyOfMemoryIsTaken()
{
    const MemoryObserver memory = parsed(R"({"memory": {"first": {"spread": 0, "growth": 0.2},
                              "last": {"spread": 200, "growth": 5},
                              "practice": -1, "confusions": 1,
                              "answerTime": {"mean": 1000, "spread": 100}}})")
                                      .memory;
    compareTraces(memory.first, {0.0, 0.2});
    compareTraces(memory.last, {200.0, 5.0});
    QCOMPARE(memory.practice, -1.0);
    QCOMPARE(memory.confusions, 1.0);
    compareTimes(memory.answerTime, {920.0, 60.0, 80.0});
}

void tst_Observer::everyMannerOfAnsweringIsTaken_data()
{
    using Answers = VisionObserver::Answers;
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("manner");
    QTest::newRow("as seen") << QByteArray("as seen") << int(Answers::AsSeen);
    QTest::newRow("right") << QByteArray("always right") << int(Answers::AlwaysRight);
    QTest::newRow("wrong") << QByteArray("always wrong") << int(Answers::AlwaysWrong);
    QTest::newRow("silent") << QByteArray("silent") << int(Answers::Silent);
}

void tst_Observer::everyMannerOfAnsweringIsTaken()
{
    QFETCH(QByteArray, word);
    QFETCH(int, manner);
    const Observer observer = parsed(R"({"vision": {"answers": ")" + word + R"("}})");
    QCOMPARE(int(observer.vision.answers), manner);
}

void tst_Observer::halfIsSeenAtTheThreshold()
{
    for (const double steepness : {0.5, 4.0, 100.0})
        QCOMPARE((VisionObserver::Sight{80.0, steepness, 0.0}.chanceOfSeeing(80.0)), 0.5);
}

void tst_Observer::theChanceOfSeeingRisesWithTheLogarithmOfTheExposure_data()
{
    QTest::addColumn<double>("steepness");
    QTest::addColumn<double>("lapses");
    QTest::addColumn<double>("exposure");
    QTest::addColumn<double>("chance");
    // At twice the threshold the odds are 2 to the power of the steepness.
    QTest::newRow("twice, 1") << 1.0 << 0.0 << 200.0 << 2.0 / 3.0;
    QTest::newRow("half, 1") << 1.0 << 0.0 << 50.0 << 1.0 / 3.0;
    QTest::newRow("twice, 3") << 3.0 << 0.0 << 200.0 << 8.0 / 9.0;
    QTest::newRow("four times, 3") << 3.0 << 0.0 << 400.0 << 64.0 / 65.0;
    QTest::newRow("twice, 3, a tenth not looked at") << 3.0 << 0.1 << 200.0 << 0.8;
    QTest::newRow("flat") << 0.0 << 0.0 << 4633.0 << 0.5;
    QTest::newRow("never looked at") << 3.0 << 1.0 << 4633.0 << 0.0;
    QTest::newRow("not shown") << 3.0 << 0.0 << 0.0 << 0.0;
}

void tst_Observer::theChanceOfSeeingRisesWithTheLogarithmOfTheExposure()
{
    QFETCH(double, steepness);
    QFETCH(double, lapses);
    QFETCH(double, exposure);
    QFETCH(double, chance);
    const VisionObserver::Sight sight{100.0, steepness, lapses};
    QVERIFY(std::abs(sight.chanceOfSeeing(exposure) - chance) < 1e-12);
}

void tst_Observer::eachFurtherCrossWidensTheSpreadByItsFactor()
{
    const MemoryObserver::Trace trace{4.0, 1.5};
    QCOMPARE(trace.spreadAfter(2), 4.0);
    QCOMPARE(trace.spreadAfter(3), 6.0);
    QCOMPARE(trace.spreadAfter(7), 4.0 * 7.59375);
    QCOMPARE(trace.spreadAfter(1), 4.0); // a run that a pause has spoilt
}

void tst_Observer::practiceIsAPowerOfTheRank()
{
    MemoryObserver observer;
    observer.practice = 0.5;
    QCOMPARE(observer.practised(1), 1.0);
    QCOMPARE(observer.practised(4), 0.5);
    QCOMPARE(observer.practised(25), 0.2);
    observer.practice = 0.0;
    QCOMPARE(observer.practised(30), 1.0);
    observer.practice = -0.5; // who tires
    QCOMPARE(observer.practised(4), 2.0);
}

QTEST_GUILESS_MAIN(tst_Observer)
#include "tst_Observer.moc"
