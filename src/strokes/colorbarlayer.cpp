#include "colorbarlayer.h"

#include "rounding.h"
#include "symbolpainter.h"

#include <QRect>
#include <algorithm>
#include <cmath>

ColorBarLayer::ColorBarLayer(QSize viewportSize, qreal pixelRatio)
    : viewport(viewportSize)
    , ratio(pixelRatio)
{
}

void ColorBarLayer::drawLine(QLine line)
{
    auto const [lowest, highest] = std::minmax({line.y1(), line.y2()});
    if (QPainter* const target = painterFor(lowest, highest))
        target->drawLine(line);
}

void ColorBarLayer::drawSymbol(QPoint centre, E_SYMBOL symbol, int radius)
{
    // A negative radius turns a symbol over.
    int const reach = qAbs(qBound(-pixelLimit, radius, pixelLimit));
    if (QPainter* const target = painterFor(centre.y() - reach, centre.y() + reach))
        paintSymbol(*target, centre, symbol, radius);
}

/// For what lies between these rows of the viewport, with the pen in force; null if nobody sees it.
QPainter* ColorBarLayer::painterFor(int lowest, int highest)
{
    // Joins and caps reach less far than the whole width. Below a pixel to a unit the painter
    // samples parts of an image unlike the whole, so there all rows count.
    double const reach = ratio < 1.0 ? 2.0 * pixelLimit : std::max(currentPen.widthF(), 1.0) + 1.0;
    int const height = truncateToInt(std::ceil(viewport.height() * ratio));
    int const first = std::max(truncateToInt(std::floor((lowest - reach) * ratio)), 0);
    int const last = std::min(truncateToInt(std::ceil((highest + reach) * ratio)), height - 1);
    if (last < first)
        return nullptr;
    if (image.isNull())
        open();
    if (image.isNull()) // no memory for one
        return nullptr;
    if (first < firstKnown || last > lastKnown)
        clearRows(first, last);
    if (painter.pen() != currentPen)
        painter.setPen(currentPen);
    return &painter;
}

void ColorBarLayer::open()
{
    // Not cleared: memory that nobody touches costs nothing.
    image = QImage(truncateToInt(std::ceil(viewport.width() * ratio)),
                   truncateToInt(std::ceil(viewport.height() * ratio)),
                   QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    isCleared.resize(size_t(image.height()));
    if (!painter.begin(&image))
        return;
    painter.setViewport(QRect(QPoint(0, 0), viewport));
    painter.setWindow(QRect(QPoint(0, 0), viewport));
}

void ColorBarLayer::clearRows(int first, int last)
{
    firstKnown = first;
    lastKnown = last;
    for (int y = first; y <= last; ++y) {
        if (!isCleared[size_t(y)])
            std::fill_n(image.scanLine(y), image.bytesPerLine(), uchar(0));
        isCleared[size_t(y)] = true;
    }
}

void ColorBarLayer::putOver(QPainter* target)
{
    if (image.isNull())
        return;
    painter.end();
    target->save();
    // Row for row, whatever the window: a scaled copy would blur at fractional ratios.
    target->setViewTransformEnabled(false);
    int const height = image.height();
    for (int first = 0, end = 0; first < height; first = end) {
        bool const holdsBars = isCleared[size_t(first)];
        for (end = first + 1; end < height && isCleared[size_t(end)] == holdsBars;)
            ++end;
        if (!holdsBars)
            continue;
        // Painted with y upwards, so the rows turn over.
        QImage const bars = image.copy(0, first, image.width(), end - first).mirrored(false, true);
        target->drawImage(QPointF(0.0, (height - end) / ratio), bars);
    }
    target->restore();
}
