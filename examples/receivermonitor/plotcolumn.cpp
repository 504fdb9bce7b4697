#include "plotcolumn.h"

#include "dataarray.h"
#include "look.h"
#include "timeplotwidget.h"
#include "xyplot.h"

#include <QDateTime>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

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
    QString name;
    QString title; // of the y axis
    DataSetList dataSets;
    double leastValueExtent; // vertical extent in view while there is little data
    double zoomLimit; // the least that a user can zoom to
    int stretch;
    bool hasMean; // of the first data set
    bool hasRows; // in place of a y axis, a bar and a legend
};

PlotColumn::PlotColumn(ReceiverData& receiverData, double start, int leapSeconds, QWidget* parent)
    : QWidget(parent)
    , m_data(receiverData)
    , m_timeExtent(receiverData.timeExtent())
    , m_start(start)
    , m_hoursFromUtc(hoursFromUtc(start))
    , m_leapSeconds(leapSeconds)
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(4, 4, 4, 4);
    grid->setColumnStretch(0, 1);
    addPlot({tr("C/N0"), tr("C/N0 (dB-Hz)"), m_data.strengths(), 20.0, 1.0, 5, false, false}, grid);
    addPlot({tr("Altitude"), tr("Altitude (m)"), m_data.altitude(), 10.0, 0.1, 3, true, false},
            grid);
    addPlot({tr("Satellites in use"), tr("Satellites in use"), m_data.satellitesInUse(), 8.0, 1.0,
             3, true, false},
            grid);
    DataSetList const tracking = m_data.tracking();
    if (!tracking.isEmpty()) {
        int const stretch = qBound(3, int(tracking.size()) / 6, 5);
        // A view in y that cannot become smaller, since it means nothing.
        addPlot({tr("Tracking"), tr("Tracked (bold: used)"), tracking, 1.0, 1000.0, stretch, false,
                 true},
                grid);
    }
    bindTogether();
}

PlotColumn::~PlotColumn()
{
    // Before the areas in which their legends stand.
    for (Panel const& panel : qAsConst(m_panels))
        delete panel.plot;
}

void PlotColumn::addPlot(Content const& content, QGridLayout* grid)
{
    int const legendHeight = heightForLegend(int(content.dataSets.size()), fontMetrics());
    auto* const widget
        = new TimePlotWidget(short(m_leapSeconds), QString(), legendHeight, leastPlotWidth,
                             content.title, false, content.zoomLimit, this);
    widget->layout()->setContentsMargins(0, 0, 0, 0);
    widget->setUtcOffset(m_hoursFromUtc);
    int const row = int(m_panels.size());
    grid->addWidget(widget, row, 0);
    grid->setRowStretch(row, content.stretch);
    m_panels.append({content.name, widget, nullptr, content.stretch, content.hasRows});
    widget->hMarkerOneShowsMean = content.hasMean;

    XYPlot* const plot = widget->getXYPlot();
    XYCanvas* const canvas = plot->getCanvas();
    if (content.hasRows) {
        for (XYDataSet* const dataSet : content.dataSets)
            widget->addDataSet(dataSet);
        canvas->getGrid(eVERTICAL)->setGridLinesHidden(true);
    } else {
        auto* const legendArea = new LegendArea;
        grid->addWidget(legendArea, row, 1);
        m_panels.last().legendArea = legendArea;
        plot->setParentLayoutForLegend(legendArea->widget()->layout());
        widget->setDataSets(content.dataSets);
        // No line runs through the bar.
        int const barStrip = 2 * content.dataSets.last()->getLook()->getOffset();
        canvas->setViewportMargin(0, 0, lowerMargin, barStrip);
    }
    // The height has told the legend how long its columns may be.
    plot->setMinimumHeight(leastPlotHeight);
    setUpCanvas(canvas, content.leastValueExtent);
}

void PlotColumn::setUpCanvas(XYCanvas* canvas, double leastValueExtent)
{
    canvas->setInitialDataBounds(Bounds{m_start, m_start + initialSpanMs, 0.0, leastValueExtent});
    // The whole log stays in view until the user zooms.
    canvas->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, false);
    // None to the left, where nothing arrives.
    canvas->setExtensionBufferParameters(0.0, leastTimeBufferMs, 0.0, 0.0, 0.0, timeBuffer,
                                         valueBuffer, valueBuffer);
    canvas->addCustomHorizontalDataBoundsVector(m_timeExtent);
    canvas->setDefaultMouseOverDataTrackingEnabled(true);
    connect(canvas, qOverload<XYCanvas::datahit_t, QMouseEvent*>(&XYCanvas::mouseOverData), this,
            &PlotColumn::tellPoint);
}

/// Their scales have one width, and each knows where the mouse is in another.
void PlotColumn::bindTogether()
{
    QList<XYPlot*> plots;
    for (int i = 0; i < m_panels.size(); ++i)
        plots.append(plot(i));
    for (XYPlot* const plot : qAsConst(plots)) {
        plot->setGroupOfPlots(plots);
        plot->getCanvas()->setXYCanvassesForInterplotMouseMarkers(canvases());
    }
}

QStringList PlotColumn::names() const
{
    QStringList names;
    for (Panel const& panel : m_panels)
        names.append(panel.name);
    return names;
}

XYPlot* PlotColumn::plot(int index) const
{
    return m_panels.at(index).plot->getXYPlot();
}

QList<XYCanvas*> PlotColumn::canvases() const
{
    QList<XYCanvas*> canvases;
    for (Panel const& panel : m_panels)
        canvases.append(panel.plot->getXYPlot()->getCanvas());
    return canvases;
}

void PlotColumn::showPlot(int index, bool show)
{
    Panel const& panel = m_panels.at(index);
    panel.plot->setVisible(show);
    if (panel.legendArea)
        panel.legendArea->setVisible(show);
    // A row that stretches keeps its room, be it empty.
    static_cast<QGridLayout*>(layout())->setRowStretch(index, show ? panel.stretch : 0);
}

void PlotColumn::showNewData()
{
    for (Panel const& panel : qAsConst(m_panels))
        panel.plot->updateTimePlot();
}

void PlotColumn::startAnew()
{
    showNewData();
    for (Panel const& panel : qAsConst(m_panels))
        panel.plot->redrawCanvas();
}

void PlotColumn::setTimeType(ETimeType timeType)
{
    for (Panel const& panel : qAsConst(m_panels))
        panel.plot->changeTimeAxis(timeType);
}

void PlotColumn::showMeans(bool show)
{
    for (Panel const& panel : qAsConst(m_panels)) {
        if (panel.plot->hMarkerOneShowsMean)
            panel.plot->showHMarkerOne(show);
    }
}

void PlotColumn::showCrosshair(bool show)
{
    for (XYCanvas* const canvas : canvases()) {
        if (show) {
            canvas->enableMouseMarkers(Qt::Horizontal | Qt::Vertical);
            canvas->enableInterplotMouseMarkers(Qt::Vertical); // what the plots share is time
        } else {
            canvas->disableMouseMarkers();
            canvas->disableInterplotMouseMarkers();
        }
    }
}

QPixmap PlotColumn::picture(QSize size)
{
    bool const hasLegends = size.width() >= minimumSizeHint().width();
    for (int i = 0; i < m_panels.size(); ++i) {
        if (QWidget* const area = m_panels.at(i).legendArea)
            area->setVisible(hasLegends);
        XYPlot* const plot = this->plot(i);
        plot->setMinimumSize(1, 1);
        plot->getCanvas()->adaptExtensionBufferParametersAndInitialDataBoundForOfflineTimePlots();
        plot->getCanvas()->setContinueBackgroundDrawingUntilFinished(true);
    }
    // The size is what was asked for, be it less than the layout would like.
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    resize(size);
    grab(); // margins in data units follow from the size, which the first paint tells
    for (Panel const& panel : qAsConst(m_panels)) {
        if (panel.legendArea)
            panel.plot->updateLegend();
    }
    startAnew();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    grab(); // the grids tell their scales what to show, and how wide that is
    return grab();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the plots connect to this signature
void PlotColumn::drawMouseCoords(const QString xLabel, const QString yLabel)
{
    bool const isOverRows
        = std::any_of(m_panels.cbegin(), m_panels.cend(), [this](Panel const& panel) {
              return panel.hasRows && panel.plot->getXYPlot() == sender();
          });
    Q_EMIT mouseMoved(isOverRows ? xLabel : tr("%1   %2").arg(xLabel, yLabel));
}

void PlotColumn::tellPoint(XYCanvas::datahit_t const& hit, QMouseEvent const* event)
{
    // A text would hide what the mouse is drawing or dragging.
    if (!hit.dataSet || !event || event->buttons() != Qt::NoButton) {
        QToolTip::hideText();
        return;
    }
    double const time = hit.dataSet->xData->getValue(hit.index);
    QString const timeText = hit.canvas->getGrid(eHORIZONTAL)->getLabel(time, 0);
    QToolTip::showText(event->globalPosition().toPoint(),
                       m_data.describe(hit.dataSet, hit.index) + u'\n' + timeText, hit.canvas);
}
