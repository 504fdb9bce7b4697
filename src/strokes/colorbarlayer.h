#pragma once

#include "strokesink.h"
#include <QImage>
#include <QPainter>
#include <QSize>
#include <vector>

/**
 * The colour bars of one drawing run, painted apart so that they end up above all lines, also those
 * of earlier runs.
 *
 * Only the rows that bars reach are cleared and put over, and there is no layer until something is
 * drawn. Nothing is antialiased.
 */
class ColorBarLayer final : public StrokeSink
{
public:
    ColorBarLayer(QSize viewportSize, qreal pixelRatio);

    QPen const& pen() const override { return currentPen; }
    void setPen(QPen const& pen) override { currentPen = pen; }
    void drawLine(QLine line) override;
    void drawSymbol(QPoint centre, E_SYMBOL symbol, int radius) override;

    /// Puts the bars over a picture of the viewport; after that the layer must not be drawn on.
    void putOver(QPainter* target);

private:
    QPainter* painterFor(int lowest, int highest);
    void open();
    void clearRows(int first, int last);

    QSize viewport;
    qreal ratio;
    QPen currentPen;
    QImage image; // y upwards from its first row; null until something is drawn
    QPainter painter;
    std::vector<bool> isCleared; // by row of the image: whether it holds anything but leavings
    int firstKnown = 0; // rows cleared last
    int lastKnown = -1;
};
