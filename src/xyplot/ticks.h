#pragma once

#include "testexport.h"
#include <cmath>
#include <limits>

/** @file
 * Where the ticks of an axis stand, without any widget. Positions are pixels from the low end of
 * the axis.
 */

/// Spacing of the ticks on one axis; neither value is a number when the range has no ticks.
struct TickSpacing
{
    double step; ///< pixels between two ticks; negative for an inverted range
    double first; ///< position of a tick at or before the low end, nearer to it than one step
};

/**
 * Ticks at whole multiples of 2, 5, 10 or 20 times a power of ten, four to ten steps to the view.
 *
 * @param low    data value at the low end of the axis
 * @param range  data units from the low to the high end; an inverted range gives a negative step
 * @param extent length of the axis in pixels
 */
ZELPLOT_TEST_EXPORT TickSpacing chooseTicks(double low, double range, int extent);

/**
 * Decimals needed to tell the ticks apart.
 *
 * @param dataStep  data units between two ticks
 * @return 0 for a step that is zero, negative or not a number
 */
ZELPLOT_TEST_EXPORT int decimalsOfStep(double dataStep);

/**
 * Goes from tick to tick by repeated addition, and ends whatever the numbers are.
 *
 * There are no ticks with a step that is not above zero, with a start that is not finite, and
 * where more than tickLimit of them would come.
 */
class TickWalk
{
public:
    /// An axis has ten steps of a tick, fifty of a minor tick, and a few hundred if it is shorter
    /// than its own label font is high. More is no axis but a bad number, and only costs time.
    static constexpr double tickLimit = 100000.0;

    /// The ticks from @p first up to @p last, a tick at @p last included.
    static TickWalk upTo(double first, double step, double last)
    {
        return TickWalk(first, step, last);
    }

    /// The ticks from @p first that stand below @p end.
    static TickWalk before(double first, double step, double end)
    {
        return TickWalk(first, step, std::nextafter(end, -std::numeric_limits<double>::infinity()));
    }

    /// False behind the last tick.
    bool isOnTick() const { return onTick; }
    double getPosition() const { return position; }

    void advance()
    {
        double const next = position + step;
        // A step below the resolution of the position would stay on the spot for ever.
        onTick = next > position && next <= last;
        position = next;
    }

private:
    TickWalk(double first, double stepWidth, double lastPosition)
        : position(first)
        , step(stepWidth)
        , last(lastPosition)
        , onTick(step > 0.0 && position <= last && (last - position) / step <= tickLimit)
    {
    }

    double position;
    double step;
    double last;
    bool onTick;
};
