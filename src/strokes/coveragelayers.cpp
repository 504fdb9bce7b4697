#include "coveragelayers.h"

#include "plainraster.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr int opaque = 255;
/// Shades that one background tries, one a channel; together they try all.
constexpr int shadesAtOnce = 3;
/// Coverages tried about the one that a division gives, for its rounding.
constexpr int roundingSlack = 2;

QRgb grey(int shade)
{
    return qRgb(shade, shade, shade);
}

/// The drawing in black or white on a few shades.
struct Sample
{
    QRgb pen;
    QRgb background;
    QImage image;
};

struct Layers
{
    int lower;
    int upper;
};

class Decomposition
{
public:
    explicit Decomposition(SamplePainting const& paint)
    {
        // The widest range first, which rules out most.
        for (int shade = opaque; shade >= 0; shade -= shadesAtOnce) {
            QRgb const shades = qRgb(shade, std::max(shade - 1, 0), std::max(shade - 2, 0));
            for (QRgb const pen : {grey(0), grey(opaque)})
                samples.push_back({pen, shades, paint(QColor(shades), QColor(pen))});
        }
    }

    /// The coverages that explain all samples of a pixel, of which @p total is covered.
    std::optional<Layers> layersOf(QPoint place, int total) const
    {
        if (explains({total, 0}, place))
            return Layers{total, 0};
        int const left = qRed(samples.front().image.pixel(place)); // of white, under black
        for (int lower = 1; lower < opaque; ++lower) {
            int const guess = opaque - left * opaque / (opaque - lower);
            int const highest = std::min(guess + roundingSlack, opaque);
            for (int upper = std::max(guess - roundingSlack, 1); upper <= highest; ++upper) {
                if (explains({lower, upper}, place))
                    return Layers{lower, upper};
            }
        }
        return std::nullopt;
    }

private:
    bool explains(Layers const& layers, QPoint place) const
    {
        return std::all_of(samples.cbegin(), samples.cend(), [&](Sample const& sample) {
            QRgb pixel = sample.background;
            for (int const coverage : {layers.lower, layers.upper})
                blendPixel(pixel, scaledPixel(sample.pen, coverage), coverage);
            return pixel == sample.image.pixel(place);
        });
    }

    std::vector<Sample> samples;
};

} // namespace

std::vector<QImage> coverageLayers(SamplePainting const& paint)
{
    QImage lower = paint(Qt::transparent, Qt::black);
    QImage upper(lower.size(), QImage::Format_ARGB32_Premultiplied);
    upper.fill(Qt::transparent);
    Decomposition const decomposition(paint);
    bool hasUpper = false;
    for (int y = 0; y < lower.height(); ++y) {
        for (int x = 0; x < lower.width(); ++x) {
            int const total = qAlpha(lower.pixel(x, y));
            if (total == 0)
                continue;
            std::optional<Layers> const layers = decomposition.layersOf(QPoint(x, y), total);
            if (!layers)
                return {};
            lower.setPixel(x, y, qRgba(0, 0, 0, layers->lower));
            upper.setPixel(x, y, qRgba(0, 0, 0, layers->upper));
            hasUpper = hasUpper || layers->upper != 0;
        }
    }
    std::vector<QImage> images = {std::move(lower)};
    if (hasUpper)
        images.push_back(std::move(upper));
    return images;
}
