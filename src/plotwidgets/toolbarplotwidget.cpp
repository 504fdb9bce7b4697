#include "toolbarplotwidget.h"

#include "debugtag.h"
#include "lineartimegrid.h"
#include "memleaktracer.h"
#include "xycanvas.h"
#include "xyplot.h"

#include <QGridLayout>
#include <utility>

namespace {

DebugTag debugTag("ToolBarPlotWidget");

std::unique_ptr<Marker_t> horizontalMarker(QColor const& color)
{
    return std::make_unique<Marker_t>(Marker_t{eFOREGROUND_MARKER, eVERTICAL, 0.0, color,
                                               Qt::DashLine, 1, QStringLiteral("N/A")});
}

void setAppearance(Marker_t& marker, QString label, Qt::PenStyle style, QColor const& color)
{
    marker.color = color;
    marker.penStyle = style;
    marker.label = std::move(label);
}

void moveTo(Marker_t& marker, double position, QString label)
{
    marker.value = position;
    if (!label.isEmpty())
        marker.label = std::move(label);
}

} // namespace

ToolBarPlotWidget::ToolBarPlotWidget(QWidget* parent, short leapSeconds)
    : QWidget(parent)
    , valueMarker(std::make_unique<Marker_t>())
    , hMarkerOne(horizontalMarker(Qt::red))
    , hMarkerTwo(horizontalMarker(Qt::green))
    , deltaLS(leapSeconds)
    , toolBarParent(parent)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("ToolBarPlotWidget"));
}

ToolBarPlotWidget::~ToolBarPlotWidget()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("ToolBarPlotWidget"));
}

void ToolBarPlotWidget::setUpXYPlot(bool withValueMarker, bool withTimeGrid)
{
    connectToolBar();
    auto* const layout = new QGridLayout(this);
    layout->addWidget(xyPlot, 0, 0, 1, 1);

    XYCanvas* const canvas = xyPlot->getCanvas();
    canvas->setGrid(eVERTICAL, new LinearGrid(eVERTICAL, this), false);
    if (withTimeGrid)
        timeGrid = new LinearTimeGrid(deltaLS, eHORIZONTAL, this);
    canvas->setGrid(eHORIZONTAL, withTimeGrid ? timeGrid.data() : new LinearGrid(eHORIZONTAL, this),
                    false);
    xyPlot->setLabelType(eVERTICAL, eSCALE_LABELS);
    xyPlot->setLabelType(eHORIZONTAL, eSCALE_LABELS);
    xyPlot->addScale(eVERTICAL, true);

    if (withValueMarker) {
        *valueMarker = Marker_t{eFOREGROUND_MARKER, eHORIZONTAL, 0.0,      QColor(255, 0, 0, 255),
                                Qt::SolidLine,      1,           QString()};
        xyPlot->addMarker(valueMarker.get());
    }
}

LinearTimeGrid* ToolBarPlotWidget::getTimeGrid() const
{
    return timeGrid;
}

/// By signature, as only the running program knows what the parent has.
void ToolBarPlotWidget::connectToolBar()
{
    connect(toolBarParent, SIGNAL(showFullPlot()), xyPlot, SLOT(showFullPlot()));
    connect(toolBarParent, SIGNAL(changeCursor(Qt::CursorShape)), xyPlot->getCanvas(),
            SLOT(changeCursor(Qt::CursorShape)));
    connect(toolBarParent, SIGNAL(mouseTrackingOn(bool)), xyPlot, SLOT(enableMouseTracking(bool)));
    connect(toolBarParent, SIGNAL(sendMouseCoords(bool)), xyPlot, SIGNAL(sendMouseCoords(bool)));
    connect(xyPlot, SIGNAL(mouseMoved(const QString, const QString)), toolBarParent,
            SLOT(drawMouseCoords(const QString, const QString)));
}

void ToolBarPlotWidget::addHorizMarkerOne(QString label, Qt::PenStyle style, QColor colour)
{
    setAppearance(*hMarkerOne, std::move(label), style, colour);
}

void ToolBarPlotWidget::addHorizMarkerTwo(QString label, Qt::PenStyle style, QColor colour)
{
    setAppearance(*hMarkerTwo, std::move(label), style, colour);
}

void ToolBarPlotWidget::updateHorizMarkerOne(double position, QString label)
{
    moveTo(*hMarkerOne, position, std::move(label));
}

void ToolBarPlotWidget::updateHorizMarkerTwo(double position, QString label)
{
    moveTo(*hMarkerTwo, position, std::move(label));
}

void ToolBarPlotWidget::showHMarkerOne(bool show)
{
    showMarker(hMarkerOne.get(), hMarkerOneShown, show);
}

void ToolBarPlotWidget::showHMarkerTwo(bool show)
{
    showMarker(hMarkerTwo.get(), hMarkerTwoShown, show);
}

/// Counts as shown also where the plot has refused the marker for its label.
void ToolBarPlotWidget::showMarker(Marker_t* marker, bool& shown, bool show)
{
    if (show && !shown)
        xyPlot->addMarker(marker);
    else if (!show && shown)
        xyPlot->removeMarker(marker);
    shown = show;
    redrawCanvas();
}

void ToolBarPlotWidget::redrawCanvas()
{
    xyPlot->redrawCanvas();
}
