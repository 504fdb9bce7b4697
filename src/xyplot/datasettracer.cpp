#include "datasettracer.h"

#include "colorbardrawlistener.h"
#include "dataarray.h"
#include "look.h"
#include "lookpen.h"
#include "strokesink.h"
#include "trackedpoints.h"
#include "viewportmaskfilter.h"
#include "xydataset.h"
#include "xydatasetdrawlistener.h"
#include "xydatasetfilter.h"

#include <typeinfo>

namespace {

/// Points from which on the summaries of the columns save more than they cost.
constexpr int pointsWorthSummaries = 4000;

/// Length of the dash that makes an isolated point visible, pixels.
constexpr int dashLength = 1;
constexpr int colorBarDashLength = 2;

/// Length of a colour bar that has a single cell, pixels.
constexpr int loneColorBarLength = 10;

} // namespace

DataSetTracer::DataSetTracer(TraceSettings const& traceSettings, VerticalEnvelope& pendingLine,
                             StrokeSink& target)
    : settings(traceSettings)
    , look(*traceSettings.dataSet->getLook())
    , filter(settings.dataSet->getFilter())
    , listener(settings.dataSet->getDrawListener())
    , locator(*settings.dataSet, settings.transform, true)
    , clip(settings.transform.width, settings.transform.height)
    , envelope(pendingLine)
    , sink(target)
    , colorBar(look.isColorBar())
    , loneCell(settings.dataSet->yData->dataSize() == 1)
    , symbolRadius(look.getSymbolSize() / 2)
{
}

TraceResult DataSetTracer::trace(int lineIndex, int first, int last, int isolationBefore)
{
    double const linesFromCentre = (look.getMultiLineCount() - 1) * -0.5 + lineIndex;
    yOffset = roundToPixel(linesFromCentre * look.getDefaultLineThickness());
    isolation = isolationBefore;
    lineMode = true;
    envelope.clear();
    resumeBefore(first, lineIndex);
    startTracking(first);
    runs.reset();
    if (mayPassRuns(first, last))
        runs = ColumnRuns::of(*settings.dataSet, locator, settings.disconnectionThreshold);

    QPen currentPen;
    for (int index = first; index <= last; ++index) {
        E_SYMBOL const symbol = symbolOf(index);
        bool const lookChanged = index == first || look.isChanged(index);
        if (lookChanged) {
            LookPen const appearance = lookPen(look, index, lineIndex);
            sink.setPen(appearance.pen);
            lineMode = appearance.drawsLines;
            currentPen = appearance.pen;
        }
        PlotPoint const point = locateWithOffset(index);
        if (!point.valid || isExcluded(index, point.pixel)) {
            closeAtInvalid(index);
            if (point.valid)
                trackUpTo(index - 1);
            if (runs)
                index = passInvalid(index, last, point);
            if (point.valid)
                trackedFrom = index + 1;
            continue;
        }
        if (listener)
            listener->drawingDataPoint(index, point.pixel.x());
        Point const current = {point.pixel, point.x, clip.zoneOf(point.pixel)};
        addDataMarker(index, point);
        if (current.zone == 0)
            enterAndDrawSymbol(index, current.pixel, symbol);
        if (mustConsiderLineTo(current))
            lineTo(index, current, lookChanged, currentPen);
        else
            leaveUnlined(current, lookChanged, currentPen);
        previous = current;
        previousInvalid = false;
        if (runs)
            index = passColumn(index, last, symbol);
    }

    trackUpTo(last);
    flushEnvelope();
    bool const endDashDue = settings.dataSet->isComplete() && isolation == Unlinked
        && !previousInvalid && previous.zone == 0 && !hidesBehindSymbol(last);
    if (endDashDue)
        dashPrevious();
    return {isolation, endDashDue};
}

/// Whether nobody needs to see each point, and there are enough for it to pay.
bool DataSetTracer::mayPassRuns(int first, int last) const
{
    if (settings.visitsEachPoint || qint64(last) - first < pointsWorthSummaries)
        return false;
    return hasOwnHooks() && !map && !look.getDrawMarkerOnYValueChange();
}

/// Those of the application may look at each point, as does a listener that was made for another
/// data set and reads its look.
bool DataSetTracer::hasOwnHooks() const
{
    bool const isOwnFilter = !filter || typeid(*filter) == typeid(ViewportMaskFilter);
    bool const isOwnListener = !listener
        || (typeid(*listener) == typeid(ColorBarDrawListener)
            && listener->getDataSet() == settings.dataSet);
    return isOwnFilter && isOwnListener;
}

/// Leaves it to those who ask for the points to find them again, where that can be done.
void DataSetTracer::startTracking(int first)
{
    if (!settings.tracked)
        return;
    trackedFrom = first;
    defersTracking = hasOwnHooks() && settings.tracked->canDefer(locator);
    map = defersTracking ? nullptr : &settings.tracked->filled();
}

/// Notes the points up to @p last, none of which a filter has left out.
void DataSetTracer::trackUpTo(int last)
{
    if (defersTracking && last >= trackedFrom)
        settings.tracked->defer(trackedFrom, last, locator, yOffset);
}

/**
 * Passes over the points behind @p index, just traced, that share its pixel column and its look.
 *
 * Their strokes touch each other, so one upright line from the lowest to the highest is what the
 * envelope makes of them.
 *
 * @return the last point passed
 */
int DataSetTracer::passColumn(int index, int last, E_SYMBOL symbol)
{
    int const x = previous.pixel.x();
    if (symbol != SYMBOL_NONE)
        return index;
    // Asked again, as it may read the listener, which has just been told of the point.
    if (filter && (!isFilteredAlikeAt(x) || isExcluded(index, previous.pixel)))
        return index;
    std::optional<ColumnRuns::Run> const run = runs->runBehind(index, last, x);
    if (!run)
        return index;
    int const end = run->end;
    ColumnRuns::Extent extent = run->extent;
    extent.lowest += yOffset;
    extent.highest += yOffset;
    int const y = previous.pixel.y();
    bool const moves = extent.lowest != y || extent.highest != y;
    if (moves && lineMode) {
        if (x >= 0 && x < settings.transform.width) {
            drawIfAny(envelope.add(x, y, extent.lowest, settings.transform.height));
            drawIfAny(envelope.add(x, extent.lowest, extent.highest, settings.transform.height));
        }
        isolation = Linked;
    }
    PlotPoint const point = locateWithOffset(end);
    previous = {point.pixel, point.x, clip.zoneOf(point.pixel)};
    return end;
}

/// Passes over the points behind @p index, just found invalid, that are so for the same cause.
int DataSetTracer::passInvalid(int index, int last, PlotPoint const& point) const
{
    if (!point.valid)
        return runs->endOfHoles(index, last);
    int const x = point.pixel.x();
    return isFilteredAlikeAt(x) ? runs->endOfExcluded(index, last, x) : index;
}

bool DataSetTracer::isFilteredAlikeAt(int x) const
{
    return static_cast<ViewportMaskFilter*>(filter)->decidesAlikeAt(x);
}

/// Looks again at the point before the run, since the line to it must be continued.
void DataSetTracer::resumeBefore(int first, int lineIndex)
{
    previous = {};
    previousInvalid = true;
    savedPen.reset();
    if (first < 1)
        return;
    QPen const pen = lookPen(look, first - 1, lineIndex).pen;
    sink.setPen(pen);
    savedPen = pen;
    PlotPoint const point = locateWithOffset(first - 1);
    previous.pixel = point.pixel;
    previous.x = point.x;
    previousInvalid = !point.valid || isExcluded(first - 1, point.pixel);
    if (!previousInvalid)
        previous.zone = clip.zoneOf(previous.pixel);
}

PlotPoint DataSetTracer::locateWithOffset(int index) const
{
    PlotPoint point = locator.locate(index);
    point.pixel.ry() += yOffset;
    return point;
}

bool DataSetTracer::isExcluded(int index, QPoint pixel) const
{
    return filter && filter->excludeDataPoint(index, pixel.x());
}

E_SYMBOL DataSetTracer::symbolOf(int index) const
{
    if (loneCell) {
        // A lone point is always seen.
        E_SYMBOL const symbol = look.getSymbol(index);
        return symbol == SYMBOL_NONE && !colorBar ? SYMBOL_DIAMOND : symbol;
    }
    return settings.symbolsDrawn ? look.getSymbol(index) : SYMBOL_NONE;
}

/// Point @p index is a gap: the point before it will not be linked to the right any more.
void DataSetTracer::closeAtInvalid(int index)
{
    if (!previousInvalid && isolation > Linked && previous.zone == 0
        && !hidesBehindSymbol(index - 1)) {
        dashPrevious();
    }
    isolation = Unlinked;
    previousInvalid = true;
}

void DataSetTracer::addDataMarker(int index, PlotPoint const& point)
{
    if (!look.mustDrawMarker(index))
        return;
    // The last pixel column of the viewport gets no marker.
    if (point.pixel.x() < 0 || point.pixel.x() >= settings.transform.width - 1)
        return;
    Marker_t marker;
    marker.type = eFOREGROUND_MARKER;
    marker.orientation = eHORIZONTAL;
    marker.value = point.x;
    marker.color = Qt::darkGray;
    marker.penStyle = Qt::DashLine;
    settings.dataMarkers->append(marker);
}

void DataSetTracer::enterAndDrawSymbol(int index, QPoint pixel, E_SYMBOL symbol)
{
    if (map)
        map->addItem(index, pixel.x(), settings.transform.height - 1 - pixel.y());
    if (symbol != SYMBOL_NONE)
        sink.drawSymbol(pixel, symbol, symbolRadius);
}

bool DataSetTracer::mustConsiderLineTo(Point const& current) const
{
    bool const backward = current.pixel.x() < previous.pixel.x();
    return !previousInvalid && lineMode && !(backward && settings.suppressBackwardLines);
}

void DataSetTracer::lineTo(int index, Point const& current, bool lookChanged,
                           QPen const& currentPen)
{
    // A line belongs to the look of its left point.
    if (lookChanged && savedPen)
        sink.setPen(*savedPen);
    if (current.pixel == previous.pixel && !lookChanged)
        return;

    double const distance = current.x - previous.x;
    bool const apart = distance > settings.disconnectionThreshold || distance != distance;
    if (apart)
        disconnect(index);
    else
        connect(current);

    if (lookChanged) {
        flushEnvelope();
        sink.setPen(currentPen);
        savedPen = currentPen;
    }
}

/// The gap before point @p index is too wide for a line.
void DataSetTracer::disconnect(int index)
{
    isolation = qMin<int>(isolation, Unlinked) + 1;
    if (isolation == UnlinkedAcrossGap && previous.zone == 0 && !hidesBehindSymbol(index - 1))
        dashPrevious();
}

void DataSetTracer::connect(Point const& current)
{
    int const x = current.pixel.x();
    if (x == previous.pixel.x()) {
        if (x >= 0 && x < settings.transform.width)
            drawIfAny(
                envelope.add(x, previous.pixel.y(), current.pixel.y(), settings.transform.height));
    } else {
        flushEnvelope();
        drawIfAny(clip.clipped(previous.pixel, current.pixel, previous.zone, current.zone));
    }
    isolation = Linked;
}

void DataSetTracer::leaveUnlined(Point const& current, bool lookChanged, QPen const& currentPen)
{
    if (loneCell && colorBar)
        sink.drawLine(QLine(current.pixel, current.pixel + QPoint(loneColorBarLength, 0)));
    if (!lookChanged)
        return;
    if (envelope.isPending()) {
        sink.setPen(savedPen.value_or(QPen()));
        flushEnvelope();
        sink.setPen(currentPen);
    }
    savedPen = currentPen;
}

/// A point whose symbol is drawn needs no dash to be seen.
bool DataSetTracer::hidesBehindSymbol(int index) const
{
    return settings.symbolsDrawn && look.getSymbol(index) != SYMBOL_NONE;
}

void DataSetTracer::dashPrevious()
{
    int const length = colorBar ? colorBarDashLength : dashLength;
    sink.drawLine(QLine(previous.pixel, previous.pixel + QPoint(length, 0)));
}

void DataSetTracer::flushEnvelope()
{
    drawIfAny(envelope.flush(settings.transform.height));
}

void DataSetTracer::drawIfAny(std::optional<QLine> line)
{
    if (line)
        sink.drawLine(*line);
}
