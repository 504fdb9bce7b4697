#pragma once

#include "pixelblock.h"
#include "plainraster.h"
#include <QRect>
#include <QRgb>
#include <vector>

class QImage;

/// A small antialiased drawing with an opaque pen, painted once and put in place as often as asked.
class Stamp
{
public:
    /// @param coverage  whose alpha tells what the drawing covers of each pixel
    /// @param topLeft  of the coverage, device pixels from the origin, y downwards
    Stamp(QImage const& coverage, QPoint topLeft);

    /// Whether it lies wholly on the raster about @p origin, in device pixels.
    bool fits(PlainRaster const& raster, QPoint origin) const
    {
        return raster.holds(origin + place.topLeft()) && raster.holds(origin + place.bottomRight());
    }
    /// Puts it where it fits.
    void put(PlainRaster const& raster, QPoint origin, QRgb penColor);

private:
    void ink(QRgb penColor);
    void layOut(qsizetype rasterStride);

    QRect place; // of all blocks
    std::vector<PlacedBlock> blocks;
    std::vector<QPoint> corners; // their first pixels, device pixels from the origin
    QRgb color = 0; // of their shares
    qsizetype stride = 0; // of the raster of their offsets
};
