#include "timeplotwidget.h"

#include "colorbardrawlistener.h"
#include "dataarray.h"
#include "debugtag.h"
#include "look.h"
#include "memleaktracer.h"
#include "rounding.h"
#include "viewportmaskfilter.h"
#include "xycanvas.h"
#include "xydataset.h"
#include "xyplot.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

DebugTag debugTag("TimePlotWidget");

constexpr double horizontalZoomLimitMs = 1000.0;

/// Part of an hour below which an offset from UTC counts as whole hours.
constexpr double negligibleHours = 0.01;

} // namespace

TimePlotWidget::TimePlotWidget(short leapSeconds, QString title, int minimumHeight,
                               int minimumWidth, QString yAxisTitle, bool roundMeanToInteger,
                               double verticalZoomLimit, QWidget* parent)
    : ToolBarPlotWidget(parent, leapSeconds)
    , plot(new XYPlot(true, true, false, nullptr))
    , meanIsInteger(roundMeanToInteger)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("TimePlotWidget"));
    TimePlotWidget::setXYPlot();
    XYCanvas* const canvas = plot->getCanvas();
    canvas->addCustomVerticalDataBoundsVector(&customVerticalBounds);
    if (!title.isEmpty())
        plot->setPlotTitle(std::move(title));
    plot->setMinimumHeight(minimumHeight);
    plot->minimumPlotWidth = minimumWidth;
    plot->setMinimumWidth(minimumWidth);
    setUpXYPlot(false, true);
    plot->setAxisTitle(eHORIZONTAL, std::move(yAxisTitle));
    plot->setAxisTitle(eVERTICAL, tr("Time (s)"));
    plot->addScale(eHORIZONTAL, true);
    canvas->setHorizontalZoomLimit(horizontalZoomLimitMs);
    canvas->setVerticalZoomLimit(verticalZoomLimit);
}

TimePlotWidget::~TimePlotWidget()
{
    takeFiltersBack();
    delete plot;
    plot = nullptr;
    delete timeGrid;
    timeGrid = nullptr;
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("TimePlotWidget"));
}

void TimePlotWidget::setXYPlot()
{
    xyPlot = plot;
}

void TimePlotWidget::addDataSet(XYDataSet* dataSet)
{
    plot->addDataSet(dataSet);
    if (dataSet->getLook()->isColorBar())
        giveListener(dataSet);
    else
        giveFilter(dataSet);
}

void TimePlotWidget::giveFilter(XYDataSet* dataSet)
{
    auto* const filter = new ViewportMaskFilter(dataSet, &colorBarListeners, nullptr);
    delete dataSet->getFilter();
    dataSet->setFilter(filter);
    auto const isGone = [](GivenFilter const& given) { return !given.filter; };
    givenFilters.erase(std::remove_if(givenFilters.begin(), givenFilters.end(), isGone),
                       givenFilters.end());
    givenFilters.append({dataSet, filter});
}

void TimePlotWidget::giveListener(XYDataSet* dataSet)
{
    auto* const listener = new ColorBarDrawListener(dataSet, nullptr);
    XYDataSetDrawListener* const former = dataSet->getDrawListener();
    if (auto* const formerBar = qobject_cast<ColorBarDrawListener*>(former))
        colorBarListeners.removeOne(formerBar);
    delete former;
    dataSet->setDrawListener(listener);
    colorBarListeners.append(listener);
    connect(listener, &QObject::destroyed, &listenerContext,
            [this, listener] { colorBarListeners.removeAll(listener); });
}

/// The filters point into this widget, so those still in use go with it.
void TimePlotWidget::takeFiltersBack()
{
    for (GivenFilter const& given : qAsConst(givenFilters)) {
        if (!given.dataSet || given.dataSet->getFilter() != given.filter)
            continue;
        given.dataSet->setFilter(nullptr);
        delete given.filter;
    }
}

void TimePlotWidget::setDataSets(QList<XYDataSet*> dataSets)
{
    plot->removeAllDataSets();
    colorBarListeners.clear();
    for (XYDataSet* const dataSet : qAsConst(dataSets))
        addDataSet(dataSet);
    updateLegend();
}

void TimePlotWidget::updateLegend()
{
    QList<XYDataSet*> const dataSets = plot->getDataSets();
    bool const wantsLegend = dataSets.size() >= 2
        || (dataSets.size() == 1 && dataSets.first()->getShowLegendEvenIfOnlyDataSet());
    if (wantsLegend)
        plot->addLegend(true, eLEGEND_RIGHT, nullptr);
}

void TimePlotWidget::updateTimePlot()
{
    takeMarkersIntoView();
    plot->getCanvas()->updateBounds();
    plot->drawNewPoints();
    if (hMarkerOneShowsMean)
        showMean();
}

/// The number of markers in the plot tells which of the two are shown.
void TimePlotWidget::takeMarkersIntoView()
{
    customVerticalBounds.clear();
    auto const shown = plot->getMarkers().size();
    // A mean lies within the data anyway, and must not widen the view where they have gone.
    if (shown >= 1 && !hMarkerOneShowsMean)
        customVerticalBounds.append(hMarkerOne->value);
    if (shown >= 2)
        customVerticalBounds.append(hMarkerTwo->value);
}

void TimePlotWidget::showMean()
{
    QList<XYDataSet*> const dataSets = plot->getDataSets();
    if (dataSets.isEmpty())
        return;
    XYDataSet const* const first = dataSets.first();
    double mean = first->yData->getMean();
    if (meanIsInteger)
        mean = roundHalfUp(mean);
    QString const number = QStringLiteral("%1").arg(mean, 0, 'g', -1, u' ');
    updateHorizMarkerOne(mean,
                         dataSets.size() < 2 ? tr("mean: %1").arg(number)
                                             : tr("%1 mean: %2").arg(first->name, number));
}

void TimePlotWidget::updateTimeAxisTitle()
{
    if (!timeGrid)
        return;
    QString title;
    switch (timeGrid->timeType) {
    case eSHOW_GNSS:
    case eSHOW_TOW:
    case eSHOW_SECONDS:
        title = tr("GNSS Time");
        break;
    case eSHOW_UTC:
        title = tr("UTC Time");
        break;
    case eSHOW_LOCAL:
        title = tr("Local Time") + localOffsetText();
        break;
    default:
        break;
    }
    if (timeGrid->timeType == eSHOW_TOW)
        title += tr(" (TOW)");
    else if (timeGrid->timeType == eSHOW_SECONDS)
        title += tr(" (s)");
    else
        title += tr(" (h:mm:ss)");
    plot->setAxisTitle(eVERTICAL, title);
}

QString TimePlotWidget::localOffsetText() const
{
    double const offset = timeGrid->getLocalTimeOffsetHours(0.0);
    if (offset == LinearTimeGrid::unknownUtcOffset)
        return {};
    int const hours = truncateToInt(std::floor(std::fabs(offset)));
    QString text = tr(": UTC") + (offset < 0.0 ? u'-' : u'+') + QString::number(hours);
    // The sign stays in this difference: west of Greenwich the minutes are always told.
    if (std::fabs(offset - hours) > negligibleHours) {
        constexpr double minutesPerHour = 60.0;
        int const minutes = truncateToInt((std::fabs(offset) - hours) * minutesPerHour);
        text += QStringLiteral(":%1").arg(minutes, 2, 10, QLatin1Char('0'));
    }
    return text;
}

void TimePlotWidget::changeTimeAxis(ETimeType type)
{
    if (!timeGrid)
        return;
    timeGrid->changeTimeFormat(type);
    updateTimeAxisTitle();
    plot->getCanvas()->fullRepaint();
}

void TimePlotWidget::setDeltaLS(short leapSeconds)
{
    if (timeGrid)
        timeGrid->deltaLS = leapSeconds;
}

void TimePlotWidget::setUtcOffset(float utcOffset)
{
    if (timeGrid)
        timeGrid->utcOffset = utcOffset;
}
