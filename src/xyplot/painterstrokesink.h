#pragma once

#include "strokesink.h"
#include "symbolpainter.h"
#include <QPainter>

/// Strokes with a painter whose window has y upwards.
class PainterStrokeSink final : public StrokeSink
{
public:
    explicit PainterStrokeSink(QPainter& target)
        : painter(target)
    {
    }

    QPen const& pen() const override { return painter.pen(); }
    void setPen(QPen const& pen) override { painter.setPen(pen); }
    void drawLine(QLine line) override { painter.drawLine(line); }
    void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) override
    {
        paintSymbol(painter, centre, symbol, radius);
    }

private:
    QPainter& painter;
};
