#include "pointlocator.h"

#include "debugtag.h"
#include "look.h"
#include "xydataset.h"

#include <algorithm>
#include <cstdint>

namespace {
DebugTag debugTag("XYCanvas", "src/xyplot/xycanvas");
} // namespace

PointLocator::PointLocator(XYDataSet& dataSet, ViewTransform const& viewTransform, bool yUpwards)
    : transform(viewTransform)
    , xData(dataSet.xData)
    , yData(dataSet.yData)
    , xSize(xData->dataSize())
    , ySize(yData->dataSize())
    , fromBottom(yUpwards)
{
    Look const* const look = dataSet.getLook();
    if (look->hasFixedYPosition()) {
        std::int64_t const fromTop = look->getFixedYPosition(transform.height);
        std::int64_t const y = fromBottom ? transform.height - fromTop : fromTop;
        fixedY = int(std::clamp<std::int64_t>(y, -pixelLimit, pixelLimit));
    }
}

int PointLocator::firstFromColumn(int first, int last, int column) const
{
    int end = last + 1;
    while (first < end) {
        int const middle = first + (end - first) / 2;
        if (columnOf(middle) < column)
            first = middle + 1;
        else
            end = middle;
    }
    return first;
}

bool PointLocator::placesLike(PointLocator const& other) const
{
    auto const isSame = [](double a, double b) { return a == b || (a != a && b != b); };
    ViewTransform const& its = other.transform;
    return xData == other.xData && yData == other.yData && fromBottom == other.fromBottom
        && fixedY == other.fixedY && transform.height == its.height
        && isSame(transform.xFactor, its.xFactor) && isSame(transform.yFactor, its.yFactor)
        && isSame(transform.view.minX, its.view.minX) && isSame(transform.view.minY, its.view.minY)
        && isSame(transform.view.maxY, its.view.maxY);
}

void PointLocator::reportOutOfBounds(bool inX, bool inY)
{
    constexpr char message[] = "XYCanvas::convertDataElementToViewport: index out of bounds";
    if (!inX)
        debugTag.assertionFailed("convertDataPointToViewport", __LINE__, message);
    if (!inY)
        debugTag.assertionFailed("convertDataPointToViewport", __LINE__, message);
}
