#pragma once

#include "bounds.h"
#include <QtGlobal>

/** @file
 * Steps that updates of the view by policy and by hand have in common.
 */

/// Unequal for NaN as well, so that bounds that are not determined always count as changed.
inline bool differ(Bounds const& a, Bounds const& b, Bounds::Direction direction)
{
    return a.get(direction, Bounds::Lower) != b.get(direction, Bounds::Lower)
        || a.get(direction, Bounds::Upper) != b.get(direction, Bounds::Upper);
}

inline bool differ(Bounds const& a, Bounds const& b)
{
    return differ(a, b, Bounds::Horizontal) || differ(a, b, Bounds::Vertical);
}

inline void setDirection(Bounds::Direction direction, Bounds& bounds, double lower, double upper)
{
    bounds.set(direction, Bounds::Lower, lower);
    bounds.set(direction, Bounds::Upper, upper);
}

inline void copyDirection(Bounds::Direction direction, Bounds const& from, Bounds& to)
{
    setDirection(direction, to, from.get(direction, Bounds::Lower),
                 from.get(direction, Bounds::Upper));
}

inline void shift(Bounds::Direction direction, Bounds& bounds, double distance)
{
    setDirection(direction, bounds, bounds.get(direction, Bounds::Lower) + distance,
                 bounds.get(direction, Bounds::Upper) + distance);
}

/// Widens the direction to hold @p value; one that is not determined becomes that value alone.
/// NaN is left out.
inline void includeValue(Bounds::Direction direction, Bounds& bounds, double value)
{
    if (value != value)
        return;
    if (bounds.isDetermined(direction)) {
        setDirection(direction, bounds, qMin(bounds.get(direction, Bounds::Lower), value),
                     qMax(bounds.get(direction, Bounds::Upper), value));
    } else {
        setDirection(direction, bounds, value, value);
    }
}

/// Moves a view that stands out of the data back inside, and cuts it where it is larger.
inline void pushInside(Bounds::Direction direction, Bounds const& data, Bounds& view)
{
    if (!view.isDetermined(direction) || !data.isDetermined(direction))
        return;
    double const over = view.get(direction, Bounds::Upper) - data.get(direction, Bounds::Upper);
    if (over > 0.0) {
        setDirection(direction, view, view.get(direction, Bounds::Lower) - over,
                     data.get(direction, Bounds::Upper));
    }
    double const under = data.get(direction, Bounds::Lower) - view.get(direction, Bounds::Lower);
    if (under > 0.0) {
        setDirection(
            direction, view, data.get(direction, Bounds::Lower),
            qMin(view.get(direction, Bounds::Upper) + under, data.get(direction, Bounds::Upper)));
    }
}
