#pragma once

#include "zelplot_export.h"
#include "zelplotglobals.h"
#include <QObject>
#include <QtGlobal>
#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

class ColumnNotices;

/**
 * A column of numbers: the form in which all data of a plot live.
 *
 * Every storage looks from outside like one sequence of doubles, in which a hole (a cell without a
 * measurement) reads as NaN. The column keeps its statistics and notices whether it ascends, so
 * that asking for either, or searching, takes at most a walk over the cells that have been appended
 * since it was asked before. It can be thinned by two while data come in, or drop cells from its
 * front.
 *
 * A column is made with `new` and has no parent. Whoever uses it, as a data set does, holds a
 * reference; with the last one it deletes itself, unless setReferenceCounted(false) left it to its
 * maker. A slot of its signals may change it, but must not delete it. At most 2^31 - 1 cells.
 * Indices are not checked unless said otherwise.
 *
 * A subclass stores cells and nothing else: all bookkeeping lies in the operations that are not
 * virtual. For the user-interface thread only, reading included.
 */
class ZELPLOT_EXPORT DataArray : public QObject
{
    Q_OBJECT
public:
    DataArray();
    ~DataArray() override;

    // Storage: no statistics, no flags, no signals. Applications change a column by the operations
    // below instead.

    /// The cell; NaN if it is a hole.
    virtual double getValue(int index) const = 0;
    /// Number of cells, holes included.
    virtual int dataSize() const = 0;
    virtual bool holdsDoNotUseValue(int index) const;
    /// True if a cell of that value would be a hole: NaN, and a sentinel if the column has one.
    virtual bool equalsDoNotUseValue(double value) const;
    virtual void clearData() = 0;
    virtual void appendData(double value) = 0;
    virtual void replaceData(int index, double value) = 0;
    virtual void removeData(int startIndex, int count) = 0;
    /// Keeps the cells 0, 2, 4 and so on.
    virtual void removeOddIndexedData() = 0;
    /// Index of the first cell that equals @p value; -1 if there is none.
    virtual int linearSearchIndexOf(double value) const = 0;
    virtual void squeezeData() = 0;
    /// Bytes that the storage of this column occupies; saturates.
    virtual int getMemoryConsumption() const = 0;

    void addReference() { ++referenceCount; }
    /// Deletes the column with its last reference, if it is reference counted.
    void removeReference();
    int getNumberOfReferences() const { return referenceCount; }
    /// A column that is not counted stays alive without references; its maker deletes it.
    void setReferenceCounted(bool counted) { referenceCounted = counted; }
    bool isReferenceCounted() const { return referenceCounted; }

    void append(double value) { appendOne(value); }
    /**
     * Appends @p count values, none if it is not above zero, as so many calls for one value would;
     * but the signals come once, behind the last.
     */
    void append(double const* values, int count);
    /// Does not emit noLongerEmpty(), even if this is the first valid value.
    void replace(int index, double value);
    /// Drops @p count cells from the front, or all if there are fewer; a negative count is 0.
    void leftshift(int count);
    /**
     * Halves the column: cells 0, 2, 4 and so on stay, and the decimation factor doubles up to
     * 2^30.
     *
     * The columns of a data set, and its look, must be thinned together.
     */
    void decimateKeepEven();
    /// Empties the column and sets it back to the state of a new one; references stay.
    void reinit();
    /// Releases storage beyond the cells.
    void squeeze();
    /// What append() does after storing; for subclasses that store in another way.
    void afterRawAppend(double value);

    /// Cell 0, which must exist.
    double getFirstValue() const { return getValue(0); }
    /// NaN if the column is empty.
    double getLastValue() const;
    /// NaN if the column has fewer than two cells.
    double getSecondLastValue() const;
    /// Number of cells that are no holes.
    int getNrOfValidValues() const
    {
        countPending();
        return statistics.validCount;
    }
    bool hasValidValues() const
    {
        return statistics.validCount > 0 || getNrOfValidValues() > 0; // those pending can but add
    }
    /// Mean of the valid values; NaN if there are none.
    double getMean() const;
    /// Smallest valid value; NaN if there are none. Walks over all cells if an extreme has left.
    double getMinimum() const;
    /// Largest valid value; NaN if there are none. Walks over all cells if an extreme has left.
    double getMaximum() const;
    /// False once a hole or a decrease has come in, even if it has gone since.
    bool isNondecreasing() const
    {
        countPending();
        return nondecreasing;
    }
    int getCurrentDecimationFactor() const { return decimationFactor; }
    /// Values offered since the last one stored; below 0 if an empty column was thinned. Saturates.
    int getDecimationCounter() const { return decimationCounter; }
    /// Cells dropped from the front since construction or reinit(); saturates.
    int getTotalPositionsLeftShifted() const { return totalPositionsLeftShifted; }

    /// Index of a cell that equals @p value, of several the last if sorted, else the first; or -1.
    int posOf(double value) const;
    /**
     * Index of the last cell at or below @p value; in a run of equal cells, the last of the run.
     *
     * O(log n), so only a column that isNondecreasing() can be searched.
     *
     * @return -1 for an empty or unsorted column, for a hole, and for a value below the first cell
     */
    int getLargestIndexOfValueSmallerThanOrEqual(double value) const;
    /**
     * Index of the cell nearest to @p value; of two equally near, the lower one.
     *
     * In an unsorted column a walk over all cells, which finds the higher one.
     *
     * @return -1 for an empty column, one of holes only, and for a hole; 0 for a value beyond the
     *         last cell of a sorted column; 0 or 1 where getInterpolatedIndexOfValue() is NaN
     */
    int getIndexOfNearestValue(double value) const;
    /**
     * Place of @p value between the cells of a sorted column, as an index with a fraction.
     *
     * @return -1.0 for an empty or unsorted column, for a hole, and for a value outside the cells;
     *         NaN if cells next to it are infinite or too far apart for a double
     */
    double getInterpolatedIndexOfValue(double value) const;
    /// Linear between the two cells about @p fractionalIndex; NaN outside the column or at a hole.
    double getInterpolatedValue(double fractionalIndex) const;
    /**
     * Index of the first cell at or above @p value; O(log n) in a sorted column.
     *
     * @return dataSize() if no cell is that large, -1 for an empty column. In a sorted column, a
     *         hole that cannot be placed among the cells reports an assertion and gives -1
     */
    int getIndexOfFirstValueLargerThanOrEqual(double value) const;

    // Statistics leave out whatever equalsDoNotUseValue().

    void includeInStatistics(double value);
    void removeFromStatistics(double value);
    void replaceValueInStatistics(double oldValue, double newValue);
    void resetStatistics();
    /// Rebuilds minimum and maximum from the cells.
    void determineMinimumMaximum() const;

    /// Looks at all cells; the only way back to a sorted column short of reinit().
    void determineIsNonDecreasing();
    /// Compares a changed cell with its neighbours; never turns the flag back to true.
    void updateIsNondecreasing(int index);

    /// Counts one value offered; true if it is the one of every decimation factor to be stored.
    bool needsToAddValueAccordingDecimation();

    /// Bytes of all live columns as last accounted; 32 bits, wraps.
    static quint32 getTotalVectorMemoryConsumption() { return sTotalVectorMemoryConsumption; }
    /// Accounts the present figure of this column in place of the former one.
    void updateTotalMemoryConsumption();
    void excludeFromTotalMemoryConsumption();

    /// Sum of the shares of all live columns. Only to be read.
    static quint32 sTotalVectorMemoryConsumption;

    /// For use within the library.
    ColumnNotices& getNotices() const;

Q_SIGNALS:
    void dataChanged();
    /// The first valid value has been appended, to a new column or to one that had lost all.
    void noLongerEmpty();
    /// Comes before the dataChanged() of the same change; @p numberOfPoints may be 0.
    void leftShifted(int numberOfPoints);

private:
    /// Of the valid values, kept up incrementally.
    struct Statistics
    {
        // The extremes apart, since compilers would take two neighbours for one vector, and longer.
        double minimum = NaN;
        int validCount = 0;
        double maximum = NaN;
        double sum = 0.0;
        bool minMaxValid = true; // false: rebuild the extremes when somebody asks

        void include(double value)
        {
            ++validCount;
            sum += value;
            if (validCount == 1) {
                // Whatever the extremes were, their values have all gone.
                minimum = value;
                maximum = value;
                minMaxValid = true;
            } else if (minMaxValid) { // else the next reader rebuilds them anyway
                // Selected, since branches would be taken at random. An extreme that is NaN stays.
                maximum = value > maximum ? value : maximum;
                minimum = value <= minimum ? value : minimum;
            }
        }
    };

    // Mutable, since cells may be counted only when somebody asks.
    mutable Statistics statistics;
    mutable bool nondecreasing = true;
    mutable int pending = 0; // cells at the end that are not counted yet

protected:
    void connectNotify(QMetaMethod const& signal) override;
    /// Whether dataChanged() has ever been connected; of use only to a class that is not derived
    /// from, since an overridden connectNotify() may keep it to itself.
    bool isChangeHeard() const { return changeHeard; }

    /**
     * All that append() does, by the operations above.
     *
     * A storage that can do so cheaper overrides it, with the same outcome. One that can be derived
     * from must see to it that none of these operations is overridden.
     */
    virtual void appendOne(double value);
    /// The same for many values, at least one.
    virtual void appendRun(double const* values, int count);

    /**
     * Keeps the books of @p count cells just stored, but for statistics and order.
     *
     * Those come from countLastCells() when somebody asks, before anything else can change them. A
     * storage that leaves some must call countPending() before it changes any.
     */
    void leavePending(int count, qint64 memoryConsumption)
    {
        decimationCounter = 0;
        accountMemory(memoryConsumption);
        pending += count;
    }
    void countPending() const
    {
        if (pending != 0)
            countLastCells(std::exchange(pending, 0));
    }
    /// For a storage that leaves cells pending: calls countCells() for so many at its end.
    virtual void countLastCells(int count) const { Q_UNUSED(count) }
    /// Takes @p cells, of which NaN and @p hole are holes, into statistics and order, as so many
    /// single appends would; @p before is the cell before them, minus infinity if there is none.
    void countCells(double const* cells, int count, double hole, double before) const;
    /// Tells the library that cells are about to change or to go.
    void announceChangeOfCells() const;
    /// Tells it of a run that has been appended, unless signals are blocked.
    void announceRun(int first, int count) const;
    /// The signals of an append; @p isHeard is false if nobody can hear the first of them, which
    /// costs more to emit than a cell to store.
    void announceAppended(bool hadValidValues, bool isHeard = true)
    {
        if (isHeard)
            Q_EMIT dataChanged();
        // Holes in front do not count, and a column that has lost all its values announces again.
        if (!hadValidValues && hasValidValues())
            Q_EMIT noLongerEmpty();
    }

    /// For counts and byte figures that are reckoned in 64 bits.
    static int saturatedToInt(qint64 value)
    {
        using Limits = std::numeric_limits<int>;
        return static_cast<int>(std::clamp<qint64>(value, Limits::min(), Limits::max()));
    }

private:
    void accountMemory(qint64 memoryConsumption)
    {
        if (memoryConsumption == accountedMemory)
            return;
        // Unsigned, so that a total beyond 32 bits wraps and comes back right when columns go.
        auto const memory = static_cast<quint32>(saturatedToInt(memoryConsumption));
        sTotalVectorMemoryConsumption += memory - accountedMemory;
        accountedMemory = memory;
    }
    bool isRunOrdered(int first, int count) const;
    bool isOrderedAt(int index, int lastIndex) const;
    int firstOfRun(int index) const;
    int indexOfNearestValueUnsorted(double value) const;

    int totalPositionsLeftShifted = 0;
    int decimationCounter = 0;
    int decimationFactor = 1; // a power of two
    quint32 accountedMemory = 0; // share of this column in the process-wide count
    bool referenceCounted = true;
    bool changeHeard = false;
    int referenceCount = 0;
    mutable std::unique_ptr<ColumnNotices> notices; // once somebody listens
};
