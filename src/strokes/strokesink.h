#pragma once

#include "look.h"
#include <QLine>
#include <QPen>
#include <QPoint>

/**
 * Where the strokes and symbols of a curve go.
 *
 * What a run of points amounts to is decided before this line; how it gets onto the picture, behind
 * it. Coordinates are viewport pixels, y upwards, already cut to the viewport where that matters.
 */
class StrokeSink
{
public:
    virtual ~StrokeSink() = default;

    virtual QPen const& pen() const = 0;
    virtual void setPen(QPen const& pen) = 0;

    virtual void drawLine(QLine line) = 0;

    /// Draws with the pen in force; nothing for values that are no symbol.
    virtual void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) = 0;

protected:
    StrokeSink() = default;
    StrokeSink(StrokeSink const&) = default;
    StrokeSink& operator=(StrokeSink const&) = default;
};
