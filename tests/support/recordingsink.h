#pragma once

#include "painterstrokesink.h"
#include <QImage>

/// Writes the strokes and symbols of a curve down, and paints them, colour added to colour.
class RecordingSink final : public StrokeSink
{
public:
    RecordingSink()
    {
        picture.fill(Qt::black);
        painter.setCompositionMode(QPainter::CompositionMode_Plus);
    }
    QPen const& pen() const override { return painter.pen(); }
    void setPen(QPen const& pen) override
    {
        painter.setPen(pen);
        ++penChanges;
    }
    void drawLine(QLine line) override
    {
        record(QString::asprintf("%d,%d-%d,%d", line.x1(), line.y1(), line.x2(), line.y2()));
        painted.drawLine(line);
    }
    void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) override
    {
        record(QString::asprintf("#%d at %d,%d", int(symbol), centre.x(), centre.y()));
        painted.drawSymbol(centre, symbol, radius);
    }

    QString drawn; ///< "10,10-20,20; blue #2 at 10,10" for a line in red and a symbol in blue
    /// Pixels within the viewport of a test, of 100 by 50; beyond it strokes may differ.
    QImage picture{101, 51, QImage::Format_RGB32};
    int penChanges = 0;

private:
    void record(QString const& stroke)
    {
        QColor const color = painter.pen().color();
        drawn += drawn.isEmpty() ? "" : "; ";
        drawn += color.blue() > 0 ? "blue "
            : color.green() > 0   ? "green "
            : color.red() > 0     ? ""
                                  : "black ";
        drawn += stroke;
    }

    QPainter painter{&picture};
    PainterStrokeSink painted{painter};
};
