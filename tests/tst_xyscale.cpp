#include "objectcounts.h"
#include "testimage.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <QTest>
#include <climits>

namespace {
enum Form { Left, Below, Above };

/// A scale of 300 by 60 pixels, addressed by the place along it and the depth off the canvas.
class TestScale : public XYScale
{
public:
    explicit TestScale(Form itsForm)
        : XYScale(itsForm == Left ? eVERTICAL : eHORIZONTAL, eSCALE_LABELS, itsForm != Below,
                  nullptr)
        , form(itsForm)
    {
        resize(form == Left ? QSize(60, 300) : QSize(300, 60));
    }

    /// The first tick counts from the low end of the scale, 18 pixels below that of a y axis.
    void feed(double step, double first, QStringList texts = {}, int divisions = 5)
    {
        drawScale(step, form == Left ? first - 18.0 : first, divisions, &texts);
    }

    TestImage painted(qreal ratio = 1.0)
    {
        return TestImage(size(), ratio, [this](QPainter* painter) { paint(painter); });
    }
    int tickLength(TestImage const& image, int place) const
    {
        return image.countPainted(form == Left ? QRect(0, 300 - place, 60, 1)
                                               : QRect(place, 0, 1, 60));
    }
    /// Painted pixels beyond the ticks.
    int countText()
    {
        QRect const beyond = form == Left ? QRect(0, 0, 50, 300) : QRect(0, 10, 300, 50);
        return painted().countPainted(form == Above ? beyond.translated(0, -10) : beyond);
    }

    /// Paints at once what update() has asked for, and tells whether it has asked.
    bool takeRepaint()
    {
        int const before = paints;
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(this, &request);
        return paints != before;
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++paints;
        XYScale::paintEvent(event);
    }

private:
    Form form;
    int paints = 0;
};
} // namespace
Q_DECLARE_METATYPE(Form)

class tst_XYScale : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void ticks_data();
    void ticks();
    void labelAtAnEnd_data();
    void labelAtAnEnd();
    void listDecidesWhichTicksHaveText();
    void hiddenIntervals();
    void repaintsOnChange();
    void fixedLabels();
    void requiredWidth();
    void oddSpacingEnds_data();
    void oddSpacingEnds();
};

void tst_XYScale::ticks_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<int>("stepBefore");
    // A tick is a pixel longer where it ends beside the far edge.
    QTest::newRow("left") << Left << 1.0 << 9 << 5 << 5;
    QTest::newRow("below") << Below << 1.0 << 8 << 4 << 4;
    QTest::newRow("above: major ticks one step earlier") << Above << 1.0 << 9 << 5 << 9;
    QTest::newRow("left, ratio 1.5") << Left << 1.5 << 9 << 5 << 5;
    QTest::newRow("below, ratio 1.5") << Below << 1.5 << 8 << 4 << 4;
}

void tst_XYScale::ticks()
{
    QFETCH(Form, form);
    QFETCH(qreal, ratio);
    TestScale scale(form);
    scale.feed(100.0, 159.5); // rounded up; a fifth of the step is 20
    TestImage const image = scale.painted(ratio);
    QTEST(scale.tickLength(image, 160), "major");
    QTEST(scale.tickLength(image, 260), "major");
    QTEST(scale.tickLength(image, 180), "minor");
    QTEST(scale.tickLength(image, 60), "stepBefore");
    QCOMPARE(scale.tickLength(image, 158), 0);
    QCOMPARE(scale.tickLength(image, 162), 0);
}

void tst_XYScale::labelAtAnEnd_data()
{
    int const height = QFontMetrics(getPlotRenderSettings().scaleFont).height();
    int const width = QFontMetrics(getPlotRenderSettings().scaleFont).horizontalAdvance("888");
    QTest::addColumn<Form>("form");
    QTest::addColumn<int>("outermost"); // place at which the label is still drawn
    QTest::addColumn<int>("outwards");
    QTest::newRow("left, lower end") << Left << height - height / 2 << -1;
    QTest::newRow("left, upper end") << Left << 299 - height / 2 << 1;
    QTest::newRow("below, left end") << Below << width / 2 + 1 << -1;
    QTest::newRow("below, right end") << Below << 300 - width + width / 2 << 1;
    QTest::newRow("above, right end") << Above << 300 - width + width / 2 << 1;
}

void tst_XYScale::labelAtAnEnd()
{
    QFETCH(Form, form);
    QFETCH(int, outermost);
    QFETCH(int, outwards);
    TestScale scale(form);
    scale.feed(1000.0, outermost, {"888"});
    QVERIFY(scale.countText() > 0);
    scale.feed(1000.0, outermost + outwards, {"888"});
    QCOMPARE(scale.countText(), 0);
}

void tst_XYScale::listDecidesWhichTicksHaveText()
{
    TestScale scale(Below);
    scale.feed(100.0, 50.0, {"8"});
    int const one = scale.countText();
    QVERIFY(one > 0);
    scale.feed(100.0, 50.0, {"8", "8"});
    QCOMPARE(scale.painted().countPainted(QRect(110, 10, 80, 49)), one);
    scale.feed(100.0, 50.0, {"8", "8", "8", "8", "8"});
    QCOMPARE(scale.countText(), 3 * one);
    scale.setLabelType(eCANVAS_LABELS);
    QCOMPARE(scale.countText(), 0);
}

void tst_XYScale::hiddenIntervals()
{
    TestScale scale(Left);
    scale.feed(100.0, 50.0, {"8", "8", "8"});
    int const three = scale.countText();
    scale.addIntervalToHideScale(151, 152); // meets the second label, but not its tick
    scale.addIntervalToHideScale(230, 250);
    QCOMPARE(scale.countText(), three / 3);
    QCOMPARE(scale.tickLength(scale.painted(), 250), 0);
    QVERIFY(!scale.mustHideScale(229, 0));
    QVERIFY(scale.mustHideScale(225, 5));
    QVERIFY(!scale.mustHideScale(256, 5));
    QVERIFY(!scale.mustHideScale(INT_MAX, 1));
    scale.clearIntervalsToHideScale();
    QCOMPARE(scale.countText(), three);
}

void tst_XYScale::repaintsOnChange()
{
    struct Call
    {
        char const* name;
        double first;
        QStringList texts;
        bool repaints;
    };
    Call const calls[]
        = {{"new spacing", 0.0, {}, true},       {"two empty lists", 0.0, {}, false},
           {"a list", 0.0, {"0", "1"}, true},    {"nothing new", 0.0, {"0", "1"}, false},
           {"a text", 0.0, {"0", "2"}, true},    {"fewer texts", 0.0, {"0"}, true},
           {"the first tick", -1.0, {"0"}, true}};
    TestScale scale(Below);
    scale.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scale));
    scale.takeRepaint();
    for (Call const& call : calls) {
        scale.feed(100.0, call.first, call.texts);
        QVERIFY2(scale.takeRepaint() == call.repaints, call.name);
    }
    scale.drawScale(100.0, -1.0, 5, nullptr);
    QVERIFY2(scale.takeRepaint(), "no list");
}

void tst_XYScale::fixedLabels()
{
    QFontMetrics const metrics(getPlotRenderSettings().fixedLabelFont);
    QSize const box(metrics.horizontalAdvance("E01"), metrics.height());
    QMap<Form, QPoint> const corners{{Left, QPoint(50 - box.width(), 200 - box.height() / 2)},
                                     {Above, QPoint(100 - box.width() / 2, 1)}};
    for (Form const form : corners.keys()) {
        TestScale scale(form);
        scale.addIntervalToHideScale(0, 300);
        for (int const place : {100, INT_MIN, INT_MAX})
            scale.addLabelAtFixedPosition(place, "E01");
        QCOMPARE(scale.painted().countPainted(), 0); // no spacing yet

        scale.feed(10.0, 0.0);
        TestImage const image = scale.painted();
        QVERIFY(image.countPainted() > 0);
        QCOMPARE(image.countPainted(QRect(corners.value(form), box)), image.countPainted());
    }
}

void tst_XYScale::requiredWidth()
{
    QFontMetrics const metrics(getPlotRenderSettings().fixedLabelFont);
    TestScale scale(Left);
    QCOMPARE(scale.getRequiredWidthForLabelsAtFixedPosition(), 0);
    for (char const* const text : {"L", "Galileo", "GPS"})
        scale.addLabelAtFixedPosition(0, QString::fromLatin1(text));
    getPlotRenderSettings().majorTickLength = 9; // five quarters, cut: 11
    QCOMPARE(scale.getRequiredWidthForLabelsAtFixedPosition(),
             metrics.horizontalAdvance("Galileo") + 11);
    getPlotRenderSettings().majorTickLength = INT_MAX; // ends, far outside
    QVERIFY(scale.getRequiredWidthForLabelsAtFixedPosition() > 1 << 28);
    plotRenderSettings.clear();
}

void tst_XYScale::oddSpacingEnds_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("first");
    QTest::addColumn<int>("divisions");
    QTest::newRow("negative step") << -10.0 << 100.0 << 5;
    QTest::newRow("far below") << 10.0 << -1e300 << 5;
    QTest::newRow("far above") << 10.0 << 1e300 << 5;
    QTest::newRow("no divisions") << 1e6 << -10.0 << 0;
}

void tst_XYScale::oddSpacingEnds()
{
    QFETCH(double, step);
    QFETCH(double, first);
    QFETCH(int, divisions);
    for (Form const form : {Left, Below, Above}) {
        TestScale scale(form);
        scale.feed(step, first, {"1", "2"}, divisions);
        QCOMPARE(scale.painted().countPainted(), 0);
    }
}

QTEST_MAIN(tst_XYScale)
#include "tst_xyscale.moc"
