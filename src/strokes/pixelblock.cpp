#include "pixelblock.h"

#include <cstring>
#ifdef __x86_64__
#define ZELPLOT_WIDE_VECTORS __attribute__((target("avx2")))
#endif

namespace {

// Vectors of GCC and Clang: the channels of one block, in pairs, and of two blocks.
using Channels = quint16 __attribute__((vector_size(2 * PixelBlock::words)));
using TwoChannels = quint16 __attribute__((vector_size(4 * PixelBlock::words)));

/// As blendPixel() does with each pixel; in words of 16 bits, for the low and the high channels.
template<typename Words>
Q_ALWAYS_INLINE void blend(Words& pixels, Words const& share, Words const& rest)
{
    Words const low = (pixels & 0xff) * rest;
    Words const high = (pixels >> 8) * rest;
    Words const lowRest = (low + (low >> 8) + 128) >> 8;
    Words const highRest = (high + (high >> 8) + 128) & 0xff00;
    // Never above 255 together, so that no channel carries into the other.
    pixels = share + (lowRest | highRest);
}

Q_ALWAYS_INLINE void blendOne(QRgb* pixels, PixelBlock const& block)
{
    Channels channels;
    Channels share;
    Channels rest;
    std::memcpy(&channels, pixels, sizeof channels);
    std::memcpy(&share, block.share.data(), sizeof share);
    std::memcpy(&rest, block.rest.data(), sizeof rest);
    blend(channels, share, rest);
    std::memcpy(pixels, &channels, sizeof channels);
}

#ifdef ZELPLOT_WIDE_VECTORS

bool const hasWideVectors = __builtin_cpu_supports("avx2");

Q_ALWAYS_INLINE void join(TwoChannels& both, void const* one, void const* other)
{
    Channels first;
    Channels second;
    std::memcpy(&first, one, sizeof first);
    std::memcpy(&second, other, sizeof second);
    both = __builtin_shufflevector(first, second, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14,
                                   15);
}

/// Where no pixel belongs to both.
Q_ALWAYS_INLINE void blendTwo(QRgb* one, QRgb* other, TwoChannels const& share,
                              TwoChannels const& rest)
{
    TwoChannels both;
    join(both, one, other);
    blend(both, share, rest);
    Channels const first = __builtin_shufflevector(both, both, 0, 1, 2, 3, 4, 5, 6, 7);
    Channels const second = __builtin_shufflevector(both, both, 8, 9, 10, 11, 12, 13, 14, 15);
    std::memcpy(one, &first, sizeof first);
    std::memcpy(other, &second, sizeof second);
}

/// Leaves the last row of an odd number, at @p pixels in the end.
ZELPLOT_WIDE_VECTORS
void blendPairsDown(PixelBlock const& block, QRgb*& pixels, qsizetype stride, int& rows)
{
    TwoChannels share;
    TwoChannels rest;
    join(share, block.share.data(), block.share.data());
    join(rest, block.rest.data(), block.rest.data());
    for (; rows >= 2; rows -= 2, pixels += 2 * stride)
        blendTwo(pixels, pixels + stride, share, rest);
}

/// Leaves the last one of an odd number.
ZELPLOT_WIDE_VECTORS
void blendPairs(QRgb* origin, PlacedBlock const*& blocks, size_t& count)
{
    for (; count >= 2; count -= 2, blocks += 2) {
        TwoChannels share;
        TwoChannels rest;
        join(share, blocks[0].pixels.share.data(), blocks[1].pixels.share.data());
        join(rest, blocks[0].pixels.rest.data(), blocks[1].pixels.rest.data());
        blendTwo(origin + blocks[0].offset, origin + blocks[1].offset, share, rest);
    }
}

#endif

} // namespace

void PixelBlock::blendDown(QRgb* pixels, qsizetype stride, int rows) const
{
#ifdef ZELPLOT_WIDE_VECTORS
    if (hasWideVectors)
        blendPairsDown(*this, pixels, stride, rows);
#endif
    for (; rows > 0; --rows, pixels += stride)
        blendOne(pixels, *this);
}

void blendBlocks(QRgb* origin, PlacedBlock const* blocks, size_t count)
{
#ifdef ZELPLOT_WIDE_VECTORS
    if (hasWideVectors)
        blendPairs(origin, blocks, count);
#endif
    for (; count > 0; --count, ++blocks)
        blendOne(origin + blocks->offset, blocks->pixels);
}
