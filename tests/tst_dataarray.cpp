#include "dataarray.h"

#include "dataarraytemplate.h"
#include "librarytest.h"

#include <limits>

namespace {
using Cells = QVector<double>;

constexpr int intMax = std::numeric_limits<int>::max();
constexpr int intMin = std::numeric_limits<int>::min();

struct Column : DataArrayTemplate<double>
{
    explicit Column(Cells const& cells = {})
    {
        for (double const cell : cells)
            append(cell);
    }
};

Cells cellsOf(DataArray const& column)
{
    Cells cells;
    for (int i = 0; i < column.dataSize(); ++i)
        cells.append(column.getValue(i));
    return cells;
}
} // namespace

class tst_DataArray : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void signalsOfAppendAndLeftshift();
    void search();
    void extremesFollowWhatLeaves();
    void monotonyAfterReplace();
    void decimation();
    void sentinelStandsForTheHole();
    void lastReferenceDeletes();

protected:
    void deleteObjects() override { QCOMPARE(DataArray::getTotalVectorMemoryConsumption(), 0U); }
};

void tst_DataArray::signalsOfAppendAndLeftshift()
{
    Column column;
    QString seen; // changed, filled, or the count of a left shift
    connect(&column, &DataArray::dataChanged, this, [&] { seen += 'c'; });
    connect(&column, &DataArray::noLongerEmpty, this, [&] { seen += 'f'; });
    connect(&column, &DataArray::leftShifted, this, [&](int n) { seen += QString::number(n); });
    column.append(NaN);
    column.replace(0, 1); // valid, but only appending announces
    column.leftshift(1);
    for (double const value : {NaN, 2.0, 3.0})
        column.append(value);
    column.leftshift(intMin); // is none
    column.leftshift(intMax); // more than there are
    QCOMPARE(seen, "cc1cccfc0c3c");
}

void tst_DataArray::search()
{
    // At or below, place, nearest, position, at or above.
    auto const found = [](Cells const& cells, double value) {
        Column const column(cells);
        return QString::asprintf(
            "%d %g %d %d %d", column.getLargestIndexOfValueSmallerThanOrEqual(value),
            column.getInterpolatedIndexOfValue(value), column.getIndexOfNearestValue(value),
            column.posOf(value), column.getIndexOfFirstValueLargerThanOrEqual(value));
    };
    QCOMPARE(found({}, 1), "-1 -1 -1 -1 -1");
    QCOMPARE(found({1, 2, 2, 3}, 2), "2 2 2 2 1"); // run: last, first
    QCOMPARE(found({1, 2, 2, 3}, 2.5), "2 2.5 2 -1 3"); // tie, sorted
    QCOMPARE(found({1, 2}, 0), "-1 -1 0 -1 0"); // below the first
    QCOMPARE(found({1, 2}, 9), "1 -1 0 -1 2"); // beyond the end
    QCOMPARE(found({3, 1, 3}, 2), "-1 -1 2 -1 0"); // tie, unsorted
    QCOMPARE(found({3, 1, 3}, 3), "-1 -1 2 0 0"); // equals, unsorted
    QCOMPARE(found({NaN, 1}, 0.5), "-1 -1 1 -1 1"); // hole before it
    QCOMPARE(found({-std::numeric_limits<double>::infinity(), 5}, 0), "0 nan 1 -1 1");
    QCOMPARE(found({1, 2}, NaN), "-1 -1 -1 -1 -1"); // a hole cannot be placed
    QVERIFY(messages->tookOnly("LargerThanOrEqual inconsistent state"));

    QCOMPARE(Column({10, 20, NaN}).getInterpolatedValue(0.25), 12.5);
    for (double const index : {1.5, -0.5, 3.5, 1e300, NaN})
        QCOMPARE(Column({10, 20, NaN, 0}).getInterpolatedValue(index), NaN);
}

void tst_DataArray::extremesFollowWhatLeaves()
{
    Column column({1, 9, 3, NaN, 2});
    column.leftshift(1); // the minimum goes
    QCOMPARE(column.getMinimum(), 2.0);
    column.replace(0, 4); // and so does the maximum
    column.append(5);
    QCOMPARE(column.getMaximum(), 5.0);
    QCOMPARE(column.getMean(), 3.5);
    column.leftshift(4);
    column.replace(0, 7); // the only valid value is exchanged
    QCOMPARE(column.getMinimum(), 7.0);
}

void tst_DataArray::monotonyAfterReplace()
{
    auto const monotony = [](Cells const& cells, int index, double value) {
        Column column(cells);
        column.replace(index, value);
        QString const found = column.isNondecreasing() ? "kept" : "lost";
        column.determineIsNonDecreasing();
        return found + (column.isNondecreasing() ? ", sorted" : ", unsorted");
    };
    QCOMPARE(monotony({1, 2, 3}, 1, 3), "kept, sorted"); // equal neighbours
    QCOMPARE(monotony({1, 2, 3}, 1, 4), "lost, unsorted"); // above the next
    QCOMPARE(monotony({1, 2, 3}, 0, NaN), "lost, unsorted"); // becomes a hole
    QCOMPARE(monotony({1, 5, 3}, 1, 2), "lost, sorted"); // healed decrease
}

void tst_DataArray::decimation()
{
    Column odd({0, 1, 2, 3, 10});
    Column even({0, 1, 2, 3});
    odd.decimateKeepEven();
    even.decimateKeepEven(); // cell 3 was offered behind cell 2
    QCOMPARE(odd.getMean(), 4.0);
    for (int value = 4; value <= 9; ++value) {
        if (even.needsToAddValueAccordingDecimation())
            even.append(value);
    }
    QCOMPARE(cellsOf(even), (Cells{0, 2, 4, 6, 8}));
    for (int i = 0; i < 40; ++i)
        odd.decimateKeepEven(); // nothing overflows
}

void tst_DataArray::sentinelStandsForTheHole()
{
    DataArrayTemplate<double> column(-1.0);
    column.appendTyped(NaN); // stays what it is
    column.append(NaN);
    QVERIFY(!column.holdsDoNotUseValue(0) && column.holdsDoNotUseValue(1));
    QCOMPARE(column.linearSearchIndexOf(NaN), 1);
    QCOMPARE(column.getValue(1), NaN);
    DataArrayTemplate<int> integers;
    for (double const value : {-2.9, 1e300, -1e300, NaN})
        integers.append(value);
    QCOMPARE(cellsOf(integers), (Cells{-2, intMax, intMin, intMin}));
}

void tst_DataArray::lastReferenceDeletes()
{
    auto* const counted = new Column; // deleted here, or cleanup() finds it alive
    counted->addReference();
    counted->removeReference();
    auto* const uncounted = new Column;
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
