#pragma once

#include "zelplot_export.h"
#include "zelplotglobals.h"

class QDebug;

/**
 * A rectangle in data coordinates: the extent of data, or the part of it in view.
 *
 * Each number may be NaN, which means not determined and is the normal state of a fresh rectangle.
 * A plain value: `Bounds{minX, maxX, minY, maxY}`. Nothing enforces that min lies below max.
 */
class ZELPLOT_EXPORT Bounds
{
public:
    /// Both directions share one code path; every value but Horizontal counts as vertical.
    enum Direction : int {
        Horizontal = 0,
        Vertical = 1,
    };

    /// The two ends of a direction.
    enum End : int {
        Lower = 0,
        Upper = 1,
    };

    double minX = NaN;
    double maxX = NaN;
    double minY = NaN;
    double maxY = NaN;

    double get(Direction direction, End end) const { return this->*field(direction, end); }
    void set(Direction direction, End end, double value) { this->*field(direction, end) = value; }

    /// Max - min; NaN if the direction is not determined.
    double size(Direction direction) const { return get(direction, Upper) - get(direction, Lower); }

    /// True if both ends of the direction are numbers.
    bool isDetermined(Direction direction) const
    {
        double const lower = get(direction, Lower);
        double const upper = get(direction, Upper);
        return lower == lower && upper == upper;
    }

    /// Gives the direction that size about its centre; leaves it alone if it is not determined.
    void setSize(Direction direction, double size);

    /**
     * Narrows the direction to what it has in common with @p limit; the other one stays.
     *
     * Intervals that touch leave the one point in common. Nothing in common, or a @p limit that is
     * not determined, makes both ends NaN.
     */
    void clip(Direction direction, Bounds const& limit);

private:
    /// The one place that tells the directions apart.
    static constexpr double Bounds::*field(Direction direction, End end)
    {
        if (direction == Horizontal)
            return end == Lower ? &Bounds::minX : &Bounds::maxX;
        return end == Lower ? &Bounds::minY : &Bounds::maxY;
    }
};

/// Ends and size of both directions with six decimals, as one item of the output.
ZELPLOT_EXPORT QDebug operator<<(QDebug debug, Bounds const& bounds);
