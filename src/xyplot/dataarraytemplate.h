#pragma once

#include "abstractdataarraytemplate.h"
#include "cellvector.h"
#include "columnsummary.h"
#include "zelplot_export.h"
#include <algorithm>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

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
        values.assign({});
        summary.reset();
    }
    void appendData(double value) override { store(this->toTyped(value)); }
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
     * front costs O(n), all others O(log n).
     */
    RunSummary summarize(int first, int last) const
    {
        return getSummary().of(getCells(), first, last);
    }
    /// The same without the steps between them, which takes half the time.
    RunSummary extentOf(int first, int last) const
    {
        return getSummary().extentOf(getCells(), first, last);
    }
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

private:
    /// False if a subclass may have overridden what the column does by itself.
    bool isOfThisVeryClass()
    {
        if (subclassed == Subclassed::Unknown) {
            bool const isPlain = typeid(*this) == typeid(DataArrayTemplate);
            subclassed = isPlain ? Subclassed::No : Subclassed::Yes;
        }
        return subclassed == Subclassed::No;
    }
    Q_NEVER_INLINE void appendOneAloud(double value);
    void appendCell(T cell, double value);
    Q_ALWAYS_INLINE bool isInOrder(T cell) const;
    /// Whether the summary, if there is one, catches up with the next cell, as it does each 64.
    bool completesLeaf() const
    {
        return summary && (values.size() + 1) % ColumnSummary::fanOut == 0;
    }
    void store(T value)
    {
        bool const isLastOfLeaf = completesLeaf();
        values.append(value);
        if (isLastOfLeaf)
            summary->appended(getCells());
    }
    qint64 allocatedBytes() const { return qint64(values.capacity()) * qint64(sizeof(T)); }
    ColumnSummary::Cells getCells() const;
    ColumnSummary const& getSummary() const;

    enum class Subclassed : char { Unknown, No, Yes }; // first known with the first append

    Subclassed subclassed = Subclassed::Unknown;
    CellVector<T> values;
    mutable std::unique_ptr<ColumnSummary> summary; // made when first asked for; of double only
};

template<typename T> void DataArrayTemplate<T>::appendTyped(T value)
{
    if (isOfThisVeryClass()) {
        appendCell(value, static_cast<double>(value));
    } else {
        store(value);
        this->afterRawAppend(static_cast<double>(value));
    }
}

template<typename T> void DataArrayTemplate<T>::appendOne(double value)
{
    // Most appends: nobody hears of them, and there is nothing to do but to write and to count.
    bool const isQuiet = subclassed == Subclassed::No && !this->isChangeHeard()
        && this->hasValidValues() && values.hasRoom() && !completesLeaf();
    if (!isQuiet) {
        appendOneAloud(value);
        return;
    }
    T const cell = this->toTyped(value);
    bool const staysOrdered = isInOrder(cell);
    values.appendInRoom(cell);
    this->account(value, Base::equalsDoNotUseValue(value), staysOrdered, allocatedBytes());
}

/// Apart, so that the other way needs no registers saved.
template<typename T> void DataArrayTemplate<T>::appendOneAloud(double value)
{
    if (isOfThisVeryClass())
        appendCell(this->toTyped(value), value);
    else
        Base::appendOne(value);
}

/// Whether the column is sorted and would be with @p cell behind it.
template<typename T> bool DataArrayTemplate<T>::isInOrder(T cell) const
{
    if (!this->isNondecreasing())
        return false;
    T const before = values.isEmpty() ? cell : values.last(); // a first cell follows itself
    return before <= cell && !this->isSentinel(before) && !this->isSentinel(cell);
}

/// Stores @p cell, that @p value was offered for, without a virtual call.
template<typename T> void DataArrayTemplate<T>::appendCell(T cell, double value)
{
    int const validCountBefore = this->getNrOfValidValues();
    bool const staysOrdered = isInOrder(cell);
    store(cell);
    this->account(value, Base::equalsDoNotUseValue(value), staysOrdered, allocatedBytes());
    this->announceAppended(validCountBefore, this->isChangeHeard());
}

template<typename T> void DataArrayTemplate<T>::appendRun(double const* newValues, int count)
{
    // Cells of another type may be in order where the values are not.
    if (!std::is_same_v<T, double> || !isOfThisVeryClass()) {
        Base::appendRun(newValues, count);
        return;
    }
    int const validCountBefore = this->getNrOfValidValues();
    int const sizeBefore = values.size();
    double const before
        = sizeBefore > 0 ? this->toDouble(values.last()) : -std::numeric_limits<double>::infinity();
    double const hole = this->hasDoNotUseValue ? this->doNotUseValue : NaN;
    T* const cells = values.extend(count);
    if (this->hasDoNotUseValue)
        std::transform(newValues, newValues + count, cells,
                       [this](double value) { return this->toTyped(value); });
    else
        std::copy(newValues, newValues + count, cells);
    if (summary)
        summary->appended(getCells());
    this->accountRun(newValues, count, hole, before, DataArrayTemplate::getMemoryConsumption());
    this->announceRun(sizeBefore, count);
    this->announceAppended(validCountBefore);
}

template<typename T> void DataArrayTemplate<T>::replaceData(int index, double value)
{
    values.set(index, this->toTyped(value));
    if (summary)
        summary->replaced(getCells(), index);
}

template<typename T> void DataArrayTemplate<T>::removeData(int startIndex, int count)
{
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
    summary.reset();
    QVector<T> kept;
    for (int i = 0; i < values.size(); i += 2)
        kept.append(values[i]);
    values.assign(std::move(kept));
}

template<typename T> ColumnSummary::Cells DataArrayTemplate<T>::getCells() const
{
    if constexpr (std::is_same_v<T, double>)
        return {values.data(), values.size(), this->hasDoNotUseValue ? this->doNotUseValue : NaN};
    else
        return {}; // never summarized
}

template<typename T> ColumnSummary const& DataArrayTemplate<T>::getSummary() const
{
    static_assert(std::is_same_v<T, double>, "only columns of doubles are summarized");
    if (!summary)
        summary = std::make_unique<ColumnSummary>(getCells());
    return *summary;
}

extern template class ZELPLOT_EXPORT DataArrayTemplate<double>;
