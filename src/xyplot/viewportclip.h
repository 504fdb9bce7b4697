#pragma once

#include "testexport.h"
#include <QLine>
#include <QPoint>
#include <optional>

/**
 * Cuts lines to the viewport.
 *
 * Coordinates are viewport pixels with y upwards; the viewport reaches from (0, 0) to
 * (width, height), both edges inside. Every point lies in one of nine zones:
 *
 *     3 4 5
 *     2 0 6
 *     1 8 7
 */
class ZELPLOT_TEST_EXPORT ViewportClip
{
public:
    ViewportClip(int viewportWidth, int viewportHeight)
        : width(viewportWidth)
        , height(viewportHeight)
    {
    }

    /// Zone of a point; 0 inside.
    int zoneOf(QPoint point) const
    {
        int const column = point.x() < 0 ? 0 : point.x() > width ? 2 : 1;
        int const row = point.y() < 0 ? 0 : point.y() > height ? 2 : 1;
        return zones[row][column];
    }

    /// False where two zones outside, for example both above, leave no way through the viewport.
    static bool mayCross(int first, int second);

    /**
     * Where the line through @p inner and @p outer meets the edge on the side of zone @p code, the
     * zone of @p outer. (0, 0) for zone 0 and values that are no zone.
     */
    QPoint crossing(QPoint inner, QPoint outer, int code) const;

    /**
     * The visible part of a line between points in the given zones; none if it misses. Where it is
     * cut it runs towards @p from; one that passes a corner within a pixel may begin outside.
     */
    std::optional<QLine> clipped(QPoint from, QPoint to, int fromCode, int toCode) const;

private:
    static constexpr int zones[3][3] = {{1, 8, 7}, {2, 0, 6}, {3, 4, 5}};

    int width;
    int height;
};
