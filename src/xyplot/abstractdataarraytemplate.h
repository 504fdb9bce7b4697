#pragma once

#include "dataarray.h"
#include "zelplot_export.h"
#include "zelplotglobals.h"
#include <limits>
#include <type_traits>

/**
 * A column whose cells are stored as numbers of type T.
 *
 * It may have a sentinel, a value of T that stands for a hole where it is stored and reads as NaN;
 * it is fixed at construction. The library holds the instances for double and int.
 */
template<typename T> class AbstractDataArrayTemplate : public DataArray
{
public:
    AbstractDataArrayTemplate() = default;
    explicit AbstractDataArrayTemplate(T const& sentinel)
        : doNotUseValue(sentinel)
        , hasDoNotUseValue(true)
    {
    }

    double getValue(int index) const override { return toDouble(getTypedValue(index)); }
    /// True for the sentinel only: a NaN stored as such is no hole to this question.
    bool holdsDoNotUseValue(int index) const override { return isSentinel(getTypedValue(index)); }
    bool equalsDoNotUseValue(double value) const override
    {
        return value != value || (hasDoNotUseValue && value == static_cast<double>(doNotUseValue));
    }

    /// The cell as it is stored; a hole is the sentinel.
    virtual T getTypedValue(int index) const = 0;
    /// append() for a value that is stored as it is.
    virtual void appendTyped(T value) = 0;

protected:
    bool isSentinel(T cell) const { return hasDoNotUseValue && cell == doNotUseValue; }
    double toDouble(T cell) const { return isSentinel(cell) ? NaN : static_cast<double>(cell); }

    /**
     * The form in which @p value is stored: the sentinel for NaN if there is one.
     *
     * An integer column truncates and saturates; without a sentinel its NaN is the smallest
     * integer.
     */
    T toTyped(double value) const
    {
        if (value != value && hasDoNotUseValue)
            return doNotUseValue;
        if constexpr (std::is_integral_v<T>) {
            using Limits = std::numeric_limits<T>;
            if (!(value > static_cast<double>(Limits::min())))
                return Limits::min();
            if (value >= static_cast<double>(Limits::max()))
                return Limits::max();
        }
        return static_cast<T>(value);
    }

    T doNotUseValue = T(); // means nothing without hasDoNotUseValue
    bool hasDoNotUseValue = false;
};

extern template class ZELPLOT_EXPORT AbstractDataArrayTemplate<double>;
extern template class ZELPLOT_EXPORT AbstractDataArrayTemplate<int>;
