#include "alignedstrokes.h"

#include "pixelblock.h"

#include <algorithm>
#include <cmath>

namespace {

/// The painter counts the coverage of a pixel as the exact area in parts of 255, rounded down. In
/// these parts of a pixel no edge ever lies where its arithmetic might round to either side.
constexpr int partsOfPixel = 8;
constexpr int opaque = 255;

/// The part of a row of a stroke that lies in one of its columns.
struct Cover
{
    Cover() = default;
    Cover(QRgb color, int coverageOfPixel)
        : coverage(coverageOfPixel)
        , share(scaledPixel(color, coverageOfPixel))
    {
    }
    void put(QRgb& pixel) const { blendPixel(pixel, share, coverage); }

    int coverage = 0; // of 255
    QRgb share = 0;
};

/// In parts of a pixel, if it is a whole number of them that fits the image.
bool toParts(double pixels, int& parts)
{
    double const value = pixels * partsOfPixel;
    parts = std::abs(value) <= (1 << 20) ? int(value) : 0;
    return parts == value;
}

} // namespace

AlignedStrokes::Extent::Extent(int from, int to, int pixelCount)
    : begin(from)
    , end(to)
    , firstPixel(std::max(from, 0) / partsOfPixel)
    , lastPixel(std::min((to + partsOfPixel - 1) / partsOfPixel, pixelCount) - 1)
{
}

/// 0 for a pixel beside the stroke, 8 for one inside.
int AlignedStrokes::Extent::overlapOf(int pixel) const
{
    int const edge = pixel * partsOfPixel;
    return std::clamp(std::min(end, edge + partsOfPixel) - std::max(begin, edge), 0, partsOfPixel);
}

AlignedStrokes::AlignedStrokes(PlainRaster const& plainRaster)
    : raster(plainRaster)
{
    if (raster.isNull())
        return;
    QTransform const& transform = raster.getTransform();
    double const ratio = transform.m11();
    // A quarter of a pixel at the coarsest, so that half a pen is a whole number of parts.
    isUsable = transform.type() <= QTransform::TxScale && transform.m22() == -ratio && ratio >= 1.0
        && ratio <= 16.0 && toParts(ratio, unit) && unit % 2 == 0
        && toParts(transform.dx(), originX) && toParts(transform.dy(), originY);
}

void AlignedStrokes::setPen(std::optional<PlainPen> const& pen)
{
    penFits = isUsable && pen;
    if (!penFits)
        return;
    color = pen->color;
    halfWidth = pen->width * unit / 2;
    isHairline = 2 * halfWidth == partsOfPixel;
    if (isHairline) // which the painter moves to whole pixels
        penFits = originX % partsOfPixel == 0 && originY % partsOfPixel == 0;
}

bool AlignedStrokes::draw(QLine line) const
{
    bool const isUpright = line.x1() == line.x2();
    // A dot is no short stroke: the painter rounds its position.
    if (!penFits || isUpright == (line.y1() == line.y2()))
        return false;
    int const width = raster.getWidth();
    int const height = raster.getHeight();
    qint64 const rightEdge = qint64(width) * partsOfPixel;
    qint64 const lowerEdge = qint64(height) * partsOfPixel;
    auto const isInside = [&](QPoint point) {
        qint64 const x = originX + qint64(point.x()) * unit;
        qint64 const y = originY - qint64(point.y()) * unit;
        return x >= 0 && x <= rightEdge && y >= 0 && y <= lowerEdge;
    };
    if (!isInside(line.p1()) || !isInside(line.p2()))
        return false;
    auto const [left, right] = std::minmax({line.x1(), line.x2()});
    auto const [lower, upper] = std::minmax({line.y1(), line.y2()});
    fill({originX + left * unit - halfWidth, originX + right * unit + halfWidth, width},
         {originY - upper * unit - halfWidth, originY - lower * unit + halfWidth, height},
         isUpright);
    return true;
}

/// Row by row, each of up to one pixel covered in part, some in full, and one in part.
void AlignedStrokes::fill(Extent const& columns, Extent const& rows, bool isUpright) const
{
    int const first = columns.firstPixel;
    int const last = columns.lastPixel;
    // Most strokes; pixels of the block beside them stay as they are.
    int const width = last - first + 1;
    bool const isOneBlock
        = width <= PixelBlock::count && first + PixelBlock::count <= raster.getWidth();
    // Of a line of one pixel the painter gives the far half what the near one leaves of the whole.
    auto const isFarHalf = [this](Extent const& across, int pixel) {
        return isHairline && pixel * partsOfPixel > across.begin;
    };
    int coveredParts = 0;
    Cover left;
    Cover inner;
    Cover right;
    PixelBlock block;
    for (int y = rows.firstPixel; y <= rows.lastPixel; ++y) {
        int const overlap = rows.overlapOf(y);
        if (overlap != coveredParts || !isUpright) {
            coveredParts = overlap;
            auto const coverOf = [&](int columnOverlap, int x) {
                bool const isFar = isUpright ? isFarHalf(columns, x) : isFarHalf(rows, y);
                int const area = columnOverlap * overlap;
                return Cover(color, opaque * area / (partsOfPixel * partsOfPixel) + int(isFar));
            };
            left = coverOf(columns.overlapOf(first), first);
            inner = coverOf(partsOfPixel, first);
            right = coverOf(columns.overlapOf(last), last);
            for (int i = 0; i < width && isOneBlock; ++i) {
                Cover const& cover = i == 0 ? left : i == width - 1 ? right : inner;
                block.set(i, cover.share, cover.coverage);
            }
        }
        QRgb* const row = raster.row(y);
        if (isOneBlock) {
            // All rows between the first and the last are covered alike.
            int const alike
                = isUpright && y > rows.firstPixel ? std::max(rows.lastPixel - y, 1) : 1;
            block.blendDown(row + first, raster.getStride(), alike);
            y += alike - 1;
            continue;
        }
        left.put(row[first]);
        if (first == last)
            continue;
        if (inner.coverage == opaque)
            std::fill(row + first + 1, row + last, color);
        else
            std::for_each(row + first + 1, row + last, [&](QRgb& pixel) { inner.put(pixel); });
        right.put(row[last]);
    }
}
