#include "rounding.h"

#include <QTest>
#include <limits>

/// Faults: halves away from zero, undefined conversions of huge values, NaN as a pixel.
class tst_Rounding : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rounds_data();
    void rounds();
    void saturatesBeyond64Bits();
};

void tst_Rounding::rounds_data()
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("rounded");
    QTest::addColumn<int>("pixel");
    QTest::addColumn<int>("truncated");
    QTest::newRow("half") << 0.5 << 1 << 1 << 0;
    QTest::newRow("negative two and a half") << -2.5 << -2 << -2 << -2;
    QTest::newRow("below a negative half") << -2.51 << -3 << -3 << -2;
    QTest::newRow("beyond an int") << 1e300 << highest << (1 << 28) << highest;
    QTest::newRow("below an int") << -1e300 << lowest << -(1 << 28) << lowest;
    QTest::newRow("below the largest") << 2147483646.5 << highest << (1 << 28) << highest - 1;
    QTest::newRow("not a number") << qQNaN() << 0 << 0 << 0;
}

void tst_Rounding::rounds()
{
    QFETCH(double, value);
    QTEST(roundHalfUp(value), "rounded");
    QTEST(roundToPixel(value), "pixel");
    QTEST(truncateToInt(value), "truncated");
}

void tst_Rounding::saturatesBeyond64Bits()
{
    QCOMPARE(roundHalfUp64(1278542283000.5), 1278542283001LL);
    QCOMPARE(roundHalfUp64(1e300), 1LL << 62);
    QCOMPARE(roundHalfUp64(qQNaN()), 0LL);
}

QTEST_APPLESS_MAIN(tst_Rounding)
#include "tst_rounding.moc"
