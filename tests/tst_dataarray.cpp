#include "dataarray.h"

#include "dataarraytemplate.h"
#include "messagerecorder.h"
#include "objectcounts.h"

#include <QPointer>
#include <QTest>
#include <limits>
#include <optional>

namespace {
using Cells = QVector<double>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int intMax = std::numeric_limits<int>::max();
constexpr int intMin = std::numeric_limits<int>::min();

class Column : public DataArrayTemplate<double>
{
public:
    explicit Column(Cells const& cells = {})
    {
        for (double const cell : cells)
            append(cell);
        connect(this, &DataArray::dataChanged, this, [this] { signalsSeen += "changed"; });
        connect(this, &DataArray::noLongerEmpty, this, [this] { signalsSeen += "filled"; });
        connect(this, &DataArray::leftShifted, this,
                [this](int count) { signalsSeen += QStringLiteral("shifted %1").arg(count); });
    }

    QStringList signalsSeen;
};

Cells cellsOf(DataArray const& column)
{
    Cells cells;
    for (int i = 0; i < column.dataSize(); ++i)
        cells.append(column.getValue(i));
    return cells;
}
} // namespace

class tst_DataArray : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { messages.emplace(); }
    void cleanup();
    void firstValidValueIsAnnounced();
    void search_data();
    void search();
    void interpolatedValue_data();
    void interpolatedValue();
    void extremesFollowWhatLeaves();
    void monotony_data();
    void monotony();
    void leftshiftTellsWhatItDropped();
    void decimation();
    void thinningWithoutEndSaturatesUntilReinit();
    void sentinelStandsForTheHole_data();
    void sentinelStandsForTheHole();
    void integersSaturate();
    void memoryFollowsTheCapacity();
    void lastReferenceDeletes();

private:
    std::optional<MessageRecorder> messages;
};

void tst_DataArray::cleanup()
{
    QStringList const unexpected = messages->take();
    messages.reset();
    QCOMPARE(unexpected, QStringList());
    QCOMPARE(liveObjects(), QStringList());
    QCOMPARE(DataArray::getTotalVectorMemoryConsumption(), 0U);
}

void tst_DataArray::firstValidValueIsAnnounced()
{
    Column column;
    column.append(NaN);
    column.replace(0, 1); // valid, but only appending announces
    column.leftshift(1);
    column.append(2);
    column.append(3);
    column.reinit();
    column.append(4);
    QCOMPARE(column.signalsSeen,
             (QStringList{"changed", "changed", "shifted 1", "changed", "changed", "filled",
                          "changed", "changed", "changed", "filled"}));
}

void tst_DataArray::search_data()
{
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("atOrBelow");
    QTest::addColumn<double>("place");
    QTest::addColumn<int>("nearest");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("atOrAbove");

    QTest::newRow("empty") << Cells{} << 1.0 << -1 << -1.0 << -1 << -1 << -1;
    QTest::newRow("run: last, first") << Cells{1, 2, 2, 3} << 2.0 << 2 << 2.0 << 2 << 2 << 1;
    QTest::newRow("only a run") << Cells{2, 2, 2, 2, 2} << 2.0 << 4 << 4.0 << 4 << 4 << 0;
    QTest::newRow("tie, sorted") << Cells{1, 2, 2, 3} << 2.5 << 2 << 2.5 << 2 << -1 << 3;
    QTest::newRow("nearer to the upper") << Cells{0, 10} << 6.0 << 0 << 0.6 << 1 << -1 << 1;
    QTest::newRow("below the first") << Cells{1, 2} << 0.0 << -1 << -1.0 << 0 << -1 << 0;
    QTest::newRow("beyond the end") << Cells{1, 2} << 9.0 << 1 << -1.0 << 0 << -1 << 2;
    QTest::newRow("tie, unsorted") << Cells{3, 1, 3} << 2.0 << -1 << -1.0 << 2 << -1 << 0;
    QTest::newRow("equals, unsorted") << Cells{3, 1, 3} << 3.0 << -1 << -1.0 << 2 << 0 << 0;
    QTest::newRow("hole before it") << Cells{NaN, 1} << 0.5 << -1 << -1.0 << 1 << -1 << 1;
    QTest::newRow("holes only") << Cells{NaN, NaN} << 1.0 << -1 << -1.0 << -1 << -1 << 2;
    QTest::newRow("infinite step") << Cells{-infinity, 5} << 0.0 << 0 << NaN << 1 << -1 << 1;
    QTest::newRow("hole in a sorted one") << Cells{1, 2} << NaN << -1 << -1.0 << -1 << -1 << -1;
}

void tst_DataArray::search()
{
    QFETCH(Cells, cells);
    QFETCH(double, value);
    Column const column(cells);

    QTEST(column.getLargestIndexOfValueSmallerThanOrEqual(value), "atOrBelow");
    QTEST(column.getInterpolatedIndexOfValue(value), "place");
    QTEST(column.getIndexOfNearestValue(value), "nearest");
    QTEST(column.posOf(value), "position");
    QTEST(column.getIndexOfFirstValueLargerThanOrEqual(value), "atOrAbove");

    int const reports = messages->takeCount(
        "DataArray::getIndexOfFirstValueLargerThanOrEqual inconsistent state");
    QCOMPARE(reports, value != value ? 1 : 0); // a hole cannot be placed
}

void tst_DataArray::interpolatedValue_data()
{
    QTest::addColumn<double>("index");
    QTest::addColumn<double>("value");

    QTest::newRow("a quarter on") << 0.25 << 12.5;
    QTest::newRow("whole, beside a hole") << 1.0 << 20.0;
    QTest::newRow("towards a hole") << 1.5 << NaN;
    QTest::newRow("before the first") << -0.5 << NaN;
    QTest::newRow("behind the last") << 3.5 << NaN;
    QTest::newRow("beyond any int") << 1e300 << NaN;
    QTest::newRow("not a number") << NaN << NaN;
}

void tst_DataArray::interpolatedValue()
{
    QFETCH(double, index);
    QTEST(Column({10, 20, NaN, 0}).getInterpolatedValue(index), "value");
}

void tst_DataArray::extremesFollowWhatLeaves()
{
    Column column({1, 9, 3, NaN, 2});
    QCOMPARE(column.getMinimum(), 1.0);
    column.leftshift(1); // the minimum goes
    QCOMPARE(column.getMinimum(), 2.0);
    column.replace(0, 4); // and so does the maximum
    column.append(5);
    QCOMPARE(column.getMaximum(), 5.0);
    QCOMPARE(column.getMean(), 3.5);

    column.leftshift(4);
    column.replace(0, 7); // the only valid value is exchanged
    QCOMPARE(column.getMinimum(), 7.0);
    column.leftshift(1);
    QCOMPARE(column.getMaximum(), NaN);
    QCOMPARE(column.getMean(), NaN);
}

void tst_DataArray::monotony_data()
{
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<int>("index");
    QTest::addColumn<double>("replacement");
    QTest::addColumn<bool>("after");
    QTest::addColumn<bool>("determined");

    QTest::newRow("equal neighbours") << Cells{1, 2, 3} << 1 << 3.0 << true << true;
    QTest::newRow("above the next") << Cells{1, 2, 3} << 1 << 4.0 << false << false;
    QTest::newRow("below the previous") << Cells{1, 2, 3} << 2 << 1.0 << false << false;
    QTest::newRow("becomes a hole") << Cells{1, 2, 3} << 0 << NaN << false << false;
    QTest::newRow("healed decrease") << Cells{1, 5, 3} << 1 << 2.0 << false << true;
}

void tst_DataArray::monotony()
{
    QFETCH(Cells, cells);
    QFETCH(int, index);
    QFETCH(double, replacement);
    Column column(cells);

    column.replace(index, replacement);
    QTEST(column.isNondecreasing(), "after");
    column.determineIsNonDecreasing();
    QTEST(column.isNondecreasing(), "determined");
}

void tst_DataArray::leftshiftTellsWhatItDropped()
{
    Column column({1, 2, 3});
    column.leftshift(0);
    column.leftshift(intMin); // is none
    column.leftshift(1);
    QCOMPARE(cellsOf(column), (Cells{2, 3}));
    column.leftshift(intMax); // more than there are
    QCOMPARE(column.signalsSeen,
             (QStringList{"shifted 0", "changed", "shifted 0", "changed", "shifted 1", "changed",
                          "shifted 2", "changed"}));
    QCOMPARE(column.getTotalPositionsLeftShifted(), 3);
}

void tst_DataArray::decimation()
{
    Column odd({0, 1, 2, 3, 10});
    Column even({0, 1, 2, 3});

    odd.decimateKeepEven();
    even.decimateKeepEven();
    QCOMPARE(odd.getDecimationCounter(), 0);
    QCOMPARE(odd.getMean(), 4.0);
    QCOMPARE(even.getDecimationCounter(), 1); // cell 3 was offered behind cell 2
    for (int value = 4; value <= 9; ++value) {
        if (even.needsToAddValueAccordingDecimation())
            even.append(value);
    }

    QCOMPARE(cellsOf(odd), (Cells{0, 2, 10}));
    QCOMPARE(cellsOf(even), (Cells{0, 2, 4, 6, 8}));
}

void tst_DataArray::thinningWithoutEndSaturatesUntilReinit()
{
    Column column({NaN});
    column.leftshift(1);
    for (int i = 0; i < 40; ++i)
        column.decimateKeepEven(); // each doubles the counter and takes 1 off
    QCOMPARE(column.getCurrentDecimationFactor(), 1 << 30);
    QCOMPARE(column.getDecimationCounter(), intMin);

    column.reinit();
    QCOMPARE(column.getCurrentDecimationFactor(), 1);
    QCOMPARE(column.getDecimationCounter(), 0);
    QCOMPARE(column.getTotalPositionsLeftShifted(), 0);
    QVERIFY(column.isNondecreasing());
}

void tst_DataArray::sentinelStandsForTheHole_data()
{
    QTest::addColumn<bool>("typed");
    QTest::addColumn<double>("appended");
    QTest::addColumn<double>("stored");
    QTest::addColumn<bool>("held");
    QTest::addColumn<int>("found");

    QTest::newRow("NaN becomes the sentinel") << false << NaN << -1.0 << true << 0;
    QTest::newRow("the sentinel itself") << false << -1.0 << -1.0 << true << 0;
    QTest::newRow("a typed NaN stays NaN") << true << NaN << NaN << false << -1;
}

void tst_DataArray::sentinelStandsForTheHole()
{
    QFETCH(bool, typed);
    QFETCH(double, appended);
    DataArrayTemplate<double> column(-1.0);

    typed ? column.appendTyped(appended) : column.append(appended);

    QTEST(column.getTypedValue(0), "stored");
    QTEST(column.holdsDoNotUseValue(0), "held");
    QTEST(column.linearSearchIndexOf(NaN), "found");
    QCOMPARE(column.getValue(0), NaN);
    QVERIFY(!column.hasValidValues());
    QVERIFY(!column.isNondecreasing());
}

void tst_DataArray::integersSaturate()
{
    DataArrayTemplate<int> column;
    for (double const value : {-2.9, 1e300, -1e300, NaN})
        column.append(value);
    QCOMPARE(cellsOf(column), (Cells{-2, intMax, intMin, intMin}));
}

void tst_DataArray::memoryFollowsTheCapacity()
{
    Column column(Cells(1001));
    QCOMPARE_GT(DataArray::getTotalVectorMemoryConsumption(), 1001U * 8U);
    column.squeeze();
    QCOMPARE(DataArray::getTotalVectorMemoryConsumption(), 1001U * 8U);
    column.decimateKeepEven();
    QCOMPARE_LT(DataArray::getTotalVectorMemoryConsumption(), 1001U * 8U);
}

void tst_DataArray::lastReferenceDeletes()
{
    QPointer<Column> const counted = new Column;
    counted->addReference();
    counted->addReference();
    counted->removeReference();
    QVERIFY(counted);
    counted->removeReference();
    QVERIFY(!counted);

    Column* const uncounted = new Column;
    uncounted->setReferenceCounted(false);
    uncounted->addReference();
    uncounted->removeReference(); // stays with its maker
    uncounted->setReferenceCounted(true);
    uncounted->removeReference();
    QVERIFY(messages->tookOnly("DataArray::removeReference is removing uncounted reference"));
    delete uncounted;
    QVERIFY(messages->tookOnly("Deleting referenced DataArray!"));
}

QTEST_GUILESS_MAIN(tst_DataArray)
#include "tst_dataarray.moc"
