#pragma once

#include "plainraster.h"
#include "testexport.h"
#include <QLine>
#include <QRgb>
#include <QtGlobal>

class QPainter;
class QPen;

/**
 * Upright and level antialiased strokes, blended straight into the image that a painter paints on.
 *
 * A dense curve consists of hundreds of them, and each costs the painter a pass of its rasterizer.
 * The pixels come out as the painter's own, which writes at once, so that strokes of both may take
 * turns. What this class does not know it leaves to the painter.
 *
 * The device and the state of the painter, all but its pen, are looked at once: neither may change
 * during the life of this object, which must end before the painter's work does.
 */
class ZELPLOT_TEST_EXPORT AlignedStrokes
{
public:
    /// Of use for a painter with y upwards on a plain raster with 1, 1.25, 1.5 and so on device
    /// pixels to a unit; else draw() fails.
    explicit AlignedStrokes(QPainter const& painter);

    /// To be told of each pen that the painter takes after the construction.
    void setPen(QPen const& pen);

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

    PlainRaster raster;
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
