#include "xycanvas.h"

#include "colorbarlayer.h"
#include "dataarray.h"
#include "look.h"
#include "painterstrokesink.h"
#include "rounding.h"
#include "xydataset.h"
#include "xydatasetfilter.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>
#include <cmath>
#include <utility>

namespace {

/// A drawing run longer than this hands the event loop back between two data sets.
constexpr int drawingRunLimitMs = 250;

/// A pixmap that covers a viewport on a device with that pixel ratio, to the last part of a pixel.
QPixmap pixmapFor(QSize viewport, qreal ratio)
{
    QPixmap pixmap(truncateToInt(std::ceil(viewport.width() * ratio)),
                   truncateToInt(std::ceil(viewport.height() * ratio)));
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

/**
 * The raster of a pixmap, taken out of it to be painted on and put back at the end: the pixels of
 * an image are within reach of strokes that do without the painter. Nothing is copied where the
 * platform keeps pixmaps as images.
 */
class PixmapRaster
{
public:
    explicit PixmapRaster(QPixmap& source)
        : pixmap(source)
        , image(source.toImage())
    {
        // The only reference left: otherwise painting would copy.
        pixmap = QPixmap();
    }
    ~PixmapRaster() { pixmap = QPixmap::fromImage(std::move(image)); }
    Q_DISABLE_COPY_MOVE(PixmapRaster)

    QImage* get() { return &image; }

private:
    QPixmap& pixmap;
    QImage image;
};

} // namespace

void XYCanvas::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    drawCanvas(&painter);
    painter.end();
    QFrame::paintEvent(event);
}

void XYCanvas::drawCanvas(QPainter* painter)
{
    if (isFullRedrawDue(painter))
        redrawFully(painter);
    // A window without width or height would fill the painter's transform with NaN.
    if (viewportRect.isEmpty())
        return;
    painter->drawPixmap(0, 0, *backgroundPixmap);
    drawMarkers(eFOREGROUND_MARKER, painter);
    drawEllipsoidalMarkers(painter);
    drawCrossMarkers(painter);
}

/// A resize and a painter on another device are noticed here and nowhere else.
bool XYCanvas::isFullRedrawDue(QPainter const* painter) const
{
    return needsFullRedraw || painter->viewport() != viewportRect
        || painter->device()->devicePixelRatioF() != backgroundPixelRatio;
}

void XYCanvas::redrawFully(QPainter const* painter)
{
    viewportRect = painter->viewport();
    backgroundPixelRatio = painter->device()->devicePixelRatioF();
    computeFactors();
    dataMarkers.clear();
    clearDataSetFilterCaches();
    clearViewportMaps();
    backgroundPixmap.reset();
    backgroundPixmap.reset(drawBackgroundPixmap());
    needsFullRedraw = false;
}

QPixmap* XYCanvas::drawBackgroundPixmap()
{
    auto pixmap = std::make_unique<QPixmap>(pixmapFor(viewportRect.size(), backgroundPixelRatio));
    if (!pixmap->isNull()) {
        // The viewport may end within the last row or column of device pixels.
        if (backgroundPixelRatio != 1.0)
            pixmap->fill(Qt::white);
        PixmapRaster raster(*pixmap);
        QPainter painter(raster.get());
        usePixels(&painter);
        paintBackground(&painter);
    }
    return pixmap.release();
}

void XYCanvas::paintBackground(QPainter* painter)
{
    painter->setClipRect(viewportRect, Qt::ReplaceClip);
    painter->fillRect(viewportRect, Qt::white);

    // All lines of both grids lie under all labels.
    XYAbstractGrid* const grids[] = {verticalGrid, horizontalGrid};
    Bounds const& view = viewBounds;
    for (XYAbstractGrid* const grid : grids) {
        if (grid)
            grid->drawGrid(painter, view.minX, view.minY, view.maxX, view.maxY);
    }
    for (XYAbstractGrid* const grid : grids) {
        if (grid)
            grid->drawLabels(painter, view.minX, view.minY, view.maxX, view.maxY);
    }
    drawMarkers(eBACKGROUND_MARKER, painter);
    drawColorBarBackgrounds(painter);
    drawDataSets(painter, true);
}

void XYCanvas::drawDataSets(QPainter* painter, bool fullRedraw)
{
    if (fullRedraw) {
        clearLastProcessedIndices();
        clearLastProcessedPointDegreeOfIsolation();
    }
    if (viewportRect.isEmpty())
        return;
    usePixelsUpwards(painter);
    painter->setRenderHint(QPainter::Antialiasing);
    QElapsedTimer timer;
    timer.start();

    ColorBarLayer bars(viewportRect.size(), backgroundPixelRatio);
    PainterStrokeSink lines(*painter);
    for (bool const barsTurn : {true, false}) {
        StrokeSink& sink = barsTurn ? static_cast<StrokeSink&>(bars) : lines;
        for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
            if (dataSet->getLook()->isColorBar() != barsTurn)
                continue;
            if (dataSet->visible && dataSet->yData->hasValidValues())
                drawDataSet(sink, dataSet);
            if (mustYield(timer.elapsed())) {
                QTimer::singleShot(0, this, SLOT(drawNewPointsOnBackGround()));
                break;
            }
        }
    }
    bars.putOver(painter);
    if (fullRedraw)
        continueBackgroundDrawingForNextFullRedraw = false;
}

bool XYCanvas::mustYield(qint64 elapsedMs) const
{
    return elapsedMs > drawingRunLimitMs && !continueBackgroundDrawingUntilFinished
        && !continueBackgroundDrawingForNextFullRedraw;
}

void XYCanvas::drawNewPointsOnBackGround()
{
    if (!needsFullRedraw && backgroundPixmap && !backgroundPixmap->isNull()) {
        PixmapRaster raster(*backgroundPixmap);
        QPainter painter(raster.get());
        usePixels(&painter);
        drawDataSets(&painter, false);
    }
    update();
}

void XYCanvas::setContinueBackgroundDrawingUntilFinished(bool on)
{
    continueBackgroundDrawingUntilFinished = on;
}

void XYCanvas::setContinueBackgroundDrawingUntilFinishedForNextFullRedraw()
{
    continueBackgroundDrawingForNextFullRedraw = true;
}

void XYCanvas::clearDataSetFilterCaches()
{
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        if (XYDataSetFilter* const filter = dataSet->getFilter())
            filter->clearCache();
    }
}

/// Logical pixels of the viewport, y downwards, on a pixmap of any pixel ratio.
void XYCanvas::usePixels(QPainter* painter) const
{
    painter->setViewport(QRect(QPoint(0, 0), viewportRect.size()));
    painter->setWindow(QRect(QPoint(0, 0), viewportRect.size()));
}

/// The same with y upwards from the lower edge.
void XYCanvas::usePixelsUpwards(QPainter* painter) const
{
    int const height = viewportRect.height();
    painter->setWindow(QRect(QPoint(0, height), QPoint(viewportRect.width() - 1, -1)));
}
