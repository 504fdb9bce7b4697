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

void PointLocator::reportOutOfBounds(bool inX, bool inY)
{
    constexpr char message[] = "XYCanvas::convertDataElementToViewport: index out of bounds";
    if (!inX)
        debugTag.assertionFailed("convertDataPointToViewport", __LINE__, message);
    if (!inY)
        debugTag.assertionFailed("convertDataPointToViewport", __LINE__, message);
}
