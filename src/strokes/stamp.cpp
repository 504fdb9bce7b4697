#include "stamp.h"

#include <QImage>
#include <algorithm>
#include <iterator>

Stamp::Stamp(QImage const& coverage, QPoint topLeft)
    : color(qRgb(0, 0, 0))
{
    auto const isTouched = [](QRgb pixel) { return qAlpha(pixel) != 0; };
    for (int y = 0; y < coverage.height(); ++y) {
        auto const* const begin = reinterpret_cast<QRgb const*>(coverage.constScanLine(y));
        auto const* const end = begin + coverage.width();
        auto const* const first = std::find_if(begin, end, isTouched);
        if (first == end)
            continue;
        auto const* const last
            = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), isTouched)
                  .base();
        for (auto const* pixel = first; pixel != last; ++pixel) {
            int const index = int(pixel - first) % PixelBlock::count;
            if (index == 0) {
                QPoint const left = topLeft + QPoint(int(pixel - begin), y);
                blocks.emplace_back();
                corners.push_back(left);
                place |= QRect(left, QSize(PixelBlock::count, 1));
            }
            blocks.back().pixels.set(index, *pixel, qAlpha(*pixel));
        }
    }
    // Kept for the life of the process.
    blocks.shrink_to_fit();
    corners.shrink_to_fit();
}

void Stamp::ink(QRgb penColor)
{
    color = penColor;
    for (PlacedBlock& block : blocks) {
        for (QRgb& share : block.pixels.share)
            share = scaledPixel(penColor, qAlpha(share));
    }
}

void Stamp::layOut(qsizetype rasterStride)
{
    stride = rasterStride;
    for (size_t i = 0; i < blocks.size(); ++i)
        blocks[i].offset = corners[i].y() * stride + corners[i].x();
}

void Stamp::put(PlainRaster const& raster, QPoint origin, QRgb penColor)
{
    if (color != penColor)
        ink(penColor);
    if (stride != raster.getStride())
        layOut(raster.getStride());
    blendBlocks(raster.row(origin.y()) + origin.x(), blocks.data(), blocks.size());
}
