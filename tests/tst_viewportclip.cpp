#include "rounding.h"
#include "viewportclip.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
ViewportClip const viewport(100, 50);

std::optional<QLine> clip(QLine line)
{
    int const fromCode = viewport.zoneOf(line.p1());
    return viewport.clipped(line.p1(), line.p2(), fromCode, viewport.zoneOf(line.p2()));
}

/// Points along a line, a third of a pixel apart, that lie within the viewport or so far from it.
QVector<QPointF> walk(QLineF const& line, double margin)
{
    QVector<QPointF> points;
    for (int i = 0; i <= 1000; ++i)
        points.append(line.pointAt(i / 1000.0));
    QRectF const area = QRectF(0, 0, 100, 50).adjusted(-margin, -margin, margin, margin);
    points.removeIf([&](QPointF point) { return !area.contains(point); });
    return points;
}

/// True if a line comes within a pixel of a point.
bool passes(QLineF const& line, QPointF point)
{
    QVector<QPointF> points = walk(line, 200.0);
    return points.removeIf([&](QPointF p) { return QLineF(point, p).length() < 1.2; }) > 0;
}

} // namespace

class tst_ViewportClip : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void zones();
    void clipped_data();
    void clipped();
    void drawnIsWhatIsVisible();
};

void tst_ViewportClip::zones()
{
    // The edges belong to the inside.
    int const xs[] = {lowest, -1, 0, 100, 101};
    int const ys[] = {51, 50, 0, -1};
    int const expected[] = {3, 3, 4, 4, 5, 2, 2, 0, 0, 6, 2, 2, 0, 0, 6, 1, 1, 8, 8, 7};
    for (int i = 0; i < 20; ++i)
        QCOMPARE(viewport.zoneOf({xs[i % 5], ys[i / 5]}), expected[i]);

    // Zones -1 to 9 by the sides on which they lie, left 1, right 2, below 4, above 8: a line
    // between two may cross if they have none in common.
    int const sides[] = {15, 15, 1 + 4, 1, 1 + 8, 8, 2 + 8, 2, 2 + 4, 4, 15};
    for (int i = 0; i < 121; ++i)
        QCOMPARE(ViewportClip::mayCross(i / 11 - 1, i % 11 - 1), !(sides[i / 11] & sides[i % 11]));
    QCOMPARE(viewport.crossing({20, 10}, {30, 20}, 9), QPoint(0, 0)); // no zone
}

void tst_ViewportClip::clipped_data()
{
    QTest::addColumn<QLine>("line");
    QTest::addColumn<QLine>("drawn"); // null: nothing
    auto const row
        = [](char const* name, QLine line, QLine drawn) { QTest::newRow(name) << line << drawn; };
    row("inside, forwards", {1, 2, 3, 4}, {1, 2, 3, 4});
    row("coming in, drawn outwards", {-10, 10, 10, 10}, {10, 10, 0, 10});
    row("1, half a pixel below rounds onto the corner", {1, 0, -1, -1}, {0, 0, 1, 0});
    row("2, halves go upwards", {1, 0, -1, 1}, {0, 1, 1, 0});
    row("2, as far as an int goes", {0, 0, lowest, 1}, {0, 0, 0, 0});
    row("3 by the left edge, truncated", {1, 48, -2, 53}, {0, 49, 1, 48});
    row("3, truncated onto the corner", {10, 49, -11, 53}, {0, 50, 10, 49});
    row("5 by the right edge, rounded", {99, 48, 102, 53}, {100, 50, 99, 48});
    row("far, cut at both ends", {-pixelLimit, -pixelLimit, pixelLimit, pixelLimit},
        {50, 50, 0, 0});
    // Level enough to leave by the corner pixel on the left, 4 pixels before the upper edge.
    row("only the entry is asked: a line begins outside", {-24, 48, 26, 53}, {-4, 50, 0, 50});
    row("only the entry is asked: the same line back", {26, 53, -24, 48}, {});
}

void tst_ViewportClip::clipped()
{
    QFETCH(QLine, line);
    QTEST(clip(line).value_or(QLine()), "drawn");
}

void tst_ViewportClip::drawnIsWhatIsVisible()
{
    QRandomGenerator random(4711);
    auto const within = [&](int span) { return random.bounded(-span, 2 * span); };
    for (int i = 0; i < 2000; ++i) {
        QLine const line(within(100), within(50), within(100), within(50));
        std::optional<QLine> const drawn = clip(line);
        QVector<QPointF> const visible = walk(line, 0.0);
        // A line that passes a corner within a pixel may go either way.
        bool right = !drawn || !walk(line, 1.0).isEmpty();
        if (!visible.isEmpty() && QLineF(visible.first(), visible.last()).length() > 4.0)
            right = drawn && passes(line, drawn->p1()) && passes(line, drawn->p2())
                && passes(*drawn, visible.first()) && passes(*drawn, visible.last())
                && viewport.zoneOf(drawn->p1()) == 0 && viewport.zoneOf(drawn->p2()) == 0;
        QVERIFY2(right, qPrintable(QDebug::toString(line)));
    }
}

QTEST_APPLESS_MAIN(tst_ViewportClip)
#include "tst_viewportclip.moc"
