#pragma once

#include <QBitmap>
#include <QImage>
#include <QPainter>
#include <QtMath>
#include <functional>

/// A yellow picture to paint on, addressed in logical pixels at any device pixel ratio; yellow, so
/// that both what is painted white and what is painted in a colour can be seen.
class TestImage
{
public:
    /// One on which @p paint has painted; an empty one has a pixel that nothing can reach.
    explicit TestImage(
        QSize size, qreal ratio = 1.0,
        std::function<void(QPainter*)> const& paint = [](QPainter*) {})
        : image(QSize(qCeil(size.width() * ratio), qCeil(size.height() * ratio)).expandedTo({1, 1}),
                QImage::Format_RGB32)
    {
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::yellow);
        painter.begin(&image);
        painter.setWindow(QRect(QPoint(0, 0), size));
        painter.setViewport(QRect(QPoint(0, 0), size));
        paint(&painter);
    }

    QPainter* getPainter() { return &painter; }
    QImage getImage() const { return image; }

    /// Colour in the middle of a logical pixel.
    QColor at(int x, int y) const
    {
        qreal const ratio = image.devicePixelRatio();
        return image.pixelColor(int((x + 0.5) * ratio), int((y + 0.5) * ratio));
    }

    /// Logical pixels of an area, cut to the picture, that have been painted.
    int countPainted(QRect area = QRect(0, 0, 10000, 10000)) const
    {
        area &= QRect(QPoint(0, 0), image.deviceIndependentSize().toSize());
        int count = 0;
        for (int i = 0; i < area.width() * area.height(); ++i)
            count += at(area.x() + i % area.width(), area.y() + i / area.width()) != Qt::yellow;
        return count;
    }

private:
    QImage image;
    QPainter painter;
};

/// Smallest rectangle around the device pixels of that colour or, if it is the ground, of others.
inline QRect extentOf(QImage const& image, QColor color, bool isGround = false)
{
    // A set bit of a mask reads as white, which in a bitmap is nothing.
    auto const mode = isGround ? Qt::MaskInColor : Qt::MaskOutColor;
    return QRegion(QBitmap::fromImage(image.createMaskFromColor(color.rgb(), mode))).boundingRect();
}
