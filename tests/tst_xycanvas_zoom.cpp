#include "canvasstage.h"
#include "librarytest.h"
#include "lineargrid.h"

#include <QRubberBand>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

/// A canvas of 200 by 100 pixels whose data reaches from 0 to 100 both ways.
class tst_XYCanvasZoom : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void stepsOfZoom();
    void zoomToStaysInTheData();
    void dragFollowsOnlyAtTheNewestData();
    void bothDirectionsAreOneChange();
    void scrollBarMovesTheViewAndFollowsIt();
    void rubberBandZooms();
    void handDragsTheContent();
    void wheelKeepsThePointUnderTheMouse();
    void mouseTellsItsPlace();
    void mouseWaitsForTheFirstPaint();

private:
    static constexpr auto x = Bounds::Horizontal;

    void makeObjects() override
    {
        makeCanvas();
        show(0, 100, XYCanvas::PolicyFull);
        stage->paint();
    }
    void makeCanvas()
    {
        stage.reset(new CanvasStage);
        canvas = &*stage->operator->();
    }
    void deleteObjects() override { stage.reset(); }

    void show(double lower, double upper, XYCanvas::ViewBoundsUpdatePolicy policy)
    {
        canvas->setHorizontalViewBoundsUpdatePolicy(policy, false);
        canvas->setBounds({0, 100, 0, 100}, {lower, upper, 0, 100}, true);
    }
    /// View and policy in x.
    QString state() const
    {
        Bounds const view = canvas->getViewBounds();
        return QString("%1..%2 %3")
            .arg(view.minX)
            .arg(view.maxX)
            .arg(canvas->getViewBoundsUpdatePolicy(x));
    }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::LeftButton)
    {
        QMouseEvent event(type, at, at, button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(canvas, &event);
    }
    QString drag(QPointF from, QPointF to)
    {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to, Qt::NoButton);
        mouse(QEvent::MouseButtonRelease, to);
        return state();
    }
    QString wheel(QPoint at, int delta)
    {
        QWheelEvent event(at, at, {}, {0, delta}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(canvas, &event);
        return state();
    }

    QScopedPointer<CanvasStage> stage;
    XYCanvas* canvas = nullptr;
};

void tst_XYCanvasZoom::stepsOfZoom()
{
    using C = XYCanvas;
    auto const after = [this](char const* step, double lower, double upper, auto policy) {
        show(lower, upper, policy);
        QMetaObject::invokeMethod(canvas, step);
        return state();
    };
    QCOMPARE(after("zoomInHorizontal", 0, 100, C::PolicyFull), "25..75 1"); // kept from now on
    QCOMPARE(after("zoomInHorizontal", 60, 100, C::PolicyFollow), "80..100 2"); // that end stays
    canvas->setHorizontalZoomLimit(20);
    QCOMPARE(after("zoomInHorizontal", 30, 60, C::PolicyKeep), "35..55 1"); // to the limit
    QCOMPARE(after("zoomOutHorizontal", 35, 55, C::PolicyKeep), "25..65 1");
    QCOMPARE(after("zoomOutHorizontal", 70, 90, C::PolicyKeep), "60..100 1");
    QCOMPARE(after("zoomOutHorizontal", 80, 95, C::PolicyKeep), "70..100 1"); // slides, no cut
    QCOMPARE(after("zoomOutHorizontal", 30, 90, C::PolicyKeep), "0..100 3"); // all there is
    QCOMPARE(after("zoomFull", 30, 90, C::PolicyNone), "0..100 3");
}

void tst_XYCanvasZoom::zoomToStaysInTheData()
{
    canvas->setHorizontalZoomLimit(10);
    canvas->zoomToHorizontal(90, 120);
    QCOMPARE(state(), "90..100 1");
    canvas->zoomToHorizontal(50, 52);
    QCOMPARE(state(), "46..56 1");
    canvas->zoomToHorizontal(10, NaN);
    QCOMPARE(state(), "nan..nan 1");
    show(20, 40, XYCanvas::PolicyNone);
    canvas->zoomToHorizontal(50, 80);
    QCOMPARE(state(), "20..40 0");
}

void tst_XYCanvasZoom::dragFollowsOnlyAtTheNewestData()
{
    canvas->dragViewBounds(x, 10, true);
    QCOMPARE(state(), "0..100 3"); // a full view does not drag
    show(20, 40, XYCanvas::PolicyKeep);
    canvas->dragViewBounds(x, 500, true);
    QCOMPARE(state(), "80..100 2");
    canvas->dragViewBounds(x, -500, true);
    QCOMPARE(state(), "0..20 1");
}

void tst_XYCanvasZoom::bothDirectionsAreOneChange()
{
    SignalLog log(canvas);
    canvas->zoomInBoth();
    QCOMPARE(log.takeBounds(), QStringList({"x policy", "y policy", "view"}));
    canvas->zoomTo({10, 20, 30, 40});
    QCOMPARE(log.takeBounds(), QStringList({"view"}));
    QCOMPARE(canvas->getViewBounds().maxY, 40.0);
    canvas->zoomOutBoth();
    canvas->dragViewBounds(1, 500); // the upper end of y is not followed
    QCOMPARE(log.takeBounds(), QStringList({"view", "view"}));
    canvas->setVerticalViewBoundsUpdatePolicy(XYCanvas::PolicyNone, false);
    canvas->zoomTo({10, 20, 30, 40}); // what x owes goes out with a y that does not move
    QCOMPARE(log.takeBounds(), QStringList({"y policy", "view"}));
}

void tst_XYCanvasZoom::scrollBarMovesTheViewAndFollowsIt()
{
    stage->add({0, 90}, {1, 1});
    QScrollBar bar;
    canvas->setHorizontalScrollBar(&bar);
    QVERIFY(!bar.isEnabled());
    show(50, 75, XYCanvas::PolicyKeep);
    QCOMPARE(QList<int>({bar.maximum(), bar.value(), bar.pageStep(), bar.singleStep()}),
             QList<int>({750000000, 500000000, 250000000, 10000000}));
    QCOMPARE(state(), "50..75 1"); // what the canvas wrote did not come back
    bar.setValue(250000000);
    QCOMPARE(state(), "25..50 1");
    bar.setValue(bar.maximum());
    QCOMPARE(state(), "75..100 2");
    bar.setValue(0);
    QCOMPARE(state(), "0..25 2"); // following ends between the ends only
    bar.setValue(10000000);
    QCOMPARE(state(), "1..26 1");
}

void tst_XYCanvasZoom::rubberBandZooms()
{
    QCOMPARE(drag({50, 25}, {150, 95}), "25..75 1");
    QCOMPARE(canvas->getViewBounds().maxY, 75.0);
    auto const bands = [this] { return canvas->findChildren<QRubberBand*>().size(); };
    QCOMPARE(bands(), 0);

    mouse(QEvent::MouseButtonPress, {20, 20});
    mouse(QEvent::MouseButtonRelease, {20, 20});
    QCOMPARE(bands(), 1); // a click without a move leaves its empty band
    mouse(QEvent::MouseButtonPress, {20, 20});
    mouse(QEvent::MouseMove, {90, 90}, Qt::NoButton);
    mouse(QEvent::MouseButtonPress, {90, 90}, Qt::RightButton);
    QCOMPARE(bands(), 1);
    mouse(QEvent::MouseButtonRelease, {90, 90});
    QCOMPARE(state(), "25..75 1"); // cancelled
}

void tst_XYCanvasZoom::handDragsTheContent()
{
    canvas->changeCursor(Qt::OpenHandCursor);
    show(40, 60, XYCanvas::PolicyKeep);
    QCOMPARE(drag({100, 50}, {50, 50}), "45..65 1");
    QCOMPARE(canvas->cursor().shape(), Qt::OpenHandCursor);
    QCOMPARE(drag({0, 50}, {-0.5, 50}), "45..65 1"); // half a pixel rounds upwards
    QCOMPARE(drag({1e300, 50}, {-1e300, 50}), "80..100 2");
}

void tst_XYCanvasZoom::wheelKeepsThePointUnderTheMouse()
{
    QCOMPARE(wheel({50, 50}, 60), "0..100 3"); // half a notch
    QCOMPARE(wheel({50, 50}, 120), "12.5..62.5 1");
    QCOMPARE(wheel({50, 50}, -120), "0..100 3");
    canvas->setHorizontalZoomLimit(1);
    QCOMPARE(wheel({50, 50}, 2147483520), "24.75..25.75 1");
}

void tst_XYCanvasZoom::mouseTellsItsPlace()
{
    LinearGrid grid(eHORIZONTAL, nullptr); // a missing one has no text
    canvas->setGrid(eHORIZONTAL, &grid, false);
    show(2, 10, XYCanvas::PolicyKeep);
    QSignalSpy texts(canvas, &XYCanvas::mouseMoved);
    QSignalSpy numbers(canvas, &XYCanvas::mouseCoords);
    mouse(QEvent::MouseMove, {50, 25}, Qt::NoButton);
    QCOMPARE(texts.takeLast(), QVariantList({"4.00", ""})); // decimals as the extent needs
    canvas->enableSendingMouseCoords(true);
    canvas->enableSendingTextualMouseCoords(false);
    mouse(QEvent::MouseMove, {50, 25}, Qt::NoButton);
    QCOMPARE(numbers.value(0), QVariantList({4.0, 75.0}));
    QCOMPARE(texts.size(), 0);
    canvas->changeCursor(Qt::ClosedHandCursor);
    mouse(QEvent::MouseMove, {50, 25}, Qt::NoButton);
    QCOMPARE(texts.size(), 1); // they go on during a drag
}

void tst_XYCanvasZoom::mouseWaitsForTheFirstPaint()
{
    makeCanvas();
    show(20, 60, XYCanvas::PolicyKeep);
    drag({50, 50}, {90, 90});
    wheel({50, 50}, 120);
    canvas->changeCursor(Qt::OpenHandCursor);
    mouse(QEvent::MouseButtonPress, {100, 50});
    mouse(QEvent::MouseMove, {50, 50}, Qt::NoButton);
    stage->paint();
    mouse(QEvent::MouseMove, {50, 50}, Qt::NoButton);
    QCOMPARE(state(), "20..60 1"); // nor does a drag catch up
}

QTEST_MAIN(tst_XYCanvasZoom)
#include "tst_xycanvas_zoom.moc"
