#include "xycanvas.h"

#include "dataarray.h"
#include "datasettracer.h"
#include "look.h"
#include "lookpen.h"
#include "painterstrokesink.h"
#include "trackedpoints.h"
#include "xydataset.h"

#include <QPainter>
#include <limits>

namespace {

/// Pending points above which searching the visible range is cheaper than clipping them all.
constexpr int pendingWorthNarrowing = 100;

/// Data units of x against whose width on the screen a look's symbol threshold is held.
constexpr double symbolThresholdUnits = 1000.0;

/// A grid of this many cells each way, in which a point is entered as far as it may be hit.
constexpr int mapCells = 20;
constexpr int mapItemRadius = 5;

} // namespace

void XYCanvas::drawDataSet(QPainter* painter, XYDataSet* dataSet)
{
    PainterStrokeSink sink(*painter);
    drawDataSet(sink, dataSet);
}

void XYCanvas::drawDataSet(StrokeSink& sink, XYDataSet* dataSet)
{
    watch(dataSet);
    RunMarks& marks = runMarks[dataSet];
    // Once a column has shrunk, its indices no longer mean the points that were drawn. An x column
    // that merely lags behind has not shrunk.
    int const processed = getLastProcessedIndex(dataSet);
    int const xSize = dataSet->xData->dataSize();
    if (processed >= dataSet->yData->dataSize() || (processed >= xSize && xSize < marks.xSize))
        marks.columnShrunk = true;
    marks.xSize = xSize;
    if (marks.columnShrunk)
        return;

    int first = 0;
    int last = -1;
    getPointsToBeDrawn(dataSet, first, last);
    bool const drawsPoints = last >= first;
    if (!drawsPoints) {
        first = getLastProcessedIndex(dataSet) + 1;
        last = first - 1;
    }
    if (drawsPoints || (dataSet->isComplete() && !marks.endDashDrawn)) {
        DataSetTracer tracer(traceSettings(dataSet), *verticalLine, sink);
        int const isolationBefore = getLastProcessedPointDegreeOfIsolation(dataSet);
        int isolation = isolationBefore;
        marks.endDashDrawn = false;
        int const lineCount = dataSet->getLook()->getMultiLineCount();
        for (int line = 0; line < lineCount; ++line) {
            TraceResult const result = tracer.trace(line, first, last, isolationBefore);
            isolation = result.isolation;
            // Of parallel lines, some may end out of view and get no dash.
            marks.endDashDrawn = marks.endDashDrawn || result.endDashDrawn;
        }
        setLastProcessedIndex(dataSet, last);
        setLastProcessedPointDegreeOfIsolation(dataSet, isolation);
    }
    if (connectFirstLast && (drawsPoints || !marks.closingLineDrawn)) {
        Look& look = *dataSet->getLook();
        if (!drawsPoints)
            sink.setPen(lookPen(look, last, look.getMultiLineCount() - 1).pen);
        drawClosingLine(sink, dataSet);
        marks.closingLineDrawn = true;
    }
}

TraceSettings XYCanvas::traceSettings(XYDataSet* dataSet)
{
    Look* const look = dataSet->getLook();
    TraceSettings settings;
    settings.dataSet = dataSet;
    settings.transform = transform;
    // Negative leaves the choice to the canvas; NaN never disconnects.
    double const ofLook = look->getHorizontalDisconnectionThreshold();
    settings.disconnectionThreshold = ofLook < 0.0 ? horizontalDisconnectionThreshold : ofLook;
    settings.symbolsDrawn
        = symbolThresholdUnits * transform.xFactor > look->getSymbolDrawingThreshold();
    settings.suppressBackwardLines = suppressBackwardLines;
    settings.tracked = isMouseOverDataTrackingEnabled(dataSet) ? &trackedPoints(dataSet) : nullptr;
    settings.dataMarkers = &dataMarkers;
    return settings;
}

/// Closes the curve with the pen in force, without regard to the viewport.
void XYCanvas::drawClosingLine(StrokeSink& sink, XYDataSet* dataSet)
{
    bool firstValid = false;
    bool lastValid = false;
    QPoint const from = convertDataPointToViewport(dataSet, 0, firstValid, true);
    QPoint const to
        = convertDataPointToViewport(dataSet, dataSet->yData->dataSize() - 1, lastValid, true);
    if (firstValid && lastValid)
        sink.drawLine(QLine(from, to));
}

void XYCanvas::getPointsToBeDrawn(XYDataSet* dataSet, int& first, int& last)
{
    DataArray const& x = *dataSet->xData;
    first = qMin(getLastProcessedIndex(dataSet), std::numeric_limits<int>::max() - 1) + 1;
    last = dataSet->yData->dataSize() - 1;
    bool const many = qint64(last) - first + 1 > pendingWorthNarrowing;
    if (!many || !x.isNondecreasing() || !viewBounds.isDetermined(Bounds::Horizontal))
        return;
    // One point beyond each edge, for the lines that cross it.
    int const firstInView = x.getIndexOfFirstValueLargerThanOrEqual(viewBounds.minX);
    first = qMax(first, firstInView > 0 ? firstInView - 1 : firstInView);
    last = qMin(last, x.getIndexOfFirstValueLargerThanOrEqual(viewBounds.maxX));
}

int XYCanvas::getLastProcessedIndex(XYDataSet const* dataSet) const
{
    return lastProcessedIndices.value(dataSet, -1);
}

void XYCanvas::setLastProcessedIndex(XYDataSet const* dataSet, int index)
{
    watch(dataSet);
    lastProcessedIndices.insert(dataSet, index);
}

void XYCanvas::clearLastProcessedIndices()
{
    lastProcessedIndices.clear();
    runMarks.clear();
}

int XYCanvas::getLastProcessedPointDegreeOfIsolation(XYDataSet const* dataSet) const
{
    return lastProcessedPointDegreesOfIsolation.value(dataSet, Unlinked);
}

void XYCanvas::setLastProcessedPointDegreeOfIsolation(XYDataSet const* dataSet, int degree)
{
    watch(dataSet);
    lastProcessedPointDegreesOfIsolation.insert(dataSet, degree);
}

void XYCanvas::clearLastProcessedPointDegreeOfIsolation()
{
    lastProcessedPointDegreesOfIsolation.clear();
}

bool XYCanvas::setDataSetLook(XYDataSet* dataSet, QPainter* painter, int index, int lineIndex)
{
    LookPen const appearance = lookPen(*dataSet->getLook(), index, lineIndex);
    painter->setPen(appearance.pen);
    return appearance.drawsLines;
}

void XYCanvas::drawLine(QPainter* painter, QPoint from, QPoint to, int fromCode, int toCode)
{
    ViewportClip const clip(transform.width, transform.height);
    if (std::optional<QLine> const line = clip.clipped(from, to, fromCode, toCode))
        painter->drawLine(*line);
}

QPoint XYCanvas::calculateCrossing(QPoint inner, QPoint outer, int code) const
{
    return ViewportClip(transform.width, transform.height).crossing(inner, outer, code);
}

int XYCanvas::outsideClip(QPoint point) const
{
    return ViewportClip(transform.width, transform.height).zoneOf(point);
}

bool XYCanvas::maybeIntersectsViewport(int first, int second) const
{
    return ViewportClip::mayCross(first, second);
}

void XYCanvas::drawSymbol(QPoint point, E_SYMBOL symbol, int size, QPainter* painter)
{
    paintSymbol(*painter, point, symbol, size);
}

int XYCanvas::getSymbolFactor(XYDataSet* dataSet)
{
    return dataSet->getLook()->getSymbolSize() / 2;
}

void XYCanvas::addVerticalAccumulatedLine(int x, int y1, int y2, QPainter* painter)
{
    if (std::optional<QLine> const line = verticalLine->add(x, y1, y2, transform.height))
        painter->drawLine(*line);
}

void XYCanvas::flushVerticalAccumulatedLine(QPainter* painter)
{
    if (std::optional<QLine> const line = verticalLine->flush(transform.height))
        painter->drawLine(*line);
}

void XYCanvas::clearVerticalAccumulatedLine()
{
    verticalLine->clear();
}

void XYCanvas::setHorizontalDisconnectionThreshold(double threshold)
{
    horizontalDisconnectionThreshold = threshold;
}

void XYCanvas::drawColorBarBackgrounds(QPainter* painter)
{
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        Look const* const look = dataSet->getLook();
        if (dataSet->visible && look->isColorBar()) {
            look->drawColorBarBackground(
                *painter, QPoint(0, look->getFixedYPosition(transform.height)), transform.width);
        }
    }
}

void XYCanvas::setDefaultMouseOverDataTrackingEnabled(bool enabled)
{
    defaultMouseOverDataTracking = enabled;
}

void XYCanvas::setMouseOverDataTrackingEnabled(XYDataSet* dataSet, bool enabled)
{
    watch(dataSet);
    mouseOverDataTracking.insert(dataSet, enabled);
}

bool XYCanvas::isMouseOverDataTrackingEnabled(XYDataSet* dataSet)
{
    return mouseOverDataTracking.value(dataSet, defaultMouseOverDataTracking);
}

ViewportMap<int>* XYCanvas::getViewportMap(XYDataSet* dataSet)
{
    return &trackedPoints(dataSet).handOut();
}

TrackedPoints& XYCanvas::trackedPoints(XYDataSet* dataSet)
{
    watch(dataSet);
    TrackedPoints*& tracked = viewportMaps[dataSet];
    if (!tracked) {
        tracked = new TrackedPoints(
            ViewportMap<int>(transform.width, transform.height, mapItemRadius, mapCells, mapCells));
    }
    return *tracked;
}

void XYCanvas::clearViewportMaps()
{
    qDeleteAll(viewportMaps);
    viewportMaps.clear();
}

/// Makes sure that nothing is kept for a data set beyond its life.
void XYCanvas::watch(XYDataSet const* dataSet)
{
    if (watchedDataSets.contains(dataSet))
        return;
    watchedDataSets.insert(dataSet);
    connect(dataSet, &QObject::destroyed, this, [this, dataSet] { forget(dataSet); });
}

void XYCanvas::forget(XYDataSet const* dataSet)
{
    auto* const key = const_cast<XYDataSet*>(dataSet);
    watchedDataSets.remove(dataSet);
    lastProcessedIndices.remove(dataSet);
    lastProcessedPointDegreesOfIsolation.remove(dataSet);
    runMarks.remove(dataSet);
    mouseOverDataTracking.remove(key);
    delete viewportMaps.take(key);
    if (lastDataHit.dataSet == dataSet)
        lastDataHit.dataSet = nullptr;
}
