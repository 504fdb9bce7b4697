#pragma once

#include "strokesink.h"
#include "symbolpainter.h"
#include "uprightstrokes.h"
#include <QPainter>

/// Strokes with a painter whose window has y upwards. Window, clip and modes of the painter are set
/// before, and only the sink changes its pen.
class PainterStrokeSink final : public StrokeSink
{
public:
    explicit PainterStrokeSink(QPainter& target)
        : painter(target)
        , uprightStrokes(target)
    {
    }

    QPen const& pen() const override { return painter.pen(); }
    void setPen(QPen const& pen) override
    {
        painter.setPen(pen);
        uprightStrokes.setPen(pen);
    }
    void drawLine(QLine line) override
    {
        if (!uprightStrokes.draw(line))
            painter.drawLine(line);
    }
    void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) override
    {
        paintSymbol(painter, centre, symbol, radius);
    }

private:
    QPainter& painter;
    UprightStrokes uprightStrokes;
};
