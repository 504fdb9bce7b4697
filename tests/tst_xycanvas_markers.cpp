#include "canvasstage.h"
#include "messagerecorder.h"
#include "objectcounts.h"

#include <QScopedPointer>
#include <QTest>
#include <limits>

namespace {
constexpr QSize size(200, 100);
Bounds const pixelView{0, 200, 0, 100}; // one unit per pixel

/// Smallest rectangle around all that is not white in the area.
QRect inkOf(TestImage const& picture, QRect area = QRect(QPoint(0, 0), size))
{
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (picture.at(x, y) != Qt::white)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

QRect row(int y)
{
    return {0, y, 200, 1};
}

QRect column(int x)
{
    return {x, 0, 1, 100};
}

Marker_t foreground(E_ORIENTATION_TYPE orientation, double value, QString const& label = {})
{
    return {eFOREGROUND_MARKER, orientation, value, Qt::red, Qt::SolidLine, 1, label};
}
} // namespace

class tst_XYCanvasMarkers : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { messages.reset(new MessageRecorder); }
    void cleanup();
    void lines_data();
    void lines();
    void labels();
    void onlyForegroundMarkersMoveAtOnce();
    void crosses_data();
    void crosses();
    void ellipses_data();
    void ellipses();
    void mouseMarkers_data();
    void mouseMarkers();
    void timeMarkers();

private:
    QScopedPointer<MessageRecorder> messages;
};

void tst_XYCanvasMarkers::cleanup()
{
    QCOMPARE(messages->take(), QStringList());
    messages.reset();
    QCOMPARE(liveObjects(), QStringList());
}

void tst_XYCanvasMarkers::lines_data()
{
    QTest::addColumn<Marker_t>("marker");
    QTest::addColumn<Bounds>("view");
    QTest::addColumn<QRect>("ink");
    auto const add = [](char const* name, E_ORIENTATION_TYPE orientation, double value, QRect ink,
                        Bounds const& view = pixelView) {
        QTest::newRow(name) << foreground(orientation, value) << view << ink;
    };
    QRect const none;
    add("y counts upwards", eVERTICAL, 30, row(70));
    add("x", eHORIZONTAL, 30, column(30));
    add("half in y: upwards", eVERTICAL, 30.5, row(69));
    add("half in x: to the right", eHORIZONTAL, 30.5, column(31));
    add("on the upper end", eVERTICAL, 100, row(0));
    add("beyond the upper end", eVERTICAL, 100.001, none);
    add("below the left end", eHORIZONTAL, -0.001, none);
    add("no number", eHORIZONTAL, NaN, none);
    add("other axis unknown", eHORIZONTAL, 30, column(30), {0, 200, NaN, 100});
    add("own axis unknown", eVERTICAL, 30, none, {0, 200, NaN, 100});
    add("own axis without extent", eVERTICAL, 5, none, {0, 200, 5, 5});
    add("unknown axis", E_ORIENTATION_TYPE(2), 30, none);
}

void tst_XYCanvasMarkers::lines()
{
    QFETCH(Marker_t, marker);
    QFETCH(Bounds, view);
    CanvasStage stage;
    stage.show(view);
    stage.markers = {&marker};
    QTEST(inkOf(stage.paint(size)), "ink");
}

void tst_XYCanvasMarkers::labels()
{
    CanvasStage stage;
    stage.show(pixelView);
    Marker_t first = foreground(eVERTICAL, 70, "LLL");
    Marker_t second = foreground(eVERTICAL, 30, "LLL");
    Marker_t upright = foreground(eHORIZONTAL, 100, "LLL");
    stage.markers = {&first, &second, &upright};
    TestImage const picture = stage.paint(size);
    QRect const above = inkOf(picture, QRect(0, 5, 99, 25));
    QCOMPARE(above.bottom(), 26); // the baseline three pixels above the line
    QVERIFY(above.left() >= 1 && above.left() <= 3);
    QCOMPARE(inkOf(picture, QRect(0, 31, 99, 15)), QRect());
    QCOMPARE(inkOf(picture, QRect(0, 71, 99, 29)).bottom(), 81); // and twelve below
    QCOMPARE(inkOf(picture, QRect(101, 0, 99, 30)), QRect());
}

void tst_XYCanvasMarkers::onlyForegroundMarkersMoveAtOnce()
{
    CanvasStage stage;
    stage.show(pixelView);
    Marker_t front = foreground(eVERTICAL, 30);
    Marker_t back = foreground(eVERTICAL, 60);
    back.type = eBACKGROUND_MARKER;
    stage.markers = {&front, &back};
    QCOMPARE(inkOf(stage.paint(size)), row(40) | row(70));
    front.value = back.value = 50;
    QCOMPARE(inkOf(stage.paint(size)), row(40) | row(50));
    stage->fullRepaint();
    QCOMPARE(inkOf(stage.paint(size)), row(50));
}

void tst_XYCanvasMarkers::crosses_data()
{
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<double>("arm");
    QTest::addColumn<Bounds>("view");
    QTest::addColumn<QRect>("ink");
    auto const add = [](char const* name, QPointF centre, double arm, QRect ink,
                        Bounds const& view = pixelView) {
        QTest::newRow(name) << centre << arm << view << ink;
    };
    add("arm is truncated", {50, 30}, 5.9, {45, 65, 11, 11});
    add("halves: to the right and upwards", {50.5, 30.5}, 5, {46, 64, 11, 11});
    add("outside: an arm reaches in", {-3, 30}, 5, {0, 70, 3, 1});
    add("no number", {50, NaN}, 5, {});
    add("view unknown in x", {50, 30}, 5, {}, {NaN, 200, 0, 100});
    add("view without extent in y", {50, 30}, 5, {}, {0, 200, 30, 30});
}

void tst_XYCanvasMarkers::crosses()
{
    QFETCH(QPointF, centre);
    QFETCH(double, arm);
    QFETCH(Bounds, view);
    CanvasStage stage;
    stage.show(view);
    CrossMarker_t cross{centre.x(), centre.y(), arm, Qt::red, Qt::SolidLine, 0};
    stage.crosses = {&cross};
    QTEST(inkOf(stage.paint(size)), "ink");
}

void tst_XYCanvasMarkers::ellipses_data()
{
    QTest::addColumn<EllipseMarker_t>("ellipse");
    QTest::addColumn<Bounds>("view");
    QTest::addColumn<QRect>("ink"); // to a pixel; empty for nothing
    auto const add = [](char const* name, double x, double y, double up, double right, double angle,
                        QRect ink, Bounds const& view = pixelView) {
        QTest::newRow(name) << EllipseMarker_t{x, y, up, right, angle, Qt::red, Qt::SolidLine, 0}
                            << view << ink;
    };
    QRect const upright(60, 30, 81, 41);
    add("axes as named", 100, 50, 40, 80, 0, upright);
    add("turned by 90: the vertical axis lies along x", 100, 50, 80, 40, 90, upright);
    add("turned clockwise", 0, 100, 80, 0, 135, {0, 0, 29, 29});
    add("x in other units", 1000, 50, 40, 800, 0, upright, {0, 2000, 0, 100});
    add("y in other units", 100, 5e5, 4e5, 80, 0, upright, {0, 200, 0, 1e6});
    add("window beyond an int", 5e8, 0.5, 0.4, 4e8, 0, upright, {0, 1e9, 0, 1});
    add("cut by the edge", 0, 50, 40, 80, 0, {0, 30, 41, 41});
    add("view inside the rhombus: no outline", 100, 50, 1000, 1000, 0, {});
    add("outside", 300, 50, 40, 80, 0, {});
    add("no number", NaN, 50, 40, 80, 0, {});
    add("infinite axis", 100, 50, std::numeric_limits<double>::infinity(), 80, 0, {});
    add("view unknown", 100, 50, 40, 80, 0, {}, {0, 200, 0, NaN});
    add("view inverted", 100, 50, 40, 80, 0, {}, {200, 0, 0, 100});
}

void tst_XYCanvasMarkers::ellipses()
{
    QFETCH(EllipseMarker_t, ellipse);
    QFETCH(Bounds, view);
    QFETCH(QRect, ink);
    CanvasStage stage;
    stage.show(view);
    stage.ellipses = {&ellipse};
    QRect const actual = inkOf(stage.paint(size));
    QCOMPARE(actual.isEmpty(), ink.isEmpty());
    QVERIFY2(ink.isEmpty()
                 || (ink.adjusted(-1, -1, 1, 1).contains(actual)
                     && actual.adjusted(-1, -1, 1, 1).contains(ink)),
             qPrintable(QDebug::toString(actual)));
}

void tst_XYCanvasMarkers::mouseMarkers_data()
{
    using Flags = QFlags<Qt::Orientation>;
    QTest::addColumn<Flags>("own");
    QTest::addColumn<Flags>("interplot");
    QTest::addColumn<QRect>("ownInk");
    QTest::addColumn<QRect>("otherInk");
    Flags const both = Qt::Horizontal | Qt::Vertical;
    QTest::newRow("line at y only") << Flags(Qt::Horizontal) << Flags() << row(70) << QRect();
    QTest::newRow("other canvas only") << Flags() << Flags(Qt::Vertical) << QRect() << column(40);
    QTest::newRow("both") << both << both << QRect(0, 0, 200, 100) << QRect(0, 0, 200, 100);
}

void tst_XYCanvasMarkers::mouseMarkers()
{
    QFETCH(QFlags<Qt::Orientation>, own);
    QFETCH(QFlags<Qt::Orientation>, interplot);
    CanvasStage mouse;
    CanvasStage other;
    {
        CanvasStage dead;
        mouse->setXYCanvassesForInterplotMouseMarkers(
            {dead.operator->(), mouse.operator->(), other.operator->()});
    }
    for (CanvasStage* const stage : {&mouse, &other}) {
        stage->show(pixelView);
        (*stage)->enableMouseMarkers(own);
        (*stage)->enableInterplotMouseMarkers(interplot);
    }
    mouse->updateMouseMarkers(40, 30, false);
    QTEST(inkOf(mouse.paint(size)), "ownInk");
    QTEST(inkOf(other.paint(size)), "otherInk");
    mouse->mouseMarkerMouseLeave(false);
    QCOMPARE(inkOf(mouse.paint(size)) | inkOf(other.paint(size)), QRect());
    // A view that moves takes the markers away, here and there.
    mouse->updateMouseMarkers(40, 30, false);
    mouse->setViewBounds({0, 100, 0, 100}, true);
    QCOMPARE(inkOf(mouse.paint(size)) | inkOf(other.paint(size)), QRect());
}

void tst_XYCanvasMarkers::timeMarkers()
{
    CanvasStage stage;
    stage.show({-10, 190, 0, 100});
    stage->updateCurrentTimeMarker(50);
    QCOMPARE(inkOf(stage.paint(size)), QRect()); // not enabled
    stage->enableCurrentTimeMarker();
    QCOMPARE(inkOf(stage.paint(size)), column(59) | column(60)); // two pixels wide
    stage->disableCurrentTimeMarker();
    stage->enableIntervalTimeMarker();
    TestImage const picture = stage.paint(size);
    QCOMPARE(inkOf(picture), column(9) | column(10)); // both at 0
    QCOMPARE(picture.at(10, 50), QColor(Qt::blue));
    stage->updateIntervalStartTimeMarker(20);
    stage->updateIntervalStopTimeMarker(60);
    stage->enableCurrentTimeMarker(); // it has kept its value
    QCOMPARE(stage.paint(size).at(60, 50), QColor(Qt::red));
    QCOMPARE(inkOf(stage.paint(size)), QRect(29, 0, 42, 100));
    stage->disableIntervalTimeMarker();
    QCOMPARE(inkOf(stage.paint(size)), column(59) | column(60));
}

QTEST_MAIN(tst_XYCanvasMarkers)
#include "tst_xycanvas_markers.moc"
