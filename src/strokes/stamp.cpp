#include "stamp.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <iterator>

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
        int const blocks = (int(last - first) + PixelBlock::count - 1) / PixelBlock::count;
        rows.push_back({left, blocks});
        place |= QRect(left, QSize(blocks * PixelBlock::count, 1));
        for (auto const* pixel = first; pixel != last; ++pixel) {
            int const index = int(pixel - first) % PixelBlock::count;
            if (index == 0)
                pixels.emplace_back();
            pixels.back().set(index, *pixel, qAlpha(*pixel));
        }
    }
}

void Stamp::ink(QRgb penColor)
{
    color = penColor;
    for (PixelBlock& block : pixels) {
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
    PixelBlock const* block = pixels.data();
    for (Row const& row : rows) {
        QRgb* pixel = raster.row(origin.y() + row.left.y()) + origin.x() + row.left.x();
        for (int i = 0; i < row.blocks; ++i, ++block, pixel += PixelBlock::count)
            block->blendInto(pixel);
    }
}
