#include "xycanvas.h"

#include "boundsarithmetic.h"
#include "debugtag.h"
#include "memleaktracer.h"
#include "pointlocator.h"
#include "rounding.h"
#include "trackedpoints.h"
#include "verticalenvelope.h"
#include "xydataset.h"

namespace {

DebugTag debugTag("XYCanvas", "src/xyplot/xycanvas");

/// Extent shown before there is data: half a minute of milliseconds, and one unit upwards.
constexpr double initialXExtent = 30000.0;
constexpr double initialYExtent = 1.0;

/// Buffers ahead of the data, as a fraction of its extent.
constexpr double initialBufferFraction = 0.1;

/// Extent of the viewport assumed while there is none, pixels.
constexpr int assumedViewportSize = 200;

} // namespace

XYCanvas::XYCanvas(QList<XYDataSet*>* plotDataSets, QList<Marker_t*>* plotMarkers,
                   QList<EllipseMarker_t*>* plotEllipseMarkers,
                   QList<CrossMarker_t*>* plotCrossMarkers, bool suppressBackwards, QWidget* parent)
    : QFrame(parent)
    , dataSets(plotDataSets)
    , markers(plotMarkers)
    , ellipseMarkers(plotEllipseMarkers)
    , crossMarkers(plotCrossMarkers)
    , suppressBackwardLines(suppressBackwards)
    , verticalLine(std::make_unique<VerticalEnvelope>())
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYCanvas"));
    qRegisterMetaType<datahit_t>("XYCanvas::datahit_t");
    setCursor(Qt::CrossCursor);
    backgroundPixmap = std::make_unique<QPixmap>();
    initializeViewTransform();
    computeFactors();
    setLineWidth(0);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

XYCanvas::~XYCanvas()
{
    clearViewportMaps();
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYCanvas"));
}

void XYCanvas::initializeViewTransform()
{
    dataBounds = Bounds();
    strictDataBounds = Bounds();
    viewBounds = Bounds();
    previouslyEmittedViewBounds = Bounds();
    fixedDataBounds = false;
    initialDataBounds = Bounds{0.0, initialXExtent, 0.0, initialYExtent};

    horizontalViewBoundsUpdatePolicy = PolicyFollow;
    verticalViewBoundsUpdatePolicy = PolicyFull;
    extensionBufferMinimum.fill(0.0);
    extensionBufferFraction.fill(initialBufferFraction);
    viewportMargin.fill(0.0);
    dataBoundsChangedPending = false;
    viewBoundsChangedPending = false;
    policyCausedViewBoundsChange = false;
    horizontalZoomLimit = 0.0;
    verticalZoomLimit = 0.0;
    followChangedLimits();
}

void XYCanvas::computeFactors()
{
    transform.set(viewBounds, viewportRect.width(), viewportRect.height());
}

double XYCanvas::convertXWorldToViewport(double x) const
{
    return transform.xToViewport(x);
}

double XYCanvas::convertXViewportToWorld(double v) const
{
    return transform.xToWorld(v);
}

double XYCanvas::convertYWorldToViewport(double y, bool fromBottom) const
{
    return transform.yToViewport(y, fromBottom);
}

double XYCanvas::convertYViewportToWorld(double v, bool fromBottom) const
{
    return transform.yToWorld(v, fromBottom);
}

QPoint XYCanvas::convertDataPointToViewport(XYDataSet* dataSet, int index, bool& valid,
                                            bool fromBottom) const
{
    PlotPoint const point = PointLocator(*dataSet, transform, fromBottom).locate(index);
    valid = point.valid;
    return point.pixel;
}

void XYCanvas::setGrid(E_ORIENTATION_TYPE orientation, XYAbstractGrid* grid, bool repaint)
{
    (orientation == eVERTICAL ? verticalGrid : horizontalGrid) = grid;
    needsFullRedraw = true;
    if (repaint)
        update();
}

XYAbstractGrid* XYCanvas::getGrid(E_ORIENTATION_TYPE orientation) const
{
    return orientation == eVERTICAL ? verticalGrid : horizontalGrid;
}

void XYCanvas::setViewportMargin(int horizontalLower, int horizontalUpper, int verticalLower,
                                 int verticalUpper)
{
    viewportMargin = {{{double(horizontalLower), double(horizontalUpper)},
                       {double(verticalLower), double(verticalUpper)}}};
}

double XYCanvas::getViewportMargin(Bounds::Direction direction, Bounds::End end) const
{
    return EndValues::holds(direction, end) ? viewportMargin.at(direction, end) : 0.0;
}

double XYCanvas::determineViewPortMarginInDataCoordinates(Bounds::Direction direction,
                                                          Bounds::End end,
                                                          double fallbackExtent) const
{
    int const margin = truncateToInt(getViewportMargin(direction, end));
    int size = direction == Bounds::Horizontal ? viewportRect.width() : viewportRect.height();
    if (size == 0)
        size = assumedViewportSize;
    if (margin < 1 || size < 1)
        return 0.0;
    bool const viewTells
        = viewBounds.isDetermined(direction) && getViewBoundsUpdatePolicy(direction) != PolicyFull;
    double const extent = viewTells ? viewBounds.size(direction) : fallbackExtent;
    if (extent != extent)
        return 0.0;
    return extent / size * margin;
}

Bounds XYCanvas::calculateStrictDataBounds()
{
    Bounds bounds;
    for (XYDataSet const* const dataSet : qAsConst(*dataSets))
        dataSet->includeInBounds(bounds);
    return bounds;
}

Bounds XYCanvas::calculateLastDataPointsBounds()
{
    Bounds bounds;
    for (XYDataSet const* const dataSet : qAsConst(*dataSets))
        dataSet->includeLastInBounds(bounds);
    return bounds;
}

Bounds XYCanvas::extendWithCustomDataBounds(Bounds const& bounds) const
{
    Bounds extended = bounds;
    for (QVector<double> const* const values : customVerticalDataBounds) {
        for (double const value : *values)
            includeValue(Bounds::Vertical, extended, value);
    }
    for (QVector<double> const* const values : customHorizontalDataBounds) {
        for (double const value : *values)
            includeValue(Bounds::Horizontal, extended, value);
    }
    return extended;
}

void XYCanvas::addCustomHorizontalDataBoundsVector(QVector<double>* values)
{
    customHorizontalDataBounds.append(values);
}

void XYCanvas::addCustomVerticalDataBoundsVector(QVector<double>* values)
{
    customVerticalDataBounds.append(values);
}

void XYCanvas::fullRepaint()
{
    needsFullRedraw = true;
    update();
}

void XYCanvas::setConnectFirstLast(bool val)
{
    // A line that was turned off may have been left out of earlier runs.
    if (val && !connectFirstLast) {
        for (RunMarks& marks : runMarks)
            marks.closingLineDrawn = false;
    }
    connectFirstLast = val;
}

void XYCanvas::changeCursor(Qt::CursorShape cursor)
{
    setCursor(cursor);
}

void XYCanvas::enableSendingMouseCoords(bool val)
{
    sendMouseCoords = val;
}

void XYCanvas::enableSendingTextualMouseCoords(bool val)
{
    sendTextualMouseCoords = val;
}
