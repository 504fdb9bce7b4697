#include "canvasstage.h"
#include "lineargrid.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "viewportmap.h"
#include "xydatasetdrawlistener.h"

#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QTest>

namespace {
Bounds const pixelView{0, 200, 0, 100}; // one unit per pixel

/// Tells the order in which the canvas asks its grids: lines in capitals, labels in small letters.
struct RecordingGrid : LinearGrid
{
    using LinearGrid::LinearGrid;
    void drawGrid(QPainter*, double, double, double, double) override { log("XY"); }
    void drawLabels(QPainter*, double, double, double, double) override { log("xy"); }
    void log(char const* letters) { calls += letters[orientation]; }
    static inline QByteArray calls;
};

/// Counts the points drawn, and waits at the first of them.
struct CountingListener : XYDataSetDrawListener
{
    using XYDataSetDrawListener::XYDataSetDrawListener;
    void drawingDataPoint(int index, int) override
    {
        ++count;
        for (QDeadlineTimer wait(delay); index == 0 && !wait.hasExpired();) { }
    }
    int count = 0;
    int delay = 0; // milliseconds
};

/// Makes @p dataSet a bar of eight pixels around the row @p offset.
void makeColorBar(XYDataSet* dataSet, int offset)
{
    dataSet->getLook()->setColorBar(offset);
    dataSet->getLook()->setDefaultLineThickness(8);
}
} // namespace

class tst_XYCanvasRedraw : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void layers();
    void newPointsAsInAFullRedraw();
    void slowRunHandsBackAndGoesOn();
    void redrawsOnlyWhatIsDue();
    void widgetFillsItsScreenPixels();
    void oddSizesAndViews();
};

void tst_XYCanvasRedraw::layers()
{
    CanvasStage stage(pixelView);
    for (E_ORIENTATION_TYPE const axis : {eHORIZONTAL, eVERTICAL})
        stage->setGrid(axis, new RecordingGrid(axis, stage.operator->()), false);
    makeColorBar(stage.add({40, 80}, {1, 1}, Qt::red), 20);
    XYDataSet* const marked = stage.add({150}, {1});
    makeColorBar(marked, 50);
    marked->getLook()->setDefault(Qt::red, SYMBOL_PLUS, Qt::SolidLine, 1);
    marked->getLook()->setSymbolSize(-40); // as large as 40
    stage.add({50, 50.1}, {0, 100}, Qt::blue)->getLook()->setDefaultLineThickness(4);
    Marker_t back{eBACKGROUND_MARKER, eVERTICAL, 50, Qt::green, Qt::SolidLine, 1, {}};
    Marker_t front{eFOREGROUND_MARKER, eHORIZONTAL, 60, Qt::magenta, Qt::SolidLine, 1, {}};
    stage.markers = {&back, &front};
    TestImage const picture = stage.paint();
    QCOMPARE(RecordingGrid::calls, QByteArray("YXyx"));
    QCOMPARE(picture.at(50, 50), QColor(Qt::blue)); // data over a background marker
    QCOMPARE(picture.at(50, 20), QColor(Qt::red)); // colour bar over a line
    QCOMPARE(picture.at(150, 65), QColor(Qt::red)); // a symbol beyond its bar
    QCOMPARE(picture.at(60, 20), QColor(Qt::magenta)); // foreground over all
    QVERIFY(picture.at(90, 20) != Qt::white); // its groove goes on
    stage.dataSets[0]->append(120, 1);
    stage.dataSets[2]->append(119, 60);
    stage->drawNewPointsOnBackGround();
    QCOMPARE(stage.paint().at(84, 20), QColor(Qt::red)); // also over a line of a later run
}

void tst_XYCanvasRedraw::newPointsAsInAFullRedraw()
{
    QRandomGenerator random(7);
    CanvasStage stage(pixelView);
    stage.add({}, {}, Qt::blue);
    makeColorBar(stage.add({}, {}, Qt::red), 90);
    auto const picture = [&] { return stage.paint({200, 100}, 1.25).getImage(); };
    picture();
    // Strokes in one pixel column are gathered within a run only, and bars lie over all lines of a
    // run: so a point in every other column, and above the bar.
    for (int i = 0; i < 100; ++i) {
        for (XYDataSet* const dataSet : qAsConst(stage.dataSets))
            dataSet->append(2 * i, random.bounded(2) == 0 ? NaN : random.bounded(20, 120));
        if (i == 99 || random.bounded(3) == 0)
            stage->drawNewPointsOnBackGround();
    }
    QImage const grown = picture();
    stage->fullRepaint();
    QCOMPARE(grown, picture());
}

void tst_XYCanvasRedraw::slowRunHandsBackAndGoesOn()
{
    CanvasStage stage(pixelView);
    for (double const y : {10, 20, 30, 40})
        stage.add({10, 20}, {y, y});
    makeColorBar(stage.dataSets[1], 20);
    makeColorBar(stage.dataSets[2], 50);
    auto* const slow = new CountingListener(stage.dataSets[1]);
    stage.dataSets[1]->setDrawListener(slow);
    slow->delay = 252;
    auto const drawn = [&](int i) { return stage->getLastProcessedIndex(stage.dataSets[i]) == 1; };
    auto const redrawsAll = [&] {
        stage->fullRepaint();
        stage.paint();
        return drawn(2) && drawn(3);
    };
    // The slow bar ends the pass of the bars; of the lines, one is drawn before the clock is read.
    QVERIFY(!redrawsAll() && drawn(0) && drawn(1) && !drawn(2) && !drawn(3));
    QCoreApplication::processEvents();
    QVERIFY(drawn(2) && drawn(3) && stage.paint().at(15, 50) == Qt::black); // the second bar
    stage->setContinueBackgroundDrawingUntilFinishedForNextFullRedraw();
    stage->drawNewPointsOnBackGround(); // is not a full one
    QVERIFY(redrawsAll() && !redrawsAll());
    stage->setViewBounds({0, 100, 0, 100}, true); // stops the resumption
    QCoreApplication::processEvents();
    QVERIFY(!drawn(3));
    stage->setContinueBackgroundDrawingUntilFinished(true);
    QVERIFY(redrawsAll() && redrawsAll());
}

void tst_XYCanvasRedraw::redrawsOnlyWhatIsDue()
{
    CanvasStage stage(pixelView);
    XYDataSet* const dataSet = stage.add({10, 50, 60}, {20, 30, 30});
    dataSet->getLook()->setDrawMarkerOnYValueChange(true);
    stage->setMouseOverDataTrackingEnabled(dataSet, true);
    auto* const listener = new CountingListener(dataSet);
    dataSet->setDrawListener(listener);
    auto const drawn = [&] { return std::exchange(listener->count, 0); };
    QCOMPARE((stage.paint(), drawn()), 3);
    QCOMPARE((stage.paint(), drawn()), 0);
    dataSet->append(70, 30);
    stage->drawNewPointsOnBackGround();
    stage->drawNewPointsOnBackGround();
    stage->setBounds({0, 300, 0, 100}, pixelView, true); // the view stays
    QCOMPARE((stage.paint(), drawn()), 1);
    stage->setViewBounds({0, 100, 0, 100}, true);
    QCOMPARE((stage.paint(), drawn()), 4);
    QCOMPARE((stage.paint({100, 100}), drawn()), 4);
    QCOMPARE((stage.paint({100, 100}, 2.0), drawn()), 4);
    stage->resize(200, 100);
    stage->QWidget::show();
    QCoreApplication::processEvents();
    QCOMPARE(drawn(), 4);
    stage->setGrid(eVERTICAL, nullptr, false);
    stage->drawNewPointsOnBackGround(); // asks for a paint, whether it draws or not
    QCoreApplication::processEvents();
    QCOMPARE(drawn(), 4);

    // Markers of changed values and tracked points go with a full redraw.
    QVERIFY(stage.paint().at(100, 0) != Qt::white);
    QCOMPARE(stage->getViewportMap(dataSet)->getItemVector(10, 14), QVector<int>{1});
    dataSet->visible = false;
    stage->fullRepaint();
    QCOMPARE(stage.paint().at(100, 0), QColor(Qt::white));
    QVERIFY(stage->getViewportMap(dataSet)->getItemVector(10, 14).isEmpty());
}

/// Runs at several scale factors.
void tst_XYCanvasRedraw::widgetFillsItsScreenPixels()
{
    CanvasStage stage({0, 201, 0, 101});
    makeColorBar(stage.add({20, 60}, {1, 1}, Qt::red), 20);
    Marker_t line{eBACKGROUND_MARKER, eHORIZONTAL, 80, Qt::blue, Qt::SolidLine, 1, {}};
    stage.markers = {&line};
    stage->resize(201, 101);
    qreal const ratio = stage->devicePixelRatioF();
    QImage const screen = stage->grab().toImage();
    QScopedPointer<QPixmap> const pixmap(stage->drawBackgroundPixmap());
    QCOMPARE(pixmap->size(), QSize(qCeil(201 * ratio), qCeil(101 * ratio)));
    QCOMPARE(pixmap->toImage().pixelColor(pixmap->rect().bottomRight()), QColor(Qt::white));
    // Nothing is scaled or blurred. Bars are mirrored within all rows, the last of them not full.
    QRect const bar(int(20 * ratio), qCeil(101 * ratio) - qRound(85 * ratio), int(40 * ratio),
                    int(8 * ratio));
    QCOMPARE(extentOf(screen, Qt::red), bar);
    QPoint const end(int(80 * ratio), screen.height() - 1);
    QCOMPARE(extentOf(screen, Qt::blue).bottomRight(), end);
}

void tst_XYCanvasRedraw::oddSizesAndViews()
{
    MessageRecorder messages;
    QRandomGenerator random(7);
    QSize const sizes[] = {{0, 0}, {0, 5}, {1, 1}, {200, 100}, {9000, 2}};
    double const values[] = {0, 1, 1e308, -1e308, 5e-324, qInf(), NaN, 50};
    auto const any = [&] { return values[random.bounded(8)]; };
    CanvasStage stage;
    stage.add({}, {});
    makeColorBar(stage.add({}, {}), 20);
    for (int i = 0; i < 100; ++i) {
        stage.dataSets[i % 2]->append(any(), any());
        auto const axis = E_ORIENTATION_TYPE(i % 3);
        auto const dash = Qt::DashLine;
        stage.markers += new Marker_t{E_MARKER_TYPE(i % 2), axis, any(), Qt::red, dash, 3, "label"};
        stage.crosses += new CrossMarker_t{any(), any(), any(), Qt::red, dash, axis - 1};
        stage.ellipses
            += new EllipseMarker_t{any(), any(), any(), any(), any(), Qt::red, dash, axis - 1};
    }
    for (int i = 0; i < 300; ++i) {
        QSize const size = sizes[i % 5];
        stage.show({any(), any(), any(), any()});
        QCOMPARE(stage.paint(size).countPainted(), size.width() * size.height());
        stage->drawNewPointsOnBackGround();
    }
    qDeleteAll(stage.markers);
    qDeleteAll(stage.crosses);
    qDeleteAll(stage.ellipses);
    QCOMPARE(messages.take(), QStringList());
}

QTEST_MAIN(tst_XYCanvasRedraw)
#include "tst_xycanvas_redraw.moc"
