#include "plainraster.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <cmath>

namespace {

/// The painter's rasterizer cuts what lies farther out, in ways of its own.
constexpr int largestExtent = 0x3fff;

/// Wider pens are none for curves.
constexpr int widestPen = 1000;

/// Device pixels by which errors of a transform may move the edge of a clip.
constexpr double slack = 1e-6;

/// Whether pixels of the image may be written beside the painter.
bool isPlain(QImage const& image)
{
    // A painted image is shared with no other, so that taking its bits copies nothing.
    // A ratio below 1 counts for the painter's clip only, not for what it paints.
    return image.isDetached() && image.devicePixelRatio() >= 1.0 && image.width() <= largestExtent
        && image.height() <= largestExtent && image.bytesPerLine() % qsizetype(sizeof(QRgb)) == 0
        && (image.format() == QImage::Format_RGB32
            || image.format() == QImage::Format_ARGB32_Premultiplied);
}

bool paintsWholeImage(QPainter const& painter, QRect image)
{
    if (!painter.hasClipping())
        return true;
    // The region of the clip would be rounded to units.
    QPainterPath const clip = painter.deviceTransform().map(painter.clipPath());
    QPainterPath pixels;
    pixels.addRect(QRectF(image).adjusted(slack, slack, -slack, -slack));
    return pixels.subtracted(clip).isEmpty();
}

bool paintsPlainly(QPainter const& painter)
{
    return painter.paintEngine()->type() == QPaintEngine::Raster
        && painter.testRenderHint(QPainter::Antialiasing) && painter.opacity() == 1.0
        && painter.brush().style() == Qt::NoBrush
        && painter.compositionMode() == QPainter::CompositionMode_SourceOver;
}

} // namespace

PlainRaster::PlainRaster(QPainter const& painter)
{
    auto* const image = painter.isActive() ? dynamic_cast<QImage*>(painter.device()) : nullptr;
    if (!image || !isPlain(*image) || !paintsPlainly(painter)
        || !paintsWholeImage(painter, image->rect()))
        return;
    pixels = reinterpret_cast<QRgb*>(image->bits());
    width = image->width();
    height = image->height();
    stride = image->bytesPerLine() / qsizetype(sizeof(QRgb));
    transform = painter.deviceTransform();
}

std::optional<PlainPen> PlainPen::of(QPen const& pen)
{
    double const width = pen.widthF();
    bool const isPlain = pen.style() == Qt::SolidLine && width >= 1.0 && width <= widestPen
        && width == std::floor(width) && !pen.isCosmetic() && pen.capStyle() == Qt::SquareCap
        && pen.joinStyle() == Qt::BevelJoin && pen.brush().style() == Qt::SolidPattern
        && pen.color().alphaF() == 1.0F;
    if (!isPlain)
        return std::nullopt;
    return PlainPen{pen.color().rgb(), int(width)};
}
