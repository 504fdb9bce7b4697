#pragma once

#include <QImage>
#include <QPainter>
#include <QtMath>

/**
 * A yellow picture to paint on, addressed in logical pixels at any device pixel ratio.
 *
 * Yellow, so that both what is painted white and what is painted in a colour can be seen.
 */
class TestImage
{
public:
    explicit TestImage(QSize size, qreal ratio = 1.0)
        : image(QSize(qCeil(size.width() * ratio), qCeil(size.height() * ratio)),
                QImage::Format_RGB32)
    {
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::yellow);
        painter.begin(&image);
        painter.setWindow(QRect(QPoint(0, 0), size));
        painter.setViewport(QRect(QPoint(0, 0), size));
    }

    /// One on which @p paint, called with the painter, has painted.
    template<typename Paint>
    TestImage(QSize size, qreal ratio, Paint paint)
        : TestImage(size, ratio)
    {
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
    int countPainted(QRect area) const
    {
        QSizeF const size = image.deviceIndependentSize();
        area &= QRect(0, 0, int(size.width()), int(size.height()));
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                count += at(x, y) == QColor(Qt::yellow) ? 0 : 1;
        }
        return count;
    }
    int countPainted() const { return countPainted(image.rect()); }

private:
    QImage image;
    QPainter painter;
};
