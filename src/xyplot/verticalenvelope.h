#pragma once

#include <QLine>
#include <QtGlobal>
#include <optional>

/**
 * Gathers the strokes of a dense curve that fall on one pixel column into one upright line.
 *
 * Many points may share a column, and each would be a stroke of an antialiased painter; only the
 * envelope of strokes that touch is kept. Coordinates are viewport pixels, y upwards.
 */
class VerticalEnvelope
{
public:
    bool isPending() const { return pending; }

    /// Drops the pending line.
    void clear() { pending = false; }

    /**
     * Adds the stroke from @p y1 to @p y2 on column @p x, @p y1 being the end that continues the
     * curve. Returns the line that was pending if the stroke does not touch it and so starts anew.
     */
    std::optional<QLine> add(int x, int y1, int y2, int viewportHeight)
    {
        if (pending && x == column && lowest <= y1 && y1 <= highest) {
            lowest = qMin(lowest, y2);
            highest = qMax(highest, y2);
            return std::nullopt;
        }
        std::optional<QLine> const finished = flush(viewportHeight);
        pending = true;
        column = x;
        lowest = qMin(y1, y2);
        highest = qMax(y1, y2);
        return finished;
    }

    /// The pending line, its ends held to the viewport; nothing is pending afterwards.
    std::optional<QLine> flush(int viewportHeight)
    {
        if (!pending)
            return std::nullopt;
        pending = false;
        return QLine(column, qMax(lowest, 0), column, qMin(highest, viewportHeight));
    }

private:
    bool pending = false;
    int column = 0;
    int lowest = 0;
    int highest = 0;
};
