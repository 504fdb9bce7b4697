#pragma once

#include "abstractdataarraytemplate.h"
#include "cellvector.h"
#include "columnsummary.h"
#include "zelplot_export.h"
#include <algorithm>
#include <memory>
#include <type_traits>
#include <typeinfo>

/**
 * A column that stores every cell: the one for ordinary measurements.
 *
 * The library holds the instance for double.
 */
template<typename T> class DataArrayTemplate : public AbstractDataArrayTemplate<T>
{
    using Base = AbstractDataArrayTemplate<T>;

public:
    /// Holes are stored as NaN.
    DataArrayTemplate() = default;
    /// Holes are stored as @p sentinel, and every cell of that value is a hole.
    explicit DataArrayTemplate(T const& sentinel)
        : Base(sentinel)
    {
    }

    ~DataArrayTemplate() override { this->announceChangeOfCells(); }

    double getValue(int index) const override { return this->toDouble(values[index]); }
    int dataSize() const override { return values.size(); }
    bool holdsDoNotUseValue(int index) const override { return this->isSentinel(values[index]); }
    void clearData() override
    {
        this->countPending();
        values.clear();
        summary.reset();
    }
    void appendData(double value) override
    {
        this->countPending();
        values.append(this->toTyped(value));
    }
    void replaceData(int index, double value) override;
    void removeData(int startIndex, int count) override;
    void removeOddIndexedData() override;
    /// NaN finds the first hole if the column has a sentinel, else nothing.
    int linearSearchIndexOf(double value) const override
    {
        T const* const end = values.data() + values.size();
        T const* const found = std::find(values.data(), end, this->toTyped(value));
        return found == end ? -1 : static_cast<int>(found - values.data());
    }
    void squeezeData() override { values.squeeze(); }
    /// Counts what is allocated, not what is filled.
    int getMemoryConsumption() const override { return this->saturatedToInt(allocatedBytes()); }

    T getTypedValue(int index) const override { return values[index]; }
    /// Stores a NaN as NaN, even if the column has a sentinel.
    void appendTyped(T value) override;

    /**
     * What cells @p first to @p last amount to, which must exist, without a visit to each.
     *
     * The first question after a change other than appending, replacing and dropping from the
     * front costs O(n), all others O(log n), besides O(1) for each cell appended since the last.
     */
    RunSummary summarize(int first, int last) const
    {
        return getSummary().of(getCells(), first, last);
    }
    /// Of the same cells, none of which may be a hole; in a fraction of the time.
    Extremes extremesOf(int first, int last) const
    {
        return getSummary().extremesOf(getCells(), first, last);
    }
    /// Fetches ahead what extremesOf() needs if it begins or ends at @p index.
    void fetchAhead(int index) const { getSummary().fetchAhead(getCells(), index); }
    /// The first of these cells that is a hole, or none; @p last + 1 if there is no such cell.
    int firstHole(int first, int last) const
    {
        return getSummary().firstHole(getCells(), first, last);
    }
    int firstValid(int first, int last) const
    {
        return getSummary().firstValid(getCells(), first, last);
    }
    /// The first of them that is a hole or not @p value; @p last + 1 if there is none.
    int firstOther(int first, int last, double value) const
    {
        return getSummary().firstOther(getCells(), first, last, value);
    }
    /// The first of them behind @p first that lies more than @p limit above the one before, or as
    /// far as two equal infinities; @p last + 1 if there is none.
    int firstStepAbove(int first, int last, double limit) const
    {
        return getSummary().firstStepAbove(getCells(), first, last, limit);
    }

protected:
    void appendOne(double value) override;
    void appendRun(double const* newValues, int count) override;
    void countLastCells(int count) const override;

private:
    /// Whether the cells tell all that the values did, so that they can be counted later; false if
    /// a subclass may have overridden what the column does by itself.
    bool leavesCellsToCount()
    {
        if (counting == Counting::Unknown) {
            bool const isPlain
                = std::is_same_v<T, double> && typeid(*this) == typeid(DataArrayTemplate);
            counting = isPlain ? Counting::Later : Counting::AtOnce;
        }
        return counting == Counting::Later;
    }
    Q_NEVER_INLINE void appendOneAloud(double value);
    void appendCellAloud(T cell);
    double holeAmongCells() const { return this->hasDoNotUseValue ? this->doNotUseValue : NaN; }
    qint64 allocatedBytes() const { return qint64(values.capacity()) * qint64(sizeof(T)); }
    ColumnSummary::Cells getCells() const;
    ColumnSummary const& getSummary() const;

    enum class Counting : char { Unknown, AtOnce, Later }; // known from the first append on

    Counting counting = Counting::Unknown;
    CellVector<T> values;
    mutable std::unique_ptr<ColumnSummary> summary; // made when first asked for; of double only
};

template<typename T> void DataArrayTemplate<T>::appendTyped(T value)
{
    if (leavesCellsToCount()) {
        appendCellAloud(value);
    } else {
        values.append(value);
        this->afterRawAppend(static_cast<double>(value));
    }
}

template<typename T> void DataArrayTemplate<T>::appendOne(double value)
{
    // Most appends: nobody hears of them, and there is nothing to do but to write.
    if (counting == Counting::Later && !this->isChangeHeard() && values.hasRoom()
        && this->hasValidValues()) {
        values.appendInRoom(this->toTyped(value));
        this->leavePending(1, allocatedBytes());
    } else {
        appendOneAloud(value);
    }
}

/// Apart, so that the other way needs no registers saved.
template<typename T> void DataArrayTemplate<T>::appendOneAloud(double value)
{
    if (leavesCellsToCount())
        appendCellAloud(this->toTyped(value));
    else
        Base::appendOne(value);
}

template<typename T> void DataArrayTemplate<T>::appendCellAloud(T cell)
{
    bool const hadValidValues = this->hasValidValues();
    values.append(cell);
    this->leavePending(1, allocatedBytes());
    this->announceAppended(hadValidValues, this->isChangeHeard());
}

template<typename T> void DataArrayTemplate<T>::appendRun(double const* newValues, int count)
{
    if (!leavesCellsToCount()) {
        Base::appendRun(newValues, count);
        return;
    }
    bool const hadValidValues = this->hasValidValues();
    int const sizeBefore = values.size();
    if constexpr (std::is_same_v<T, double>) {
        if (this->hasDoNotUseValue)
            std::transform(newValues, newValues + count, values.extend(count),
                           [this](double value) { return this->toTyped(value); });
        else
            values.append(newValues, count);
    }
    this->leavePending(count, allocatedBytes());
    this->announceRun(sizeBefore, count);
    this->announceAppended(hadValidValues, this->isChangeHeard());
}

template<typename T> void DataArrayTemplate<T>::countLastCells(int count) const
{
    if constexpr (std::is_same_v<T, double>) {
        int const first = values.size() - count;
        double const before = first > 0 ? this->toDouble(values[first - 1])
                                        : -std::numeric_limits<double>::infinity();
        this->countCells(values.data() + first, count, holeAmongCells(), before);
    } else {
        Q_UNUSED(count)
    }
}

template<typename T> void DataArrayTemplate<T>::replaceData(int index, double value)
{
    this->countPending();
    values.set(index, this->toTyped(value));
    if (summary)
        summary->replaced(getCells(), index);
}

template<typename T> void DataArrayTemplate<T>::removeData(int startIndex, int count)
{
    this->countPending();
    values.remove(startIndex, count);
    if (!summary)
        return;
    if (startIndex == 0)
        summary->leftShifted(getCells(), count);
    else
        summary.reset();
}

template<typename T> void DataArrayTemplate<T>::removeOddIndexedData()
{
    // Grown anew instead of closed up in place, so that thinning also gives back memory.
    this->countPending();
    summary.reset();
    CellVector<T> kept;
    for (int i = 0; i < values.size(); i += 2)
        kept.append(values[i]);
    values.swap(kept);
}

template<typename T> ColumnSummary::Cells DataArrayTemplate<T>::getCells() const
{
    if constexpr (std::is_same_v<T, double>)
        return {values.data(), values.size(), holeAmongCells()};
    else
        return {}; // never summarized
}

template<typename T> ColumnSummary const& DataArrayTemplate<T>::getSummary() const
{
    static_assert(std::is_same_v<T, double>, "only columns of doubles are summarized");
    if (!summary)
        summary = std::make_unique<ColumnSummary>(getCells());
    else
        summary->catchUp(getCells());
    return *summary;
}

extern template class ZELPLOT_EXPORT DataArrayTemplate<double>;
