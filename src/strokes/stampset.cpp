#include "stampset.h"

#include "coveragelayers.h"
#include "symbolpainter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace {

/// The painter rounds the corners of a stroke to such parts of a pixel.
constexpr double partsOfCorner = 64.0;
/// Nearer to the middle between two of them, errors of its arithmetic decide.
constexpr double indecision = 1e-6;

bool isRoundedAlike(double corner)
{
    double const halves = corner * partsOfCorner * 2.0;
    return std::abs(halves - std::round(halves)) > indecision;
}

/// With slopes of 1 or arcs, whose corners may be rounded to either side.
constexpr E_SYMBOL unsteadySymbols[] = {SYMBOL_CROSS, SYMBOL_CIRCLE, SYMBOL_DIAMOND};

} // namespace

StampSet* StampSet::of(int penWidth, int ratio)
{
    static std::array<std::array<std::unique_ptr<StampSet>, largestRatio>, widestPen> sets;
    if (penWidth < 1 || penWidth > widestPen || ratio < 1 || ratio > largestRatio)
        return nullptr;
    std::unique_ptr<StampSet>& set = sets.at(size_t(penWidth) - 1).at(size_t(ratio) - 1);
    if (!set) {
        set = std::make_unique<StampSet>();
        set->width = penWidth;
        set->pixelRatio = ratio;
    }
    return set.get();
}

/// Device pixels, y downwards, that a pen on these points (units, y upwards) may touch.
QRect StampSet::extentAbout(QRect const& points) const
{
    int const margin = width + 1;
    QRect const units = points.adjusted(-margin, -margin, margin, margin);
    return {QPoint(units.left(), -units.bottom()) * pixelRatio,
            QPoint(units.right(), -units.top()) * pixelRatio};
}

/// Whether a stroke looks alike at all places. Lines of one device pixel have no corners to round.
bool StampSet::isSteady(int rise) const
{
    if (isHairline())
        return true;
    double const unit = width * pixelRatio / 2.0 / std::hypot(1.0, rise);
    return isRoundedAlike(unit * (rise - 1)) && isRoundedAlike(unit * (rise + 1));
}

Stamp* StampSet::stroke(int rise)
{
    int const highest = highestRise / pixelRatio;
    if (rise < -highest || rise > highest || !isSteady(rise))
        return nullptr;
    int const slot = rise + highestRise;
    std::unique_ptr<Stamp>& stamp = strokes[size_t(slot)];
    if (!stamp) {
        QPoint const end(1, rise);
        QRect const points(0, std::min(rise, 0), 2, std::abs(rise) + 1);
        stamp = std::make_unique<Stamp>(makeStamp(
            extentAbout(points), [&](QPainter& painter) { painter.drawLine(QPoint(0, 0), end); }));
    }
    return stamp.get();
}

std::vector<Stamp>& StampSet::symbol(E_SYMBOL symbol, int radius)
{
    bool const isSymbol = symbol >= SYMBOL_DOT && symbol <= SYMBOL_DIAMOND;
    bool const isUnsteady = !isHairline()
        && std::find(std::begin(unsteadySymbols), std::end(unsteadySymbols), symbol)
            != std::end(unsteadySymbols);
    // Of radius 0 the lines are dots, whose positions the painter rounds.
    if (!isSymbol || isUnsteady || radius < 1 || radius > largestRadius)
        return none;
    auto const key = std::pair(int(symbol), radius);
    auto place = symbols.find(key);
    if (place == symbols.end())
        place = symbols.emplace(key, makeSymbol(symbol, radius)).first;
    return place->second;
}

/// Lines that cross each cover pixels twice, so each is a stamp of its own; an outline may.
std::vector<Stamp> StampSet::makeSymbol(E_SYMBOL symbol, int radius) const
{
    QPoint const corner(radius, radius);
    QRect const extent = extentAbout({-corner, corner});
    std::vector<Stamp> stamps;
    SymbolLines const lines = linesOfSymbol(symbol);
    for (SymbolLine const& line : lines) {
        stamps.push_back(makeStamp(extent, [&](QPainter& painter) {
            painter.drawLine(line.from * radius, line.to * radius);
        }));
    }
    if (lines.count > 0)
        return stamps;
    auto const sample = [&](QColor const& background, QColor const& pen) {
        return paint(extent, background, pen, [&](QPainter& painter) {
            paintSymbol(painter, QPoint(0, 0), symbol, radius);
        });
    };
    for (QImage const& layer : coverageLayers(sample))
        stamps.emplace_back(layer, extent.topLeft());
    return stamps;
}

/// About the origin with y upwards, as on the canvas; the extent counts device pixels downwards.
QImage StampSet::paint(QRect const& extent, QColor const& background, QColor const& pen,
                       std::function<void(QPainter&)> const& draw) const
{
    QImage image(extent.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(
        QTransform(pixelRatio, 0.0, 0.0, -pixelRatio, -extent.left(), -extent.top()));
    painter.setPen(QPen(pen, width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    draw(painter);
    return image;
}

Stamp StampSet::makeStamp(QRect const& extent, std::function<void(QPainter&)> const& draw) const
{
    return {paint(extent, Qt::transparent, Qt::black, draw), extent.topLeft()};
}
