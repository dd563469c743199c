// What the command line of the witness tells, and what it does with it.

#include "Options.h"

#include <QTest>

class TestErrand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anErrandIsFourWords();
    void badErrandsAreComplainedOf_data();
    void badErrandsAreComplainedOf();
    void anErrandIsForItsPlaceAndChange_data();
    void anErrandIsForItsPlaceAndChange();
    void delaysFillTheRangeAndPressesTakeTurns();
    void optionsHoldPlacesAndErrands();
    void badOptionsAreComplainedOf_data();
    void badOptionsAreComplainedOf();
};

void TestErrand::anErrandIsFourWords()
{
    QString error;
    const Errand errand = Errand::parse(
        QStringLiteral(" target*  brighter key=space|button=1|key=e 200..700.25 "), error);
    QCOMPARE(error, QString());
    QCOMPARE(errand.place, QStringLiteral("target*"));
    QCOMPARE(errand.when, Errand::When::Brighter);
    QCOMPARE(errand.presses.size(), std::size_t(3));
    QCOMPARE(errand.presses[0].kind, Press::Kind::Key);
    QCOMPARE(errand.presses[0].symbol, 0x20U);
    QCOMPARE(errand.presses[1].kind, Press::Kind::Button);
    QCOMPARE(errand.presses[1].symbol, 1U);
    QCOMPARE(errand.presses[2].symbol, std::uint32_t('e'));
    QCOMPARE(errand.presses[2].name, std::string("key=e"));
    QCOMPARE(errand.shortest, moment::Ns(200'000'000));
    QCOMPARE(errand.longest, moment::Ns(700'250'000));
}

void TestErrand::badErrandsAreComplainedOf_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("three words") << QStringLiteral("target brighter key=space");
    QTest::newRow("five words") << QStringLiteral("target brighter key=space 20 30");
    QTest::newRow("no such change") << QStringLiteral("target greener key=space 20");
    QTest::newRow("no such key") << QStringLiteral("target brighter key=Hyper 20");
    QTest::newRow("no such button") << QStringLiteral("target brighter button=9 20");
    QTest::newRow("neither key nor button") << QStringLiteral("target brighter space 20");
    QTest::newRow("nothing behind a bar") << QStringLiteral("target brighter key=e| 20");
    QTest::newRow("no number") << QStringLiteral("target brighter key=e soon");
    QTest::newRow("before the change") << QStringLiteral("target brighter key=e -1");
    QTest::newRow("no finite time") << QStringLiteral("target brighter key=e nan");
    QTest::newRow("backwards") << QStringLiteral("target brighter key=e 30..20");
}

void TestErrand::badErrandsAreComplainedOf()
{
    QFETCH(const QString, text);
    QString error;
    Errand::parse(text, error);
    QVERIFY(!error.isEmpty());
}

void TestErrand::anErrandIsForItsPlaceAndChange_data()
{
    QTest::addColumn<QString>("errand");
    QTest::addColumn<QString>("place");
    QTest::addColumn<double>("before");
    QTest::addColumn<double>("after");
    QTest::addColumn<bool>("expected");
    const auto row = [](const char *errand, const char *place, double before, double after,
                        bool expected) {
        QTest::addRow("%s, %s, %g to %g", errand, place, before, after)
            << QString::fromLatin1(errand) + QStringLiteral(" key=e 0")
            << QString::fromLatin1(place) << before << after << expected;
    };
    row("a brighter", "a", 1, 2, true);
    row("a brighter", "a", 2, 1, false);
    row("a brighter", "a", 1, 1, false);
    row("a darker", "a", 2, 1, true);
    row("a darker", "a", 1, 2, false);
    row("a changes", "a", 1, 1, true);
    row("a changes", "b", 1, 2, false);
    row("a changes", "ab", 1, 2, false);
    row("a* changes", "ab", 1, 2, true);
    row("a* changes", "a", 1, 2, true);
    row("a* changes", "ba", 1, 2, false);
}

void TestErrand::anErrandIsForItsPlaceAndChange()
{
    QFETCH(const QString, errand);
    QFETCH(const QString, place);
    QFETCH(const double, before);
    QFETCH(const double, after);
    QString error;
    const Errand read = Errand::parse(errand, error);
    QCOMPARE(error, QString());
    QTEST(read.isFor(place, before, after), "expected");
}

void TestErrand::delaysFillTheRangeAndPressesTakeTurns()
{
    QString error;
    const Errand errand =
        Errand::parse(QStringLiteral("a brighter key=space|button=1 200..700"), error);
    std::mt19937_64 dice(1);
    moment::Ns least = errand.longest;
    moment::Ns most = errand.shortest;
    int keys = 0;
    int fractions = 0;
    constexpr int draws = 1000;
    for (int i = 0; i < draws; ++i) {
        const moment::Ns delay = errand.drawDelay(dice);
        least = std::min(least, delay);
        most = std::max(most, delay);
        fractions += delay % moment::perMs != 0 ? 1 : 0;
        keys += errand.drawPress(dice).kind == Press::Kind::Key ? 1 : 0;
    }
    QVERIFY(least >= errand.shortest && least < 210 * moment::perMs);
    QVERIFY(most <= errand.longest && most > 690 * moment::perMs);
    QVERIFY(fractions > draws / 2); // not whole milliseconds
    QVERIFY(keys > 400 && keys < 600);
}

void TestErrand::optionsHoldPlacesAndErrands()
{
    const Options options = Options::parse(
        {QStringLiteral("witness"), QStringLiteral("--place"), QStringLiteral("t-1=20x10+300+4"),
         QStringLiteral("--place"), QStringLiteral("centre=40x40+0+0"), QStringLiteral("--on"),
         QStringLiteral("t* darker key=space 5"), QStringLiteral("--seed"), QStringLiteral("7")});
    QCOMPARE(options.text, QString());
    QCOMPARE(options.wish, Options::Wish::Watch);
    QCOMPARE(options.places.size(), std::size_t(2));
    QCOMPARE(options.places[0].name(), std::string("t-1"));
    QVERIFY((options.places[0].area() == Area{300, 4, 20, 10}));
    QCOMPARE(options.errands.size(), std::size_t(1));
    QCOMPARE(options.seed, std::uint64_t(7));
}

void TestErrand::badOptionsAreComplainedOf_data()
{
    QTest::addColumn<QStringList>("arguments");
    const auto row = [](const char *name, const QStringList &arguments) {
        QTest::newRow(name) << QStringList{QStringLiteral("witness")} + arguments;
    };
    const QString place = QStringLiteral("--place=a=2x2+0+0");
    row("nothing to watch", {});
    row("an empty place", {QStringLiteral("--place=a=0x2+0+0")});
    row("no place", {QStringLiteral("--place=a")});
    row("an errand for no place", {place, QStringLiteral("--on=b changes key=e 1")});
    row("a bad errand", {place, QStringLiteral("--on=a changes")});
    row("a bad seed", {place, QStringLiteral("--seed=x")});
    row("no rounds", {QStringLiteral("--self-test"), QStringLiteral("--rounds=0")});
    row("no such option", {place, QStringLiteral("--colour=red")});
}

void TestErrand::badOptionsAreComplainedOf()
{
    QFETCH(const QStringList, arguments);
    const Options options = Options::parse(arguments);
    QCOMPARE(options.wish, Options::Wish::Complain);
    QVERIFY(!options.text.isEmpty());
}

QTEST_GUILESS_MAIN(TestErrand)
#include "tst_Errand.moc"
