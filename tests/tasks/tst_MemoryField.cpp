#include "memoryField.h"
#include "randomness.h"

#include <QTest>

#include <array>
#include <cmath>
#include <set>

using memoryField::Place;

/// Where the crosses of the memory task stand, and how far from them a click falls.
class tst_MemoryField : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRingHasTwelveSectorsAndSixLoads();
    void aPlaceIsMeasuredClockwiseFromTheTop_data();
    void aPlaceIsMeasuredClockwiseFromTheTop();
    void aCoordinateIsCutTowardZero_data();
    void aCoordinateIsCutTowardZero();
    void everyPlaceLiesInTheRing();
    void aDrawnPlaceLiesInItsSector_data();
    void aDrawnPlaceLiesInItsSector();
    void everyAngleAndEveryRadiusIsDrawn();
    void aPlaceTakesTheAngleFirstAndTwoDrawsInAll_data();
    void aPlaceTakesTheAngleFirstAndTwoDrawsInAll();
    void theSameSeedDrawsTheSamePlaces();
    void theLaterCrossesStandBehindTheNeighbours_data();
    void theLaterCrossesStandBehindTheNeighbours();
    void noCrossFallsBesideTheFirstNorTwiceInASector();
    void everyOtherSectorIsUsed();
    void theDistanceIsInMillimetres_data();
    void theDistanceIsInMillimetres();
    void theDistanceIsAsFarBackAsForth_data();
    void theDistanceIsAsFarBackAsForth();
    void lessThanAMillimetreIsExactlyOne_data();
    void lessThanAMillimetreIsExactlyOne();
    void aScreenWithoutAPitchMakesEveryDistanceOne();
};

namespace {
constexpr quint32 seeds = 2000;
constexpr int longestRun = memoryField::shortestRun + memoryField::loads - 1;

void addSectors()
{
    QTest::addColumn<int>("sector");
    for (int sector = 0; sector < 12; ++sector)
        QTest::addRow("sector %d", sector) << sector;
}
} // namespace

void tst_MemoryField::theRingHasTwelveSectorsAndSixLoads()
{
    QCOMPARE(memoryField::sectors * memoryField::sectorAngle, 360);
    QCOMPARE(memoryField::sectors, 12);
    QCOMPARE(memoryField::loads, 6);
    QCOMPARE(memoryField::shortestRun, 2);
    QCOMPARE(longestRun, 7);
    QCOMPARE(memoryField::innerRadius, 180);
    QCOMPARE(memoryField::innerRadius + memoryField::radii, 360);
}

void tst_MemoryField::aPlaceIsMeasuredClockwiseFromTheTop_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<int>("extra");
    QTest::addColumn<QPoint>("expected");
    QTest::newRow("up, nearest") << 0 << 0 << QPoint(640, 332);
    QTest::newRow("up, farthest") << 0 << 179 << QPoint(640, 153);
    QTest::newRow("up and right") << 45 << 100 << QPoint(837, 314);
    QTest::newRow("right") << 90 << 20 << QPoint(840, 512);
    QTest::newRow("down and right") << 135 << 100 << QPoint(837, 709);
    QTest::newRow("down") << 180 << 0 << QPoint(640, 692);
    QTest::newRow("down and left") << 225 << 100 << QPoint(442, 709);
    QTest::newRow("left") << 270 << 1 << QPoint(459, 512);
    QTest::newRow("up and left") << 315 << 100 << QPoint(442, 314);
    QTest::newRow("almost up again") << 359 << 179 << QPoint(633, 153);
    // The four of the example.
    QTest::newRow("first localisation") << 35 << 150 << QPoint(829, 241);
    QTest::newRow("second localisation") << 275 << 150 << QPoint(311, 483);
    QTest::newRow("third localisation") << 355 << 150 << QPoint(611, 183);
    QTest::newRow("fourth localisation") << 190 << 150 << QPoint(582, 836);
}

void tst_MemoryField::aPlaceIsMeasuredClockwiseFromTheTop()
{
    QFETCH(const int, angle);
    QFETCH(const int, extra);
    QFETCH(const QPoint, expected);
    const Place place{float(angle), extra};
    QCOMPARE(place.around(QPoint(640, 512)), expected);
}

void tst_MemoryField::aCoordinateIsCutTowardZero_data()
{
    QTest::addColumn<QPoint>("centre");
    QTest::addColumn<int>("angle");
    QTest::addColumn<int>("extra");
    QTest::addColumn<QPoint>("expected");
    // (-61.947, 6.500), and so on: below zero the cut goes up.
    QTest::newRow("off the left") << QPoint(100, 100) << 300 << 7 << QPoint(-61, 6);
    QTest::newRow("off the top") << QPoint(100, 100) << 352 << 33 << QPoint(70, -110);
    QTest::newRow("off the top, to the right")
        << QPoint(100, 100) << 12 << 100 << QPoint(158, -173);
    QTest::newRow("off the corner") << QPoint(5, 5) << 320 << 179 << QPoint(-225, -270);
    QTest::newRow("off to no side") << QPoint(100, 100) << 200 << 33 << QPoint(27, 300);
    QTest::newRow("less than a pixel off") << QPoint(180, 180) << 291 << 13 << QPoint(0, 110);
    QTest::newRow("around a corner, up") << QPoint(0, 0) << 315 << 100 << QPoint(-197, -197);
    QTest::newRow("around a corner, down") << QPoint(0, 0) << 135 << 100 << QPoint(197, 197);
    QTest::newRow("a centre off the screen") << QPoint(-50, -60) << 100 << 61 << QPoint(187, -18);
}

void tst_MemoryField::aCoordinateIsCutTowardZero()
{
    QFETCH(const QPoint, centre);
    QFETCH(const int, angle);
    QFETCH(const int, extra);
    QFETCH(const QPoint, expected);
    const Place place{float(angle), extra};
    QCOMPARE(place.around(centre), expected);
}

void tst_MemoryField::everyPlaceLiesInTheRing()
{
    const QPoint centre(640, 512);
    for (int angle = 0; angle < 360; ++angle) {
        for (int extra = 0; extra < 180; ++extra) {
            const QPoint away = Place{float(angle), extra}.around(centre) - centre;
            // A cut pixel is less than one off on each axis.
            const double radius = std::hypot(away.x(), away.y());
            QVERIFY(std::abs(radius - (180 + extra)) < 1.5);
        }
    }
}

void tst_MemoryField::aDrawnPlaceLiesInItsSector_data()
{
    addSectors();
}

void tst_MemoryField::aDrawnPlaceLiesInItsSector()
{
    QFETCH(const int, sector);
    randomness::seed(21);
    for (quint32 i = 0; i < seeds; ++i) {
        const Place place = memoryField::drawn(sector);
        QVERIFY(place.angle >= float(30 * sector) && place.angle <= float(30 * sector + 29));
        QCOMPARE(place.angle, std::floor(place.angle));
        QVERIFY(place.radiusExtra >= 0 && place.radiusExtra <= 179);
    }
}

void tst_MemoryField::everyAngleAndEveryRadiusIsDrawn()
{
    randomness::seed(22);
    std::set<float> angles;
    std::set<int> radii;
    for (int i = 0; i < 6000; ++i) {
        const Place place = memoryField::drawn(i % 12);
        angles.insert(place.angle);
        radii.insert(place.radiusExtra);
    }
    QCOMPARE(int(angles.size()), 360);
    QCOMPARE(int(radii.size()), 180);
}

void tst_MemoryField::aPlaceTakesTheAngleFirstAndTwoDrawsInAll_data()
{
    addSectors();
}

void tst_MemoryField::aPlaceTakesTheAngleFirstAndTwoDrawsInAll()
{
    QFETCH(const int, sector);
    for (quint32 seed = 0; seed < 300; ++seed) {
        randomness::seed(seed);
        const Place place = memoryField::drawn(sector);
        const int next = randomness::next();
        randomness::seed(seed);
        QCOMPARE(place.angle, float(sector * 30 + randomness::next() % 30));
        QCOMPARE(place.radiusExtra, randomness::next() % 180);
        QCOMPARE(next, randomness::next());
    }
}

void tst_MemoryField::theSameSeedDrawsTheSamePlaces()
{
    const auto run = [](quint32 seed) {
        randomness::seed(seed);
        QList<QPoint> places;
        for (int cross = 0; cross < longestRun; ++cross)
            places.append(memoryField::drawn(cross).around(QPoint(640, 512)));
        return places;
    };
    QCOMPARE(run(23), run(23));
    QVERIFY(run(23) != run(24));
}

void tst_MemoryField::theLaterCrossesStandBehindTheNeighbours_data()
{
    QTest::addColumn<int>("cross");
    QTest::addColumn<int>("index");
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("second") << 1 << 3;
    QTest::newRow("third") << 2 << 4;
    QTest::newRow("fourth") << 3 << 5;
    QTest::newRow("fifth") << 4 << 6;
    QTest::newRow("sixth") << 5 << 7;
    QTest::newRow("seventh") << 6 << 8;
}

void tst_MemoryField::theLaterCrossesStandBehindTheNeighbours()
{
    QFETCH(const int, cross);
    QFETCH(const int, index);
    QCOMPARE(int(memoryField::sectorIndex(cross)), index);
}

void tst_MemoryField::noCrossFallsBesideTheFirstNorTwiceInASector()
{
    for (quint32 seed = 0; seed < seeds; ++seed) {
        const std::vector<int> table = randomness::sectors(seed);
        QCOMPARE(int(table.size()), 12);
        const int first = table.at(memoryField::sectorIndex(0));
        std::set<int> used{first};
        for (int cross = 1; cross < longestRun; ++cross) {
            const int sector = table.at(memoryField::sectorIndex(cross));
            const int apart = (sector - first + 12) % 12;
            QVERIFY(apart >= 2 && apart <= 10);
            used.insert(sector);
        }
        QCOMPARE(int(used.size()), longestRun);
    }
}

void tst_MemoryField::everyOtherSectorIsUsed()
{
    // By the place in the run: how far from the first cross, in sectors.
    std::array<std::set<int>, longestRun> apart;
    for (quint32 seed = 0; seed < seeds; ++seed) {
        const std::vector<int> table = randomness::sectors(seed);
        for (int cross = 1; cross < longestRun; ++cross) {
            const int sector = table.at(memoryField::sectorIndex(cross));
            apart.at(std::size_t(cross)).insert((sector - table.at(0) + 12) % 12);
        }
    }
    for (std::size_t cross = 1; cross < apart.size(); ++cross)
        QCOMPARE(int(apart.at(cross).size()), 9);
}

void tst_MemoryField::theDistanceIsInMillimetres_data()
{
    QTest::addColumn<QPoint>("off"); // pixels
    QTest::addColumn<float>("horz"); // mm per pixel
    QTest::addColumn<float>("vert");
    QTest::addColumn<double>("expected"); // mm
    QTest::newRow("three, four, five") << QPoint(3, 4) << 1.0F << 1.0F << 5.0;
    QTest::newRow("across alone") << QPoint(40, 0) << 0.25F << 0.2F << 10.0;
    QTest::newRow("up alone") << QPoint(0, 40) << 0.25F << 0.2F << 8.0;
    QTest::newRow("left and up") << QPoint(-30, -75) << 0.25F << 0.2F << 16.770509831248;
    QTest::newRow("just above one") << QPoint(3, 4) << 0.25F << 0.2F << 1.096585618670;
    // The products are cut to float; in double these would be 9.990000396967 and the like.
    QTest::newRow("a product in float") << QPoint(37, 0) << 0.27F << 0.27F << 9.990000724792;
    QTest::newRow("two products in float") << QPoint(37, 53) << 0.27F << 0.263F << 17.149223471739;
    QTest::newRow("a long way") << QPoint(-1321, 977) << 0.2645F << 0.2517F << 427.265340048808;
    QTest::newRow("no pitch up") << QPoint(40, 900) << 0.25F << 0.0F << 10.0;
    QTest::newRow("no pitch across") << QPoint(900, 40) << 0.0F << 0.2F << 8.0;
    QTest::newRow("far off the screen") << QPoint(1'000'000, 0) << 0.25F << 0.2F << 250'000.0;
}

void tst_MemoryField::theDistanceIsInMillimetres()
{
    QFETCH(const QPoint, off);
    QFETCH(const float, horz);
    QFETCH(const float, vert);
    QFETCH(const double, expected);
    for (const QPoint place : {QPoint(0, 0), QPoint(640, 153), QPoint(-61, -110)}) {
        const double distance = memoryField::distance(place + off, place, horz, vert);
        QVERIFY(std::abs(distance - expected) < 1e-11 * expected);
    }
}

void tst_MemoryField::theDistanceIsAsFarBackAsForth_data()
{
    theDistanceIsInMillimetres_data();
}

void tst_MemoryField::theDistanceIsAsFarBackAsForth()
{
    QFETCH(const QPoint, off);
    QFETCH(const float, horz);
    QFETCH(const float, vert);
    const QPoint place(640, 153);
    const double forth = memoryField::distance(place + off, place, horz, vert);
    QCOMPARE(memoryField::distance(place, place + off, horz, vert), forth);
    QCOMPARE(memoryField::distance(place - off, place, horz, vert), forth);
}

void tst_MemoryField::lessThanAMillimetreIsExactlyOne_data()
{
    QTest::addColumn<QPoint>("off");
    QTest::newRow("on the place") << QPoint(0, 0);
    QTest::newRow("a pixel beside") << QPoint(1, 0);
    QTest::newRow("a pixel below") << QPoint(0, 1);
    QTest::newRow("0.85 mm") << QPoint(3, 2);
    QTest::newRow("0.96 mm") << QPoint(-3, -3);
    QTest::newRow("one across") << QPoint(4, 0);
    QTest::newRow("one up") << QPoint(0, 5);
}

void tst_MemoryField::lessThanAMillimetreIsExactlyOne()
{
    QFETCH(const QPoint, off);
    const QPoint place(300, 400);
    const double distance = memoryField::distance(place + off, place, 0.25F, 0.2F);
    QVERIFY(distance >= 1.0 && distance <= 1.0); // its logarithm is 0
    QCOMPARE(std::log(distance), 0.0);
}

void tst_MemoryField::aScreenWithoutAPitchMakesEveryDistanceOne()
{
    for (const QPoint off : {QPoint(0, 0), QPoint(3, -4), QPoint(-900, 700)}) {
        const double distance = memoryField::distance(QPoint(50, 60) + off, {50, 60}, 0.0F, 0.0F);
        QVERIFY(distance >= 1.0 && distance <= 1.0);
    }
}

QTEST_MAIN(tst_MemoryField)
#include "tst_MemoryField.moc"
