#pragma once

#include "testexport.h"
#include <QPoint>
#include <QRgb>
#include <QTransform>
#include <QtGlobal>
#include <optional>

class QPainter;
class QPen;

/**
 * The pixels of an image under a painter, for what may be written there without it.
 *
 * Null unless the painter would paint plainly: outlines, antialiased, over the whole of an image of
 * 4 opaque or premultiplied bytes a pixel. Valid as long as the painter is active and nothing but
 * its pen changes.
 */
class ZELPLOT_TEST_EXPORT PlainRaster
{
public:
    explicit PlainRaster(QPainter const& painter);

    bool isNull() const { return !pixels; }
    int getWidth() const { return width; }
    int getHeight() const { return height; }
    bool holds(QPoint pixel) const
    {
        return pixel.x() >= 0 && pixel.x() < width && pixel.y() >= 0 && pixel.y() < height;
    }
    /// Pixels from one row to the next.
    qsizetype getStride() const { return stride; }
    /// Row @p y, 0 being the top one.
    QRgb* row(int y) const { return pixels + y * stride; }
    /// From the coordinates of the painter to pixels.
    QTransform const& getTransform() const { return transform; }

private:
    QRgb* pixels = nullptr;
    int width = 0;
    int height = 0;
    qsizetype stride = 0;
    QTransform transform;
};

/// A pen that puts one colour, as those of curves do.
struct ZELPLOT_TEST_EXPORT PlainPen
{
    /// None for a pen that is lucent, patterned, dashed, cosmetic, of a broken width, or without
    /// square ends and bevelled joins.
    static std::optional<PlainPen> of(QPen const& pen);

    QRgb color;
    int width; ///< units of the painter, at least 1
};

/// All four channels times @p part of 255, each rounded to the nearest.
inline QRgb scaledPixel(QRgb pixel, int part)
{
    constexpr quint64 channels = 0x00ff00ff00ff00ff;
    constexpr quint64 halves = 0x0080008000800080;
    quint64 const spread = (pixel | (quint64(pixel) << 24)) & channels;
    quint64 const product = spread * quint64(part);
    quint64 const quotient = ((product + ((product >> 8) & channels) + halves) >> 8) & channels;
    return QRgb(quotient | (quotient >> 24));
}

/// Puts @p share, the part @p coverage of 255 of a colour, over a pixel.
inline void blendPixel(QRgb& pixel, QRgb share, int coverage)
{
    pixel = share + scaledPixel(pixel, 255 - coverage);
}
