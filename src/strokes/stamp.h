#pragma once

#include "plainraster.h"
#include <QRect>
#include <QRgb>
#include <functional>
#include <vector>

class QPainter;

/// A small antialiased drawing with an opaque pen, painted once and put in place as often as asked.
class Stamp
{
public:
    /**
     * @param extent  device pixels about the origin that the drawing may touch, y downwards
     * @param penWidth  units
     * @param ratio  device pixels to a unit
     * @param draw  paints about the origin, y upwards, with the pen of the painter
     */
    Stamp(QRect const& extent, int penWidth, int ratio, std::function<void(QPainter&)> const& draw);

    /// Whether it lies wholly on the raster about @p origin, in device pixels.
    bool fits(PlainRaster const& raster, QPoint origin) const
    {
        return raster.holds(origin + place.topLeft()) && raster.holds(origin + place.bottomRight());
    }
    /// Puts it where it fits.
    void put(PlainRaster const& raster, QPoint origin, QRgb penColor);

private:
    void ink(QRgb penColor);

    struct Block
    {
        QPoint left; // its first pixel, device pixels from the origin
        PixelBlock pixels;
    };

    QRect place; // of all blocks
    std::vector<Block> blocks;
    QRgb color = 0; // of their shares
};
