#include "canvasstage.h"
#include "lineargrid.h"
#include "messagerecorder.h"
#include "objectcounts.h"

#include <QRegularExpression>
#include <QTest>

constexpr QSize canvasSize(200, 100);

/// Cell 0 of both columns, index, whether y is fixed and counted from the bottom, what comes out.
using PointCase = std::tuple<QPointF, int, bool, bool, QString>;

class tst_XYCanvasView : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void conversions();
    void dataPointToPixel_data();
    void dataPointToPixel();
    void boundsOfTheData();
    void margin();
    void deadPartnersLeaveNothingBehind();
};

void tst_XYCanvasView::conversions()
{
    CanvasStage stage;
    QVERIFY(stage->testAttribute(Qt::WA_OpaquePaintEvent) && stage->hasMouseTracking());
    stage.paint(canvasSize);
    stage.show({10, 30, 200, 100}); // swapped ends are taken as they stand
    QCOMPARE(stage->convertXViewportToWorld(50), 15.0);
    QCOMPARE(stage->convertYWorldToViewport(125, true), 75.0);
    QCOMPARE(stage->convertYViewportToWorld(25, false), 125.0);
    QCOMPARE(stage->convertYViewportToWorld(75, true), 125.0);
    stage.show({5, 5, 100, 200}); // a direction without extent takes only itself out
    QVERIFY(qIsNaN(stage->convertXWorldToViewport(5)) && qIsNaN(stage->convertXViewportToWorld(0)));
    QCOMPARE(stage->convertYWorldToViewport(125, false), 75.0);
}

void tst_XYCanvasView::dataPointToPixel_data()
{
    QTest::addColumn<PointCase>("given");
    auto const row = [](char const* name, PointCase const& c) { QTest::newRow(name) << c; };
    row("half: upwards, also below 0", {{10.25, 97.5}, 0, false, true, "3,-2 valid"});
    row("far, from top: saturates", {{103, -1e300}, 0, false, false, "930,268435456 valid"});
    row("hole in y", {{17, NaN}, 0, false, true, "70,0 gap"});
    row("fixed: y is not read", {{17, NaN}, 0, true, false, "70,30 valid"});
    row("fixed, from bottom, hole in x", {{NaN, 103}, 0, true, true, "0,70 gap"});
    row("below both columns", {{11, 103}, -1, false, true, "0,0 gap report report"});
    row("beyond y", {{11, 103}, 1, false, true, "30,0 gap report"});
    row("beyond y, not looked at", {{11, 103}, 1, true, false, "30,30 valid report"});
}

void tst_XYCanvasView::dataPointToPixel()
{
    QFETCH(PointCase, given);
    auto const& [point, index, fixedY, fromBottom, expected] = given;
    MessageRecorder messages;
    CanvasStage stage;
    stage.paint(canvasSize);
    stage.show({10, 30, 100, 200});
    XYDataSet* const dataSet = stage.add({point.x()}, {point.y()});
    dataSet->xData->append(13);
    if (fixedY)
        dataSet->getLook()->setOffsettedFixedPositioned(30);
    bool valid = false;
    QPoint const at = stage->convertDataPointToViewport(dataSet, index, valid, fromBottom);
    QRegularExpression const report("^convertDataPointToViewport at src/xyplot/xycanvas:\\d+: "
                                    "XYCanvas::convertDataElementToViewport: index out of bounds$");
    QStringList seen = messages.take().replaceInStrings(report, "report");
    seen.prepend(QString("%1,%2 %3").arg(at.x()).arg(at.y()).arg(valid ? "valid" : "gap"));
    QCOMPARE(seen.join(' '), expected);
}

void tst_XYCanvasView::boundsOfTheData()
{
    auto const numbers = [](Bounds const& b) { return QList{b.minX, b.maxX, b.minY, b.maxY}; };
    QVector<double> custom;
    CanvasStage stage;
    stage.add({1, 2, 3}, {5, 9, NaN});
    stage.add({-4, 0}, {7, 8})->visible = false; // counts all the same
    stage->addCustomHorizontalDataBoundsVector(&custom);
    QCOMPARE(numbers(stage->calculateStrictDataBounds()), numbers({-4, 3, 5, 9}));
    custom = {0, NaN, 5}; // what counts is the contents at the time of asking
    QCOMPARE(numbers(stage->extendWithCustomDataBounds({1, 2, 3, 4})), numbers({0, 5, 3, 4}));
    QCOMPARE(numbers(stage->extendWithCustomDataBounds({9, NaN, 3, 4})), numbers({0, 5, 3, 4}));
}

void tst_XYCanvasView::margin()
{
    CanvasStage stage;
    stage.show({0, 200, 0, 200});
    stage->setViewportMargin(-1, 2, 3, 5);
    auto const margin = [&](Bounds::Direction direction, Bounds::End end, double extent) {
        return stage->determineViewPortMarginInDataCoordinates(direction, end, extent);
    };
    stage.paint(canvasSize);
    QCOMPARE(margin(Bounds::Vertical, Bounds::Upper, 400), 20.0); // all is shown, so of the extent
    QCOMPARE(margin(Bounds::Vertical, Bounds::Upper, NaN), 0.0);
    QCOMPARE(margin(Bounds::Horizontal, Bounds::Upper, 400), 2.0); // of the view
    QCOMPARE(margin(Bounds::Horizontal, Bounds::Lower, 400), 0.0); // negative
}

void tst_XYCanvasView::deadPartnersLeaveNothingBehind()
{
    CanvasStage stage;
    stage.show({0, 200, 0, 100});
    auto* const grid = new LinearGrid(eVERTICAL, nullptr);
    stage->setGrid(eVERTICAL, grid, false);
    stage->setGrid(E_ORIENTATION_TYPE(5), grid, false);
    QCOMPARE(stage->getGrid(eHORIZONTAL), grid);
    XYDataSet* const dataSet = stage.add({10, 20}, {30, 40});
    stage->setMouseOverDataTrackingEnabled(dataSet, true);
    stage.paint(canvasSize);
    QCOMPARE(stage->getLastProcessedIndex(dataSet), 1);

    delete stage.dataSets.takeFirst();
    delete grid;
    // NOLINTBEGIN(clang-analyzer-cplusplus.NewDelete): only the address of the data set counts
    QCOMPARE(stage->getLastProcessedIndex(dataSet), -1);
    QVERIFY(!stage->isMouseOverDataTrackingEnabled(dataSet));
    // NOLINTEND(clang-analyzer-cplusplus.NewDelete)
    QVERIFY(!stage->getGrid(eVERTICAL) && !stage->getGrid(eHORIZONTAL));
    QCOMPARE(stage.paint(canvasSize).at(15, 65), QColor(Qt::white));
}

QTEST_MAIN(tst_XYCanvasView)
#include "tst_xycanvas_view.moc"
