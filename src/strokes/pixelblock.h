#pragma once

#include "testexport.h"
#include <QRgb>
#include <QtGlobal>
#include <algorithm>
#include <array>
#include <cstddef>

/// Neighbours in a row that are blended at once, by the vector unit.
struct ZELPLOT_TEST_EXPORT PixelBlock
{
    static constexpr int count = 4;
    static constexpr size_t channelPairs = 2; ///< of a pixel
    static constexpr size_t words = channelPairs * count; ///< of a pair each

    /// A pixel whose share and coverage are none stays as it is.
    void set(int index, QRgb penShare, int coverage)
    {
        share[size_t(index)] = penShare;
        auto* const pair = &rest[channelPairs * size_t(index)];
        std::fill_n(pair, channelPairs, quint16(255 - coverage));
    }
    /// blendPixel() for each of them, in so many rows, @p stride pixels apart.
    void blendDown(QRgb* pixels, qsizetype stride, int rows) const;

    std::array<QRgb, count> share = {}; ///< of the pen, premultiplied
    std::array<quint16, words> rest
        = {255, 255, 255, 255, 255, 255, 255, 255}; ///< what stays of 255, for both channels alike
};

/// A block and where it belongs.
struct PlacedBlock
{
    PixelBlock pixels;
    qsizetype offset = 0; ///< pixels from some origin
};

/// Blends blocks of which no two share a pixel.
ZELPLOT_TEST_EXPORT void blendBlocks(QRgb* origin, PlacedBlock const* blocks, size_t count);
