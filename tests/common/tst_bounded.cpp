#include "bounded.h"

#include <QTest>

#include <limits>

class tst_bounded : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSumOfWaitsIsTheirSumAsLongAsItIsAWait_data()
    {
        constexpr qint64 least = std::numeric_limits<int>::min();
        constexpr qint64 most = std::numeric_limits<int>::max();
        QTest::addColumn<qint64>("drawn");
        QTest::addColumn<qint64>("typed");
        QTest::addColumn<int>("sum");
        QTest::newRow("usual") << qint64(400) << qint64(1199) << 1599;
        QTest::newRow("negative") << qint64(300) << qint64(-5000) << -4700;
        QTest::newRow("the greatest number") << qint64(300) << most << 1'000'000'000;
        QTest::newRow("the least number") << qint64(0) << least << -1'000'000'000;
        QTest::newRow("the least number taken away") << qint64(300) << -least << 1'000'000'000;
        QTest::newRow("the greatest one twice") << most << most << 1'000'000'000;
    }
    void aSumOfWaitsIsTheirSumAsLongAsItIsAWait()
    {
        QFETCH(qint64, drawn);
        QFETCH(qint64, typed);
        QTEST(bounded::sum({drawn, typed}), "sum");
    }
};

QTEST_GUILESS_MAIN(tst_bounded)
#include "tst_bounded.moc"
