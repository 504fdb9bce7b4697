#include "uprightstrokes.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>

namespace {

/// The painter's rasterizer cuts what lies farther out, in ways of its own.
constexpr int largestExtent = 0x3fff;

/// Parts of 255 that a stroke covers of the pixels to its left and right, rounded as the painter
/// does, and half of that in the rows into which its caps reach.
constexpr int leftOfBody = 127;
constexpr int rightOfBody = 128;
constexpr int leftOfEnd = 63;
constexpr int rightOfEnd = 64;

/// All four channels times @p part of 255, each rounded to the nearest.
inline QRgb scaled(QRgb pixel, int part)
{
    constexpr quint64 channels = 0x00ff00ff00ff00ff;
    constexpr quint64 halves = 0x0080008000800080;
    quint64 const spread = (pixel | (quint64(pixel) << 24)) & channels;
    quint64 const product = spread * quint64(part);
    quint64 const quotient = ((product + ((product >> 8) & channels) + halves) >> 8) & channels;
    return QRgb(quotient | (quotient >> 24));
}

inline void blend(QRgb& pixel, QRgb share, int coverage)
{
    pixel = share + scaled(pixel, 255 - coverage);
}

/// Whether pixels of the image may be written beside the painter, and count as it counts them.
bool isPlainRaster(QImage const& image)
{
    // A painted image is shared with no other, so that taking its bits copies nothing.
    return image.isDetached() && image.devicePixelRatio() == 1.0 && image.width() <= largestExtent
        && image.height() <= largestExtent
        && (image.format() == QImage::Format_RGB32
            || image.format() == QImage::Format_ARGB32_Premultiplied);
}

bool paintsWholeDevice(QPainter const& painter, QRect device)
{
    if (!painter.hasClipping())
        return true;
    QRegion const clip = painter.deviceTransform().map(painter.clipRegion());
    return clip.rectCount() == 1 && clip.boundingRect().contains(device);
}

bool paintsPlainly(QPainter const& painter)
{
    return painter.paintEngine()->type() == QPaintEngine::Raster
        && painter.testRenderHint(QPainter::Antialiasing) && painter.opacity() == 1.0
        && painter.compositionMode() == QPainter::CompositionMode_SourceOver;
}

} // namespace

UprightStrokes::UprightStrokes(QPainter const& painter)
{
    auto* const image = painter.isActive() ? dynamic_cast<QImage*>(painter.device()) : nullptr;
    if (!image || !isPlainRaster(*image) || !paintsPlainly(painter)
        || !paintsWholeDevice(painter, image->rect()))
        return;
    QTransform const upwardsFromLowerEdge(1.0, 0.0, 0.0, -1.0, 0.0, image->height());
    if (painter.deviceTransform() != upwardsFromLowerEdge)
        return;
    pixels = reinterpret_cast<QRgb*>(image->bits());
    width = image->width();
    height = image->height();
    stride = image->bytesPerLine() / qsizetype(sizeof(QRgb));
    setPen(painter.pen());
}

void UprightStrokes::setPen(QPen const& pen)
{
    penFits = pixels && pen.style() == Qt::SolidLine && pen.widthF() == 1.0 && !pen.isCosmetic()
        && pen.capStyle() == Qt::SquareCap && pen.brush().style() == Qt::SolidPattern
        && pen.color().alphaF() == 1.0F;
    if (!penFits)
        return;
    QRgb const color = pen.color().rgb();
    body = {scaled(color, leftOfBody), scaled(color, rightOfBody)};
    end = {scaled(color, leftOfEnd), scaled(color, rightOfEnd)};
}

/// The outer half of a stroke along an edge of the image has no pixels.
inline void UprightStrokes::blendRow(int row, int x, Shares const& shares, int leftCoverage,
                                     int rightCoverage) const
{
    QRgb* const right = pixels + row * stride + x;
    if (x > 0)
        blend(right[-1], shares.left, leftCoverage);
    if (x < width)
        blend(*right, shares.right, rightCoverage);
}

bool UprightStrokes::draw(QLine line) const
{
    auto const isInside = [this](QPoint point) {
        return point.x() >= 0 && point.x() <= width && point.y() >= 0 && point.y() <= height;
    };
    // A dot is no short stroke: the painter rounds its position.
    if (!penFits || line.x1() != line.x2() || line.y1() == line.y2() || !isInside(line.p1())
        || !isInside(line.p2()))
        return false;
    int const x = line.x1();
    int const top = height - qMax(line.y1(), line.y2());
    int const bottom = height - qMin(line.y1(), line.y2());
    if (top > 0)
        blendRow(top - 1, x, end, leftOfEnd, rightOfEnd);
    for (int row = top; row < bottom; ++row)
        blendRow(row, x, body, leftOfBody, rightOfBody);
    if (bottom < height)
        blendRow(bottom, x, end, leftOfEnd, rightOfEnd);
    return true;
}
