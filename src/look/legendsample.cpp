#include "legendsample.h"

#include "rounding.h"
#include "symbolpainter.h"
#include "xyplotcommon.h"

#include <QPainter>
#include <QPen>
#include <QWidget>

namespace {

/// Pixels to which a painter reaches; a larger picture would only take memory.
constexpr int painterReach = 32767;

} // namespace

double scaledThickness(Look const& look, int lineThickness)
{
    PlotRenderSettings_t const& settings = getPlotRenderSettings();
    int const factor
        = look.isColorBar() ? settings.barThicknessFactor : settings.lineThicknessFactor;
    return double(factor) * lineThickness;
}

int sampleSymbolRadius(E_SYMBOL symbol, double dotSize, double radius)
{
    if (symbol == SYMBOL_DOT)
        return truncateToInt(dotSize);
    bool const isOutline = symbol >= SYMBOL_PLUS && symbol <= SYMBOL_DIAMOND;
    return isOutline ? truncateToInt(radius) : 0;
}

QPixmap legendLinePixmap(int textWidth, int height, QColor background, qreal pixelRatio)
{
    PlotRenderSettings_t const& settings = getPlotRenderSettings();
    double const width = double(settings.legendSymbolWidth) + settings.legendSymbolGap + textWidth;
    QSizeF const size = QSizeF(width, height) * pixelRatio;
    QSize const pixels(roundToPixel(size.width()), roundToPixel(size.height()));
    if (pixels.isEmpty() || qMax(pixels.width(), pixels.height()) > painterReach)
        return {};
    QPixmap pixmap(pixels);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(background);
    return pixmap;
}

void paintLegendSample(QPainter& painter, LegendSample const& sample, int height)
{
    Look::Entry const& entry = sample.entry;
    bool const hasLine = entry.penStyle != Qt::NoPen;
    painter.setPen(QPen(entry.color, qMax(sample.penWidth, 0.0),
                        hasLine ? entry.penStyle : Qt::SolidLine,
                        hasLine ? Qt::FlatCap : Qt::SquareCap, Qt::BevelJoin));
    int const width = qBound(-pixelLimit, getPlotRenderSettings().legendSymbolWidth, pixelLimit);
    int const middle = height / 2;
    paintSymbol(painter, QPoint(width / 2, middle), entry.symbol, sample.symbolRadius);
    // Also without a line style: the sample shows a symbol on its line.
    painter.drawLine(0, middle, width, middle);
}

QColor windowColor(QWidget const& widget)
{
    return widget.palette().brush(QPalette::Current, QPalette::Window).color();
}
