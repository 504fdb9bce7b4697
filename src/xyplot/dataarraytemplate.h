#pragma once

#include "abstractdataarraytemplate.h"
#include "zelplot_export.h"
#include <QVector>

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
    void clearData() override { values = QVector<T>(); }
    void appendData(double value) override { values.append(this->toTyped(value)); }
    void replaceData(int index, double value) override { values[index] = this->toTyped(value); }
    void removeData(int startIndex, int count) override { values.remove(startIndex, count); }
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
        values.append(value);
        this->afterRawAppend(static_cast<double>(value));
    }

private:
    QVector<T> values;
};

template<typename T> void DataArrayTemplate<T>::removeOddIndexedData()
{
    // Grown anew instead of closed up in place, so that thinning also gives back memory.
    QVector<T> const all = values;
    values = QVector<T>();
    for (qsizetype i = 0; i < all.size(); i += 2)
        values.append(all[i]);
}

extern template class ZELPLOT_EXPORT DataArrayTemplate<double>;
