#include "columnruns.h"

#include "look.h"
#include "valuebasedlook.h"
#include "xydataset.h"

#include <cmath>
#include <typeinfo>

namespace {

/// Points that are visited one by one sooner than searched for.
constexpr int runWorthASearch = 8;

/// Null for any other, also for one derived from it, whose cells may read otherwise than stored.
DataArrayTemplate<double> const* denseColumn(DataArray const& column)
{
    bool const isDense = typeid(column) == typeid(DataArrayTemplate<double>);
    return isDense ? static_cast<DataArrayTemplate<double> const*>(&column) : nullptr;
}

} // namespace

std::optional<ColumnRuns> ColumnRuns::of(XYDataSet& dataSet, PointLocator const& pointLocator,
                                         double disconnectionThreshold)
{
    Look& look = *dataSet.getLook();
    ColumnRuns runs(look, pointLocator, disconnectionThreshold);
    runs.xs = denseColumn(*dataSet.xData);
    runs.ys = denseColumn(*dataSet.yData);
    // A look of the application may change from point to point.
    runs.looksByValue = typeid(look) == typeid(ValueBasedLook);
    bool const isKnownLook = runs.looksByValue || typeid(look) == typeid(Look);
    if (!runs.xs || !runs.ys || !isKnownLook || !runs.xs->isNondecreasing()
        || !pointLocator.keepsOrder())
        return std::nullopt;
    return runs;
}

std::optional<ColumnRuns::Run> ColumnRuns::runBehind(int index, int last, int column) const
{
    if (index < nextSearch)
        return std::nullopt;
    nextSearch = qint64(index) + runWorthASearch; // unless a run is found, the next may be as short
    last = qMin(last, xs->dataSize() - 1);
    if (looksByValue)
        last = ys->firstOther(index + 1, last, ys->getValue(index)) - 1;
    if (last - index < runWorthASearch || endsSoon(index))
        return std::nullopt;
    last = endOfColumn(index, last, column);
    if (last - index < runWorthASearch)
        return std::nullopt;
    last = cutAtHole(index, cutAtGap(index, last));
    if (last == index)
        return std::nullopt;
    nextSearch = last;
    return Run{last, extentOf(index, last)};
}

/// Whether a hole or a gap comes before the run is worth the search of its column.
bool ColumnRuns::endsSoon(int index) const
{
    int const soon = index + runWorthASearch;
    return cutAtHole(index, soon) < soon
        || (threshold == threshold && xs->firstStepAbove(index, soon, threshold) <= soon);
}

/// The last point up to @p last ahead of the next hole.
int ColumnRuns::cutAtHole(int index, int last) const
{
    if (locator->hasFixedY())
        return last;
    if (index < holeSearch || index >= nextHole) {
        holeSearch = index;
        nextHole = ys->firstHole(index + 1, ys->dataSize() - 1);
    }
    return qMin(last, nextHole - 1);
}

/// Of the points behind @p index up to @p last, none of which is a hole.
ColumnRuns::Extent ColumnRuns::extentOf(int index, int last) const
{
    if (locator->hasFixedY() || looksByValue) {
        int const row = locator->locate(index).pixel.y();
        return {row, row};
    }
    if (qint64(last) + lengthBefore < ys->dataSize())
        ys->fetchAhead(last + lengthBefore); // about where the next run may end
    // Rounding keeps the order, so the extremes of the data give those of the pixels.
    Extremes const extremes = ys->extremesOf(index + 1, last);
    int const one = locator->rowOf(extremes.smallest);
    int const other = locator->rowOf(extremes.largest);
    return {qMin(one, other), qMax(one, other)};
}

int ColumnRuns::endOfColumn(int index, int last, int column) const
{
    last = endOfAppearance(index, last);
    int inside = index;
    int outside = last + 1;
    auto const isInside = [&](qint64 place) {
        bool const is = locator->columnOf(int(place)) == column;
        (is ? inside : outside) = int(place);
        return is;
    };
    // From the length of the run before, by strides that double, then by halves: points come
    // evenly, mostly, so that the border is near.
    qint64 const guess = qMin(qint64(index) + lengthBefore, qint64(last));
    qint64 stride = 1;
    if (guess == index || isInside(guess)) {
        while (inside + stride < outside && isInside(inside + stride))
            stride *= 2;
    } else {
        while (outside - stride > inside && !isInside(outside - stride))
            stride *= 2;
    }
    while (outside - inside > 1) {
        int const middle = inside + (outside - inside) / 2;
        if (locator->columnOf(middle) == column)
            inside = middle;
        else
            outside = middle;
    }
    lengthBefore = inside - index;
    return inside;
}

/// By value each new one is an appearance of its own.
int ColumnRuns::endOfExcluded(int index, int last, int column) const
{
    return looksByValue ? index : endOfColumn(index, last, column);
}

int ColumnRuns::endOfHoles(int index, int last) const
{
    last = endOfAppearance(index, last);
    return locator->hasFixedY() ? index : qMax(index, ys->firstValid(index, last) - 1);
}

int ColumnRuns::cutAtGap(int index, int last) const
{
    double const extent = xs->getValue(last) - xs->getValue(index);
    if (!std::isfinite(extent))
        return index;
    // Without a number for a limit nothing is too far; a run shorter than it has no gap.
    if (threshold != threshold || extent <= threshold)
        return last;
    return xs->firstStepAbove(index, last, threshold) - 1;
}

/// Among the points that have an x; before @p index if it has none.
int ColumnRuns::endOfAppearance(int index, int last) const
{
    last = qMin(last, xs->dataSize() - 1);
    return looksByValue ? last : qMin(last, look->getEndOfAppearance(index));
}
