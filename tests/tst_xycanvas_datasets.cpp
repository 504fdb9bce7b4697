#include "dataarraytemplate.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "xycanvas.h"
#include "xydataset.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <memory>

namespace {

constexpr QSize size(100, 50);

/// A canvas of 100 by 50 pixels with one data set, whose runs are told apart by what they paint.
class Runs
{
public:
    explicit Runs(Bounds const& view = Bounds{0.0, 100.0, 0.0, 50.0})
    {
        canvas.setBounds(view, view, false);
        fullRedraw();
    }

    void append(int count, double x, double y)
    {
        for (int i = 0; i < count; ++i)
            dataSet->append(x + i, y);
    }
    void fullRedraw()
    {
        canvas.fullRepaint();
        QImage image(size, QImage::Format_RGB32);
        QPainter painter(&image);
        canvas.drawCanvas(&painter);
    }
    /// True if a run over the pending points paints anything.
    bool paints()
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QImage const blank = image.copy();
        QPainter painter(&image);
        painter.setWindow(QRect(QPoint(0, size.height()), QPoint(size.width() - 1, -1)));
        canvas.drawDataSet(&painter, dataSet.get());
        painter.end();
        return image != blank;
    }

    std::unique_ptr<XYDataSet> dataSet = std::make_unique<XYDataSet>(
        new DataArrayTemplate<double>, new DataArrayTemplate<double>, QStringLiteral("data"),
        Qt::black, SYMBOL_NONE, Qt::SolidLine, 1);
    QList<XYDataSet*> dataSets = {dataSet.get()};
    QList<Marker_t*> markers;
    QList<EllipseMarker_t*> ellipses;
    QList<CrossMarker_t*> crosses;
    XYCanvas canvas{&dataSets, &markers, &ellipses, &crosses, false, nullptr};
};

class TwoLineLook : public Look
{
public:
    TwoLineLook(XYDataSet* owner, int thickness)
        : Look(owner, Qt::black, SYMBOL_NONE, Qt::SolidLine, thickness)
    {
        multiLineCount = 2;
    }
};

} // namespace

class tst_XYCanvasDataSets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void narrowing_data();
    void narrowing();
    void endDashIsPaintedOnce();
    void closingLineIsPaintedOnce();
    void shrunkColumnWaitsForARedraw();
    void laggingColumnIsNotShrunk();
};

void tst_XYCanvasDataSets::narrowing_data()
{
    QTest::addColumn<int>("points"); // at x = 0, 1, 2 and so on
    QTest::addColumn<int>("processed");
    QTest::addColumn<Bounds>("view");
    QTest::addColumn<bool>("sorted");
    QTest::addColumn<QPoint>("range");
    Bounds const narrow{10.0, 20.0, 0.0, 50.0};
    QTest::newRow("100 pending: all") << 100 << -1 << narrow << true << QPoint(0, 99);
    QTest::newRow("101 pending: one beyond the edge")
        << 101 << -1 << narrow << true << QPoint(9, 20);
    QTest::newRow("101 pending, not sorted: all") << 101 << -1 << narrow << false << QPoint(0, 101);
    QTest::newRow("101 pending, no view: all") << 101 << -1 << Bounds() << true << QPoint(0, 100);
    QTest::newRow("view beyond the data")
        << 101 << -1 << Bounds{90.5, 200.0, 0.0, 50.0} << true << QPoint(90, 100);
    QTest::newRow("view before the data")
        << 101 << -1 << Bounds{-9.0, -5.0, 0.0, 50.0} << true << QPoint(0, 0);
    QTest::newRow("the rest of the view") << 200 << 14 << narrow << true << QPoint(15, 20);
    QTest::newRow("nothing more in view") << 200 << 20 << narrow << true << QPoint(21, 20);
    QTest::newRow("100 pending beyond the view: all")
        << 121 << 20 << narrow << true << QPoint(21, 120);
}

void tst_XYCanvasDataSets::narrowing()
{
    QFETCH(int, points);
    QFETCH(int, processed);
    QFETCH(Bounds, view);
    QFETCH(bool, sorted);
    Runs runs(view);
    runs.append(points, 0.0, 10.0);
    if (!sorted)
        runs.append(1, 0.0, 10.0);
    runs.canvas.setLastProcessedIndex(runs.dataSet.get(), processed);

    int first = 0;
    int last = 0;
    runs.canvas.getPointsToBeDrawn(runs.dataSet.get(), first, last);
    QTEST(QPoint(first, last), "range");
}

void tst_XYCanvasDataSets::endDashIsPaintedOnce()
{
    Runs runs;
    runs.append(1, 10.0, 10.0);
    runs.append(1, NaN, NaN);
    runs.append(1, 30.0, 45.0);
    // The upper of the lines, at 45 + 10, is out of view and has no dash.
    new TwoLineLook(runs.dataSet.get(), 20);
    runs.fullRedraw();
    QVERIFY(!runs.paints());
    runs.dataSet->setComplete(true);
    QVERIFY(runs.paints());
    QVERIFY(!runs.paints());
}

void tst_XYCanvasDataSets::closingLineIsPaintedOnce()
{
    Runs runs;
    runs.append(3, 10.0, 10.0);
    runs.fullRedraw();
    QVERIFY(!runs.paints());
    runs.canvas.setConnectFirstLast(true);
    QVERIFY(runs.paints());
    QVERIFY(!runs.paints());
    runs.canvas.setConnectFirstLast(false);
    runs.canvas.setConnectFirstLast(true);
    QVERIFY(runs.paints());
}

void tst_XYCanvasDataSets::shrunkColumnWaitsForARedraw()
{
    for (bool const inX : {true, false}) {
        Runs runs;
        runs.append(10, 10.0, 10.0);
        runs.fullRedraw();
        DataArray* const shrinking = inX ? runs.dataSet->xData : runs.dataSet->yData;
        DataArray* const staying = inX ? runs.dataSet->yData : runs.dataSet->xData;
        shrinking->leftshift(5);
        QVERIFY(!runs.paints());
        staying->leftshift(5);
        runs.append(20, 20.0, 20.0);
        QVERIFY(!runs.paints());
        runs.fullRedraw();
        runs.append(1, 50.0, 20.0);
        QVERIFY(runs.paints());
    }
}

void tst_XYCanvasDataSets::laggingColumnIsNotShrunk()
{
    MessageRecorder messages;
    Runs runs;
    runs.append(3, 10.0, 10.0);
    runs.dataSet->yData->append(10.0);
    runs.fullRedraw();
    QVERIFY(messages.tookOnly(QStringLiteral("index out of bounds")));
    QVERIFY(!runs.paints());
    runs.dataSet->xData->append(13.0);
    runs.append(2, 14.0, 10.0);
    QVERIFY(runs.paints());
    QCOMPARE(messages.take(), QStringList());
}

QTEST_MAIN(tst_XYCanvasDataSets)
#include "tst_xycanvas_datasets.moc"
