#include "xydataset.h"

#include "dataarray.h"
#include "debugtag.h"
#include "memleaktracer.h"

#include <algorithm>
#include <utility>

namespace {
DebugTag debugTag("XYDataSet");

/// Both ends are set only if both extremes are numbers.
void setExtent(Bounds& bounds, Bounds::Direction direction, DataArray const& column)
{
    double const minimum = column.getMinimum();
    double const maximum = column.getMaximum();
    if (minimum != minimum || maximum != maximum)
        return;
    bounds.set(direction, Bounds::Lower, minimum);
    bounds.set(direction, Bounds::Upper, maximum);
}

/// Each end of @p bounds counts for itself, determined or not.
void mergeExtent(Bounds& bounds, Bounds::Direction direction, Bounds const& extent)
{
    if (!extent.isDetermined(direction))
        return;
    double const lower = bounds.get(direction, Bounds::Lower);
    double const upper = bounds.get(direction, Bounds::Upper);
    double const minimum = extent.get(direction, Bounds::Lower);
    double const maximum = extent.get(direction, Bounds::Upper);
    // A comparison with an end that is NaN is false, so that the extent's own end is taken.
    bounds.set(direction, Bounds::Lower, lower < minimum ? lower : minimum);
    bounds.set(direction, Bounds::Upper, upper > maximum ? upper : maximum);
}

void widenTo(Bounds& bounds, Bounds::Direction direction, double value)
{
    if (value != value)
        return;
    bool const determined = bounds.isDetermined(direction);
    double const lower = determined ? bounds.get(direction, Bounds::Lower) : value;
    double const upper = determined ? bounds.get(direction, Bounds::Upper) : value;
    bounds.set(direction, Bounds::Lower, std::min(lower, value));
    bounds.set(direction, Bounds::Upper, std::max(upper, value));
}
} // namespace

XYDataSet::XYDataSet(DataArray* xColumn, DataArray* yColumn, QString dataSetName, QColor color,
                     E_SYMBOL symbol, Qt::PenStyle penStyle, int lineThickness, QObject* parent)
    : QObject(parent)
    , xData(xColumn)
    , yData(yColumn)
    , name(std::move(dataSetName))
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYDataSet"));
    xData->addReference();
    yData->addReference();
    new Look(this, color, symbol, penStyle, lineThickness); // sets itself
    connect(yData, &DataArray::leftShifted, this, &XYDataSet::leftShiftLook);
    connect(yData, &DataArray::noLongerEmpty, this, &XYDataSet::yDataNoLongerEmpty);
}

XYDataSet::~XYDataSet()
{
    delete look;
    delete drawListener;
    delete filter;
    // One column in both places has two references, but only one owner to delete it.
    bool const ownsOneForBoth = xData == yData && xData && !xData->isReferenceCounted();
    disposeDataArray(xData);
    if (!ownsOneForBoth)
        disposeDataArray(yData);
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYDataSet"));
}

void XYDataSet::append(double x, double y)
{
    xData->append(x);
    yData->append(y);
}

void XYDataSet::append(double const* xs, double const* ys, int count)
{
    xData->append(xs, count);
    yData->append(ys, count);
}

Bounds XYDataSet::getBounds() const
{
    Bounds bounds;
    if (!hasFixedYPixelPosition())
        setExtent(bounds, Bounds::Vertical, *yData);
    setExtent(bounds, Bounds::Horizontal, *xData);
    return bounds;
}

void XYDataSet::includeInBounds(Bounds& bounds) const
{
    Bounds const extent = getBounds();
    mergeExtent(bounds, Bounds::Horizontal, extent);
    mergeExtent(bounds, Bounds::Vertical, extent);
}

void XYDataSet::includeLastInBounds(Bounds& bounds) const
{
    if (yData->dataSize() == 0)
        return;
    if (!hasFixedYPixelPosition())
        widenTo(bounds, Bounds::Vertical, yData->getLastValue());
    widenTo(bounds, Bounds::Horizontal, xData->getLastValue());
}

bool XYDataSet::hasFixedYPixelPosition() const
{
    return look && look->isColorBar();
}

Look* XYDataSet::getLook()
{
    if (!look)
        new Look(this, Qt::black, SYMBOL_NONE, Qt::NoPen, 0); // sets itself
    return look;
}

void XYDataSet::setLook(Look* newLook)
{
    // Stored first: who hears of the end of the old look already finds the new one here.
    Look* const formerLook = std::exchange(look, newLook);
    if (formerLook != newLook)
        delete formerLook;
    if (newLook)
        connect(newLook, &Look::lastAppearanceChanged, this, &XYDataSet::lastAppearanceChanged);
    if (formerLook != newLook)
        Q_EMIT lookChanged();
}

void XYDataSet::unsetLook(Look* formerLook)
{
    if (look == formerLook)
        look = nullptr;
}

void XYDataSet::leftShiftLook(int places2shift)
{
    if (look)
        look->leftShift(places2shift);
}

void XYDataSet::disposeDataArray(DataArray* column)
{
    if (!column)
        return;
    if (column->isReferenceCounted())
        column->removeReference();
    else
        delete column;
}
