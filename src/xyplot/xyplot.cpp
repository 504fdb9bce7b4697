#include "xyplot.h"

#include "dataarray.h"
#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"
#include "verticallabel.h"
#include "verticalscrollbar.h"
#include "xycanvas.h"
#include "xydataset.h"
#include "xylegend.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace {

DebugTag debugTag("XYPlot");

/// A burst of data sets added is over by then.
constexpr int redrawDelayMs = 250;

/// Cells of the grid that holds labels, scales and the canvas.
enum GridRow : int {
    TitleAboveRow = 0,
    CanvasRow = 2,
    TitleBelowRow = 10,
};
enum GridColumn : int {
    TitleColumn = 0,
    CanvasColumn = 2,
};

/// As high, with the frame, as the y scale reaches below the canvas: in whatever style, the ticks
/// of the scale then stand at the grid lines.
class HorizontalScrollBar : public QScrollBar
{
public:
    explicit HorizontalScrollBar(QFrame* frame)
        : QScrollBar(Qt::Horizontal, frame)
        , height(XYScale::verticalOverhang - frame->frameWidth())
    {
    }

    QSize sizeHint() const override { return {QScrollBar::sizeHint().width(), height}; }

private:
    int const height;
};

void makeUnspaced(QLayout* layout)
{
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
}

void makeSquare(QPushButton* button, int side)
{
    button->setMinimumSize(side, side);
    button->setMaximumSize(side, side);
}

void showIfNotEmpty(QLabel* label, QString const& text)
{
    label->setVisible(!text.isEmpty());
}

void centreInFixedHeight(QLabel* label)
{
    label->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

/// The middle of a rectangle, halves towards zero.
QPoint middleOf(QRect const& rect)
{
    return {int((qint64(rect.left()) + rect.right()) / 2),
            int((qint64(rect.top()) + rect.bottom()) / 2)};
}

/// A rectangle whose edges leave an int room for sums and differences.
QRect withinPixels(QRect const& rect)
{
    auto const held = [](int edge) { return qBound(-pixelLimit, edge, pixelLimit); };
    return {QPoint(held(rect.left()), held(rect.top())),
            QPoint(held(rect.right()), held(rect.bottom()))};
}

constexpr int wrappedAndCentred = Qt::TextWordWrap | Qt::AlignHCenter | Qt::AlignVCenter;

} // namespace

XYPlot::XYPlot(bool withScrollBars, bool xAxisTitleOnTop, bool suppressBackwardLines,
               QWidget* parent)
    : QWidget(parent)
    , markers(std::make_unique<QList<Marker_t*>>())
    , dataSets(std::make_unique<QList<XYDataSet*>>())
    , ellipseMarkers(std::make_unique<QList<EllipseMarker_t*>>())
    , crossMarkers(std::make_unique<QList<CrossMarker_t*>>())
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYPlot"));
    createTitles();
    createCanvas(suppressBackwardLines);
    createCanvasFrame(withScrollBars);
    fillLayout(xAxisTitleOnTop);
}

XYPlot::~XYPlot()
{
    removeLegend();
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYPlot"));
}

QScrollBar* XYPlot::getHorizontalScrollBar() const
{
    return horizontalScrollBar;
}

VerticalScrollBar* XYPlot::getVerticalScrollBar() const
{
    return verticalScrollBar;
}

void XYPlot::createTitles()
{
    titleLabel = new QLabel(tr("Plot-title"));
    titleLabel->setFont(QFont(titleLabel->font())); // a copy, which follows its surroundings
    titleLabel->hide();
    centreInFixedHeight(titleLabel);

    yAxisTitleLabel = new VerticalLabel(QString(), nullptr);
    yAxisTitleLabel->setFontAndUpdate(getPlotRenderSettings().axisTitleFont);
    yAxisTitleLabel->hide();
    yAxisTitleLabel->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);

    xAxisTitleLabel = new QLabel;
    xAxisTitleLabel->setFont(getPlotRenderSettings().axisTitleFont);
    xAxisTitleLabel->hide();
    centreInFixedHeight(xAxisTitleLabel);
}

void XYPlot::createCanvas(bool suppressBackwardLines)
{
    canvas = new XYCanvas(dataSets.get(), markers.get(), ellipseMarkers.get(), crossMarkers.get(),
                          suppressBackwardLines, nullptr);
    connect(canvas, &XYCanvas::mouseMoved, this, &XYPlot::mouseMoved);
    connect(canvas, &XYCanvas::mouseCoords, this, &XYPlot::mouseCoords);
    connect(this, &XYPlot::connectFirstLast, canvas, &XYCanvas::setConnectFirstLast);
    connect(this, &XYPlot::sendMouseCoords, canvas, &XYCanvas::enableSendingMouseCoords);
}

void XYPlot::createCanvasFrame(bool withScrollBars)
{
    canvasFrame = new QFrame;
    canvasFrame->setContentsMargins(0, 0, 0, 0);
    canvasFrame->setFrameStyle(int(QFrame::StyledPanel) | int(QFrame::Plain));
    auto* const grid = new QGridLayout(canvasFrame);
    makeUnspaced(grid);
    grid->addWidget(canvas, 0, 0);
    if (!withScrollBars)
        return;

    auto* const verticalStrip = new QVBoxLayout;
    auto* const horizontalStrip = new QHBoxLayout;
    createScrollBar(verticalStrip, Qt::Vertical);
    createScrollBar(horizontalStrip, Qt::Horizontal);
    grid->addLayout(horizontalStrip, 1, 0);
    grid->addLayout(verticalStrip, 0, 1);
    grid->addWidget(createShowAllButton(), 1, 1);
}

QPushButton* XYPlot::createShowAllButton()
{
    auto* const button
        = new QPushButton(QIcon(QStringLiteral(":/pic/tp_showall_small.png")), QString());
    button->setToolTip(tr("Horizontally and vertically show all data"));
    makeSquare(button, horizontalScrollBar->sizeHint().height());
    canvas->connectAsZoomFullBothButton(button);
    return button;
}

void XYPlot::createScrollBar(QLayout* layout, Qt::Orientation orientation)
{
    bool const vertical = orientation == Qt::Vertical;
    if (vertical)
        verticalScrollBar = new VerticalScrollBar(nullptr);
    else
        horizontalScrollBar = new HorizontalScrollBar(canvasFrame);
    QScrollBar* const bar = vertical ? verticalScrollBar : horizontalScrollBar;
    int const side = vertical ? bar->sizeHint().width() : bar->sizeHint().height();
    QString const axis = vertical ? tr("vertical") : tr("horizontal");
    QIcon const icon(vertical ? QStringLiteral(":/pic/tp_showall_vertical_small.png")
                              : QStringLiteral(":/pic/tp_showall_horizontal_small.png"));

    auto* const zoomIn = new QPushButton(QStringLiteral("+"));
    zoomIn->setToolTip(tr("Zoom in %1ly").arg(axis));
    auto* const zoomOut = new QPushButton(QStringLiteral("-"));
    zoomOut->setToolTip(tr("Zoom out %1ly").arg(axis));
    auto* const showAll = new QPushButton(icon, QString());
    showAll->setToolTip(tr("Show the full %1 extent of the data").arg(axis));

    makeUnspaced(layout);
    layout->addWidget(bar);
    for (QPushButton* const button : {zoomIn, zoomOut, showAll}) {
        makeSquare(button, side);
        layout->addWidget(button);
    }
    if (vertical) {
        canvas->setVerticalScrollBar(bar);
        canvas->connectAsZoomInVerticalButton(zoomIn);
        canvas->connectAsZoomOutVerticalButton(zoomOut);
        canvas->connectAsZoomFullVerticalButton(showAll);
    } else {
        canvas->setHorizontalScrollBar(bar);
        canvas->connectAsZoomInHorizontalButton(zoomIn);
        canvas->connectAsZoomOutHorizontalButton(zoomOut);
        canvas->connectAsZoomFullHorizontalButton(showAll);
    }
}

/// No spacing around the canvas: the scales must touch its frame.
void XYPlot::fillLayout(bool xAxisTitleOnTop)
{
    plotGrid = new QGridLayout;
    plotGrid->setSpacing(0);
    plotGrid->addWidget(yAxisTitleLabel, CanvasRow, TitleColumn);
    plotGrid->addWidget(canvasFrame, CanvasRow, CanvasColumn);
    plotGrid->addWidget(xAxisTitleLabel, xAxisTitleOnTop ? TitleAboveRow : TitleBelowRow,
                        CanvasColumn);
    rowLayout = new QHBoxLayout;
    rowLayout->setSpacing(0);
    rowLayout->addLayout(plotGrid);
    mainLayout = new QVBoxLayout;
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->addWidget(titleLabel);
    mainLayout->addLayout(rowLayout);
    setLayout(mainLayout);
}

void XYPlot::resizeEvent(QResizeEvent* event)
{
    redrawCanvas();
    QWidget::resizeEvent(event);
}

void XYPlot::showEvent(QShowEvent* event)
{
    setupYScaleForFixedPositionedDatasets();
    QWidget::showEvent(event);
}

void XYPlot::addDataSet(XYDataSet* dataSet)
{
    dataSets->append(dataSet);
    disconnect(dataSet, nullptr, this, nullptr);
    connect(dataSet, &XYDataSet::yDataNoLongerEmpty, this, &XYPlot::redrawCanvas);
    if (legend) {
        disconnect(dataSet, nullptr, legend, nullptr);
        connect(dataSet, &XYDataSet::lastAppearanceChanged, legend, &XYLegend::updateLater);
    }
    QTimer::singleShot(redrawDelayMs, this, SLOT(redrawCanvas()));
}

void XYPlot::removeDataSet(XYDataSet* dataSet)
{
    dataSets->removeAll(dataSet);
}

void XYPlot::removeAllDataSets()
{
    dataSets->clear();
}

bool XYPlot::hasData() const
{
    return std::any_of(dataSets->cbegin(), dataSets->cend(),
                       [](XYDataSet const* dataSet) { return dataSet->yData->hasValidValues(); });
}

void XYPlot::addMarker(Marker_t* marker)
{
    auto const sameLabels
        = std::count_if(markers->cbegin(), markers->cend(),
                        [&](Marker_t const* other) { return other->label == marker->label; });
    for (qsizetype i = 0; i < sameLabels; ++i)
        qDebug("XYPlot: warning - trying to add the same marker twice");
    if (sameLabels == 0)
        markers->append(marker);
}

void XYPlot::removeMarker(Marker_t* marker)
{
    markers->removeAll(marker);
}

void XYPlot::addEllipseMarker(EllipseMarker_t* marker)
{
    ellipseMarkers->append(marker);
}

void XYPlot::removeEllipseMarker(EllipseMarker_t* marker)
{
    ellipseMarkers->removeAll(marker);
}

void XYPlot::addCrossMarker(CrossMarker_t* marker)
{
    crossMarkers->append(marker);
}

void XYPlot::removeCrossMarker(CrossMarker_t* marker)
{
    crossMarkers->removeAll(marker);
}

void XYPlot::drawNewPoints()
{
    canvas->drawNewPointsOnBackGround();
}

void XYPlot::redrawCanvas()
{
    setupYScaleForFixedPositionedDatasets();
    canvas->fullRepaint();
}

void XYPlot::redrawCanvasWithoutInterruption()
{
    canvas->setContinueBackgroundDrawingUntilFinishedForNextFullRedraw();
    redrawCanvas();
}

void XYPlot::enableMouseTracking(bool enable)
{
    canvas->enableSendingTextualMouseCoords(enable);
}

void XYPlot::showFullPlot()
{
    canvas->zoomFull();
}

void XYPlot::setPlotTitle(QString const& title)
{
    titleLabel->setText(title);
    showIfNotEmpty(titleLabel, title);
}

QString XYPlot::getPlotTitle() const
{
    return titleLabel->text();
}

void XYPlot::setAxisTitle(E_ORIENTATION_TYPE orientation, QString const& title)
{
    if (orientation != eHORIZONTAL) {
        xAxisTitleLabel->setText(title);
        showIfNotEmpty(xAxisTitleLabel, title);
    } else {
        yAxisTitleLabel->setText(title);
        showIfNotEmpty(yAxisTitleLabel, title);
    }
}

QString XYPlot::getAxisTitle(E_ORIENTATION_TYPE orientation) const
{
    return orientation == eVERTICAL ? xAxisTitleLabel->text() : yAxisTitleLabel->text();
}

int XYPlot::getAxisTitleFontHeight() const
{
    return QFontMetrics(getPlotRenderSettings().axisTitleFont).height();
}

int XYPlot::getAxisTitleTextHeight(E_ORIENTATION_TYPE orientation, int width)
{
    QRect const room(QPoint(0, 0),
                     QPoint(qBound(-pixelLimit, width, pixelLimit) - 1, highestTitle - 1));
    return QFontMetrics(getPlotRenderSettings().axisTitleFont)
        .boundingRect(room, wrappedAndCentred, getAxisTitle(orientation))
        .height();
}

void XYPlot::drawAxisTitle(QPainter* painter, E_ORIENTATION_TYPE orientation, QPoint centre)
{
    QString const text = getAxisTitle(orientation);
    QFont const font = getPlotRenderSettings().axisTitleFont;
    painter->save();
    painter->setFont(font);
    painter->translate(centre);
    if (orientation == eHORIZONTAL)
        painter->rotate(-90.0);
    painter->translate(-middleOf(QFontMetrics(font).boundingRect(text)));
    painter->drawText(0, 0, text);
    painter->restore();
}

void XYPlot::drawAxisTitle(QPainter* painter, E_ORIENTATION_TYPE orientation, QRect rect)
{
    rect = withinPixels(rect);
    painter->save();
    painter->setFont(getPlotRenderSettings().axisTitleFont);
    painter->translate(middleOf(rect));
    if (orientation == eHORIZONTAL) {
        painter->rotate(-90.0);
        rect = QRect(QPoint(0, 0), QPoint(rect.bottom() - rect.top(), rect.right() - rect.left()));
    }
    painter->translate(-middleOf(rect));
    painter->drawText(rect, wrappedAndCentred, getAxisTitle(orientation));
    painter->restore();
}
