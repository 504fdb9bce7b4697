#include "barname.h"
#include "dataarray.h"
#include "look.h"
#include "rounding.h"
#include "xycanvas.h"
#include "xydataset.h"
#include "xyplot.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <QFontMetrics>
#include <QFrame>
#include <QGridLayout>
#include <QScrollBar>
#include <QTimer>
#include <cmath>

namespace {

/// The width of the y scale follows from the names of data sets that may not be there yet.
constexpr int scaleSetupDelayMs = 250;

/// Cells of the grid of the plot; the canvas stands in row 2, column 2.
constexpr int yScaleRow = 2;
constexpr int yScaleColumn = 1;
constexpr int xScaleRowAbove = 1;
constexpr int xScaleRowBelow = 8;
constexpr int xScaleColumn = 2;

/// Pixels to each side of a fixed label in which a scale shows no numbers, at least.
constexpr int leastHiddenHalf = 7;

/// Pixels of the bar of a data set with a fixed position, to each side.
int hiddenHalfOf(Look const& look)
{
    qint64 const thickness
        = qint64(look.getDefaultLineThickness()) * getPlotRenderSettings().barThicknessFactor;
    return int(qBound(qint64(leastHiddenHalf), thickness / 2, qint64(pixelLimit)));
}

/// Whether a data set takes part in the arrangement of those with a fixed position.
bool takesRoom(XYDataSet* dataSet)
{
    return dataSet->visible
        && (dataSet->yData->hasValidValues() || !dataSet->getLook()->mustHideEntryIfNoValidData());
}

/// A length that a widget can have, for what hostile render settings lead to.
int withinWidget(int length)
{
    return qBound(0, length, QWIDGETSIZE_MAX);
}

/// The widest text that a label of as many digits may have.
QString withWidestDigits(QString text)
{
    for (QChar& character : text) {
        if (character >= u'0' && character <= u'8')
            character = u'9';
    }
    return text;
}

} // namespace

XYScale* XYPlot::getXScale() const
{
    return xScale;
}

XYScale* XYPlot::getYScale() const
{
    return yScale;
}

void XYPlot::addScale(E_ORIENTATION_TYPE orientation, bool onTop)
{
    if (orientation == eVERTICAL)
        addYScale();
    else if (orientation == eHORIZONTAL)
        addXScale(onTop);
}

void XYPlot::addYScale()
{
    XYAbstractGrid* const grid = canvas->getGrid(eVERTICAL);
    if (yScale || !grid)
        return;
    yScale = new XYScale(eVERTICAL, grid->getLabelType(), true, nullptr);
    grid->setScale(yScale);
    updateHorizontalScaleWidth();
    plotGrid->addWidget(yScale, yScaleRow, yScaleColumn);
    connect(grid, &XYAbstractGrid::numberOfDecimalsChanged, this,
            &XYPlot::updateHorizontalScaleWidth);
    connect(canvas, &XYCanvas::viewBoundsChanged, this, &XYPlot::updateHorizontalScaleWidth);
}

void XYPlot::addXScale(bool onTop)
{
    XYAbstractGrid* const grid = canvas->getGrid(eHORIZONTAL);
    if (xScale || !grid)
        return;
    xScale = new XYScale(eHORIZONTAL, grid->getLabelType(), onTop, nullptr);
    grid->setScale(xScale);
    xScale->setContentsMargins(canvasFrame->frameWidth(), 0, 0, 0); // to begin with the canvas
    updateVerticalScaleHeight();
    plotGrid->addWidget(xScale, onTop ? xScaleRowAbove : xScaleRowBelow, xScaleColumn);
    QTimer::singleShot(scaleSetupDelayMs, this, SLOT(setupYScaleForFixedPositionedDatasets()));
}

void XYPlot::removeScale(E_ORIENTATION_TYPE orientation)
{
    if (orientation == eVERTICAL && yScale) {
        if (XYAbstractGrid* const grid = canvas->getGrid(eVERTICAL))
            disconnect(grid, &XYAbstractGrid::numberOfDecimalsChanged, this,
                       &XYPlot::updateHorizontalScaleWidth);
        disconnect(canvas, &XYCanvas::viewBoundsChanged, this, &XYPlot::updateHorizontalScaleWidth);
        detachScale(yScale, eVERTICAL);
    } else if (orientation == eHORIZONTAL && xScale) {
        detachScale(xScale, eHORIZONTAL);
    }
}

void XYPlot::detachScale(XYScale* scale, E_ORIENTATION_TYPE orientation)
{
    plotGrid->removeWidget(scale);
    delete scale;
    if (XYAbstractGrid* const grid = canvas->getGrid(orientation))
        grid->setScale(nullptr);
}

void XYPlot::setGroupOfPlots(QList<XYPlot*> const& plots)
{
    groupOfPlots = QList<QPointer<XYPlot>>(plots.cbegin(), plots.cend());
}

void XYPlot::setLabelType(E_ORIENTATION_TYPE orientation, E_LABEL_TYPE type)
{
    XYAbstractGrid* const grid = canvas->getGrid(orientation);
    if (grid)
        grid->setLabelType(type);
    if (orientation == eVERTICAL)
        updateHorizontalScaleWidth();
    else
        updateVerticalScaleHeight();
}

int XYPlot::widthOfWidestLabel() const
{
    XYAbstractGrid* const grid = canvas->getGrid(eVERTICAL);
    if (!grid || !hasScaleLabels(grid->getLabelType()))
        return 0;
    // Of all data, not of the view, so that the width stays while the user zooms.
    Bounds const bounds = canvas->getDataBounds();
    double const above = std::fabs(bounds.maxY);
    double const below = std::fabs(bounds.minY);
    double widest = above > below ? above : below;
    if (bounds.minY < 0.0)
        widest = -widest;
    QString const text = withWidestDigits(grid->getLabel(widest, grid->getNumberOfDecimals()));
    return QFontMetrics(getPlotRenderSettings().scaleFont).horizontalAdvance(text);
}

int XYPlot::calculateHorizontalScaleWidth(bool includeGroup) const
{
    int width = 0;
    if (yScale) {
        width = qMax(widthOfWidestLabel() + XYScale::getTickReserve(),
                     yScale->getRequiredWidthForLabelsAtFixedPosition());
    }
    if (includeGroup) {
        for (XYPlot const* const plot : groupOfPlots) {
            if (plot && plot != this)
                width = qMax(width, plot->calculateHorizontalScaleWidth(false));
        }
    }
    return width;
}

/// Touches the scale only if its width changes, since the layout then works anew.
void XYPlot::setHorizontalScaleWidth(int width, bool includeGroup)
{
    int const held = withinWidget(width);
    if (yScale && held != yScale->minimumSize().width()) {
        yScale->setMinimumWidth(held);
        yScale->setMaximumWidth(held);
    }
    if (!includeGroup)
        return;
    for (XYPlot* const plot : qAsConst(groupOfPlots)) {
        if (plot && plot != this)
            plot->setHorizontalScaleWidth(width, false);
    }
}

void XYPlot::updateHorizontalScaleWidth()
{
    setHorizontalScaleWidth(calculateHorizontalScaleWidth(true), true);
}

void XYPlot::updateVerticalScaleHeight()
{
    XYAbstractGrid const* const grid = canvas->getGrid(eHORIZONTAL);
    if (!xScale || !grid)
        return;
    int height = XYScale::getTickReserve();
    if (hasScaleLabels(grid->getLabelType()))
        height += QFontMetrics(getPlotRenderSettings().scaleFont).height();
    height = withinWidget(height);
    if (height != xScale->minimumSize().height()) {
        xScale->setMinimumHeight(height);
        xScale->setMaximumHeight(height);
    }
}

void XYPlot::updateVerticalScale()
{
    if (xScale)
        xScale->update();
}

int XYPlot::canvasHeightOr(int forgedCanvasHeight) const
{
    return forgedCanvasHeight >= 1 ? forgedCanvasHeight : canvas->height();
}

void XYPlot::repositionAutopositionedDataSets(int forgedCanvasHeight)
{
    int const height = canvasHeightOr(forgedCanvasHeight);
    QList<XYDataSet*> autoPositioned;
    double above = 0.0; // pixels that offsets from the top keep free, and from the bottom
    double below = 0.0;
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        if (!takesRoom(dataSet))
            continue;
        Look const* const look = dataSet->getLook();
        if (look->isFractionPositioned() && look->isAutoPositioned()) {
            autoPositioned.append(dataSet);
        } else if (look->isOffsetPositioned()) {
            double const offset = look->getOffset();
            above = qMax(above, offset);
            below = qMax(below, -offset);
        }
    }
    double const step = (height - below - above) / double(autoPositioned.size() + 1);
    double position = step + above;
    for (XYDataSet* const dataSet : qAsConst(autoPositioned)) {
        dataSet->getLook()->setAutoPosition(float(position / height));
        position += step;
    }
}

void XYPlot::setupYScaleForFixedPositionedDatasets(int forgedCanvasHeight,
                                                   int forcedHorScrollBarHeight)
{
    repositionAutopositionedDataSets(forgedCanvasHeight);
    if (yScale)
        labelFixedPositions(canvasHeightOr(forgedCanvasHeight), forcedHorScrollBarHeight);
    updateHorizontalScaleWidth();
    update();
}

/// Positions on the scale count from its bottom, beside that of the scroll bar, upwards.
void XYPlot::labelFixedPositions(int canvasHeight, int forcedHorScrollBarHeight)
{
    yScale->clearIntervalsToHideScale();
    yScale->clearLabelsAtFixedPosition();
    int stripHeight = 0;
    if (horizontalScrollBar) {
        stripHeight = forcedHorScrollBarHeight < 0 ? horizontalScrollBar->height()
                                                   : qMin(forcedHorScrollBarHeight, pixelLimit);
        yScale->addIntervalToHideScale(0, stripHeight);
    }
    int const scaleHeight = stripHeight + qMin(canvasHeight, pixelLimit);

    bool hasFreeDataSet = false;
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        Look const* const look = dataSet->getLook();
        if (!look->hasFixedYPosition()) {
            hasFreeDataSet = hasFreeDataSet || dataSet->visible;
        } else if (takesRoom(dataSet)) {
            int const fromTop
                = qBound(-pixelLimit, look->getFixedYPosition(canvasHeight), pixelLimit);
            int const y = scaleHeight - fromTop;
            int const half = hiddenHalfOf(*look);
            yScale->addIntervalToHideScale(y - half, y + half);
            yScale->addLabelAtFixedPosition(y, nameWithoutBar(dataSet->name));
        }
    }
    if (!hasFreeDataSet) {
        // Numbers make no sense where every data set has a row of its own.
        yScale->clearIntervalsToHideScale();
        yScale->addIntervalToHideScale(0, scaleHeight);
    }
}

void XYPlot::setupYScaleForFixedPositionedDatasets(int forgedCanvasHeight)
{
    setupYScaleForFixedPositionedDatasets(forgedCanvasHeight, -1);
}

void XYPlot::setupYScaleForFixedPositionedDatasets()
{
    setupYScaleForFixedPositionedDatasets(0, -1);
}
