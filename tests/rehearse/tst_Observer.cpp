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
    QCOMPARE(typical.mu, bare.mu);
    QCOMPARE(typical.sigma, bare.sigma);
    QCOMPARE(typical.tau, bare.tau);
    QCOMPARE(typical.gainFromAlert, bare.gainFromAlert);
    QCOMPARE(typical.gainFromOrientation, bare.gainFromOrientation);
    QCOMPARE(typical.learningSlope, bare.learningSlope);
    QCOMPARE(typical.anticipations, bare.anticipations);
    QCOMPARE(typical.misses, bare.misses);
    QVERIFY(typical.answer == bare.answer);
}

void tst_Observer::everyKeyIsTaken()
{
    const Observer observer =
        parsed(R"({"reactionTime": {"mu": 1, "sigma": 2, "tau": 3}, "gainFromAlert": -4,
                   "gainFromOrientation": 5.5, "learningSlope": -6, "anticipations": 0.45,
                   "misses": 0, "answer": "left button"})");
    QCOMPARE(observer.mu, 1.0);
    QCOMPARE(observer.sigma, 2.0);
    QCOMPARE(observer.tau, 3.0);
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
    QCOMPARE(observer.mu + observer.tau, 500.0);
    QCOMPARE(std::hypot(observer.sigma, observer.tau), 100.0);
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
    row("an unknown key of the reaction time", R"({"reactionTime": {"median": 300}})",
        "unknown key \"median\"");
    row("a text for a number", R"({"misses": "0.1"})", "\"misses\" is not a number");
    row("a number for an object", R"({"reactionTime": 300})", "\"reactionTime\" is not an object");
    row("a rate above its range", R"({"anticipations": 0.5})",
        "\"anticipations\" is not between 0 and 0.45");
    row("a negative rate", R"({"misses": -0.1})", "\"misses\" is not between 0 and 0.45");
    row("a negative spread", R"({"reactionTime": {"sigma": -1}})",
        "\"sigma\" is not between 0 and 2000");
    row("both descriptions of the reaction time", R"({"reactionTime": {"mean": 300, "tau": 60}})",
        "\"reactionTime\" has mean and spread, or mu, sigma and tau");
    row("an unknown hand", R"({"answer": "enter"})",
        "\"answer\" is neither \"space\" nor \"left button\"");
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
    QCOMPARE(observer.reactionTime(Observer::Cue::Alert, 1, draws), int(Observer::fastest));
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

QTEST_GUILESS_MAIN(tst_Observer)
#include "tst_Observer.moc"
