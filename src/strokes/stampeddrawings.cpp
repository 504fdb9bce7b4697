#include "stampeddrawings.h"

#include "rounding.h"
#include "stampset.h"

StampedDrawings::StampedDrawings(PlainRaster const& plainRaster)
    : raster(plainRaster)
{
    if (raster.isNull())
        return;
    QTransform const& transform = raster.getTransform();
    int const pixels = truncateToInt(transform.m11());
    // Farther out than pixelLimit it differs, which leaves room for sums.
    origin = QPoint(roundToPixel(transform.dx()), roundToPixel(transform.dy()));
    bool const isAtCorners
        = transform == QTransform(pixels, 0.0, 0.0, -pixels, origin.x(), origin.y());
    if (isAtCorners)
        ratio = pixels;
}

void StampedDrawings::setPen(std::optional<PlainPen> const& pen)
{
    stamps = pen ? StampSet::of(pen->width, ratio) : nullptr;
    symbolStamps = nullptr;
    if (pen)
        color = pen->color;
}

QPoint StampedDrawings::devicePixel(QPoint place) const
{
    return origin + QPoint(place.x(), -place.y()) * ratio;
}

bool StampedDrawings::drawLine(QLine line)
{
    if (!stamps || line.dx() != 1 || !raster.holds(line.p1()))
        return false;
    Stamp* const stamp = stamps->stroke(line.dy());
    QPoint const place = devicePixel(line.p1());
    if (!stamp || !stamp->fits(raster, place))
        return false;
    stamp->put(raster, place, color);
    return true;
}

bool StampedDrawings::drawSymbol(QPoint centre, E_SYMBOL symbol, int radius)
{
    // Roughly, so that no arithmetic overflows.
    if (!stamps || !raster.holds(centre))
        return false;
    if (!symbolStamps || symbol != stampedSymbol || radius != stampedRadius) {
        stampedSymbol = symbol;
        stampedRadius = radius;
        symbolStamps = &stamps->symbol(symbol, radius);
    }
    QPoint const place = devicePixel(centre);
    for (Stamp const& stamp : *symbolStamps) {
        if (!stamp.fits(raster, place))
            return false;
    }
    for (Stamp& stamp : *symbolStamps)
        stamp.put(raster, place, color);
    return !symbolStamps->empty();
}
