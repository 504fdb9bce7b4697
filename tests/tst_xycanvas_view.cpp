#include "canvasstage.h"
#include "lineargrid.h"
#include "messagerecorder.h"
#include "objectcounts.h"

#include <QScopedPointer>
#include <QTest>
#include <cmath>
#include <limits>

namespace {
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr QSize size(200, 100);

bool isNaN(double value)
{
    return std::isnan(value);
}
} // namespace

class tst_XYCanvasView : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { messages.reset(new MessageRecorder); }
    void cleanup();
    void newCanvasKnowsNothing();
    void conversions_data();
    void conversions();
    void dataPointToPixel_data();
    void dataPointToPixel();
    void indexOutOfTheColumns_data();
    void indexOutOfTheColumns();
    void strictBounds();
    void customBounds_data();
    void customBounds();
    void margin_data();
    void margin();
    void deadPartnersLeaveNothingBehind();

private:
    QScopedPointer<MessageRecorder> messages;
};

void tst_XYCanvasView::cleanup()
{
    QCOMPARE(messages->take(), QStringList());
    messages.reset();
    QCOMPARE(liveObjects(), QStringList());
}

void tst_XYCanvasView::newCanvasKnowsNothing()
{
    CanvasStage stage;
    for (Bounds const& bounds : {stage->getDataBounds(), stage->getStrictDataBounds(),
                                 stage->getViewBounds(), stage->getPreviouslyEmittedViewBounds()})
        QVERIFY(isNaN(bounds.minX) && isNaN(bounds.maxX) && isNaN(bounds.minY)
                && isNaN(bounds.maxY));
    QCOMPARE(stage->getInitialDataBounds().maxX, 30000.0);
    QCOMPARE(stage->getInitialDataBounds().maxY, 1.0);
    QVERIFY(isNaN(stage->convertXWorldToViewport(1.0)));
    QVERIFY(isNaN(stage->convertYViewportToWorld(1.0, true)));
    bool valid = true;
    QCOMPARE(stage->convertDataPointToViewport(stage.add({1}, {2}), 0, valid, true), QPoint(0, 0));
    QVERIFY(!valid);
    QCOMPARE(stage->cursor().shape(), Qt::CrossCursor);
    QVERIFY(stage->testAttribute(Qt::WA_OpaquePaintEvent) && stage->hasMouseTracking());
    QCOMPARE(stage->lineWidth(), 0);
}

void tst_XYCanvasView::conversions_data()
{
    QTest::addColumn<Bounds>("view");
    QTest::addColumn<QPointF>("world");
    QTest::addColumn<QPointF>("fromTop");
    QTest::addColumn<double>("fromBottom");
    auto const row
        = [](char const* name, Bounds const& view, QPointF world, QPointF fromTop,
             double fromBottom) { QTest::newRow(name) << view << world << fromTop << fromBottom; };
    row("inside", {10, 30, 100, 200}, {15, 125}, {50, 75}, 25);
    row("outside, left and above", {10, 30, 100, 200}, {0, 250}, {-100, -50}, 150);
    row("swapped ends are taken as they stand", {30, 10, 200, 100}, {25, 125}, {50, 25}, 75);
}

void tst_XYCanvasView::conversions()
{
    QFETCH(Bounds, view);
    QFETCH(QPointF, world);
    QFETCH(QPointF, fromTop);
    QFETCH(double, fromBottom);
    CanvasStage stage;
    stage.paint(size);
    stage.show(view);
    QCOMPARE(stage->convertXWorldToViewport(world.x()), fromTop.x());
    QCOMPARE(stage->convertXViewportToWorld(fromTop.x()), world.x());
    QCOMPARE(stage->convertYWorldToViewport(world.y(), false), fromTop.y());
    QCOMPARE(stage->convertYWorldToViewport(world.y(), true), fromBottom);
    QCOMPARE(stage->convertYViewportToWorld(fromTop.y(), false), world.y());
    QCOMPARE(stage->convertYViewportToWorld(fromBottom, true), world.y());

    // A direction without extent takes only itself out.
    stage.show({5, 5, view.minY, view.maxY});
    QVERIFY(isNaN(stage->convertXWorldToViewport(5)) && isNaN(stage->convertXViewportToWorld(0)));
    QCOMPARE(stage->convertYWorldToViewport(world.y(), false), fromTop.y());
}

void tst_XYCanvasView::dataPointToPixel_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("fixedY");
    QTest::addColumn<bool>("fromBottom");
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<bool>("valid");
    auto const row = [](char const* name, QPointF point, bool fixedY, bool fromBottom, QPoint pixel,
                        bool valid) {
        QTest::newRow(name) << point << fixedY << fromBottom << pixel << valid;
    };
    constexpr int limit = 1 << 28;
    row("half: upwards", {2.5, 3.5}, false, true, {3, 4}, true);
    row("half below 0: upwards too", {-2.5, -0.5}, false, true, {-2, 0}, true);
    row("from top", {2, 3}, false, false, {2, 97}, true);
    row("far outside: saturates", {1e300, -inf}, false, true, {limit, -limit}, true);
    row("hole in y", {7, NaN}, false, true, {7, 0}, false);
    row("hole in x", {NaN, 3}, false, true, {0, 3}, false);
    row("fixed: y is not read", {7, NaN}, true, false, {7, 30}, true);
    row("fixed, from bottom", {7, 3}, true, true, {7, 70}, true);
    row("fixed, hole in x", {NaN, 3}, true, true, {0, 70}, false);
}

void tst_XYCanvasView::dataPointToPixel()
{
    QFETCH(QPointF, point);
    QFETCH(bool, fixedY);
    QFETCH(bool, fromBottom);
    CanvasStage stage;
    stage.paint(size);
    stage.show({0, 200, 0, 100});
    XYDataSet* const dataSet = stage.add({point.x()}, {point.y()});
    if (fixedY)
        dataSet->getLook()->setOffsettedFixedPositioned(30);
    bool valid = false;
    QTEST(stage->convertDataPointToViewport(dataSet, 0, valid, fromBottom), "pixel");
    QTEST(valid, "valid");
}

void tst_XYCanvasView::indexOutOfTheColumns_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("fixedY");
    QTest::addColumn<int>("reports");
    QTest::addColumn<bool>("valid");
    QTest::newRow("inside both") << 1 << false << 0 << true;
    QTest::newRow("below both") << -1 << false << 2 << false;
    QTest::newRow("beyond y alone") << 2 << false << 1 << false;
    QTest::newRow("beyond y, which is not looked at") << 2 << true << 1 << true;
    QTest::newRow("beyond both, with a fixed y") << 3 << true << 2 << false;
}

void tst_XYCanvasView::indexOutOfTheColumns()
{
    QFETCH(int, index);
    QFETCH(bool, fixedY);
    CanvasStage stage;
    stage.show({0, 200, 0, 100});
    XYDataSet* const dataSet = stage.add({1, 2}, {1, 2});
    dataSet->xData->append(3);
    if (fixedY)
        dataSet->getLook()->setOffsettedFixedPositioned(30);
    bool valid = false;
    stage->convertDataPointToViewport(dataSet, index, valid, true);
    QTEST(valid, "valid");
    QStringList const reported = messages->take();
    QTEST(int(reported.size()), "reports");
    for (QString const& report : reported) {
        QVERIFY(
            report.startsWith(QLatin1String("convertDataPointToViewport at src/xyplot/xycanvas:")));
        QVERIFY(report.endsWith(
            QLatin1String(" XYCanvas::convertDataElementToViewport: index out of bounds")));
    }
}

void tst_XYCanvasView::strictBounds()
{
    CanvasStage stage;
    stage.add({1, 2, 3}, {5, 9, NaN});
    stage.add({-4, 0}, {7, 8})->visible = false; // counts all the same
    Bounds const strict = stage->calculateStrictDataBounds();
    QCOMPARE((QVector<double>{strict.minX, strict.maxX, strict.minY, strict.maxY}),
             (QVector<double>{-4, 3, 5, 9}));
    Bounds const last = stage->calculateLastDataPointsBounds();
    QCOMPARE((QVector<double>{last.minX, last.maxX, last.minY, last.maxY}),
             (QVector<double>{0, 3, 8, 8}));
}

void tst_XYCanvasView::customBounds_data()
{
    QTest::addColumn<QVector<double>>("custom");
    QTest::addColumn<Bounds>("from");
    QTest::addColumn<QVector<double>>("to");
    auto const row = [](char const* name, QVector<double> const& custom, Bounds const& from,
                        QVector<double> const& to) { QTest::newRow(name) << custom << from << to; };
    row("holes change nothing", {NaN, NaN}, {1, 2, 1, 2}, {1, 2});
    row("both ends", {0, NaN, 5}, {1, 2, 1, 2}, {0, 5});
    row("no data: size 0 at the value", {3}, {NaN, NaN, NaN, NaN}, {3, 3});
    row("half known: both ends go", {3}, {1, NaN, NaN, 1}, {3, 3});
}

void tst_XYCanvasView::customBounds()
{
    QFETCH(QVector<double>, custom);
    QFETCH(Bounds, from);
    QFETCH(QVector<double>, to);
    QVector<double> values;
    QVector<double> none;
    CanvasStage stage;
    stage->addCustomHorizontalDataBoundsVector(&values);
    stage->addCustomHorizontalDataBoundsVector(&none);
    stage->addCustomVerticalDataBoundsVector(&values);
    values = custom; // what counts is the contents at the time of asking
    Bounds const extended = stage->extendWithCustomDataBounds(from);
    QCOMPARE((QVector<double>{extended.minX, extended.maxX}), to);
    QCOMPARE((QVector<double>{extended.minY, extended.maxY}), to);
}

void tst_XYCanvasView::margin_data()
{
    QTest::addColumn<bool>("painted");
    QTest::addColumn<bool>("full");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<double>("fallback");
    QTest::addColumn<double>("dataUnits");
    QTest::newRow("before the first paint: of 200 pixels") << false << true << 5 << 400.0 << 10.0;
    QTest::newRow("full: of the extent handed in") << true << true << 5 << 400.0 << 20.0;
    QTest::newRow("keep: of the view") << true << false << 5 << 400.0 << 10.0;
    QTest::newRow("keep, nothing handed in") << true << false << 5 << NaN << 10.0;
    QTest::newRow("full, extent unknown") << true << true << 5 << NaN << 0.0;
    QTest::newRow("negative") << true << true << -5 << 400.0 << 0.0;
}

void tst_XYCanvasView::margin()
{
    QFETCH(bool, painted);
    QFETCH(bool, full);
    QFETCH(int, pixels);
    QFETCH(double, fallback);
    CanvasStage stage;
    if (painted)
        stage.paint(size);
    stage.show({0, 200, 0, 200});
    stage->setVerticalViewBoundsUpdatePolicy(full ? XYCanvas::PolicyFull : XYCanvas::PolicyKeep,
                                             false);
    stage->setViewportMargin(1, 2, 3, pixels);
    QTEST(
        stage->determineViewPortMarginInDataCoordinates(Bounds::Vertical, Bounds::Upper, fallback),
        "dataUnits");
    QCOMPARE(stage->getViewportMargin(Bounds::Horizontal, Bounds::Upper), 2.0);
    QCOMPARE(stage->getViewportMargin(Bounds::Direction(2), Bounds::Lower), 0.0);
    QCOMPARE(stage->getViewportMargin(Bounds::Vertical, Bounds::End(-1)), 0.0);
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
    stage.paint(size);
    QCOMPARE(stage->getLastProcessedIndex(dataSet), 1);

    stage.dataSets.clear();
    delete dataSet;
    delete grid;
    QCOMPARE(stage->getLastProcessedIndex(dataSet), -1);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): only its address counts
    QVERIFY(!stage->isMouseOverDataTrackingEnabled(dataSet));
    QCOMPARE(stage->getGrid(eVERTICAL), nullptr);
    QCOMPARE(stage->getGrid(eHORIZONTAL), nullptr);
    QCOMPARE(stage.paint(size).at(15, 65), QColor(Qt::white));
}

QTEST_MAIN(tst_XYCanvasView)
#include "tst_xycanvas_view.moc"
