#include "dataarray.h"

#include "columnnotices.h"
#include "dataarraytemplate.h"
#include "librarytest.h"

#include <climits>
#include <cmath>
#include <random>

namespace {
using Cells = QVector<double>;

/// Derived, so that it appends the general way.
struct Column : DataArrayTemplate<double>
{
    explicit Column(double sentinel)
        : DataArrayTemplate(sentinel)
    {
    }
    explicit Column(Cells const& cells = {})
    {
        for (double const cell : cells)
            append(cell);
    }
};
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
    void miscountedReferencesAreTold();
    void runIsAsManySingleOnes();
    void appendingAtOnceEqualsTheGeneralWay();
    void overridesAreHeard();

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
    column.leftshift(INT_MIN); // is none
    column.leftshift(INT_MAX); // more than there are
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
    QCOMPARE(found({NaN, 1}, 0.5), "-1 -1 1 -1 1"); // hole before it
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
    column.clearData();
    column.determineMinimumMaximum();
    column.append(6); // still counted as one of many, and not below what is no number
    QCOMPARE(column.getMinimum(), NaN);
}

void tst_DataArray::monotonyAfterReplace()
{
    auto const staysSorted = [](Cells const& cells, int index, double value) {
        Column column(cells);
        column.replace(index, value);
        return column.isNondecreasing();
    };
    QVERIFY(staysSorted({1, 2, 3}, 1, 3)); // equal neighbours
    QVERIFY(!staysSorted({1, 2, 3}, 1, 4)); // above the next
    QVERIFY(!staysSorted({1, 2, 3}, 0, NaN)); // becomes a hole
    QVERIFY(!staysSorted({1, 5, 3}, 1, 2)); // a healed decrease is not noticed
    struct NegatedColumn : DataArrayTemplate<double>
    {
        double getValue(int index) const override { return -DataArrayTemplate::getValue(index); }
        void appendData(double value) override { DataArrayTemplate::appendData(value + 1); }
    } negated;
    double const run[] = {1, 2, 3};
    negated.append(run, 3);
    QVERIFY(!negated.isNondecreasing()); // as it reads, not as it is stored
    QCOMPARE(negated.getLastValue(), -4.0);
}

void tst_DataArray::decimation()
{
    Column column({0, 1, 2, 3});
    column.decimateKeepEven(); // cell 3 was offered behind cell 2
    for (int value = 4; value <= 9; ++value) {
        if (column.needsToAddValueAccordingDecimation())
            column.append(value);
    }
    QCOMPARE(column.dataSize(), 5);
    QCOMPARE(column.getMean(), 4.0); // 0, 2, 4, 6, 8
    for (int i = 0; i < 40; ++i)
        column.decimateKeepEven(); // nothing overflows
    QCOMPARE(column.getMaximum(), 0.0);
}

void tst_DataArray::sentinelStandsForTheHole()
{
    DataArrayTemplate<double> column(-1.0);
    column.appendTyped(NaN); // stays what it is
    column.append(NaN);
    QVERIFY(!column.holdsDoNotUseValue(0) && column.holdsDoNotUseValue(1));
    DataArrayTemplate<int> integers;
    integers.append(-2.9);
    integers.append(1e300);
    QCOMPARE(integers.getValue(0), -2.0);
    QCOMPARE(integers.getValue(1), double(INT_MAX));
}

void tst_DataArray::miscountedReferencesAreTold()
{
    auto* const column = new Column;
    column->removeReference();
    QVERIFY(messages->tookOnly("DataArray::removeReference is removing uncounted reference"));
    delete column;
    QVERIFY(messages->tookOnly("Deleting referenced DataArray!"));
}

void tst_DataArray::runIsAsManySingleOnes()
{
    std::mt19937 random(3);
    auto const below = [&](int limit) { return int(random() % unsigned(limit)); };
    for (int round = 0; round < 300; ++round) {
        double const sentinel = round % 3 == 0 ? 5.0 : NaN;
        DataArrayTemplate<double> singles(sentinel);
        DataArrayTemplate<double> runs(sentinel);
        QString seen; // of the second column: a run, a change, filled
        connect(&runs.getNotices(), &ColumnNotices::runAppended, this,
                [&](int first) { seen += QString("r%1").arg(first); });
        connect(&runs, &DataArray::dataChanged, this, [&] { seen += 'c'; });
        connect(&runs, &DataArray::noLongerEmpty, this, [&] { seen += 'f'; });
        double level = 0.0;
        QString expected;
        for (int run = 0; run < 4; ++run) {
            Cells cells;
            for (int i = below(90); i > 0; --i) {
                level = round % 2 == 0 ? level + below(2) : below(20);
                cells.append(below(run == 0 ? 2 : 60) == 0 ? NaN : level * 0.1);
            }
            bool const wasEmpty = !singles.hasValidValues();
            for (double const cell : cells)
                singles.append(cell);
            expected += cells.isEmpty() ? "" : QString("r%1c").arg(runs.dataSize());
            expected += wasEmpty && singles.hasValidValues() ? "f" : "";
            runs.append(cells.constData(), int(cells.size()));
            QCOMPARE(seen, expected);
            QCOMPARE(runs.dataSize(), singles.dataSize());
            for (int i = 0; i < runs.dataSize(); ++i)
                QVERIFY(runs.getTypedValue(i) == singles.getTypedValue(i)
                        || runs.getTypedValue(i) != runs.getTypedValue(i));
            auto const state = [](DataArray const& column) {
                return QString("%1 %2 %3 %4 %5")
                    .arg(column.getMean(), 0, 'g', 17)
                    .arg(column.getMinimum())
                    .arg(column.getMaximum())
                    .arg(column.getNrOfValidValues())
                    .arg(column.isNondecreasing());
            };
            QCOMPARE(state(runs), state(singles));
        }
    }
}

void tst_DataArray::appendingAtOnceEqualsTheGeneralWay()
{
    using Dense = DataArrayTemplate<double>;
    using Act = void (*)(Dense&, Cells const&, int index); // the index is -1 in an empty column
    constexpr Act typed = [](Dense& c, Cells const& cells, int) { c.appendTyped(cells[0]); };
    constexpr Act acts[] = {
        [](Dense& c, Cells const& cells, int) {
            c.append(cells.constData(), int(cells.size()));
            c.squeeze(); // the room that a run asks for is another
        },
        [](Dense& c, Cells const&, int index) { c.leftshift(index + 1); },
        [](Dense& c, Cells const& cells, int index) {
            if (index >= 0)
                c.replace(index, cells[0]);
        },
        [](Dense& c, Cells const& cells, int index) { // behind the back of the books
            if (index >= 0)
                c.replaceData(index, cells[0]);
        },
        [](Dense& c, Cells const&, int) { c.decimateKeepEven(); },
        [](Dense& c, Cells const&, int) { c.squeeze(); },
        [](Dense& c, Cells const&, int) { c.determineIsNonDecreasing(); },
        [](Dense& c, Cells const&, int) { c.excludeFromTotalMemoryConsumption(); },
        [](Dense& c, Cells const&, int) { c.reinit(); },
        [](Dense& c, Cells const& cells, int) { c.appendData(cells[0]); },
        [](Dense& c, Cells const&, int) { c.removeData(0, qMin(2, c.dataSize())); },
        [](Dense& c, Cells const& cells, int) { c.removeFromStatistics(cells[0]); },
        [](Dense& c, Cells const&, int) { c.resetStatistics(); },
        [](Dense& c, Cells const&, int) { c.removeOddIndexedData(); },
        [](Dense& c, Cells const&, int) { c.clearData(); },
        [](Dense& c, Cells const& cells, int) { c.includeInStatistics(cells[0]); },
        [](Dense& c, Cells const&, int) { c.determineMinimumMaximum(); },
        [](Dense& c, Cells const&, int index) {
            if (index >= 0)
                c.updateIsNondecreasing(index);
        },
        typed,
        typed,
        typed,
    };
    std::mt19937 random(3);
    auto const below = [&](int limit) { return int(random() % unsigned(limit)); };
    for (int round = 0; round < 400; ++round) {
        double const sentinel = round % 3 == 0 ? 5.0 : NaN;
        DataArrayTemplate<double> atOnce(sentinel);
        Column general(sentinel);
        QString seen;
        QString expected; // run, changed, filled, left shift
        auto const listen = [this](DataArray& column, QString& signalsSeen) {
            auto const log
                = [&signalsSeen](QChar what) { return [=, &signalsSeen] { signalsSeen += what; }; };
            connect(&column.getNotices(), &ColumnNotices::runAppended, this, log('r'));
            connect(&column, &DataArray::dataChanged, this, log('c'));
            connect(&column, &DataArray::noLongerEmpty, this, log('f'));
            connect(&column, &DataArray::leftShifted, this, log('s'));
        };
        double level = -1.0;
        auto const next = [&] {
            double const odd[] = {NaN, sentinel, 0.0, -0.0, 1.0 / 0.0, -1.0 / 0.0, level - 1.0};
            level += 0.1 * below(3);
            return below(12) < round % 12 ? odd[below(round % 2 == 0 ? 7 : 4)] : level;
        };
        for (int step = 0; step < 60; ++step) {
            if (step == round % 20) { // nobody hears what comes before
                listen(atOnce, seen);
                listen(general, expected);
            }
            int const act = below(40);
            Cells cells;
            for (int i = act == 0 ? below(90) : 1; i > 0; --i)
                cells.append(next());
            int const index = atOnce.dataSize() > 0 ? below(atOnce.dataSize()) : -1;
            auto const change = [&](DataArrayTemplate<double>& column) {
                quint32 const memoryBefore = DataArray::getTotalVectorMemoryConsumption();
                if (act < int(std::size(acts)))
                    acts[act](column, cells, index);
                else
                    column.append(cells[0]);
                QString state = QString::asprintf(
                    "%d %d %u", column.dataSize(), column.getDecimationCounter(),
                    DataArray::getTotalVectorMemoryConsumption() - memoryBefore);
                if (act % 3 == 0) // else nothing asks for what is yet to be counted
                    state += QString::asprintf(" %d %d %.17g", column.getNrOfValidValues(),
                                               column.isNondecreasing(), column.getMean());
                if (act % 4 == 0) // else the extremes stay stale
                    state += QString::asprintf(" %g", column.getMinimum());
                if (act % 5 == 0)
                    state += QString::asprintf(" %g", column.getMaximum());
                for (int i = column.dataSize() - 1; i >= 0 && act == 0; --i)
                    state += QString::asprintf(" %g", column.getTypedValue(i));
                return state;
            };
            QCOMPARE(change(atOnce), change(general));
            QCOMPARE(seen, expected);
        }
        QVERIFY(!seen.isEmpty());
    }
}

void tst_DataArray::overridesAreHeard()
{
    struct Own : DataArrayTemplate<double>
    {
        void appendData(double value) override { DataArrayTemplate::appendData(2.0 * value); }
        double getValue(int index) const override { return std::abs(getTypedValue(index)); }
        int dataSize() const override { return qMin(2, DataArrayTemplate::dataSize()); }
        bool equalsDoNotUseValue(double value) const override { return value == -2.0; }
        int getMemoryConsumption() const override { return 1000; }
    };
    for (bool const asRun : {false, true}) {
        Own column;
        Cells const cells = {1.0, -2.0};
        if (asRun)
            column.append(cells.constData(), 2);
        for (int i = 0; !asRun && i < 2; ++i)
            column.append(cells[i]);
        column.append(0.5); // stored as a decrease, behind the end
        QCOMPARE(column.getTypedValue(1), -4.0);
        QVERIFY(column.isNondecreasing());
        QCOMPARE(column.getNrOfValidValues(), 2);
        QCOMPARE(DataArray::getTotalVectorMemoryConsumption(), 1000U);
    }
}

QTEST_GUILESS_MAIN(tst_DataArray)
#include "tst_dataarray.moc"
