#pragma once

#include "look.h"
#include "plainraster.h"
#include "stamp.h"
#include "testexport.h"
#include <QLine>
#include <optional>
#include <vector>

class StampSet;

/**
 * Symbols and strokes to the next column of pixels, put straight into the image that a painter
 * paints on.
 *
 * There may be tens of thousands of the first, and most columns of a dense curve end in one of the
 * second. Of each shape the painter paints one. What this class does not know it leaves to the
 * painter.
 */
class ZELPLOT_TEST_EXPORT StampedDrawings
{
public:
    /// Of use on a raster whose points lie at corners of its pixels, y upwards; else all fails.
    explicit StampedDrawings(PlainRaster const& plainRaster);

    /// To be told of each pen that the painter takes; none if it is no plain one.
    void setPen(std::optional<PlainPen> const& pen);

    /// False, with nothing drawn, where the painter must draw the line. Logical coordinates.
    bool drawLine(QLine line);
    bool drawSymbol(QPoint centre, E_SYMBOL symbol, int radius);

private:
    QPoint devicePixel(QPoint place) const;

    PlainRaster const& raster;
    int ratio = 0; // device pixels to a unit; 0 if of no use
    QPoint origin; // device pixels
    QRgb color = 0;
    StampSet* stamps = nullptr;

    // Of the symbol drawn last.
    std::vector<Stamp>* symbolStamps = nullptr;
    E_SYMBOL stampedSymbol = SYMBOL_NONE;
    int stampedRadius = 0;
};
