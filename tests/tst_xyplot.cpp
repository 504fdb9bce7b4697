#include "librarytest.h"
#include "plotstage.h"
#include "testimage.h"
#include "verticalscrollbar.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <QCheckBox>
#include <QVBoxLayout>

class tst_XYPlot : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void titlesTurnTheSenseOfOrientation();
    void markersOfEqualLabelsAreRefused();
    void scalesStandAtTheCanvas();
    void scaleWidthIsThatOfTheWidestLabel();
    void groupSharesTheWidestScale();
    void fixedPositionsOnTheScale();
    void autoPositionsShareTheHeight();
    void buttonsAndBarsMoveTheView();
    void dataAppearsWithoutBeingAskedFor();
    void goesWithinASignalOfItsLegend();
    void everySizeIsDrawn();
    void titleIsDrawnAboutItsCentre();
};

void tst_XYPlot::titlesTurnTheSenseOfOrientation()
{
    XYPlot plot(false, true, false, nullptr);
    plot.resize(300, 200);
    plot.grab();
    QSize const alone = plot.getCanvas()->size();
    plot.setPlotTitle("title");
    plot.setAxisTitle(eHORIZONTAL, "rotated");
    plot.setAxisTitle(E_ORIENTATION_TYPE(7), "upright");
    QCOMPARE(plot.getAxisTitle(eVERTICAL), QString("upright"));
    QCOMPARE(plot.getAxisTitle(E_ORIENTATION_TYPE(7)), QString("rotated"));
    plot.grab();
    QSize const lost = alone - plot.getCanvas()->size();
    QVERIFY(lost.width() > 0 && lost.height() > 30);
}

void tst_XYPlot::markersOfEqualLabelsAreRefused()
{
    XYPlot plot(false, true, false, nullptr);
    std::vector<Marker_t> markers(3);
    markers[1].label = "name";
    plot.addMarker(&markers[0]);
    plot.addMarker(&markers[1]);
    QTest::ignoreMessage(QtDebugMsg, "XYPlot: warning - trying to add the same marker twice");
    plot.addMarker(&markers[2]);
    QCOMPARE(plot.getMarkers(), (QList<Marker_t*>{&markers[0], &markers[1]}));
}

void tst_XYPlot::scalesStandAtTheCanvas()
{
    PlotStage stage;
    stage->resize(400, 300);
    stage->grab();
    auto const place = [&](QWidget* widget) {
        return QRect(widget->mapTo(&stage.plot, QPoint()), widget->size());
    };
    QRect const canvas = place(stage->getCanvas());
    QCOMPARE(place(stage->getXScale()).bottom() + 2, canvas.top()); // the frame lies between
    QCOMPARE(place(stage->getYScale()).right() + 2, canvas.left());
    // Ticks stand at the grid lines: both axes begin where the canvas does.
    QCOMPARE(place(stage->getYScale()).bottom() - 18, canvas.bottom());
    QCOMPARE(place(stage->getXScale()).left() + stage->getXScale()->contentsRect().left(),
             canvas.left());

    // A strip of the application's takes its bar along.
    QWidget strip;
    PlotStage plain(false);
    plain->createScrollBar(new QVBoxLayout(&strip), Qt::Horizontal);
    delete plain->getHorizontalScrollBar();
    plain->redrawCanvas();
    QVERIFY(!plain->getHorizontalScrollBar());

    stage->removeScale(eVERTICAL);
    QVERIFY(!stage->getYScale() && !stage->getCanvas()->getGrid(eVERTICAL)->getScale());
    stage->addScale(eVERTICAL, true);
    stage->addScale(eVERTICAL, true);
    QCOMPARE(stage->findChildren<XYScale*>().size(), 2);
}

void tst_XYPlot::scaleWidthIsThatOfTheWidestLabel()
{
    PlotStage stage;
    stage.addToPlot("data", {-0.5, 100.0});
    stage->getCanvas()->updateBounds();
    QFontMetrics const metrics(getPlotRenderSettings().scaleFont);
    // The larger magnitude with the sign of the lower end, each digit as wide as a nine.
    QCOMPARE(stage->getYScale()->minimumWidth(), metrics.horizontalAdvance("-999") + 10);
    stage->setLabelType(eVERTICAL, eCANVAS_LABELS);
    QCOMPARE(stage->getYScale()->maximumWidth(), 10);
    QCOMPARE(stage->getXScale()->minimumHeight(), metrics.height() + 10);

    // A size that no widget can have would be asked for, and refused, at each change.
    plotRenderSettings.push(getPlotRenderSettings());
    getPlotRenderSettings().majorTickLength = -80;
    stage->updateHorizontalScaleWidth();
    stage->updateVerticalScaleHeight();
    plotRenderSettings.pop();
    QCOMPARE(stage->getYScale()->maximumWidth() + stage->getXScale()->maximumHeight(), 0);
}

void tst_XYPlot::groupSharesTheWidestScale()
{
    PlotStage narrow;
    PlotStage wide;
    auto gone = std::make_unique<PlotStage>();
    QList<XYPlot*> const group{&narrow.plot, &wide.plot, &gone->plot};
    narrow->setGroupOfPlots(group);
    wide->setGroupOfPlots(group);
    gone.reset();
    wide.addToPlot("data", {0.0, 123456.0});
    int const before = narrow->getYScale()->minimumWidth();
    wide->getCanvas()->updateBounds();
    QVERIFY(wide->getYScale()->minimumWidth() > before);
    QCOMPARE(narrow->getYScale()->minimumWidth(), wide->getYScale()->minimumWidth());
}

void tst_XYPlot::fixedPositionsOnTheScale()
{
    PlotStage stage;
    stage.addToPlot("curve");
    stage.addToPlot("Thick Bar", {1.0}, 20)->getLook()->setFractionallyFixedPositioned(0.5F);
    stage.addToPlot("thin")->getLook()->setFractionallyFixedPositioned(0.25F);
    stage.addToPlot("empty", {})->getLook()->setFractionallyFixedPositioned(0.75F);
    XYScale* const scale = stage->getYScale();

    // 200 pixels of canvas above 17 of scroll bar: rows at 117 and 167 from the bottom.
    stage->setupYScaleForFixedPositionedDatasets(200, 17);
    QString hidden;
    for (int y = 0; y < 217; ++y) {
        if (scale->mustHideScale(y, 0) != scale->mustHideScale(y - 1, 0))
            hidden += QString::number(y) + ' ';
    }
    QCOMPARE(hidden, QString("0 18 107 128 160 175 "));
    int const named
        = QFontMetrics(getPlotRenderSettings().fixedLabelFont).horizontalAdvance("Thick");
    QCOMPARE(scale->getRequiredWidthForLabelsAtFixedPosition(), named + 10);

    // With rows only, numbers make no sense.
    stage->removeDataSet(stage->getDataSets().first());
    stage->setupYScaleForFixedPositionedDatasets(200, 17);
    QVERIFY(scale->mustHideScale(60, 0) && !scale->mustHideScale(218, 0));
}

void tst_XYPlot::autoPositionsShareTheHeight()
{
    PlotStage stage;
    stage.addToPlot("top")->getLook()->setOffsettedFixedPositioned(20);
    stage.addToPlot("bottom")->getLook()->setOffsettedFixedPositioned(-10);
    for (QString const name : {"first", "hidden", "empty", "second"})
        stage.addToPlot(name, name == "empty" ? QVector<double>() : QVector<double>{1.0})
            ->getLook()
            ->setFractionallyFixedPositioned(-1.0F);
    stage->getDataSets().at(3)->visible = false;
    stage->repositionAutopositionedDataSets(120);
    // 90 pixels between the bands, in three equal gaps from 20 on.
    QCOMPARE(stage->getDataSets().last()->getLook()->getFixedYPosition(120), 80);
}

void tst_XYPlot::buttonsAndBarsMoveTheView()
{
    PlotStage stage;
    stage->resize(500, 400);
    stage.addToPlot("data", {0.0, 4.0, 2.0, 8.0, 6.0});
    XYCanvas* const canvas = stage->getCanvas();
    canvas->setFixedDataBounds({0.0, 4.0, 0.0, 8.0});
    canvas->zoomFull();
    stage->grab();
    QTest::mousePress(stage.button("Zoom in horizontally"), Qt::LeftButton);
    QTest::mousePress(stage.button("Zoom in vertically"), Qt::LeftButton);
    QCOMPARE(canvas->getViewBounds().size(Bounds::Horizontal), 2.0);
    double const top = canvas->getViewBounds().maxY;
    QTest::mouseClick(stage->getVerticalScrollBar(), Qt::LeftButton, {}, {5, 3});
    QVERIFY(canvas->getViewBounds().maxY > top); // the upper arrow shows what lies higher
    QTest::mousePress(stage.button("Show the full vertical extent"), Qt::LeftButton);
    QCOMPARE(canvas->getVerticalViewBoundsUpdatePolicy(), XYCanvas::PolicyFull);
    QTest::mousePress(stage.button("Horizontally and vertically"), Qt::LeftButton);
    QCOMPARE(canvas->getViewBounds().maxX, canvas->getDataBounds().maxX);
    QVERIFY(!stage.button("Zoom out horizontally")->isEnabled());
}

void tst_XYPlot::dataAppearsWithoutBeingAskedFor()
{
    PlotStage stage;
    XYCanvas* const canvas = stage->getCanvas();
    canvas->setBounds({0.0, 1.0, -1.0, 1.0}, {0.0, 1.0, -1.0, 1.0}, true);
    // Not by grab(), which resizes a plot that is not shown, and so redraws it.
    auto const isDrawn = [=](XYDataSet* dataSet) {
        TestImage const picture({200, 100}, 1.0,
                                [=](QPainter* painter) { canvas->drawCanvas(painter); });
        return canvas->getLastProcessedIndex(dataSet) == 0;
    };
    XYDataSet* const full = stage.add("full", {0.0});
    QVERIFY(!isDrawn(full));
    stage->addDataSet(full);
    QVERIFY(!isDrawn(full));
    QTRY_VERIFY(isDrawn(full));
    stage.addToPlot("empty", {})->append(0.0, 0.0);
    QVERIFY(isDrawn(stage->getDataSets().last()));
}

void tst_XYPlot::goesWithinASignalOfItsLegend()
{
    for (bool const withinALoop : {false, true}) {
        auto stage = std::make_unique<PlotStage>();
        for (int i = 0; i < 4; ++i)
            stage->addToPlot(QString::number(i));
        stage->plot.addLegend(true, eLEGEND_RIGHT, nullptr);
        QPointer<XYLegend> const legend = stage->plot.getLegend();
        connect(legend, &XYLegend::dataSetVisibilityChanged, this, [&] {
            if (!withinALoop)
                stage.reset();
            QTimer::singleShot(0, this, [&] { stage.reset(); });
            QTRY_VERIFY(!stage);
            QTest::qWait(1); // deletes what is due
        });
        // The timers of plot and legend are due after their end.
        stage->plot.getDataSets().first()->getLook()->changeFromLast(Qt::green);
        legend->findChildren<QCheckBox*>().at(1)->click(); // none
        QVERIFY(!stage && legend);
        QTRY_VERIFY(!legend);
    }
    QTest::qWait(300);
}

void tst_XYPlot::everySizeIsDrawn()
{
    QWidget host;
    PlotStage stage;
    for (int i = 0; i < 50; ++i)
        stage.addToPlot(QString::number(i), {0.0, double(i)});
    // A minimum height of 0 leaves a column of the legend no room at all.
    stage->addLegend(true, eLEGEND_RIGHT, nullptr);
    stage->setParent(&host); // no longer held to what its layout would like
    for (QSize const size : {QSize(0, 0), QSize(1, 1), QSize(8000, 4000), QSize(3, 900)}) {
        stage->resize(size);
        stage->getCanvas()->updateBounds();
        QCOMPARE(stage->grab().size(), size);
    }
}

void tst_XYPlot::titleIsDrawnAboutItsCentre()
{
    XYPlot plot(false, true, false, nullptr);
    for (auto const which : {eHORIZONTAL, eVERTICAL}) {
        plot.setAxisTitle(which, "HHHHHH");
        TestImage image({201, 201}, 1.0, [&](QPainter* painter) {
            plot.drawAxisTitle(painter, which, QRect(40, 40, 121, 121));
            plot.drawAxisTitle(painter, which, QPoint(100, 100));
        });
        QRect const box = extentOf(image.getImage(), Qt::yellow, true);
        QVERIFY((box.width() > 3 * box.height()) == (which == eVERTICAL));
        QVERIFY((box.center() - QPoint(100, 100)).manhattanLength() <= 4);
    }
}

QTEST_MAIN(tst_XYPlot)
#include "tst_xyplot.moc"
