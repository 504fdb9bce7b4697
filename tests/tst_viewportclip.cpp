#include "rounding.h"
#include "viewportclip.h"

#include <QLineF>
#include <QRandomGenerator>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int width = 100;
constexpr int height = 50;
ViewportClip const viewport(width, height);

std::optional<QLine> clip(QPoint from, QPoint to)
{
    return viewport.clipped(from, to, viewport.zoneOf(from), viewport.zoneOf(to));
}

/// The part of a line within the viewport grown by a margin, by real numbers.
std::optional<QLineF> exactlyClipped(QLineF const& line, double margin)
{
    double enter = 0.0;
    double leave = 1.0;
    auto const cut = [&](double start, double delta, double low, double high) {
        if (delta == 0.0) {
            if (start < low || start > high)
                leave = -1.0;
            return;
        }
        double const a = (low - start) / delta;
        double const b = (high - start) / delta;
        enter = std::max(enter, std::min(a, b));
        leave = std::min(leave, std::max(a, b));
    };
    cut(line.x1(), line.dx(), -margin, width + margin);
    cut(line.y1(), line.dy(), -margin, height + margin);
    if (enter > leave)
        return std::nullopt;
    return QLineF(line.pointAt(enter), line.pointAt(leave));
}

/// Pixels from a point to the nearest one of a line between two points.
double distance(QPointF point, QLineF const& line)
{
    QPointF const direction = line.p2() - line.p1();
    double const square = QPointF::dotProduct(direction, direction);
    double const along
        = square > 0.0 ? QPointF::dotProduct(point - line.p1(), direction) / square : 0.0;
    return QLineF(point, line.pointAt(std::clamp(along, 0.0, 1.0))).length();
}

} // namespace

class tst_ViewportClip : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void edgesBelongToTheInside();
    void onlyZonesWithoutACommonSideMayCross();
    void crossing_data();
    void crossing();
    void clipped_data();
    void clipped();
    void clippedLinesLieOnTheLine();
};

void tst_ViewportClip::edgesBelongToTheInside()
{
    int const columns[] = {std::numeric_limits<int>::min(), -1, 0, width, width + 1};
    int const lines[] = {height + 1, height, 0, -1};
    int const zones[4][5] = {
        {3, 3, 4, 4, 5},
        {2, 2, 0, 0, 6},
        {2, 2, 0, 0, 6},
        {1, 1, 8, 8, 7},
    };
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 5; ++j)
            QCOMPARE(viewport.zoneOf({columns[j], lines[i]}), zones[i][j]);
    }
}

void tst_ViewportClip::onlyZonesWithoutACommonSideMayCross()
{
    // Left 1, right 2, below 4, above 8.
    int const sidesOf[] = {0, 1 + 4, 1, 1 + 8, 8, 2 + 8, 2, 2 + 4, 4};
    for (int first = -1; first <= 9; ++first) {
        for (int second = -1; second <= 9; ++second) {
            bool const outside = first >= 1 && first <= 8 && second >= 1 && second <= 8;
            bool const expected = outside && (sidesOf[first] & sidesOf[second]) == 0;
            QVERIFY2(ViewportClip::mayCross(first, second) == expected,
                     qPrintable(QStringLiteral("%1 to %2").arg(first).arg(second)));
        }
    }
}

void tst_ViewportClip::crossing_data()
{
    QTest::addColumn<QPoint>("inner");
    QTest::addColumn<QPoint>("outer");
    QTest::addColumn<int>("code");
    QTest::addColumn<QPoint>("point");
    auto const row = [](char const* name, QPoint inner, QPoint outer, int code, QPoint point) {
        QTest::newRow(name) << inner << outer << code << point;
    };
    row("1 by the left edge", {10, 30}, {-20, -30}, 1, {0, 10});
    row("1 by the lower edge", {10, 10}, {-10, -30}, 1, {5, 0});
    row("1, half a pixel below rounds onto the corner", {1, 0}, {-1, -1}, 1, {0, 0});
    row("2", {10, 10}, {-10, 20}, 2, {0, 15});
    row("2, halves go upwards", {1, 0}, {-1, 1}, 2, {0, 1});
    row("3 by the left edge, truncated", {1, 48}, {-2, 53}, 3, {0, 49});
    row("3, truncated onto the corner", {10, 49}, {-11, 53}, 3, {0, 50});
    row("3 by the upper edge", {20, 40}, {-10, 70}, 3, {10, 50});
    row("4", {20, 40}, {30, 60}, 4, {25, 50});
    row("4, vertical", {20, 40}, {20, 60}, 4, {20, 50});
    row("5 by the right edge", {80, 10}, {130, 60}, 5, {100, 30});
    row("5, the right edge is rounded", {99, 48}, {102, 53}, 5, {100, 50});
    row("5 by the upper edge", {80, 40}, {110, 100}, 5, {85, 50});
    row("6", {90, 20}, {110, 30}, 6, {100, 25});
    row("7 by the right edge", {90, 30}, {120, -15}, 7, {100, 15});
    row("7 by the lower edge", {90, 10}, {105, -20}, 7, {95, 0});
    row("7, vertical, without a case of its own", {105, 10}, {105, -10}, 7, {105, 0});
    row("8", {20, 10}, {30, -10}, 8, {25, 0});
    row("8, vertical", {20, 10}, {20, -10}, 8, {20, 0});
    row("0 has no edge", {20, 10}, {30, 20}, 0, {0, 0});
    row("9 is no zone", {20, 10}, {30, 20}, 9, {0, 0});
    row("no direction at all", {120, -5}, {120, -5}, 7, {100, 0});
    row("level line that never meets the edge", {20, -5}, {10, -5}, 8, {pixelLimit, 0});
    row("far right", {10, 10}, {2 * pixelLimit, 11}, 6, {100, 10});
    row("far to the lower left", {20, 30}, {-pixelLimit, -pixelLimit}, 1, {0, 10});
    row("as far as an int goes", {0, 0}, {std::numeric_limits<int>::min(), 1}, 2, {0, 0});
}

void tst_ViewportClip::crossing()
{
    QFETCH(QPoint, inner);
    QFETCH(QPoint, outer);
    QFETCH(int, code);
    QTEST(viewport.crossing(inner, outer, code), "point");
}

void tst_ViewportClip::clipped_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QLine>("line"); // null: nothing is drawn
    auto const row = [](char const* name, QPoint from, QPoint to, QLine line) {
        QTest::newRow(name) << from << to << line;
    };
    QLine const none;
    row("inside, forwards", {1, 2}, {3, 4}, {1, 2, 3, 4});
    row("coming in, drawn outwards", {-10, 10}, {10, 10}, {10, 10, 0, 10});
    row("going out, drawn inwards", {10, 10}, {-10, 10}, {0, 10, 10, 10});
    row("1 to 5, cut at both ends, drawn backwards", {-10, -10}, {110, 110}, {50, 50, 0, 0});
    row("1 to 2, never inside", {-10, -10}, {-5, 30}, none);
    row("2 to 4, misses the corner", {-10, 45}, {10, 80}, none);
    row("2 to 4, cuts the corner", {-10, 30}, {40, 80}, {10, 50, 0, 40});
    // Level enough to leave by the corner pixel on the left, 4 pixels before the upper edge.
    row("only the entry is asked: a line begins outside", {-24, 48}, {26, 53}, {-4, 50, 0, 50});
    row("only the entry is asked: the same line back", {26, 53}, {-24, 48}, none);
    row("far diagonal", {-pixelLimit, -pixelLimit}, {pixelLimit, pixelLimit}, {50, 50, 0, 0});
    row("far level line", {-pixelLimit, 20}, {pixelLimit, 20}, {100, 20, 0, 20});
}

void tst_ViewportClip::clipped()
{
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    QTEST(clip(from, to).value_or(QLine()), "line");
}

void tst_ViewportClip::clippedLinesLieOnTheLine()
{
    QRandomGenerator random(4711);
    int visible = 0;
    for (int i = 0; i < 100000; ++i) {
        auto const anywhere
            = [&] { return QPoint(random.bounded(-100, 200), random.bounded(-50, 100)); };
        QPoint const from = anywhere();
        QPoint const to = anywhere();
        if (from.x() == to.x())
            continue; // the curve draws these as upright strokes

        QLineF const whole(from, to);
        std::optional<QLine> const line = clip(from, to);
        std::optional<QLineF> const exact = exactlyClipped(whole, 0.0);

        auto const describe = [&] {
            return QStringLiteral("%1,%2 to %3,%4")
                .arg(from.x())
                .arg(from.y())
                .arg(to.x())
                .arg(to.y());
        };
        // A line that passes a corner within a pixel may go either way.
        if (!exactlyClipped(whole, 1.0))
            QVERIFY2(!line, qPrintable(describe()));
        if (!exact || exact->length() < 4.0)
            continue;
        ++visible;
        QVERIFY2(line, qPrintable(describe()));
        for (QPoint const end : {line->p1(), line->p2()}) {
            QVERIFY2(viewport.zoneOf(end) == 0, qPrintable(describe()));
            QVERIFY2(distance(end, whole) <= 1.0, qPrintable(describe()));
        }
        for (QPointF const end : {exact->p1(), exact->p2()})
            QVERIFY2(distance(end, QLineF(*line)) <= 1.0, qPrintable(describe()));
    }
    QVERIFY(visible > 10000);
}

QTEST_APPLESS_MAIN(tst_ViewportClip)
#include "tst_viewportclip.moc"
