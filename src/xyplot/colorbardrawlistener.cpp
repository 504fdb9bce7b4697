#include "colorbardrawlistener.h"

#include "dataarray.h"
#include "debugtag.h"
#include "memleaktracer.h"
#include "xydataset.h"

namespace {
DebugTag debugTag("XYDataSet");

constexpr int firstMaskColumn = 1;
constexpr int lastMaskColumn = 9999;

QSet<ColorBarDrawListener const*>& liveListeners()
{
    static QSet<ColorBarDrawListener const*> listeners;
    return listeners;
}
} // namespace

quint32 ColorBarDrawListener::sDeletedCount = 0;

ColorBarDrawListener::ColorBarDrawListener(XYDataSet* colorBarDataSet, QObject* parent)
    : XYDataSetDrawListener(colorBarDataSet, parent)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("ColorBarDrawListener"));
    liveListeners().insert(this);
}

ColorBarDrawListener::~ColorBarDrawListener()
{
    liveListeners().remove(this);
    ++sDeletedCount;
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("ColorBarDrawListener"));
}

bool ColorBarDrawListener::isAlive(ColorBarDrawListener const* listener)
{
    return liveListeners().contains(listener);
}

void ColorBarDrawListener::filterEntry(Look::Entry lookEntry, bool enabled)
{
    if (enabled)
        filteredEntries.insert(lookEntry);
    else
        filteredEntries.remove(lookEntry);
}

void ColorBarDrawListener::clearCache()
{
    mask.clear();
}

void ColorBarDrawListener::drawingDataPoint(int index, int viewportX)
{
    if (viewportX < firstMaskColumn || viewportX > lastMaskColumn)
        return;
    MaskValue const seen = decideToExcludeDataPoint(index) ? Hide : Show;
    if (viewportX >= mask.size())
        mask.resize(viewportX + 1);
    MaskValue& cell = mask[viewportX];
    if (cell == Uninitialized)
        cell = seen;
    else if (cell != seen)
        cell = Partial;
}

ColorBarDrawListener::MaskValue ColorBarDrawListener::excludeDataPointsAtViewportX(int x) const
{
    return x >= 0 && x < mask.size() ? mask.at(x) : Uninitialized;
}

bool ColorBarDrawListener::decideToExcludeDataPoint(int index) const
{
    if (filteredEntries.isEmpty() || !dataSet)
        return false;
    return isFiltered(dataSet->getLook()->getApplicableLookEntry(index));
}

bool ColorBarDrawListener::excludeDataPointAtWorldX(double x) const
{
    if (filteredEntries.isEmpty() || !dataSet)
        return false;
    return decideToExcludeDataPoint(dataSet->xData->getIndexOfNearestValue(x));
}
