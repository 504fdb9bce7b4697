#include "colorbardrawlistener.h"
#include "correlationplotwidget.h"
#include "librarytest.h"
#include "plotstage.h"
#include "spectrumplotwidget.h"
#include "timeplotwidget.h"
#include "viewportmaskfilter.h"

#include <QLabel>
#include <QMouseEvent>
#include <QSignalSpy>

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
    static bool equal(Bounds const& b, double minX, double maxX, double minY, double maxY)
    {
        return b.minX == minX && b.maxX == maxX && b.minY == minY && b.maxY == maxY;
    }
    std::optional<ToolBarParent> parent;
    std::optional<DataSetStage> stage;

private Q_SLOTS:
    void toolBarReachesThePlot();
    void titleOfTheTimeAxis_data();
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

    QSignalSpy const coordinates(plot->getXYPlot(), &XYPlot::mouseCoords);
    Q_EMIT parent->mouseTrackingOn(true);
    Q_EMIT parent->sendMouseCoords(true);
    QMouseEvent move(QEvent::MouseMove, QPointF(50, 50), canvas->mapToGlobal(QPointF(50, 50)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas, &move);
    QVERIFY(parent->texts.size() > 3);
    QCOMPARE(coordinates.size(), 1);
}

void tst_PlotWidgets::titleOfTheTimeAxis_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<float>("offset");
    QTest::addColumn<QString>("title");
    QTest::newRow("GNSS") << int(eSHOW_GNSS) << 2.0F << "GNSS Time (h:mm:ss)";
    QTest::newRow("UTC") << int(eSHOW_UTC) << 2.0F << "UTC Time (h:mm:ss)";
    QTest::newRow("week") << int(eSHOW_TOW) << 2.0F << "GNSS Time (TOW)";
    QTest::newRow("seconds") << int(eSHOW_SECONDS) << 2.0F << "GNSS Time (s)";
    QTest::newRow("unknown form") << 9 << 2.0F << " (h:mm:ss)";
    for (auto const& [offset, text] : {std::pair(2.0F, "+2"),
                                       {0.0F, "+0"},
                                       {-5.0F, "-5:00"},
                                       {5.5F, "+5:30"},
                                       {-0.5F, "-0:30"},
                                       {-3.5F, "-3:30"},
                                       {5.004F, "+5"},
                                       {5.02F, "+5:01"}})
        QTest::newRow(text) << int(eSHOW_LOCAL) << offset
                            << QString("Local Time: UTC%1 (h:mm:ss)").arg(text);
}

void tst_PlotWidgets::titleOfTheTimeAxis()
{
    QFETCH(int, type);
    QFETCH(float, offset);
    TimePlotWidget* const plot = makeTimePlot();
    QCOMPARE(plot->getXYPlot()->getAxisTitle(eVERTICAL), QString("Time (s)"));
    plot->setUtcOffset(offset);
    plot->changeTimeAxis(ETimeType(type));
    QCOMPARE(plot->getTimeGrid()->timeType, ETimeType(type));
    delete plot->getTimeGrid();
    plot->setUtcOffset(1.0F);
    plot->setDeltaLS(0);
    plot->changeTimeAxis(eSHOW_EOL);
    QTEST(plot->getXYPlot()->getAxisTitle(eVERTICAL), "title");
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
    plot->showHMarkerOne(true);
    QCOMPARE(plot->getXYPlot()->getMarkers().size(), 1);
    QCOMPARE(top(), 20.0);
    plot->showHMarkerTwo(true);
    QCOMPARE(top(), 30.0);
    plot->showHMarkerTwo(false);
    plot->hMarkerOneShowsMean = true;
    QVERIFY(top() < 20.0);

    // Of two markers of one label the second is refused, and yet counts as shown.
    plot->updateHorizMarkerTwo(30.0, plot->getXYPlot()->getMarkers().first()->label);
    QTest::ignoreMessage(QtDebugMsg, "XYPlot: warning - trying to add the same marker twice");
    plot->showHMarkerTwo(true);
    plot->updateHorizMarkerTwo(30.0, "two");
    plot->showHMarkerTwo(true);
    QCOMPARE(plot->getXYPlot()->getMarkers().size(), 1);
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
        QCOMPARE(marker->value, rounded ? -2.0 : -2.5);
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
    QVERIFY(equal(canvas->getViewBounds(), -1.5, 1.5, -150.0, 150.0));
    correlation.updatePlot(0.25);
    QCOMPARE(correlation.getXYPlot()->getMarkers().first()->value, 0.25);

    SpectrumPlotWidget spectrum(&*parent);
    spectrum.addDataSet(stage->add("power"), 1, 2, 30, 40);
    QVERIFY(equal(spectrum.getXYPlot()->getCanvas()->getDataBounds(), 1.0, 30.0, 2.0, 40.0));
    spectrum.setAxisTitle(eHORIZONTAL, "left");
    QCOMPARE(spectrum.getXYPlot()->getAxisTitle(eHORIZONTAL), QString("left"));
}

QTEST_MAIN(tst_PlotWidgets)
#include "tst_plotwidgets.moc"
