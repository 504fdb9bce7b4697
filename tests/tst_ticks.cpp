#include "ticks.h"

#include <QTest>

namespace {
double const infinity = std::numeric_limits<double>::infinity();
double const notANumber = std::numeric_limits<double>::quiet_NaN();

int countTicks(TickWalk walk)
{
    int count = 0;
    for (; walk.isOnTick(); walk.advance())
        ++count;
    return count;
}
} // namespace

class tst_Ticks : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void chooses_data();
    void chooses();
    void walks_data();
    void walks();
    void decimals_data();
    void decimals();
};

void tst_Ticks::chooses_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("range");
    QTest::addColumn<double>("dataStep");
    QTest::addColumn<double>("first"); // in pixels, of 1000 to the range
    QTest::newRow("a power of ten: its fifth") << 0.0 << 100.0 << 20.0 << 0.0;
    QTest::newRow("20 stays in the first class") << 0.0 << 20.0 << 2.0 << 0.0;
    QTest::newRow("20.5 rounds into the second") << 0.0 << 20.5 << 5.0 << 0.0;
    QTest::newRow("41 opens the third") << 0.0 << 41.0 << 10.0 << 0.0;
    QTest::newRow("81 opens the fourth") << 0.0 << 81.0 << 20.0 << 0.0;
    QTest::newRow("an hour of milliseconds") << 0.0 << 3.6e6 << 500000.0 << 0.0;
    QTest::newRow("first tick before the low end") << 3.0 << 20.0 << 2.0 << -50.0;
    QTest::newRow("negative low end: downwards") << -3.0 << 20.0 << 2.0 << -50.0;
}

void tst_Ticks::chooses()
{
    QFETCH(double, low);
    QFETCH(double, range);
    TickSpacing const ticks = chooseTicks(low, range, 1000);
    QTEST(ticks.step * range / 1000.0, "dataStep");
    QTEST(ticks.first, "first");
}

void tst_Ticks::walks_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("end");
    QTest::addColumn<int>("upTo");
    QTest::addColumn<int>("before");
    QTest::newRow("a tick on the end") << 0.0 << 100.0 << 1000.0 << 11 << 10;
    // Ten times 0.1, added up, stay below 1.
    QTest::newRow("by repeated addition") << 0.0 << 0.1 << 1.0 << 11 << 11;
    QTest::newRow("infinite step: the start only") << 0.0 << infinity << 9.0 << 1 << 1;
    QTest::newRow("negative step") << 0.0 << -1.0 << 9.0 << 0 << 0;
    QTest::newRow("step not a number") << 0.0 << notANumber << 9.0 << 0 << 0;
    QTest::newRow("start not a number") << notANumber << 1.0 << 9.0 << 0 << 0;
    QTest::newRow("endless axis") << 0.0 << 1.0 << infinity << 0 << 0;
    QTest::newRow("step lost in the position") << 1e17 << 1.0 << 1e17 + 1000.0 << 1 << 1;
    QTest::newRow("too many") << 0.0 << 1e-9 << 9.0 << 0 << 0;
}

void tst_Ticks::walks()
{
    QFETCH(double, first);
    QFETCH(double, step);
    QFETCH(double, end);
    QTEST(countTicks(TickWalk::upTo(first, step, end)), "upTo");
    QTEST(countTicks(TickWalk::before(first, step, end)), "before");
}

void tst_Ticks::decimals_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("expected");
    QTest::newRow("noise below a tenth") << 0.0999999999 << 1;
    QTest::newRow("twentieth") << 0.05 << 2;
    QTest::newRow("one") << 1.0 << 0;
    QTest::newRow("noise below one") << 0.9999999999 << 0;
    QTest::newRow("tiny") << 2e-300 << 300;
    QTest::newRow("denormal: power overflows") << 1e-310 << 0;
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("not a number") << notANumber << 0;
}

void tst_Ticks::decimals()
{
    QFETCH(double, step);
    QTEST(decimalsOfStep(step), "expected");
}

QTEST_APPLESS_MAIN(tst_Ticks)
#include "tst_ticks.moc"
