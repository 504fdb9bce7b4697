#include "objectcounts.h"
#include "testimage.h"
#include "xyplotcommon.h"
#include "xyscale.h"
#include "zelplotglobals.h"

#include <QTest>
#include <climits>
#include <limits>

namespace {
/// The three forms of a scale.
enum Form { Left, Below, Above };

/// A scale of 300 by 60 pixels, addressed by the place along the axis and the depth away from the
/// canvas, both from 0.
class TestScale : public XYScale
{
public:
    explicit TestScale(Form itsForm, E_LABEL_TYPE type = eSCALE_LABELS)
        : XYScale(itsForm == Left ? eVERTICAL : eHORIZONTAL, type, itsForm != Below, nullptr)
        , form(itsForm)
    {
    }

    static constexpr int length = 300;
    static constexpr int breadth = 60;
    QSize getSize() const { return form == Left ? QSize(breadth, length) : QSize(length, breadth); }

    /// Position 0 of a vertical scale lies 18 pixels below that of its canvas.
    void feed(double step, double first, QStringList texts = {})
    {
        drawScale(step, form == Left ? first - 18.0 : first, 5, &texts);
    }

    TestImage painted(qreal ratio = 1.0)
    {
        return TestImage(getSize(), ratio, [this](QPainter* painter) { paint(painter); });
    }

    /// Painted pixels at one place from one depth to another, both included.
    int countTick(TestImage const& image, int place, int from, int to) const
    {
        if (form == Left)
            return image.countPainted(QRect(breadth - 1 - to, length - place, to - from + 1, 1));
        int const top = form == Above ? breadth - 1 - to : from;
        return image.countPainted(QRect(place, top, 1, to - from + 1));
    }

    /// Painted pixels beyond the ticks.
    int countText(TestImage const& image) const
    {
        if (form == Left)
            return image.countPainted(QRect(0, 0, breadth - 10, length));
        return image.countPainted(QRect(0, form == Above ? 0 : 10, length, breadth - 10));
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
    void ticksOneStepEarlierAboveTheCanvas();
    void labelAtAnEnd_data();
    void labelAtAnEnd();
    void listDecidesWhichTicksHaveText();
    void hiddenIntervals();
    void hides_data();
    void hides();
    void repaintsOnChange();
    void verticalScaleAlwaysRepaints();
    void fixedLabels();
    void requiredWidth();
    void oddSpacingEnds_data();
    void oddSpacingEnds();
};

void tst_XYScale::ticks_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<qreal>("ratio");
    QTest::newRow("left of the canvas") << Left << 1.0;
    QTest::newRow("below the canvas") << Below << 1.0;
    QTest::newRow("above the canvas") << Above << 1.0;
    QTest::newRow("left, ratio 1.5") << Left << 1.5;
    QTest::newRow("below, ratio 1.5") << Below << 1.5;
    QTest::newRow("above, ratio 1.5") << Above << 1.5;
}

void tst_XYScale::ticks()
{
    QFETCH(Form, form);
    QFETCH(qreal, ratio);
    TestScale scale(form);
    scale.feed(100.0, 59.5); // major ticks at 60, 160, 260, minor ones 20 apart, all rounded up
    TestImage const image = scale.painted(ratio);
    for (int const major : {60, 160, 260}) {
        QCOMPARE(scale.countTick(image, major, 0, 7), 8);
        QCOMPARE(scale.countTick(image, major, 10, 59), 0);
    }
    for (int const minor : {20, 40, 80, 100, 120, 140, 180}) {
        QCOMPARE(scale.countTick(image, minor, 0, 3), 4);
        QCOMPARE(scale.countTick(image, minor, 6, 59), 0);
    }
    int const clear = ratio == 1.0 ? 1 : 2;
    QCOMPARE(scale.countTick(image, 60 - clear, 0, 59), 0);
    QCOMPARE(scale.countTick(image, 60 + clear, 0, 59), 0);
}

void tst_XYScale::ticksOneStepEarlierAboveTheCanvas()
{
    // Before the first tick there are minor ones only; beside the far edge a tick is a pixel
    // longer.
    QMap<Form, int> const lengths{{Left, 4 + 1}, {Below, 4}, {Above, 8 + 1}};
    for (Form const form : lengths.keys()) {
        TestScale scale(form);
        scale.feed(100.0, 150.0);
        QCOMPARE(scale.countTick(scale.painted(), 50, 0, 59), lengths.value(form));
    }
}

void tst_XYScale::labelAtAnEnd_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<bool>("lowEnd");
    QTest::newRow("left, lower end") << Left << true;
    QTest::newRow("left, upper end") << Left << false;
    QTest::newRow("below, left end") << Below << true;
    QTest::newRow("below, right end") << Below << false;
    QTest::newRow("above, left end") << Above << true;
    QTest::newRow("above, right end") << Above << false;
}

void tst_XYScale::labelAtAnEnd()
{
    QFETCH(Form, form);
    QFETCH(bool, lowEnd);
    QString const text = QStringLiteral("888");
    QFontMetrics const metrics(getPlotRenderSettings().scaleFont);
    int const extent = form == Left ? metrics.height() : metrics.horizontalAdvance(text);
    // The outermost places at which the label is still drawn. Its extent begins half an extent
    // before the tick, of a vertical scale above it; the far edge keeps a pixel where pixel 0 is.
    int place = lowEnd ? extent / 2 + 1 : TestScale::length - extent + extent / 2;
    if (form == Left)
        place = lowEnd ? extent - extent / 2 : TestScale::length - 1 - extent / 2;

    TestScale scale(form);
    scale.feed(1000.0, place, {text});
    QVERIFY(scale.countText(scale.painted()) > 0);
    scale.feed(1000.0, lowEnd ? place - 1 : place + 1, {text});
    QCOMPARE(scale.countText(scale.painted()), 0);
}

void tst_XYScale::listDecidesWhichTicksHaveText()
{
    TestScale scale(Below);
    QFontMetrics const metrics(getPlotRenderSettings().scaleFont);
    QRect const second(110, 10, 80, 49);
    scale.feed(100.0, 50.0, {"8"});
    int const one = scale.countText(scale.painted());
    QVERIFY(one > 0);
    QCOMPARE(scale.painted().countPainted(second), 0);
    scale.feed(100.0, 50.0, {"8", "8"});
    QCOMPARE(scale.painted().countPainted(second), one);
    // Rows of text begin one pixel below the ticks.
    QCOMPARE(scale.painted().countPainted(QRect(0, 9 + metrics.height(), 300, 60)), 0);
    scale.feed(100.0, 50.0, {"8", "8", "8", "8", "8"});
    QCOMPARE(scale.countText(scale.painted()), 3 * one);
    scale.setLabelType(eCANVAS_LABELS);
    QCOMPARE(scale.countText(scale.painted()), 0);
}

void tst_XYScale::hiddenIntervals()
{
    for (Form const form : {Left, Below, Above}) {
        TestScale scale(form);
        scale.feed(100.0, 50.0, {"8", "8", "8"});
        int const three = scale.countText(scale.painted());
        scale.addIntervalToHideScale(151, 152); // touches the second label, not its tick
        scale.addIntervalToHideScale(240, 260);
        TestImage const image = scale.painted();
        QCOMPARE(scale.countText(image), three / 3);
        QCOMPARE(scale.countTick(image, 150, 0, 7), 8);
        QCOMPARE(scale.countTick(image, 250, 0, 7), 0);
        QCOMPARE(scale.countTick(image, 230, 0, 3), 4);
        scale.clearIntervalsToHideScale();
        QCOMPARE(scale.countText(scale.painted()), three);
    }
}

void tst_XYScale::hides_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("halfExtent");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("lower end counts") << 10 << 0 << true;
    QTest::newRow("upper end counts") << 20 << 0 << true;
    QTest::newRow("below") << 9 << 0 << false;
    QTest::newRow("reaches in from below") << 5 << 5 << true;
    QTest::newRow("just not from above") << 26 << 5 << false;
    QTest::newRow("second interval") << 40 << 0 << true;
    QTest::newRow("beyond an int") << INT_MAX << 1 << false;
    QTest::newRow("everything") << INT_MIN << INT_MAX << false;
}

void tst_XYScale::hides()
{
    QFETCH(int, position);
    QFETCH(int, halfExtent);
    TestScale scale(Left);
    QVERIFY(!scale.mustHideScale(position, halfExtent));
    scale.addIntervalToHideScale(10, 20);
    scale.addIntervalToHideScale(40, 40);
    QTEST(scale.mustHideScale(position, halfExtent), "hidden");
}

void tst_XYScale::repaintsOnChange()
{
    TestScale scale(Below);
    scale.resize(scale.getSize());
    scale.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scale));
    scale.takeRepaint();

    scale.feed(100.0, 0.0);
    QVERIFY(scale.takeRepaint());
    scale.feed(100.0, 0.0);
    QVERIFY2(!scale.takeRepaint(), "two empty lists");
    scale.feed(100.0, 0.0, {"0:00", "1:00"});
    QVERIFY2(scale.takeRepaint(), "a first list");
    scale.feed(100.0, 0.0, {"0:00", "1:00"});
    QVERIFY2(!scale.takeRepaint(), "nothing new");
    scale.feed(100.0, 0.0, {"0:00", "60"});
    QVERIFY2(scale.takeRepaint(), "another text");
    scale.feed(100.0, 0.0, {"0:00"});
    QVERIFY2(scale.takeRepaint(), "a shorter list");
    scale.feed(100.0, -1.0, {"0:00"});
    QVERIFY2(scale.takeRepaint(), "another first tick");
    scale.drawScale(100.0, -1.0, 2, nullptr);
    QVERIFY2(scale.takeRepaint(), "no list");
    scale.drawScale(100.0, -1.0, 2, nullptr);
    QVERIFY2(!scale.takeRepaint(), "no list again");
}

void tst_XYScale::verticalScaleAlwaysRepaints()
{
    TestScale scale(Left);
    scale.resize(scale.getSize());
    scale.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scale));
    QCOMPARE(scale.getOverhang(), 0);
    for (int round = 0; round < 2; ++round) {
        scale.takeRepaint();
        scale.feed(100.0, 0.0, {"1"});
        QVERIFY(scale.takeRepaint());
        QCOMPARE(scale.getOverhang(), 18);
    }
}

void tst_XYScale::fixedLabels()
{
    for (Form const form : {Left, Below, Above}) {
        TestScale scale(form);
        scale.addIntervalToHideScale(0, TestScale::length);
        scale.addLabelAtFixedPosition(100, QStringLiteral("E01"));
        scale.addLabelAtFixedPosition(INT_MIN, QStringLiteral("E02"));
        scale.addLabelAtFixedPosition(INT_MAX, QStringLiteral("E03"));
        QCOMPARE(scale.painted().countPainted(), 0);

        scale.feed(10.0, 0.0);
        TestImage const image = scale.painted();
        QFontMetrics const metrics(getPlotRenderSettings().fixedLabelFont);
        QSize const box(metrics.horizontalAdvance(QStringLiteral("E01")), metrics.height());
        QPoint const corner = form == Left ? QPoint(50 - box.width(), 200 - box.height() / 2)
                                           : QPoint(100 - box.width() / 2, 1);
        QVERIFY(image.countPainted() > 0);
        QCOMPARE(image.countPainted(QRect(corner, box)), image.countPainted());
        scale.clearLabelsAtFixedPosition();
        QCOMPARE(scale.painted().countPainted(), 0);
    }
}

void tst_XYScale::requiredWidth()
{
    QFontMetrics const metrics(getPlotRenderSettings().fixedLabelFont);
    TestScale vertical(Left);
    TestScale horizontal(Below);
    QCOMPARE(vertical.getRequiredWidthForLabelsAtFixedPosition(), 0);
    for (char const* const text : {"L", "Galileo", "GPS"}) {
        vertical.addLabelAtFixedPosition(0, QString::fromLatin1(text));
        horizontal.addLabelAtFixedPosition(0, QString::fromLatin1(text));
    }
    getPlotRenderSettings().majorTickLength = 9; // five quarters, cut: 11
    int const width = vertical.getRequiredWidthForLabelsAtFixedPosition();
    plotRenderSettings.clear();
    QCOMPARE(width, metrics.horizontalAdvance(QStringLiteral("Galileo")) + 11);
    QCOMPARE(horizontal.getRequiredWidthForLabelsAtFixedPosition(), 0);
}

void tst_XYScale::oddSpacingEnds_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("first");
    QTest::addColumn<int>("divisions");
    double const inf = std::numeric_limits<double>::infinity();
    QTest::newRow("zero step") << 0.0 << 0.0 << 5;
    QTest::newRow("negative step") << -10.0 << 100.0 << 5;
    QTest::newRow("step not a number") << NaN << 0.0 << 5;
    QTest::newRow("absurdly many") << 1e-9 << 0.0 << 5;
    QTest::newRow("infinite step") << inf << NaN << 5;
    QTest::newRow("first infinitely low") << 10.0 << -inf << 5;
    QTest::newRow("far below") << 10.0 << -1e300 << 5;
    QTest::newRow("far above") << 10.0 << 1e300 << 5;
    QTest::newRow("no divisions") << 1e6 << -10.0 << 0;
    QTest::newRow("negative divisions") << 1e6 << -10.0 << -5;
}

void tst_XYScale::oddSpacingEnds()
{
    QFETCH(double, step);
    QFETCH(double, first);
    QFETCH(int, divisions);
    for (Form const form : {Left, Below, Above}) {
        TestScale scale(form);
        QStringList texts{"1", "2"};
        scale.drawScale(step, form == Left ? first - 18.0 : first, divisions, &texts);
        QCOMPARE(scale.painted().countPainted(), 0);
    }
}

QTEST_MAIN(tst_XYScale)
#include "tst_xyscale.moc"
