#include "canvasstage.h"
#include "objectcounts.h"

#include <QTest>

namespace {
Bounds const pixelView{0, 200, 0, 100}; // one unit per pixel

/// Smallest rectangle, in the area or the whole picture, around all that is not white.
QRect inkOf(TestImage const& picture, QRect area = {})
{
    return extentOf(picture.getImage().copy(area), Qt::white, true);
}

Marker_t line(E_ORIENTATION_TYPE axis, double value, QString const& label = {})
{
    return {eFOREGROUND_MARKER, axis, value, Qt::red, Qt::SolidLine, 1, label};
}

/// A row with what one marker paints and what it should.
template<typename Marker>
void add(char const* name, QList<Marker*> CanvasStage::*list, Marker marker, QRect ink,
         Bounds const& view = pixelView)
{
    CanvasStage stage(view);
    (stage.*list).append(&marker);
    QTest::newRow(name) << inkOf(stage.paint()) << ink;
}
} // namespace

class tst_XYCanvasMarkers : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void extent_data();
    void extent();
    void labelsAndLayers();
    void mouseAndTimeMarkers();
};

void tst_XYCanvasMarkers::extent_data()
{
    auto const lines = &CanvasStage::markers;
    auto const crosses = &CanvasStage::crosses;
    auto const ovals = &CanvasStage::ellipses;
    QRect const upright(60, 30, 81, 41);
    QTest::addColumn<QRect>("actual");
    QTest::addColumn<QRect>("ink");
    add("half in y: upwards", lines, line(eVERTICAL, 30.5), {0, 69, 200, 1});
    add("half in x: to the right", lines, line(eHORIZONTAL, 30.5), {31, 0, 1, 100});
    add("on the upper end", lines, line(eVERTICAL, 100), {0, 0, 200, 1});
    add("beyond the upper end", lines, line(eVERTICAL, 100.001), {});
    add("below the left end", lines, line(eHORIZONTAL, -0.001), {});
    add("other axis unknown", lines, line(eHORIZONTAL, 30), {30, 0, 1, 100}, {0, 200, NaN, 100});
    add("own axis unknown", lines, line(eVERTICAL, 30), {}, {0, 200, NaN, 100});
    add("own axis without extent", lines, line(eVERTICAL, 5), {}, {0, 200, 5, 5});
    add("halves grow, arms are cut", crosses, {50.5, 30.5, 5.9, Qt::red}, {46, 64, 11, 11});
    add("outside: an arm reaches in", crosses, {-3, 30, 5, Qt::red}, {0, 70, 3, 1});
    add("cross at no number", crosses, {50, NaN, 5, Qt::red}, {});
    add("cross, view without extent", crosses, {50, 30, 5, Qt::red}, {}, {0, 200, 30, 30});
    add("the vertical axis turned to x", ovals, {100, 50, 80, 40, 90, Qt::red}, upright);
    add("turned clockwise", ovals, {0, 100, 80, 0, 135, Qt::red}, {0, 0, 29, 29});
    add("x in other units", ovals, {1000, 50, 40, 800, 0, Qt::red}, upright, {0, 2000, 0, 100});
    add("y in other units", ovals, {100, 5e5, 4e5, 80, 0, Qt::red}, upright, {0, 200, 0, 1e6});
    add("window beyond an int", ovals, {5e8, 0.5, 0.4, 4e8, 0, Qt::red}, upright, {0, 1e9, 0, 1});
    add("view inside the rhombus: no outline", ovals, {100, 50, 1000, 1000, 0, Qt::red}, {});
    add("ellipse at no number", ovals, {NaN, 50, 40, 80, 0, Qt::red}, {});
    add("ellipse, view inverted", ovals, {100, 50, 40, 80, 0, Qt::red}, {}, {200, 0, 0, 100});
}

void tst_XYCanvasMarkers::extent()
{
    QFETCH(QRect, actual);
    QTEST(actual, "ink");
}

void tst_XYCanvasMarkers::labelsAndLayers()
{
    CanvasStage stage(pixelView);
    Marker_t first = line(eVERTICAL, 70, "LLL");
    Marker_t second = line(eVERTICAL, 30, "LLL");
    Marker_t upright = line(eHORIZONTAL, 100, "LLL");
    second.type = eBACKGROUND_MARKER;
    stage.markers = {&first, &second, &upright};
    QCOMPARE(inkOf(stage.paint(), QRect(1, 0, 3, 30)).bottom(), 26); // 3 above the line
    QCOMPARE(inkOf(stage.paint(), QRect(1, 71, 3, 29)).bottom(), 10); // 12 below
    QCOMPARE(inkOf(stage.paint(), QRect(101, 0, 99, 30)), QRect());
    first.value = second.value = 50;
    QCOMPARE(inkOf(stage.paint(), QRect(150, 0, 1, 100)), QRect(0, 50, 1, 21)); // second: still 70
    stage->fullRepaint();
    QCOMPARE(inkOf(stage.paint(), QRect(150, 0, 1, 100)), QRect(0, 50, 1, 1));
}

void tst_XYCanvasMarkers::mouseAndTimeMarkers()
{
    CanvasStage mouse(pixelView);
    CanvasStage other(pixelView);
    auto dead = std::make_unique<CanvasStage>();
    mouse->setXYCanvassesForInterplotMouseMarkers(
        {dead->operator->(), mouse.operator->(), other.operator->()});
    dead.reset();
    for (CanvasStage* const stage : {&mouse, &other}) {
        (*stage)->enableMouseMarkers(Qt::Horizontal | Qt::Vertical);
        (*stage)->enableInterplotMouseMarkers(Qt::Vertical);
    }
    mouse->updateMouseMarkers(40, 30, false);
    QCOMPARE(inkOf(mouse.paint()), QRect(0, 0, 200, 100));
    QCOMPARE(inkOf(other.paint()), QRect(40, 0, 1, 100));
    mouse->mouseMarkerMouseLeave(false);
    QCOMPARE(inkOf(mouse.paint()) | inkOf(other.paint()), QRect());
    // A view that moves takes the markers away, here and there.
    mouse->updateMouseMarkers(40, 30, false);
    mouse->setViewBounds({-10, 190, 0, 100}, true);
    QCOMPARE(inkOf(mouse.paint()) | inkOf(other.paint()), QRect());

    mouse->updateCurrentTimeMarker(50); // not enabled, but kept
    mouse->enableIntervalTimeMarker();
    QCOMPARE(inkOf(mouse.paint()), QRect(9, 0, 2, 100)); // both at 0, two pixels wide
    mouse->enableCurrentTimeMarker();
    mouse->updateIntervalStartTimeMarker(20);
    mouse->updateIntervalStopTimeMarker(60);
    QCOMPARE(extentOf(mouse.paint().getImage(), Qt::red), QRect(59, 0, 2, 100));
    QCOMPARE(extentOf(mouse.paint().getImage(), Qt::blue), QRect(29, 0, 42, 100));
    mouse->disableIntervalTimeMarker();
    QCOMPARE(inkOf(mouse.paint()), QRect(59, 0, 2, 100));
}

QTEST_MAIN(tst_XYCanvasMarkers)
#include "tst_xycanvas_markers.moc"
