#include "plotcolumn.h"

#include "look.h"
#include "timeplotwidget.h"
#include "xycanvas.h"
#include "xyplot.h"

#include <QDateTime>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>

namespace {

constexpr int leastPlotWidth = 400; // pixels
constexpr int leastPlotHeight = 130;
constexpr int lowerMargin = 4; // pixels below the data

/// More columns of satellites would take the room of the plot; a legend can be scrolled instead.
constexpr int legendColumns = 3;

constexpr double initialSpanMs = 30000.0;
/// Room ahead of the newest epoch, so that not each one costs a redraw; little, since a view that
/// follows the data goes on to its end.
constexpr double leastTimeBufferMs = 5000.0;
constexpr double timeBuffer = 0.02; // of the extent of the data
constexpr double valueBuffer = 0.1;

/// From UTC to local time on the day of @p gnssTime; leap seconds do not matter to it.
float hoursFromUtc(double gnssTime)
{
    constexpr qint64 gnssStartMs = 315964800000; // in Unix time
    constexpr float secondsPerHour = 3600.0F;
    QDateTime const moment = QDateTime::fromMSecsSinceEpoch(qint64(gnssTime) + gnssStartMs);
    return float(moment.offsetFromUtc()) / secondsPerHour;
}

/// Holds a legend: as wide as that is, and as high as there is room.
class LegendArea : public QScrollArea
{
public:
    LegendArea()
    {
        auto* const content = new QWidget;
        // What is added keeps its width and stands at the left.
        auto* const layout = new QHBoxLayout(content);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setDirection(QBoxLayout::RightToLeft);
        layout->addStretch();
        setWidget(content);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

    QSize sizeHint() const override
    {
        QSize const content = widget()->sizeHint();
        return {content.width() + verticalScrollBar()->sizeHint().width(), content.height()};
    }
    QSize minimumSizeHint() const override { return {sizeHint().width(), 0}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

/// Height of a plot at which the columns of its legend come to no more than wanted.
int heightForLegend(int dataSetCount, QFontMetrics const& metrics)
{
    constexpr int headerRows = 3;
    // Rows that cannot be dealt out evenly lengthen each column, and a column stays below its
    // limit.
    int const rows = (headerRows + dataSetCount) / legendColumns + legendColumns;
    return qMax(leastPlotHeight, rows * metrics.height());
}

} // namespace

/// What a plot shows.
struct PlotColumn::Content
{
    QString title;
    DataSetList dataSets;
    double leastValueExtent; // vertical extent in view while there is little data
    double zoomLimit; // the least that a user can zoom to
    int stretch;
    bool hasMean; // of the first data set
};

PlotColumn::PlotColumn(ReceiverData& receiverData, double start, int leapSeconds, QWidget* parent)
    : QWidget(parent)
    , m_timeExtent(receiverData.timeExtent())
    , m_start(start)
    , m_hoursFromUtc(hoursFromUtc(start))
    , m_leapSeconds(leapSeconds)
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(4, 4, 4, 4);
    grid->setColumnStretch(0, 1);
    addPlot({tr("C/N0 (dB-Hz)"), receiverData.strengths(), 20.0, 1.0, 5, false}, grid);
    addPlot({tr("Altitude (m)"), receiverData.altitude(), 10.0, 0.1, 3, true}, grid);
    addPlot({tr("Satellites in use"), receiverData.satellitesInUse(), 8.0, 1.0, 3, true}, grid);
    shareScaleWidth();
}

PlotColumn::~PlotColumn()
{
    // Before the areas in which their legends stand.
    qDeleteAll(m_plots);
}

void PlotColumn::addPlot(Content const& content, QGridLayout* grid)
{
    int const legendHeight = heightForLegend(int(content.dataSets.size()), fontMetrics());
    auto* const widget
        = new TimePlotWidget(short(m_leapSeconds), QString(), legendHeight, leastPlotWidth,
                             content.title, false, content.zoomLimit, this);
    widget->layout()->setContentsMargins(0, 0, 0, 0);
    widget->setUtcOffset(m_hoursFromUtc);
    auto* const legendArea = new LegendArea;
    int const row = int(m_plots.size());
    grid->addWidget(widget, row, 0);
    grid->addWidget(legendArea, row, 1);
    grid->setRowStretch(row, content.stretch);

    XYPlot* const plot = widget->getXYPlot();
    plot->setParentLayoutForLegend(legendArea->widget()->layout());
    widget->setDataSets(content.dataSets);
    // The height has told the legend how long its columns may be.
    plot->setMinimumHeight(leastPlotHeight);

    XYCanvas* const canvas = plot->getCanvas();
    canvas->setInitialDataBounds(
        Bounds{m_start, m_start + initialSpanMs, 0.0, content.leastValueExtent});
    // The whole log stays in view until the user zooms.
    canvas->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, false);
    // None to the left, where nothing arrives.
    canvas->setExtensionBufferParameters(0.0, leastTimeBufferMs, 0.0, 0.0, 0.0, timeBuffer,
                                         valueBuffer, valueBuffer);
    canvas->addCustomHorizontalDataBoundsVector(m_timeExtent);
    // No line runs through the bar.
    int const barStrip = 2 * content.dataSets.last()->getLook()->getOffset();
    canvas->setViewportMargin(0, 0, lowerMargin, barStrip);

    widget->hMarkerOneShowsMean = content.hasMean;
    m_plots.append(widget);
    m_legendAreas.append(legendArea);
    if (content.hasMean)
        m_plotsWithMean.append(widget);
}

void PlotColumn::shareScaleWidth()
{
    QList<XYPlot*> group;
    for (TimePlotWidget const* const widget : qAsConst(m_plots))
        group.append(widget->getXYPlot());
    for (XYPlot* const plot : qAsConst(group))
        plot->setGroupOfPlots(group);
}

void PlotColumn::showNewData()
{
    for (TimePlotWidget* const widget : qAsConst(m_plots))
        widget->updateTimePlot();
}

void PlotColumn::startAnew()
{
    showNewData();
    for (TimePlotWidget* const widget : qAsConst(m_plots))
        widget->redrawCanvas();
}

void PlotColumn::setTimeType(ETimeType timeType)
{
    for (TimePlotWidget* const widget : qAsConst(m_plots))
        widget->changeTimeAxis(timeType);
}

void PlotColumn::showMeans(bool show)
{
    for (TimePlotWidget* const widget : qAsConst(m_plotsWithMean))
        widget->showHMarkerOne(show);
}

QPixmap PlotColumn::picture(QSize size)
{
    for (QWidget* const area : qAsConst(m_legendAreas))
        area->setHidden(size.width() < minimumSizeHint().width());
    for (TimePlotWidget const* const widget : qAsConst(m_plots)) {
        XYPlot* const plot = widget->getXYPlot();
        plot->setMinimumSize(1, 1);
        plot->getCanvas()->adaptExtensionBufferParametersAndInitialDataBoundForOfflineTimePlots();
        plot->getCanvas()->setContinueBackgroundDrawingUntilFinished(true);
    }
    // The size is what was asked for, be it less than the layout would like.
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    resize(size);
    grab(); // margins in data units follow from the size, which the first paint tells
    for (TimePlotWidget* const widget : qAsConst(m_plots))
        widget->updateLegend();
    startAnew();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    grab(); // the grids tell their scales what to show, and how wide that is
    return grab();
}

void PlotColumn::drawMouseCoords(const QString xLabel, const QString yLabel)
{
    Q_EMIT mouseMoved(tr("%1   %2").arg(xLabel, yLabel));
}
