#include "colorbardrawlistener.h"
#include "correlationplotwidget.h"
#include "librarytest.h"
#include "plotstage.h"
#include "spectrumplotwidget.h"
#include "timeplotwidget.h"
#include "viewportmaskfilter.h"

#include <QLabel>
#include <QMouseEvent>

/// A parent that keeps the contract of the tool bar.
class ToolBarParent : public QWidget
{
    Q_OBJECT
Q_SIGNALS:
    void showFullPlot();
    void changeCursor(Qt::CursorShape shape);
    void mouseTrackingOn(bool on);
    void sendMouseCoords(bool on);
    void connectFirstLast(bool on);
public Q_SLOTS:
    void drawMouseCoords(QString const& x, QString const& y) { texts = x + '|' + y; }

public:
    QString texts;
};

class tst_PlotWidgets : public LibraryTest
{
    Q_OBJECT
private:
    TimePlotWidget* makeTimePlot(bool roundMean = false)
    {
        return new TimePlotWidget(18, "", 50, 50, "y", roundMean, 1.0, &*parent);
    }
    void makeObjects() override
    {
        parent.emplace();
        stage.emplace();
    }
    void deleteObjects() override
    {
        parent.reset();
        stage.reset();
    }
    static QString textOf(Bounds const& b)
    {
        return QString("%1..%2 %3..%4").arg(b.minX).arg(b.maxX).arg(b.minY).arg(b.maxY);
    }
    std::optional<ToolBarParent> parent;
    std::optional<DataSetStage> stage;

private Q_SLOTS:
    void toolBarReachesThePlot();
    void titleOfTheTimeAxis();
    void markersWidenTheView();
    void meanIsShown();
    void legendComesWithTheSecondDataSet();
    void barsFilterTheOtherDataSets();
    void signalPlotsHaveFixedBounds();
};

void tst_PlotWidgets::toolBarReachesThePlot()
{
    TimePlotWidget* const plot = makeTimePlot();
    XYCanvas* const canvas = plot->getXYPlot()->getCanvas();
    plot->addDataSet(stage->add("data", {0.0, 4.0, 8.0}));
    canvas->resize(200, 100);
    plot->updateTimePlot();
    canvas->grab();
    canvas->zoomToVertical(1.0, 3.0);
    Q_EMIT parent->showFullPlot();
    QCOMPARE(canvas->getVerticalViewBoundsUpdatePolicy(), XYCanvas::PolicyFull);
    Q_EMIT parent->changeCursor(Qt::OpenHandCursor);
    QCOMPARE(canvas->cursor().shape(), Qt::OpenHandCursor);

    Q_EMIT parent->mouseTrackingOn(true);
    Q_EMIT parent->sendMouseCoords(true);
    QMouseEvent move(QEvent::MouseMove, QPointF(50, 50), canvas->mapToGlobal(QPointF(50, 50)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas, &move);
    QVERIFY(parent->texts.size() > 3);
}

void tst_PlotWidgets::titleOfTheTimeAxis()
{
    for (auto const& [type, offset, title] :
         {std::tuple(int(eSHOW_GNSS), 2.0F, "GNSS Time (h:mm:ss)"),
          {eSHOW_TOW, 2.0F, "GNSS Time (TOW)"},
          {eSHOW_SECONDS, 2.0F, "GNSS Time (s)"},
          {eSHOW_LOCAL, 0.0F, "Local Time: UTC+0 (h:mm:ss)"},
          {eSHOW_LOCAL, 5.02F, "Local Time: UTC+5:01 (h:mm:ss)"},
          {eSHOW_LOCAL, -5.0F, "Local Time: UTC-5:00 (h:mm:ss)"},
          {eSHOW_LOCAL, -0.5F, "Local Time: UTC-0:30 (h:mm:ss)"}}) {
        TimePlotWidget* const plot = makeTimePlot();
        plot->setUtcOffset(offset);
        plot->changeTimeAxis(ETimeType(type));
        QCOMPARE(plot->getXYPlot()->getAxisTitle(eVERTICAL), title);
        delete plot->getTimeGrid();
        plot->setUtcOffset(1.0F);
        plot->setDeltaLS(0);
        plot->changeTimeAxis(eSHOW_EOL);
        QCOMPARE(plot->getXYPlot()->getAxisTitle(eVERTICAL), title);
    }
}

void tst_PlotWidgets::markersWidenTheView()
{
    TimePlotWidget* const plot = makeTimePlot();
    XYCanvas const* const canvas = plot->getXYPlot()->getCanvas();
    plot->addDataSet(stage->add("data", {0.0, 10.0}));
    auto const top = [&] {
        plot->updateTimePlot();
        return canvas->getStrictDataBounds().maxY;
    };
    plot->updateHorizMarkerOne(20.0, "one");
    plot->updateHorizMarkerTwo(30.0, "two");
    QCOMPARE(top(), 10.0);
    plot->showHMarkerOne(true);
    QCOMPARE(top(), 20.0);
    plot->showHMarkerTwo(true);
    QCOMPARE(top(), 30.0);
    plot->showHMarkerTwo(false);
    plot->hMarkerOneShowsMean = true;
    QVERIFY(top() < 20.0);
}

void tst_PlotWidgets::meanIsShown()
{
    for (bool const rounded : {false, true}) {
        TimePlotWidget* const plot = makeTimePlot(rounded);
        plot->addDataSet(stage->add("%2", {-4.0, -1.0}));
        plot->hMarkerOneShowsMean = true;
        plot->showHMarkerOne(true);
        Marker_t const* const marker = plot->getXYPlot()->getMarkers().first();
        plot->updateTimePlot();
        QCOMPARE(marker->label, QString(rounded ? "mean: -2" : "mean: -2.5"));
        plot->addDataSet(stage->add("other"));
        plot->updateTimePlot();
        QCOMPARE(marker->label, QString(rounded ? "%2 mean: -2" : "%2 mean: -2.5"));
    }
}

void tst_PlotWidgets::legendComesWithTheSecondDataSet()
{
    TimePlotWidget* const plot = makeTimePlot();
    XYDataSet* const only = stage->add("only");
    plot->setDataSets({only});
    QVERIFY(!plot->getXYPlot()->getLegend());
    only->setShowLegendEvenIfOnlyDataSet(true);
    plot->setDataSets({only});
    QVERIFY(plot->getXYPlot()->getLegend());
    plot->setDataSets({});
    QVERIFY(plot->getXYPlot()->getLegend() && plot->getXYPlot()->getDataSets().isEmpty());
}

void tst_PlotWidgets::barsFilterTheOtherDataSets()
{
    TimePlotWidget* const plot = makeTimePlot();
    XYDataSet* const curve = stage->add("curve", {1.0, 2.0});
    XYDataSet* const bar = stage->add("bar", {1.0, 1.0}, 4);
    bar->getLook()->setColorBar(10);
    bar->getLook()->changeFromLast(Qt::red);
    plot->setDataSets({curve, bar, bar});
    auto const excluded = [&](int index, int viewportX) {
        return curve->getFilter()->excludeDataPoint(index, viewportX);
    };
    auto* listener = static_cast<ColorBarDrawListener*>(bar->getDrawListener());
    listener->filterEntry(bar->getLook()->getApplicableLookEntry(1), true);
    listener->drawingDataPoint(1, 40);
    QVERIFY(excluded(1, 40));
    delete listener; // leaves the plot's vector
    listener = new ColorBarDrawListener(bar);
    listener->filterEntry(bar->getLook()->getApplicableLookEntry(1), true);
    listener->drawingDataPoint(1, 40);
    QVERIFY(!excluded(1, 40));
    delete listener;

    // The filter goes with the plot, in whichever order its parts go.
    plot->addDataSet(bar);
    bar->getDrawListener()->setParent(plot);
    delete plot;
    QVERIFY(!curve->getFilter());
}

void tst_PlotWidgets::signalPlotsHaveFixedBounds()
{
    QWidget plain; // without any signal of a tool bar
    CorrelationPlotWidget correlation(stage->add("a"), stage->add("b", {500.0}), &plain);
    QCOMPARE(messages->takeCount("No such"), 6);
    XYCanvas const* const canvas = correlation.getXYPlot()->getCanvas();
    QCOMPARE(textOf(canvas->getViewBounds()), "-1.5..1.5 -150..150");
    correlation.updatePlot(0.25);
    QCOMPARE(correlation.getXYPlot()->getMarkers().first()->value, 0.25);

    SpectrumPlotWidget spectrum(&*parent);
    spectrum.addDataSet(stage->add("power"), 1, 2, 30, 40);
    QCOMPARE(textOf(spectrum.getXYPlot()->getCanvas()->getDataBounds()), "1..30 2..40");
}

QTEST_MAIN(tst_PlotWidgets)
#include "tst_plotwidgets.moc"
