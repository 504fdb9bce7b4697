#include "columnruns.h"

#include "look.h"
#include "valuebasedlook.h"
#include "xydataset.h"

#include <cmath>
#include <typeinfo>

namespace {

/// Points that are visited one by one sooner than searched for.
constexpr int runWorthASearch = 8;

} // namespace

std::optional<ColumnRuns> ColumnRuns::of(XYDataSet& dataSet, PointLocator const& pointLocator,
                                         double disconnectionThreshold)
{
    Look& look = *dataSet.getLook();
    ColumnRuns runs(look, pointLocator, disconnectionThreshold);
    runs.xs = dynamic_cast<DataArrayTemplate<double> const*>(dataSet.xData);
    runs.ys = dynamic_cast<DataArrayTemplate<double> const*>(dataSet.yData);
    // A look of the application may change from point to point.
    runs.looksByValue = typeid(look) == typeid(ValueBasedLook);
    bool const isKnownLook = runs.looksByValue || typeid(look) == typeid(Look);
    if (!runs.xs || !runs.ys || !isKnownLook || !runs.xs->isNondecreasing()
        || !pointLocator.isXUpwards())
        return std::nullopt;
    return runs;
}

int ColumnRuns::endOfRun(int index, int last, int column) const
{
    last = endOfColumn(index, last, column);
    if (last - index < runWorthASearch)
        return index;
    last = cutAtGap(index, last);
    if (!locator->hasFixedY())
        last = cutAtHole(index, last);
    if (looksByValue)
        last = cutAtValue(index, last);
    return last;
}

ColumnRuns::Extent ColumnRuns::extentOf(int first, int last) const
{
    if (locator->hasFixedY()) {
        int const y = locator->locate(first).pixel.y();
        return {y, y};
    }
    // Rounding keeps the order, so the extremes of the data give those of the pixels.
    RunSummary const summary = ys->summarize(first, last);
    int const one = locator->rowOf(summary.smallest);
    int const other = locator->rowOf(summary.largest);
    return {qMin(one, other), qMax(one, other)};
}

int ColumnRuns::endOfColumn(int index, int last, int column) const
{
    last = qMin(endOfAppearance(index, last), xs->dataSize() - 1);
    // By strides that double, then by halves: the border is near, mostly.
    int inside = index;
    int outside = last + 1;
    for (qint64 stride = 1; inside + stride < outside; stride *= 2) {
        if (locator->columnOf(int(inside + stride)) != column) {
            outside = int(inside + stride);
            break;
        }
        inside = int(inside + stride);
    }
    while (outside - inside > 1) {
        int const middle = inside + (outside - inside) / 2;
        if (locator->columnOf(middle) == column)
            inside = middle;
        else
            outside = middle;
    }
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
    return locator->hasFixedY() ? index : ys->firstValid(index, last) - 1;
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

int ColumnRuns::cutAtHole(int index, int last) const
{
    return ys->firstHole(index, last) - 1;
}

int ColumnRuns::cutAtValue(int index, int last) const
{
    if (last <= index)
        return index;
    RunSummary const summary = ys->summarize(index, last);
    bool const isOneValue = summary.smallest == summary.largest && summary.holes == 0;
    return isOneValue ? last : index;
}

int ColumnRuns::endOfAppearance(int index, int last) const
{
    return looksByValue ? last : qMin(last, look->getEndOfAppearance(index));
}
