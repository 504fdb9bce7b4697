#include "viewportmaskfilter.h"

#include "colorbardrawlistener.h"
#include "dataarray.h"
#include "debugtag.h"
#include "memleaktracer.h"
#include "xydataset.h"

#include <algorithm>
#include <utility>

namespace {
DebugTag debugTag("XYDataSet");
} // namespace

ViewportMaskFilter::ViewportMaskFilter(XYDataSet* filteredDataSet,
                                       QVector<ColorBarDrawListener*>* colorBarListeners,
                                       QObject* parent)
    : XYDataSetFilter(filteredDataSet, parent)
    , listeners(colorBarListeners)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("ViewportMaskFilter"));
}

ViewportMaskFilter::~ViewportMaskFilter()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("ViewportMaskFilter"));
}

bool ViewportMaskFilter::excludeDataPoint(int index, int viewportX)
{
    dropDeletedListeners();
    for (ColorBarDrawListener const* const listener : std::as_const(*listeners)) {
        auto const seen = listener->excludeDataPointsAtViewportX(viewportX);
        if (seen == ColorBarDrawListener::Hide)
            return true;
        if (seen == ColorBarDrawListener::Partial && dataSet
            && listener->excludeDataPointAtWorldX(dataSet->xData->getValue(index)))
            return true;
    }
    return false;
}

bool ViewportMaskFilter::decidesAlikeAt(int viewportX)
{
    dropDeletedListeners();
    auto const showsBoth = [=](ColorBarDrawListener const* listener) {
        return listener->excludeDataPointsAtViewportX(viewportX) == ColorBarDrawListener::Partial;
    };
    return std::none_of(listeners->cbegin(), listeners->cend(), showsBoth);
}

void ViewportMaskFilter::clearCache()
{
    dropDeletedListeners();
    for (ColorBarDrawListener* const listener : std::as_const(*listeners))
        listener->clearCache();
}

/// A comparison of two counts for each point; only after a deletion are the pointers looked at.
void ViewportMaskFilter::dropDeletedListeners()
{
    quint32 const deletedCount = ColorBarDrawListener::getDeletedCount();
    if (deletedCountSeen == deletedCount)
        return;
    deletedCountSeen = deletedCount;
    listeners->removeIf([](ColorBarDrawListener const* listener) {
        return !ColorBarDrawListener::isAlive(listener);
    });
}
