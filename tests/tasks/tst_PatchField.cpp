#include "PatchField.h"
#include "randomness.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <vector>

/// Which patch drifts where, in each of the three conditions.
class tst_PatchField : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eightGroupsOfNineAndARingOfEight();
    void everyDirectionIsOneOfFour_data();
    void everyDirectionIsOneOfFour();
    void theDrawsComeInTheirOrder_data();
    void theDrawsComeInTheirOrder();
    void inACrowdAllButOneOfEachGroupMoveTogether_data();
    void inACrowdAllButOneOfEachGroupMoveTogether();
    void inACrowdTheShownPatchIsNeverTheStray_data();
    void inACrowdTheShownPatchIsNeverTheStray();
    void inACrowdAnyOtherRingPatchCanBeTheStray_data();
    void inACrowdAnyOtherRingPatchCanBeTheStray();
    void inACrowdAnyPatchOfAGroupCanBeTheStray();
    void aSinglePatchMovesAgainstAllOthers_data();
    void aSinglePatchMovesAgainstAllOthers();
    void anyPatchOfAGroupCanBeItsSingleOne();
    void aRandomPatchFollowsNobody_data();
    void aRandomPatchFollowsNobody();
    void theAnswerIsAnyDirectionEquallyOften_data();
    void theAnswerIsAnyDirectionEquallyOften();
    void theOthersGoAnyOtherWayEquallyOften_data();
    void theOthersGoAnyOtherWayEquallyOften();
};

namespace {
constexpr int draws = 2000;
constexpr int conditions = 3;

/// The 80 directions in the order ring, group by group.
std::vector<int> flat(const PatchField &field)
{
    std::vector<int> all(field.ring.begin(), field.ring.end());
    for (const auto &group : field.dot)
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

template <typename Patches>
int count(const Patches &patches, int direction)
{
    return int(std::ranges::count(patches, direction));
}

/// Whether a count out of so many draws lies within four standard deviations of what is expected.
bool plausible(int seen, int of, double share)
{
    return std::abs(seen - of * share) <= 4.0 * std::sqrt(of * share * (1.0 - share));
}

/// A row for every condition with every ring patch.
void addConditionsAndPlaces()
{
    QTest::addColumn<int>("condition");
    QTest::addColumn<int>("shown");
    for (int condition = 0; condition < conditions; ++condition) {
        for (int shown = 0; shown < 8; ++shown)
            QTest::addRow("condition %d, ring patch %d", condition, shown) << condition << shown;
    }
}

void addConditions()
{
    QTest::addColumn<int>("condition");
    QTest::newRow("each for itself") << 0;
    QTest::newRow("with the crowd") << 1;
    QTest::newRow("against the crowd") << 2;
}

void addPlaces()
{
    QTest::addColumn<int>("shown");
    for (int shown = 0; shown < 8; ++shown)
        QTest::addRow("ring patch %d", shown) << shown;
}

PatchField drawn(int condition, int shown)
{
    return PatchField::drawn(PatchField::Condition(condition), shown);
}

/// The three directions that differ from this one, in ascending order.
std::vector<int> others(int direction)
{
    std::vector<int> all{0, 1, 2, 3};
    std::erase(all, direction);
    return all;
}

int oneOf(const std::vector<int> &values)
{
    return values.at(std::size_t(randomness::next()) % values.size());
}

/// The three conditions once more, word for word.
std::vector<int> expectedRandom()
{
    std::vector<int> all;
    for (int patch = 0; patch < 8 + 72; ++patch)
        all.push_back(randomness::next() % 4);
    return all;
}

std::vector<int> expectedCrowd(int shown)
{
    const int c = randomness::next() % 4;
    std::vector<int> all(8 + 72, c);
    std::vector<int> candidates{0, 1, 2, 3, 4, 5, 6, 7};
    std::erase(candidates, shown);
    const auto stray = std::size_t(candidates[std::size_t(randomness::next() % 7)]);
    all[stray] = oneOf(others(c));
    for (std::size_t group = 0; group < 8; ++group) {
        const auto patch = std::size_t(randomness::next() % 9);
        all[8 + 9 * group + patch] = oneOf(others(c));
    }
    return all;
}

std::vector<int> expectedSingle(int shown)
{
    const int c = randomness::next() % 4;
    std::vector<int> all;
    for (int patch = 0; patch < 8; ++patch)
        all.push_back(oneOf(others(c)));
    all[std::size_t(shown)] = c;
    for (std::size_t group = 0; group < 8; ++group) {
        for (int patch = 0; patch < 9; ++patch)
            all.push_back(oneOf(others(c)));
        all[8 + 9 * group + std::size_t(randomness::next() % 9)] = c;
    }
    return all;
}

std::vector<int> expected(int condition, int shown)
{
    if (condition == 0)
        return expectedRandom();
    return condition == 1 ? expectedCrowd(shown) : expectedSingle(shown);
}
} // namespace

void tst_PatchField::eightGroupsOfNineAndARingOfEight()
{
    const PatchField field = drawn(0, 0);
    QCOMPARE(int(field.dot.size()), 8);
    for (const auto &group : field.dot)
        QCOMPARE(int(group.size()), 9);
    QCOMPARE(int(field.ring.size()), 8);
    QCOMPARE(int(PatchField::Random), 0);
    QCOMPARE(int(PatchField::Crowd), 1);
    QCOMPARE(int(PatchField::Single), 2);
}

void tst_PatchField::everyDirectionIsOneOfFour_data()
{
    addConditionsAndPlaces();
}

void tst_PatchField::everyDirectionIsOneOfFour()
{
    QFETCH(const int, condition);
    QFETCH(const int, shown);
    randomness::seed(11);
    for (int i = 0; i < draws; ++i) {
        const std::vector<int> all = flat(drawn(condition, shown));
        QVERIFY(std::ranges::all_of(all, [](int d) { return d >= 0 && d <= 3; }));
    }
}

void tst_PatchField::theDrawsComeInTheirOrder_data()
{
    addConditionsAndPlaces();
}

void tst_PatchField::theDrawsComeInTheirOrder()
{
    QFETCH(const int, condition);
    QFETCH(const int, shown);
    for (quint32 seed = 0; seed < 300; ++seed) {
        randomness::seed(seed);
        const std::vector<int> seen = flat(drawn(condition, shown));
        const int next = randomness::next();
        randomness::seed(seed);
        QCOMPARE(seen, expected(condition, shown));
        QCOMPARE(next, randomness::next()); // and no draw more than these
    }
}

void tst_PatchField::inACrowdAllButOneOfEachGroupMoveTogether_data()
{
    addPlaces();
}

void tst_PatchField::inACrowdAllButOneOfEachGroupMoveTogether()
{
    QFETCH(const int, shown);
    randomness::seed(12);
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(1, shown);
        const int common = field.ring[std::size_t(shown)];
        QCOMPARE(count(field.ring, common), 7);
        for (const auto &group : field.dot)
            QCOMPARE(count(group, common), 8);
    }
}

void tst_PatchField::inACrowdTheShownPatchIsNeverTheStray_data()
{
    addPlaces();
}

void tst_PatchField::inACrowdTheShownPatchIsNeverTheStray()
{
    QFETCH(const int, shown);
    randomness::seed(13);
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(1, shown);
        const std::vector<int> all = flat(field);
        // The direction of the crowd is that of 71 patches of 80.
        int common = -1;
        for (int direction = 0; direction < 4; ++direction) {
            if (count(all, direction) == 71)
                common = direction;
        }
        QVERIFY(common >= 0);
        QCOMPARE(field.ring[std::size_t(shown)], common);
    }
}

void tst_PatchField::inACrowdAnyOtherRingPatchCanBeTheStray_data()
{
    addPlaces();
}

void tst_PatchField::inACrowdAnyOtherRingPatchCanBeTheStray()
{
    QFETCH(const int, shown);
    randomness::seed(14);
    std::array<int, 8> strays{};
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(1, shown);
        for (std::size_t place = 0; place < 8; ++place)
            strays[place] += field.ring[place] != field.ring[std::size_t(shown)] ? 1 : 0;
    }
    QCOMPARE(strays[std::size_t(shown)], 0);
    for (int place = 0; place < 8; ++place) {
        if (place != shown)
            QVERIFY(plausible(strays[std::size_t(place)], draws, 1.0 / 7.0));
    }
}

void tst_PatchField::inACrowdAnyPatchOfAGroupCanBeTheStray()
{
    randomness::seed(15);
    std::array<std::array<int, 9>, 8> strays{};
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(1, 2);
        for (std::size_t group = 0; group < 8; ++group) {
            for (std::size_t patch = 0; patch < 9; ++patch)
                strays[group][patch] += field.dot[group][patch] != field.ring[2] ? 1 : 0;
        }
    }
    for (const auto &group : strays) {
        for (const int seen : group)
            QVERIFY(plausible(seen, draws, 1.0 / 9.0));
    }
}

void tst_PatchField::aSinglePatchMovesAgainstAllOthers_data()
{
    addPlaces();
}

void tst_PatchField::aSinglePatchMovesAgainstAllOthers()
{
    QFETCH(const int, shown);
    randomness::seed(16);
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(2, shown);
        const int own = field.ring[std::size_t(shown)];
        QCOMPARE(count(field.ring, own), 1);
        for (const auto &group : field.dot)
            QCOMPARE(count(group, own), 1);
    }
}

void tst_PatchField::anyPatchOfAGroupCanBeItsSingleOne()
{
    randomness::seed(17);
    std::array<std::array<int, 9>, 8> singles{};
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(2, 5);
        for (std::size_t group = 0; group < 8; ++group) {
            for (std::size_t patch = 0; patch < 9; ++patch)
                singles[group][patch] += field.dot[group][patch] == field.ring[5] ? 1 : 0;
        }
    }
    for (const auto &group : singles) {
        for (const int seen : group)
            QVERIFY(plausible(seen, draws, 1.0 / 9.0));
    }
}

void tst_PatchField::aRandomPatchFollowsNobody_data()
{
    addPlaces();
}

void tst_PatchField::aRandomPatchFollowsNobody()
{
    QFETCH(const int, shown);
    randomness::seed(18);
    std::array<std::array<int, 4>, 80> seen{};
    std::array<int, 80> same{};
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(0, shown);
        const std::vector<int> all = flat(field);
        for (std::size_t patch = 0; patch < 80; ++patch) {
            ++seen[patch][std::size_t(all[patch])];
            same[patch] += all[patch] == field.ring[std::size_t(shown)] ? 1 : 0;
        }
    }
    for (std::size_t patch = 0; patch < 80; ++patch) {
        for (const int times : seen[patch])
            QVERIFY(plausible(times, draws, 0.25));
        if (patch != std::size_t(shown))
            QVERIFY(plausible(same[patch], draws, 0.25));
    }
}

void tst_PatchField::theAnswerIsAnyDirectionEquallyOften_data()
{
    addConditionsAndPlaces();
}

void tst_PatchField::theAnswerIsAnyDirectionEquallyOften()
{
    QFETCH(const int, condition);
    QFETCH(const int, shown);
    randomness::seed(19);
    std::array<int, 4> seen{};
    for (int i = 0; i < draws; ++i)
        ++seen[std::size_t(drawn(condition, shown).ring[std::size_t(shown)])];
    for (const int times : seen)
        QVERIFY(plausible(times, draws, 0.25));
}

void tst_PatchField::theOthersGoAnyOtherWayEquallyOften_data()
{
    addConditions();
}

void tst_PatchField::theOthersGoAnyOtherWayEquallyOften()
{
    QFETCH(const int, condition);
    randomness::seed(20);
    // By the direction of the shown patch: where those go that don't go with it.
    std::array<std::array<int, 4>, 4> seen{};
    for (int i = 0; i < draws; ++i) {
        const PatchField field = drawn(condition, 6);
        for (const int direction : flat(field))
            ++seen[std::size_t(field.ring[6])][std::size_t(direction)];
    }
    for (int own = 0; own < 4; ++own) {
        int astray = 0;
        for (const int other : others(own))
            astray += seen[std::size_t(own)][std::size_t(other)];
        for (const int other : others(own))
            QVERIFY(plausible(seen[std::size_t(own)][std::size_t(other)], astray, 1.0 / 3.0));
    }
}

QTEST_MAIN(tst_PatchField)
#include "tst_PatchField.moc"
