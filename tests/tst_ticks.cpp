#include "ticks.h"

#include <QTest>

namespace {
using Numbers = QVector<double>;
double const infinity = std::numeric_limits<double>::infinity();
double const notANumber = std::numeric_limits<double>::quiet_NaN();

/// The step in the unit of the data and the first tick in pixels, of 1000 to the range.
Numbers chosen(double low, double range)
{
    TickSpacing const ticks = chooseTicks(low, range, 1000);
    return {ticks.step * range / 1000.0, ticks.first};
}

int countTicks(TickWalk walk)
{
    int count = 0;
    for (; walk.isOnTick(); walk.advance())
        ++count;
    return count;
}

/// Ticks up to the end and before it.
Numbers walked(double first, double step, double end)
{
    return {double(countTicks(TickWalk::upTo(first, step, end))),
            double(countTicks(TickWalk::before(first, step, end)))};
}
} // namespace

class tst_Ticks : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void ticks_data();
    void ticks();
};

void tst_Ticks::ticks_data()
{
    QTest::addColumn<Numbers>("actual");
    QTest::addColumn<Numbers>("expected");
    QTest::newRow("a power of ten: its fifth") << chosen(0.0, 100.0) << Numbers{20.0, 0.0};
    QTest::newRow("20.4 rounds into the first class") << chosen(0.0, 20.4) << Numbers{2.0, 0.0};
    QTest::newRow("20.5 rounds into the second") << chosen(0.0, 20.5) << Numbers{5.0, 0.0};
    QTest::newRow("41 opens the third") << chosen(0.0, 41.0) << Numbers{10.0, 0.0};
    QTest::newRow("81 opens the fourth") << chosen(0.0, 81.0) << Numbers{20.0, 0.0};
    QTest::newRow("first tick before the low end") << chosen(3.0, 20.0) << Numbers{2.0, -50.0};

    QTest::newRow("a tick on the end") << walked(0.0, 100.0, 1000.0) << Numbers{11, 10};
    // Ten times 0.1, added up, stay below 1.
    QTest::newRow("by repeated addition") << walked(0.0, 0.1, 1.0) << Numbers{11, 11};
    QTest::newRow("infinite step: the start only") << walked(0.0, infinity, 9.0) << Numbers{1, 1};
    QTest::newRow("start not a number") << walked(notANumber, 1.0, 9.0) << Numbers{0, 0};
    QTest::newRow("endless axis") << walked(0.0, 1.0, infinity) << Numbers{0, 0};
    QTest::newRow("step lost in the position") << walked(1e17, 1.0, 1e17 + 1e3) << Numbers{1, 1};
    QTest::newRow("too many") << walked(0.0, 1e-9, 9.0) << Numbers{0, 0};

    auto const decimals = [](double step) { return Numbers{double(decimalsOfStep(step))}; };
    QTest::newRow("noise below a tenth") << decimals(0.0999999999) << Numbers{1};
    QTest::newRow("twentieth") << decimals(0.05) << Numbers{2};
    QTest::newRow("tiny") << decimals(2e-300) << Numbers{300};
    QTest::newRow("denormal: power overflows") << decimals(1e-310) << Numbers{0};
    QTest::newRow("not a number") << decimals(notANumber) << Numbers{0};
}

void tst_Ticks::ticks()
{
    QFETCH(Numbers, actual);
    QTEST(actual, "expected");
}

QTEST_APPLESS_MAIN(tst_Ticks)
#include "tst_ticks.moc"
