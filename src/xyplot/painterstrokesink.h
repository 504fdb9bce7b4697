#pragma once

#include "alignedstrokes.h"
#include "strokesink.h"
#include "symbolpainter.h"
#include <QPainter>

/// Strokes with a painter whose window has y upwards. Window, clip and modes of the painter are set
/// before, and only the sink changes its pen.
class PainterStrokeSink final : public StrokeSink
{
public:
    explicit PainterStrokeSink(QPainter& target)
        : painter(target)
        , alignedStrokes(target)
    {
    }

    QPen const& pen() const override { return painter.pen(); }
    void setPen(QPen const& pen) override
    {
        painter.setPen(pen);
        alignedStrokes.setPen(pen);
    }
    void drawLine(QLine line) override
    {
        if (!alignedStrokes.draw(line))
            painter.drawLine(line);
    }
    void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) override
    {
        paintSymbol(painter, centre, symbol, radius);
    }

private:
    QPainter& painter;
    AlignedStrokes alignedStrokes;
};
