// What the witness knows of a place: its hash, its brightness, and what of it has changed.

#include "Shadow.h"
#include "spread.h"

#include <QTest>

class TestShadow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areasAreCutToWhatTheyShare_data();
    void areasAreCutToWhatTheyShare();
    void onlyDifferentPixelsAreChanges();
    void brightnessIsTheMeanOfAllColours();
    void theHashTellsPicturesApartAndNotTheWayToThem();
    void percentilesAreValuesOfTheSet();
};

namespace {

constexpr Shadow::Pixel white = 0xFFFFFF;
constexpr Area place{10, 20, 4, 3};

/// All of a small place in one colour.
std::vector<Shadow::Pixel> plain(Shadow::Pixel colour)
{
    return std::vector<Shadow::Pixel>(12, colour);
}

} // namespace

void TestShadow::areasAreCutToWhatTheyShare_data()
{
    QTest::addColumn<QRect>("other");
    QTest::addColumn<QRect>("shared"); // empty: nothing
    QTest::newRow("the same") << QRect(10, 20, 4, 3) << QRect(10, 20, 4, 3);
    QTest::newRow("around") << QRect(0, 0, 100, 100) << QRect(10, 20, 4, 3);
    QTest::newRow("inside") << QRect(11, 21, 1, 1) << QRect(11, 21, 1, 1);
    QTest::newRow("a corner") << QRect(12, 22, 9, 9) << QRect(12, 22, 2, 1);
    QTest::newRow("the other corner") << QRect(5, 15, 6, 6) << QRect(10, 20, 1, 1);
    QTest::newRow("beside") << QRect(14, 20, 4, 3) << QRect();
    QTest::newRow("above") << QRect(10, 10, 4, 10) << QRect();
}

void TestShadow::areasAreCutToWhatTheyShare()
{
    QFETCH(const QRect, other);
    QFETCH(const QRect, shared);
    const Area cut = place.cut({other.x(), other.y(), other.width(), other.height()});
    QCOMPARE(cut.isEmpty(), shared.isEmpty());
    if (!cut.isEmpty())
        QCOMPARE(QRect(cut.x, cut.y, cut.width, cut.height), shared);
}

void TestShadow::onlyDifferentPixelsAreChanges()
{
    Shadow shadow("a", place);
    QCOMPARE(shadow.look(place, plain(0)), 0);
    QCOMPARE(shadow.look(place, plain(0xFF000000U)), 0); // the highest byte means nothing
    QCOMPARE(shadow.look({11, 21, 2, 1}, std::vector<Shadow::Pixel>{white, white}), 2);
    QCOMPARE(shadow.look({11, 21, 2, 1}, std::vector<Shadow::Pixel>{white, white}), 0);
    QCOMPARE(shadow.look({12, 21, 2, 1}, std::vector<Shadow::Pixel>{white, white}), 1);
    QCOMPARE(shadow.look(place, plain(white)), 9);
    QCOMPARE(shadow.look(place, plain(0)), 12);
    QCOMPARE(shadow.hash(), std::uint64_t(0));
}

void TestShadow::brightnessIsTheMeanOfAllColours()
{
    Shadow shadow("a", place);
    QCOMPARE(shadow.brightness(), 0.0);
    shadow.look(place, plain(white));
    QCOMPARE(shadow.brightness(), 255.0);
    shadow.look(place, plain(0x0000FF));
    QCOMPARE(shadow.brightness(), 85.0);
    shadow.look({10, 20, 2, 3}, std::vector<Shadow::Pixel>(6, 0));
    QCOMPARE(shadow.brightness(), 42.5);
}

void TestShadow::theHashTellsPicturesApartAndNotTheWayToThem()
{
    Shadow atOnce("a", place);
    std::vector<Shadow::Pixel> picture = plain(0);
    picture[5] = picture[6] = white; // the second row, in the middle
    atOnce.look(place, picture);

    Shadow inSteps("b", place);
    inSteps.look(place, plain(white));
    inSteps.look({11, 21, 1, 1}, std::vector<Shadow::Pixel>{0x123456});
    const std::uint64_t before = inSteps.hash();
    inSteps.look(place, picture);
    QCOMPARE(inSteps.hash(), atOnce.hash());
    QVERIFY(before != atOnce.hash());

    std::swap(picture[6], picture[7]); // as bright, and moved by a pixel
    const double brightness = atOnce.brightness();
    atOnce.look(place, picture);
    QVERIFY(inSteps.hash() != atOnce.hash());
    QCOMPARE(atOnce.brightness(), brightness);
}

void TestShadow::percentilesAreValuesOfTheSet()
{
    const Spread none = Spread::of({});
    QCOMPARE(none.count, std::size_t(0));
    const Spread one = Spread::of({7});
    QCOMPARE(one.median, moment::Ns(7));
    QCOMPARE(one.p99, moment::Ns(7));
    std::vector<moment::Ns> values;
    for (moment::Ns value = 200; value > 0; --value)
        values.push_back(value);
    const Spread many = Spread::of(values);
    QCOMPARE(many.median, moment::Ns(100));
    QCOMPARE(many.p95, moment::Ns(190));
    QCOMPARE(many.p99, moment::Ns(198));
    QCOMPARE(many.worst, moment::Ns(200));
}

QTEST_GUILESS_MAIN(TestShadow)
#include "tst_Shadow.moc"
