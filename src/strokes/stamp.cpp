#include "stamp.h"

#include "plainraster.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

/// The same as blendPixel() for a block of pixels.
template<int bytes = 16> inline void blendBytes(QRgb* pixels, QRgb const* shares, QRgb const* rests)
{
    // In arrays of its own, so that no pixel might be a share.
    std::array<quint8, bytes> pixel;
    std::array<quint8, bytes> share;
    std::array<quint8, bytes> rest;
    std::memcpy(pixel.data(), pixels, bytes);
    std::memcpy(share.data(), shares, bytes);
    std::memcpy(rest.data(), rests, bytes);
    for (size_t i = 0; i < bytes; ++i) {
        auto const product = quint16(pixel[i] * rest[i]);
        pixel[i] = quint8(share[i] + (quint16(product + (product >> 8) + 128) >> 8));
    }
    std::memcpy(pixels, pixel.data(), bytes);
}

} // namespace

Stamp::Stamp(QRect const& extent, int penWidth, int ratio,
             std::function<void(QPainter&)> const& draw)
    : color(qRgb(0, 0, 0))
{
    QImage image(extent.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(QTransform(ratio, 0.0, 0.0, -ratio, -extent.left(), -extent.top()));
    painter.setPen(QPen(QColor(color), penWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    draw(painter);
    painter.end();

    auto const isTouched = [](QRgb pixel) { return qAlpha(pixel) != 0; };
    for (int y = 0; y < image.height(); ++y) {
        auto const* const begin = reinterpret_cast<QRgb const*>(image.constScanLine(y));
        auto const* const end = begin + image.width();
        auto const* const first = std::find_if(begin, end, isTouched);
        if (first == end)
            continue;
        auto const* const last
            = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), isTouched)
                  .base();
        QPoint const left = extent.topLeft() + QPoint(int(first - begin), y);
        int const blocks = (int(last - first) + blockPixels - 1) / blockPixels;
        rows.push_back({left, blocks});
        place |= QRect(left, QSize(blocks * blockPixels, 1));
        for (int i = 0; i < blocks * blockPixels; ++i) {
            if (i % blockPixels == 0)
                pixels.emplace_back();
            QRgb const pixel = first + i < last ? first[i] : 0;
            pixels.back().share[size_t(i % blockPixels)] = pixel;
            pixels.back().rest[size_t(i % blockPixels)] = ~(uint(qAlpha(pixel)) * 0x01010101U);
        }
    }
    // Kept for the life of the process.
    rows.shrink_to_fit();
    pixels.shrink_to_fit();
}

void Stamp::ink(QRgb penColor)
{
    color = penColor;
    for (Block& block : pixels) {
        for (QRgb& share : block.share)
            share = scaledPixel(penColor, qAlpha(share));
    }
}

bool Stamp::fits(PlainRaster const& raster, QPoint origin) const
{
    return QRect(0, 0, raster.getWidth(), raster.getHeight()).contains(place.translated(origin));
}

void Stamp::put(PlainRaster const& raster, QPoint origin, QRgb penColor)
{
    if (color != penColor)
        ink(penColor);
    Block const* block = pixels.data();
    for (Row const& row : rows) {
        QRgb* pixel = raster.row(origin.y() + row.left.y()) + origin.x() + row.left.x();
        for (int i = 0; i < row.blocks; ++i, ++block, pixel += blockPixels)
            blendBytes(pixel, block->share.data(), block->rest.data());
    }
}
