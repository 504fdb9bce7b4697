#include "canvasstage.h"
#include "librarytest.h"

#include <QMouseEvent>
#include <QSignalSpy>

/// A canvas of 200 by 100 pixels on which a data unit is a pixel.
class tst_XYCanvasHitTest : public LibraryTest
{
    Q_OBJECT
    void makeObjects() override
    {
        stage.emplace(Bounds{0.0, 200.0, 0.0, 100.0});
        (*stage)->resize(200, 100);
        (*stage)->setDefaultMouseOverDataTrackingEnabled(true);
    }
    void deleteObjects() override { stage.reset(); }
    /// The point hit at (x, y), y downwards, as "name index at x,y".
    QString hitAt(int x, int y, int reach = 10)
    {
        XYCanvas::datahit_t hit;
        if (!(*stage)->dataHitTest(x, y, hit, reach))
            return "none";
        return QString("%1 %2 at %3,%4")
            .arg(hit.dataSet->name)
            .arg(hit.index)
            .arg(hit.pointX)
            .arg(hit.pointY);
    }
    void move(int x, int y)
    {
        QMouseEvent event(QEvent::MouseMove, QPointF(x, y), QPointF(x, y), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(stage->operator->(), &event);
    }
    std::optional<CanvasStage> stage;

private Q_SLOTS:
    void nearestPointIsHit();
    void pointsOfParallelLines();
    void barIsHitOverItsThickness();
    void leavingIsToldOnce();
    void staleIndicesAreSkipped();
};

void tst_XYCanvasHitTest::nearestPointIsHit()
{
    stage->add({20.0, 28.0, 100.0}, {50.0, 50.0, 50.0})->name = "first";
    stage->add({28.0, 150.0}, {50.0, 50.0})->name = "second";
    stage->add({150.0}, {50.0})->name = "off";
    (*stage)->setMouseOverDataTrackingEnabled(stage->dataSets.last(), false);
    stage->paint();
    QCOMPARE(hitAt(23, 50), "first 0 at 20,50");
    QCOMPARE(hitAt(24, 50), "first 0 at 20,50"); // of equally near points the first
    QCOMPARE(hitAt(27, 48), "first 1 at 28,50"); // of equally near data sets the first
    QCOMPARE(hitAt(151, 50), "second 1 at 150,50");
    QCOMPARE(hitAt(107, 50), "first 2 at 100,50"); // shares the cell, if further than 5 pixels
    QCOMPARE(hitAt(107, 50, 6), "none");
    QCOMPARE(hitAt(-1, 50), "none");
    stage->dataSets.first()->yData->replace(0, NaN);
    QCOMPARE(hitAt(20, 50), "first 1 at 28,50");
}

/// Each line enters its points anew, so that a cell does not list them in their order.
void tst_XYCanvasHitTest::pointsOfParallelLines()
{
    struct TwoLines : Look
    {
        explicit TwoLines(XYDataSet* owner)
            : Look(owner, Qt::black, SYMBOL_NONE, Qt::SolidLine, 10)
        {
            multiLineCount = 2;
        }
    };
    // The upper line enters 0 and 1 in the cell of the mouse, after 2 and 3 from the lower one.
    new TwoLines(stage->add({1.0, 7.0, 8.0, 14.0}, {45.0, 45.0, 55.0, 55.0}));
    stage->paint();
    QCOMPARE(hitAt(8, 49), "data 2 at 8,45");
    QCOMPARE(hitAt(7, 50), "data 1 at 7,55");
}

void tst_XYCanvasHitTest::barIsHitOverItsThickness()
{
    XYDataSet* const bar = stage->add({50.0, 60.0}, {0.0, 0.0});
    bar->name = "bar";
    bar->getLook()->setColorBar(20);
    bar->getLook()->setDefaultLineThickness(6);
    stage->paint();
    QCOMPARE(hitAt(50, 24), "bar 0 at 50,20");
    QCOMPARE(hitAt(50, 25), "none");
    QCOMPARE(hitAt(46, 20, 3), "none");
}

void tst_XYCanvasHitTest::leavingIsToldOnce()
{
    XYDataSet* const dataSet = stage->add({50.0}, {50.0});
    stage->paint();
    using Signal = void (XYCanvas::*)(XYCanvas::datahit_t, QMouseEvent*);
    QStringList told;
    connect(stage->operator->(), static_cast<Signal>(&XYCanvas::mouseOverData), this,
            [&](XYCanvas::datahit_t hit, QMouseEvent* event) {
                told += QString("%1 %2 %3 %4")
                            .arg(hit.dataSet == dataSet)
                            .arg(hit.position)
                            .arg(hit.mouseX)
                            .arg(event != nullptr);
            });
    move(10, 10);
    move(52, 50);
    move(53, 50);
    move(10, 10);
    move(11, 10);
    move(52, 50);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(stage->operator->(), &leave);
    QCOMPARE(told, (QStringList{"1 0 52 1", "1 0 53 1", "0 -1 10 1", "1 0 52 1", "0 -1 -1 0"}));
    // A data set that goes while the mouse is over it is left as well.
    told.clear();
    move(52, 50);
    delete stage->dataSets.takeFirst();
    move(52, 50);
    QCOMPARE(told.last(), "0 -1 52 1");
}

void tst_XYCanvasHitTest::staleIndicesAreSkipped()
{
    XYDataSet* const dataSet = stage->add({50.0, 52.0}, {50.0, 50.0});
    dataSet->name = "shrunk";
    stage->paint();
    dataSet->yData->removeData(1, 1);
    dataSet->xData->removeData(1, 1);
    QCOMPARE(hitAt(52, 50), "shrunk 0 at 50,50");
    dataSet->xData->removeData(0, 1);
    QCOMPARE(hitAt(52, 50), "none");
    QVERIFY(messages->tookOnly("index out of bounds")); // no y is missing
}

QTEST_MAIN(tst_XYCanvasHitTest)
#include "tst_xycanvas_hittest.moc"
