#pragma once

#include "alignedstrokes.h"
#include "plainraster.h"
#include "stampeddrawings.h"
#include "strokesink.h"
#include "symbolpainter.h"
#include <QPainter>

/**
 * Strokes with a painter whose window has y upwards, or beside it where that is faster and the
 * pixels come out alike.
 *
 * Window, clip and modes of the painter are set before, and only the sink changes its pen. The sink
 * must end before the painter's work does.
 */
class PainterStrokeSink final : public StrokeSink
{
public:
    explicit PainterStrokeSink(QPainter& target)
        : painter(target)
        , raster(target)
        , alignedStrokes(raster)
        , stampedDrawings(raster)
    {
        tellPen();
    }
    Q_DISABLE_COPY_MOVE(PainterStrokeSink)

    QPen const& pen() const override { return painter.pen(); }
    void setPen(QPen const& pen) override
    {
        painter.setPen(pen);
        tellPen();
    }
    void drawLine(QLine line) override
    {
        if (!alignedStrokes.draw(line) && !stampedDrawings.drawLine(line))
            painter.drawLine(line);
    }
    void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) override
    {
        if (!stampedDrawings.drawSymbol(centre, symbol, radius))
            paintSymbol(painter, centre, symbol, radius);
    }

private:
    void tellPen()
    {
        if (raster.isNull())
            return;
        std::optional<PlainPen> const pen = PlainPen::of(painter.pen());
        alignedStrokes.setPen(pen);
        stampedDrawings.setPen(pen);
    }

    QPainter& painter;
    PlainRaster raster;
    AlignedStrokes alignedStrokes;
    StampedDrawings stampedDrawings;
};
