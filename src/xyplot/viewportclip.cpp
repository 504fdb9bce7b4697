#include "viewportclip.h"

#include "rounding.h"

namespace {

constexpr int zoneCount = 9;

constexpr unsigned zoneBit(int zone)
{
    return 1u << zone;
}

/// Per zone, the zones from which a line may cross the viewport.
constexpr unsigned crossingZones[zoneCount] = {
    0,
    zoneBit(4) | zoneBit(5) | zoneBit(6),
    zoneBit(4) | zoneBit(5) | zoneBit(6) | zoneBit(7) | zoneBit(8),
    zoneBit(6) | zoneBit(7) | zoneBit(8),
    zoneBit(1) | zoneBit(2) | zoneBit(6) | zoneBit(7) | zoneBit(8),
    zoneBit(1) | zoneBit(2) | zoneBit(8),
    zoneBit(1) | zoneBit(2) | zoneBit(3) | zoneBit(4) | zoneBit(8),
    zoneBit(2) | zoneBit(3) | zoneBit(4),
    zoneBit(2) | zoneBit(3) | zoneBit(4) | zoneBit(5) | zoneBit(6),
};

/// The line through two points, as the edges of the viewport cut it.
struct CutLine
{
    CutLine(QPoint a, QPoint b, int viewportWidth, int viewportHeight)
        : ax(a.x())
        , ay(a.y())
        , slope((ay - b.y()) / (ax - b.x()))
        , vertical(a.x() == b.x())
        , outerX(b.x())
        , width(viewportWidth)
        , height(viewportHeight)
    {
    }

    double yAtLeft() const { return ay - ax * slope; }
    int yAtRight() const { return roundToPixel(ay - slope * (ax - width)); }
    int xAtBottom() const { return roundToPixel(ax - ay / slope); }
    int xAtTop() const { return roundToPixel(ax - (ay - height) / slope); }

    QPoint atBottom() const { return {vertical ? outerX : xAtBottom(), 0}; }
    QPoint atTop() const { return {vertical ? outerX : xAtTop(), height}; }

    double ax;
    double ay;
    double slope;
    bool vertical;
    int outerX;
    int width;
    int height;
};

} // namespace

bool ViewportClip::mayCross(int first, int second)
{
    if (first < 0 || first >= zoneCount || second < 0 || second >= zoneCount)
        return false;
    return (crossingZones[first] & zoneBit(second)) != 0;
}

QPoint ViewportClip::crossing(QPoint inner, QPoint outer, int code) const
{
    CutLine const line(inner, outer, width, height);
    switch (code) {
    case 1: {
        int const y = roundToPixel(line.yAtLeft());
        return y < 0 ? line.atBottom() : QPoint(0, y);
    }
    case 2:
        return {0, roundToPixel(line.yAtLeft())};
    case 3: {
        // Truncated, unlike all other edges.
        int const y = rounding::truncateWithin<int>(line.yAtLeft(), -pixelLimit, pixelLimit);
        return y > height ? line.atTop() : QPoint(0, y);
    }
    case 4:
        return line.atTop();
    case 5: {
        int const y = line.yAtRight();
        return y > height ? line.atTop() : QPoint(width, y);
    }
    case 6:
        return {width, line.yAtRight()};
    case 7: {
        int const y = line.yAtRight();
        return y < 0 ? QPoint(line.xAtBottom(), 0) : QPoint(width, y);
    }
    case 8:
        return line.atBottom();
    default:
        return {0, 0};
    }
}

std::optional<QLine> ViewportClip::clipped(QPoint from, QPoint to, int fromCode, int toCode) const
{
    if (fromCode == 0 && toCode == 0)
        return QLine(from, to);
    if (toCode == 0)
        return QLine(to, crossing(to, from, fromCode));
    if (fromCode == 0)
        return QLine(crossing(from, to, toCode), from);
    if (!mayCross(toCode, fromCode))
        return std::nullopt;
    QPoint const entry = crossing(to, from, fromCode);
    QPoint const exit = crossing(from, to, toCode);
    // A line that misses the corner misses it with both ends, but for rounding; only one is asked.
    if (zoneOf(entry) != 0)
        return std::nullopt;
    return QLine(exit, entry);
}
