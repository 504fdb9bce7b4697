#pragma once

#include "abstractdataarraytemplate.h"
#include "columnsummary.h"
#include "zelplot_export.h"
#include <QVector>
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

    double getValue(int index) const override { return this->toDouble(values[index]); }
    int dataSize() const override { return static_cast<int>(values.size()); }
    bool holdsDoNotUseValue(int index) const override { return this->isSentinel(values[index]); }
    void clearData() override
    {
        values = QVector<T>();
        summary.reset();
    }
    void appendData(double value) override { store(this->toTyped(value)); }
    void appendRunData(double const* newValues, int count) override;
    void replaceData(int index, double value) override;
    void removeData(int startIndex, int count) override;
    void removeOddIndexedData() override;
    /// NaN finds the first hole if the column has a sentinel, else nothing.
    int linearSearchIndexOf(double value) const override
    {
        return static_cast<int>(values.indexOf(this->toTyped(value)));
    }
    void squeezeData() override { values.squeeze(); }
    /// Counts what is allocated, not what is filled.
    int getMemoryConsumption() const override
    {
        return this->saturatedToInt(static_cast<qint64>(values.capacity()) * qint64(sizeof(T)));
    }

    T getTypedValue(int index) const override { return values[index]; }
    /// Stores a NaN as NaN, even if the column has a sentinel.
    void appendTyped(T value) override
    {
        store(value);
        this->afterRawAppend(static_cast<double>(value));
    }

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
    bool isRunOrdered(int first, int count) const override;

private:
    /// False for a derived column, which may store and read in ways of its own.
    bool isExactlyThis() const { return typeid(*this) == typeid(DataArrayTemplate); }
    void store(T value)
    {
        values.append(value);
        if (summary && values.size() % ColumnSummary::fanOut == 0)
            summary->appended(getCells());
    }
    ColumnSummary::Cells getCells() const;
    ColumnSummary const& getSummary() const;

    QVector<T> values;
    mutable std::unique_ptr<ColumnSummary> summary; // made when first asked for; of double only
};

template<typename T> void DataArrayTemplate<T>::appendRunData(double const* newValues, int count)
{
    if (!isExactlyThis()) {
        Base::appendRunData(newValues, count);
        return;
    }
    qsizetype const sizeBefore = values.size();
    values.resize(sizeBefore + count);
    T* const cells = values.data() + sizeBefore;
    if (std::is_same_v<T, double> && !this->hasDoNotUseValue) {
        std::transform(newValues, newValues + count, cells,
                       [](double value) { return static_cast<T>(value); });
    } else {
        for (int i = 0; i < count; ++i)
            cells[i] = this->toTyped(newValues[i]);
    }
    if (summary)
        summary->appended(getCells());
}

template<typename T> bool DataArrayTemplate<T>::isRunOrdered(int first, int count) const
{
    if (!isExactlyThis())
        return Base::isRunOrdered(first, count);
    T const* const cells = values.constData();
    bool ordered = true;
    for (int i = first; i < first + count; ++i) {
        T const before = cells[i > 0 ? i - 1 : 0];
        ordered &= before <= cells[i] && !this->isSentinel(cells[i]);
    }
    return ordered;
}

template<typename T> void DataArrayTemplate<T>::replaceData(int index, double value)
{
    values[index] = this->toTyped(value);
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
    QVector<T> const all = values;
    summary.reset();
    values = QVector<T>();
    for (qsizetype i = 0; i < all.size(); i += 2)
        values.append(all[i]);
}

template<typename T> ColumnSummary::Cells DataArrayTemplate<T>::getCells() const
{
    if constexpr (std::is_same_v<T, double>)
        return {values.constData(), dataSize(), this->hasDoNotUseValue ? this->doNotUseValue : NaN};
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
