#pragma once

#include "look.h"
#include "stamp.h"
#include <QImage>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

class QPainter;

/**
 * The stamps of one width of the pen: of symbols, and of strokes to the next column of pixels.
 *
 * They are shared by all canvases and kept for the life of the process. With all its stamps a set
 * takes from 1 megabyte for the thinnest pen to 15 for the widest at the highest pixel ratio. For
 * the user-interface thread only.
 */
class StampSet
{
public:
    static constexpr int widestPen = 8; ///< units
    static constexpr int largestRatio = 4;

    /// The set for a pen of @p penWidth units, @p ratio device pixels each; null beyond the limits.
    static StampSet* of(int penWidth, int ratio);

    /// Of the stroke from the origin to 1 to the right and @p rise up; null if that is too far, or
    /// one that the painter paints in several ways.
    Stamp* stroke(int rise);
    /// Of a symbol about the origin, to be put one after the other; none if it is too large, none,
    /// or one that the painter paints in several ways.
    std::vector<Stamp>& symbol(E_SYMBOL symbol, int radius);

private:
    /// Device pixels, also for the slots of stamps, which are by units.
    static constexpr int highestRise = 127;
    static constexpr int largestRadius = 16;

    bool isHairline() const { return width * pixelRatio == 1; }
    bool isSteady(int rise) const;
    std::vector<Stamp> makeSymbol(E_SYMBOL symbol, int radius) const;
    QRect extentAbout(QRect const& points) const;
    QImage paint(QRect const& extent, QColor const& background, QColor const& pen,
                 std::function<void(QPainter&)> const& draw) const;
    Stamp makeStamp(QRect const& extent, std::function<void(QPainter&)> const& draw) const;

    int width = 1;
    int pixelRatio = 1;
    std::array<std::unique_ptr<Stamp>, 2 * highestRise + 1> strokes;
    std::map<std::pair<int, int>, std::vector<Stamp>> symbols; // by symbol and radius
    std::vector<Stamp> none; // always empty
};
