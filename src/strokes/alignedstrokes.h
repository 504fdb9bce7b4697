#pragma once

#include "plainraster.h"
#include "testexport.h"
#include <QLine>
#include <QRgb>
#include <optional>

/**
 * Upright and level antialiased strokes, blended straight into the image that a painter paints on.
 *
 * A dense curve consists of hundreds of them, and each costs the painter a pass of its rasterizer.
 * The pixels come out as the painter's own, which writes at once, so that strokes of both may take
 * turns. What this class does not know it leaves to the painter.
 */
class ZELPLOT_TEST_EXPORT AlignedStrokes
{
public:
    /// Of use on a raster with y upwards and 1, 1.25, 1.5 and so on device pixels to a unit; else
    /// draw() fails. The raster must live longer.
    explicit AlignedStrokes(PlainRaster const& plainRaster);

    /// To be told of each pen that the painter takes; none if it is no plain one.
    void setPen(std::optional<PlainPen> const& pen);

    /// False, with nothing drawn, where the painter must draw the line. Logical coordinates.
    bool draw(QLine line) const;

private:
    /// What a stroke covers along one axis, of its outer pixels perhaps a part.
    struct Extent
    {
        Extent(int from, int to, int pixelCount);
        int overlapOf(int pixel) const;

        int begin; ///< eighths of a pixel
        int end;
        int firstPixel; ///< of those touched that the image has
        int lastPixel;
    };

    void fill(Extent const& columns, Extent const& rows, bool isUpright) const;

    PlainRaster const& raster;
    bool isUsable = false;
    QRgb color = 0;
    bool penFits = false;
    bool isHairline = false;
    // Eighths of device pixels.
    int unit = 0; // of the painter's coordinates
    int originX = 0;
    int originY = 0;
    int halfWidth = 0;
};
