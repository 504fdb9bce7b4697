#pragma once

#include "testexport.h"
#include <QLine>
#include <QRgb>

class QPainter;
class QPen;

/**
 * Upright antialiased strokes of one pixel, blended straight into the image that a painter paints
 * on.
 *
 * A dense curve consists of hundreds of them, and each costs the painter a pass of its rasterizer.
 * The pixels come out as the painter's own, which writes at once, so that strokes of both may take
 * turns. What this class does not know it leaves to the painter.
 *
 * The device and the state of the painter, all but its pen, are looked at once: neither may change
 * during the life of this object, which must end before the painter's work does.
 */
class ZELPLOT_TEST_EXPORT UprightStrokes
{
public:
    /// Of use for an antialiasing painter with y upwards on an image in 32 bits; else draw() fails.
    explicit UprightStrokes(QPainter const& painter);

    /// To be told of each pen that the painter takes after the construction.
    void setPen(QPen const& pen);

    /// False, with nothing drawn, where the painter must draw the line. Logical coordinates.
    bool draw(QLine line) const;

private:
    /// What the pen adds to the pixels at both sides of a stroke, which lies on their border.
    struct Shares
    {
        QRgb left = 0;
        QRgb right = 0;
    };

    void blendRow(int row, int x, Shares const& shares, int leftCoverage, int rightCoverage) const;

    QRgb* pixels = nullptr; ///< of the image, row by row; null where nothing can be drawn
    int width = 0;
    int height = 0;
    qsizetype stride = 0; ///< pixels from one row to the next
    bool penFits = false;
    Shares body;
    Shares end;
};
