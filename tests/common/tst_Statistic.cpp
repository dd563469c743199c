#include "Statistic.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

using Values = std::vector<double>;
Q_DECLARE_METATYPE(Values)

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double untouched = -12345.0;

int count(const Values &values)
{
    return static_cast<int>(values.size());
}

/// Whole numbers from 1 to n.
Values ranks(int n)
{
    Values values;
    for (int i = 1; i <= n; ++i)
        values.push_back(i);
    return values;
}

Values onLine(const Values &x, double slope, double intercept)
{
    Values y;
    for (const double value : x)
        y.push_back(slope * value + intercept);
    return y;
}

bool isNear(double actual, double expected)
{
    return std::abs(actual - expected) <= 1e-9 * std::max(1.0, std::abs(expected));
}

} // namespace

class tst_Statistic : public QObject
{
    Q_OBJECT

    Statistic m_statistic{nullptr};

private Q_SLOTS:
    void theToolboxIsAHiddenWidgetOfItsTask();
    void theSumRunsFromTheLeft_data();
    void theSumRunsFromTheLeft();
    void theMeanHasNoGuard_data();
    void theMeanHasNoGuard();
    void productsDifferencesAndDistancesAreTakenElementByElement();
    void elementOperationsDoNothingForACountBelowOne();
    void elementOperationsWriteNoFurtherThanTheCount();
    void theSlopeTakesItsProductsFromTheLeft();
    void theInterceptIsTheLineAtZero();
    void theFitLosesTheSignOfTheSlope();
    void aZeroDenominatorFlowsThrough();
    void theLogarithmsOfTheRanksAreNatural();
    void aSingleRankHasTheLogarithmZero();
    void aPerfectLineIsFound_data();
    void aPerfectLineIsFound();
    void aScatteredCloudIsFitted();
    void theRegressionRunsInItsOwnOrder();
    void aConstantXDividesByZeroInTheSlope();
    void aConstantYDividesByZeroInTheFit();
    void aRegressionWithoutPointsIsNoNumber();
    void aSinglePointIsNoNumber();
    void anInfiniteMeasureFlowsThroughTheRegression();
    void theRegressionTakesAnyCount_data();
    void theRegressionTakesAnyCount();
    void theCorrectionBringsEachTrialToTheLastRank();
    void theCorrectionWithSlopeZeroCopies();
    void theCorrectionWritesTheCountRoundedUp_data();
    void theCorrectionWritesTheCountRoundedUp();
    void aBrokenCountBringsTheLastTrialTheOtherWay();
    void theCorrectionMayWorkInPlace();
    void anInfiniteSlopeFlowsThroughTheCorrection();
    void theCorrectionTakesThePracticeLineOut();
    void theMedianIsTheMiddle_data();
    void theMedianIsTheMiddle();
    void theMedianTakesAnyCount_data();
    void theMedianTakesAnyCount();
    void theMedianLeavesTheArrayAsItIs();
    void theMedianOfNothingIsNoNumber();
};

void tst_Statistic::theToolboxIsAHiddenWidgetOfItsTask()
{
    QWidget task;
    auto *const statistic = new Statistic(&task);
    QCOMPARE(statistic->metaObject()->className(), "Statistic");
    QCOMPARE(statistic->parentWidget(), &task);
    task.show();
    QVERIFY(!statistic->isVisible());
}

void tst_Statistic::theSumRunsFromTheLeft_data()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("expected");
    QTest::newRow("empty") << Values{} << 0 << 0.0;
    QTest::newRow("negative count") << Values{5.0} << -3 << 0.0;
    QTest::newRow("one") << Values{2.5} << 1 << 2.5;
    QTest::newRow("only the first") << Values{1.0, 2.0, 4.0, 8.0} << 3 << 7.0;
    // From the right the ones would survive.
    QTest::newRow("small after large") << Values{1e16, 1.0, 1.0} << 3 << 1e16;
    QTest::newRow("small before large") << Values{1.0, 1.0, 1e16} << 3 << 1e16 + 2.0;
    QTest::newRow("infinite") << Values{1.0, infinity, 3.0} << 3 << infinity;
    QTest::newRow("both infinities") << Values{infinity, -infinity} << 2 << notANumber;
}

void tst_Statistic::theSumRunsFromTheLeft()
{
    QFETCH(const Values, values);
    QFETCH(const int, n);
    QFETCH(const double, expected);
    QCOMPARE(m_statistic.somme(values.data(), n), expected);
}

void tst_Statistic::theMeanHasNoGuard_data()
{
    QTest::addColumn<double>("sum");
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("expected");
    QTest::newRow("ordinary") << 10.0 << 4 << 2.5;
    QTest::newRow("no values, positive sum") << 10.0 << 0 << infinity;
    QTest::newRow("no values, negative sum") << -10.0 << 0 << -infinity;
    QTest::newRow("no values, no sum") << 0.0 << 0 << notANumber;
    QTest::newRow("negative count") << 10.0 << -4 << -2.5;
}

void tst_Statistic::theMeanHasNoGuard()
{
    QFETCH(const double, sum);
    QFETCH(const int, n);
    QFETCH(const double, expected);
    QCOMPARE(m_statistic.moyenne(sum, n), expected);
}

void tst_Statistic::productsDifferencesAndDistancesAreTakenElementByElement()
{
    const Values a{1.0, -2.0, 3.0};
    const Values b{4.0, 5.0, -6.0};
    Values out(3);
    m_statistic.produitTab(a.data(), b.data(), out.data(), 3);
    QCOMPARE(out, (Values{4.0, -10.0, -18.0}));
    m_statistic.difference(a.data(), b.data(), out.data(), 3);
    QCOMPARE(out, (Values{-3.0, -7.0, 9.0}));
    m_statistic.ecart_a_moyenne(a.data(), out.data(), 0.5, 3);
    QCOMPARE(out, (Values{0.5, -2.5, 2.5}));
}

void tst_Statistic::elementOperationsDoNothingForACountBelowOne()
{
    const Values in{7.0};
    for (const int n : {0, -1}) {
        Values out{untouched};
        m_statistic.produitTab(in.data(), in.data(), out.data(), n);
        m_statistic.difference(in.data(), in.data(), out.data(), n);
        m_statistic.ecart_a_moyenne(in.data(), out.data(), 1.0, n);
        m_statistic.logLn(out.data(), n);
        QCOMPARE(out, Values{untouched});
    }
}

void tst_Statistic::elementOperationsWriteNoFurtherThanTheCount()
{
    const Values in{3.0, 4.0};
    Values out(2, untouched);
    m_statistic.produitTab(in.data(), in.data(), out.data(), 1);
    QCOMPARE(out, (Values{9.0, untouched}));
    m_statistic.difference(in.data(), in.data(), out.data(), 1);
    QCOMPARE(out, (Values{0.0, untouched}));
    m_statistic.ecart_a_moyenne(in.data(), out.data(), 1.0, 1);
    QCOMPARE(out, (Values{2.0, untouched}));
}

void tst_Statistic::theSlopeTakesItsProductsFromTheLeft()
{
    QCOMPARE(m_statistic.pente(70.0, 3.0, 4.0, 10.0, 5), 1.0);
    // n * meanX overflows before meanY could bring it back.
    QCOMPARE(m_statistic.pente(1.0, 1e308, 1e-308, 1.0, 100), -infinity);
}

void tst_Statistic::theInterceptIsTheLineAtZero()
{
    QCOMPARE(m_statistic.ordonee(3.0, 9.0, 2.0), 3.0);
    QCOMPARE(m_statistic.ordonee(3.0, 9.0, -2.0), 15.0);
}

void tst_Statistic::theFitLosesTheSignOfTheSlope()
{
    QCOMPARE(m_statistic.corr(10.0, 80.0, 2.0), 0.5);
    QCOMPARE(m_statistic.corr(10.0, 80.0, -2.0), 0.5);
    // The square of the slope comes first: it overflows before the sum could bring it back.
    QCOMPARE(m_statistic.corr(1e-300, 1.0, 1e200), infinity);
}

void tst_Statistic::aZeroDenominatorFlowsThrough()
{
    QCOMPARE(m_statistic.pente(10.0, 1.0, 1.0, 0.0, 2), infinity);
    QCOMPARE(m_statistic.pente(-10.0, 1.0, 1.0, 0.0, 2), -infinity);
    QCOMPARE(m_statistic.pente(2.0, 1.0, 1.0, 0.0, 2), notANumber);
    QCOMPARE(m_statistic.corr(1.0, 0.0, 1.0), infinity);
    QCOMPARE(m_statistic.corr(1.0, 0.0, 0.0), notANumber);
}

void tst_Statistic::theLogarithmsOfTheRanksAreNatural()
{
    for (const int n : {20, 30, 40, 1000}) {
        Values out(static_cast<std::size_t>(n) + 1, untouched);
        m_statistic.logLn(out.data(), n);
        QCOMPARE(out[0], 0.0);
        QCOMPARE(out[1], 0.69314718055994530942);
        QCOMPARE(out[9], 2.30258509299404568402);
        QCOMPARE(out[static_cast<std::size_t>(n) - 1], std::log(n));
        QCOMPARE(out.back(), untouched);
    }
}

void tst_Statistic::aSingleRankHasTheLogarithmZero()
{
    Values out(2, untouched);
    m_statistic.logLn(out.data(), 1);
    QCOMPARE(out, (Values{0.0, untouched}));
}

void tst_Statistic::aPerfectLineIsFound_data()
{
    QTest::addColumn<double>("slope");
    QTest::addColumn<double>("intercept");
    QTest::newRow("rising") << 2.0 << 3.0;
    QTest::newRow("falling") << -2.0 << 3.0;
    QTest::newRow("through zero") << 0.5 << 0.0;
}

void tst_Statistic::aPerfectLineIsFound()
{
    QFETCH(const double, slope);
    QFETCH(const double, intercept);
    const Values x = ranks(5);
    const Values y = onLine(x, slope, intercept);
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), 5);
    QCOMPARE(fit.slope, slope);
    QCOMPARE(fit.intercept, intercept);
    QCOMPARE(fit.r2, 1.0);
}

void tst_Statistic::aScatteredCloudIsFitted()
{
    // Reckoned by hand: sums 15 and 20, products 66, squares about the means 10 and 6.
    const Values x{1.0, 2.0, 3.0, 4.0, 5.0};
    const Values y{2.0, 4.0, 5.0, 4.0, 5.0};
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), 5);
    QVERIFY(isNear(fit.slope, 0.6));
    QVERIFY(isNear(fit.intercept, 2.2));
    QVERIFY(isNear(fit.r2, 0.6));
}

void tst_Statistic::theRegressionRunsInItsOwnOrder()
{
    // The digits of the raw products are lost beside the large means: a centred numerator would
    // give exactly 1.
    const double far = 1e9;
    const Values x{far, far + 1.0, far + 2.0};
    const RegressionResult fit = m_statistic.regression(x.data(), x.data(), 3);
    const double sum = far + (far + 1.0) + (far + 2.0);
    const double mean = sum / 3;
    const double products = far * far + (far + 1.0) * (far + 1.0) + (far + 2.0) * (far + 2.0);
    const double slope = (products - 3 * mean * mean) / 2.0;
    QVERIFY(slope != 1.0);
    QVERIFY(fit.slope == slope);
    QVERIFY(fit.intercept == mean - slope * mean);
    QVERIFY(fit.r2 == slope * slope * 2.0 / 2.0);
}

void tst_Statistic::aConstantXDividesByZeroInTheSlope()
{
    const Values x{2.0, 2.0, 2.0, 2.0};
    const Values y{1.0, 2.0, 3.0, 4.0};
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), 4);
    QVERIFY(!std::isfinite(fit.slope));
    QVERIFY(!std::isfinite(fit.intercept));
    QVERIFY(!std::isfinite(fit.r2));
}

void tst_Statistic::aConstantYDividesByZeroInTheFit()
{
    const Values x{1.0, 2.0, 3.0, 4.0};
    const Values y{7.0, 7.0, 7.0, 7.0};
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), 4);
    QCOMPARE(fit.slope, 0.0);
    QCOMPARE(fit.intercept, 7.0);
    QCOMPARE(fit.r2, notANumber);
}

void tst_Statistic::aRegressionWithoutPointsIsNoNumber()
{
    const Values any{1.0};
    for (const int n : {0, -1}) {
        const RegressionResult fit = m_statistic.regression(any.data(), any.data(), n);
        QCOMPARE(fit.slope, notANumber);
        QCOMPARE(fit.intercept, notANumber);
        QCOMPARE(fit.r2, notANumber);
    }
}

void tst_Statistic::aSinglePointIsNoNumber()
{
    const Values x{1.0};
    const Values y{5.0};
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), 1);
    QCOMPARE(fit.slope, notANumber);
    QCOMPARE(fit.intercept, notANumber);
    QCOMPARE(fit.r2, notANumber);
}

void tst_Statistic::anInfiniteMeasureFlowsThroughTheRegression()
{
    const Values x{1.0, 2.0, 3.0};
    const Values y{1.0, infinity, 3.0};
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), 3);
    QCOMPARE(fit.slope, notANumber);
    QCOMPARE(fit.intercept, notANumber);
    QCOMPARE(fit.r2, notANumber);
}

void tst_Statistic::theRegressionTakesAnyCount_data()
{
    QTest::addColumn<int>("n");
    for (const int n : {2, 20, 30, 40, 99, 100, 101, 1000})
        QTest::addRow("%d points", n) << n;
}

void tst_Statistic::theRegressionTakesAnyCount()
{
    QFETCH(const int, n);
    const Values x = ranks(n);
    const Values y = onLine(x, -2.0, 3.0);
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), n);
    QVERIFY(isNear(fit.slope, -2.0));
    QVERIFY(isNear(fit.intercept, 3.0));
    QVERIFY(isNear(fit.r2, 1.0));
}

void tst_Statistic::theCorrectionBringsEachTrialToTheLastRank()
{
    const double slope = -25.0;
    Values in;
    for (int i = 0; i < 30; ++i)
        in.push_back(400.0 - i);
    Values out(31, untouched);
    m_statistic.correction(in.data(), out.data(), slope, 30.0);
    QCOMPARE(out[0], in[0] + slope * std::log(30.0));
    for (std::size_t i = 0; i < 30; ++i) {
        const double rank = static_cast<double>(i) + 1.0;
        QVERIFY(out[i] == (std::log(30.0) - std::log(rank)) * slope + in[i]);
    }
    QVERIFY(out[29] == in[29]);
    QCOMPARE(out[30], untouched);
}

void tst_Statistic::theCorrectionWithSlopeZeroCopies()
{
    const Values in{5.5, 6.25, -7.0};
    Values out(3);
    m_statistic.correction(in.data(), out.data(), 0.0, 3.0);
    QCOMPARE(out, in);
}

void tst_Statistic::theCorrectionWritesTheCountRoundedUp_data()
{
    QTest::addColumn<double>("n");
    QTest::addColumn<int>("written");
    QTest::newRow("negative") << -1.0 << 0;
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("not a number") << notANumber << 0;
    QTest::newRow("below one") << 0.25 << 1;
    QTest::newRow("one") << 1.0 << 1;
    QTest::newRow("two") << 2.0 << 2;
    QTest::newRow("between two and three") << 2.5 << 3;
    QTest::newRow("four") << 4.0 << 4;
}

void tst_Statistic::theCorrectionWritesTheCountRoundedUp()
{
    QFETCH(const double, n);
    QFETCH(const int, written);
    const Values in{1.0, 2.0, 3.0, 4.0, 5.0};
    Values out(in.size(), untouched);
    m_statistic.correction(in.data(), out.data(), 10.0, n);
    QCOMPARE(count(out) - static_cast<int>(std::ranges::count(out, untouched)), written);
    for (std::size_t i = static_cast<std::size_t>(written); i < out.size(); ++i)
        QCOMPARE(out[i], untouched);
}

void tst_Statistic::aBrokenCountBringsTheLastTrialTheOtherWay()
{
    const Values in{100.0, 100.0, 100.0};
    Values out(4, untouched);
    m_statistic.correction(in.data(), out.data(), 10.0, 2.5);
    QCOMPARE(out[0], 100.0 + 10.0 * std::log(2.5));
    QCOMPARE(out[1], 100.0 + 10.0 * std::log(1.25));
    QCOMPARE(out[2], 100.0 - 10.0 * std::log(1.2));
    QVERIFY(out[2] < 100.0);
    QCOMPARE(out[3], untouched);
}

void tst_Statistic::theCorrectionMayWorkInPlace()
{
    Values values{1.0, 2.0};
    m_statistic.correction(values.data(), values.data(), 3.0, 2.0);
    QCOMPARE(values, (Values{std::log(2.0) * 3.0 + 1.0, 2.0}));
}

void tst_Statistic::anInfiniteSlopeFlowsThroughTheCorrection()
{
    const Values in{1.0, 2.0};
    Values out(2);
    m_statistic.correction(in.data(), out.data(), infinity, 2.0);
    QCOMPARE(out[0], infinity);
    QCOMPARE(out[1], notANumber); // no distance from the last rank, times infinity
}

void tst_Statistic::theCorrectionTakesThePracticeLineOut()
{
    Values x(40);
    m_statistic.logLn(x.data(), 40);
    const Values y = onLine(x, -30.0, 500.0);
    const RegressionResult fit = m_statistic.regression(x.data(), y.data(), 40);
    Values out(40);
    m_statistic.correction(y.data(), out.data(), fit.slope, 40.0);
    for (const double value : out)
        QVERIFY(isNear(value, y.back()));
}

void tst_Statistic::theMedianIsTheMiddle_data()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<double>("expected");
    QTest::newRow("one") << Values{7.5} << 7.5;
    QTest::newRow("two") << Values{4.0, 1.0} << 2.5;
    QTest::newRow("odd") << Values{3.0, 1.0, 2.0} << 2.0;
    QTest::newRow("even") << Values{4.0, 1.0, 3.0, 2.0} << 2.5;
    QTest::newRow("equal") << Values{2.0, 2.0, 2.0, 2.0} << 2.0;
    QTest::newRow("negative") << Values{-1.0, -5.0, -3.0} << -3.0;
    QTest::newRow("infinite") << Values{infinity, 1.0, -infinity} << 1.0;
    QTest::newRow("not a number ranks last") << Values{notANumber, 1.0, 2.0} << 2.0;
    QTest::newRow("mostly not numbers") << Values{notANumber, 1.0, notANumber} << notANumber;
}

void tst_Statistic::theMedianIsTheMiddle()
{
    QFETCH(const Values, values);
    QFETCH(const double, expected);
    QCOMPARE(m_statistic.mediane(values.data(), count(values)), expected);
}

void tst_Statistic::theMedianTakesAnyCount_data()
{
    QTest::addColumn<int>("n");
    for (const int n : {99, 100, 101, 1000})
        QTest::addRow("%d values", n) << n;
}

void tst_Statistic::theMedianTakesAnyCount()
{
    QFETCH(const int, n);
    Values values = ranks(n);
    std::ranges::reverse(values);
    QCOMPARE(m_statistic.mediane(values.data(), n), (n + 1) / 2.0);
}

void tst_Statistic::theMedianLeavesTheArrayAsItIs()
{
    const Values values{4.0, 1.0, 3.0, 2.0};
    Values given = values;
    QCOMPARE(m_statistic.mediane(given.data(), 4), 2.5);
    QCOMPARE(given, values);
}

void tst_Statistic::theMedianOfNothingIsNoNumber()
{
    const Values any{1.0};
    QCOMPARE(m_statistic.mediane(any.data(), 0), notANumber);
    QCOMPARE(m_statistic.mediane(any.data(), -1), notANumber);
}

QTEST_MAIN(tst_Statistic)
#include "tst_Statistic.moc"
