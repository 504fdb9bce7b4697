#include "objectcounts.h"
#include "testimage.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <QTest>
#include <climits>

namespace {
enum Form { Left, Below, Above };

/// A scale of 300 by 60 pixels, addressed by the place along it.
class TestScale : public XYScale
{
public:
    explicit TestScale(Form its)
        : XYScale(its == Left ? eVERTICAL : eHORIZONTAL, eSCALE_LABELS, its != Below, nullptr)
        , form(its)
    {
        resize(form == Left ? QSize(60, 300) : QSize(300, 60));
    }
    /// The first tick counts from the low end of the scale, 18 pixels below that of a y axis.
    void feed(double step, double first, QStringList texts = {}, int divisions = 5)
    {
        drawScale(step, form == Left ? first - 18.0 : first, divisions, &texts);
    }
    int count(QRect const& area = QRect(0, 0, 300, 300), qreal ratio = 1.0)
    {
        return TestImage(size(), ratio, [this](QPainter* p) { paint(p); }).countPainted(area);
    }
    /// Of a tick at a place, or of what lies beyond the ticks.
    int tickLength(int at, qreal ratio = 1.0)
    {
        return count(form == Left ? QRect(0, 300 - at, 60, 1) : QRect(at, 0, 1, 60), ratio);
    }
    int countText()
    {
        return count(
            QRect(0, form == Below ? 10 : 0, form == Left ? 50 : 300, form == Above ? 50 : 300));
    }
    /// Feeds, paints at once what update() has asked for, and tells whether it has asked.
    bool repaints(double first, QStringList const& texts)
    {
        isPainted = false;
        feed(100.0, first, texts);
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(this, &request);
        return isPainted;
    }

protected:
    void paintEvent(QPaintEvent*) override { isPainted = true; }

private:
    Form form;
    bool isPainted = false;
};
} // namespace

class tst_XYScale : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void ticks();
    void labelAtAnEnd();
    void labelsAndHiddenIntervals();
    void repaintsOnChange();
    void fixedLabels();
    void oddSpacingEnds();
};

void tst_XYScale::ticks()
{
    // Major, minor, the step before, where major ticks are only above, and beside a tick; a tick is
    // a pixel longer where it ends beside the far edge.
    QMap<Form, QVector<int>> const lengths{
        {Left, {9, 5, 5, 0, 0}}, {Below, {8, 4, 4, 0, 0}}, {Above, {9, 5, 9, 0, 0}}};
    for (Form const form : lengths.keys()) {
        TestScale scale(form);
        scale.feed(100.0, 159.5); // rounded up; a fifth of the step is 20
        for (qreal const ratio : {1.0, 1.5}) {
            QVector<int> measured;
            for (int const place : {260, 180, 60, 158, 162})
                measured.append(scale.tickLength(place, ratio));
            QCOMPARE(measured, lengths.value(form));
        }
    }
}

void tst_XYScale::labelAtAnEnd()
{
    QFontMetrics const metrics(getPlotRenderSettings().scaleFont);
    int const halfHeight = metrics.height() / 2;
    int const width = metrics.horizontalAdvance("888");
    auto const isDrawn = [](Form form, int place) {
        TestScale scale(form);
        scale.feed(1000.0, place, {"888"});
        return scale.countText() > 0;
    };
    QMap<Form, QPair<int, int>> const outermost{
        {Left, {metrics.height() - halfHeight, 299 - halfHeight}},
        {Below, {width / 2 + 1, 300 - width + width / 2}},
        {Above, {width / 2 + 1, 300 - width + width / 2}}};
    for (Form const form : outermost.keys()) {
        auto const [low, high] = outermost.value(form);
        QVERIFY(isDrawn(form, low) && !isDrawn(form, low - 1));
        QVERIFY(isDrawn(form, high) && !isDrawn(form, high + 1));
    }
}

void tst_XYScale::labelsAndHiddenIntervals()
{
    TestScale scale(Left);
    scale.feed(100.0, 50.0, {"8"});
    int const one = scale.countText();
    QVERIFY(one > 0);
    scale.feed(100.0, 50.0, {"8", "8", "8", "8", "8"});
    QCOMPARE(scale.countText(), 3 * one);
    scale.addIntervalToHideScale(151, 152); // meets the second label, but not its tick
    scale.addIntervalToHideScale(230, 250);
    QCOMPARE(scale.countText(), one);
    QCOMPARE(scale.tickLength(250), 0);
    QVERIFY(!scale.mustHideScale(229, 0) && scale.mustHideScale(225, 5));
    QVERIFY(!scale.mustHideScale(256, 5) && !scale.mustHideScale(INT_MAX, 1));
    scale.setLabelType(eCANVAS_LABELS);
    scale.clearIntervalsToHideScale();
    QCOMPARE(scale.countText(), 0);
}

void tst_XYScale::repaintsOnChange()
{
    TestScale scale(Below);
    scale.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scale));
    QVERIFY(scale.repaints(0.0, {"0"}));
    QVERIFY(!scale.repaints(0.0, {"0"}));
    QVERIFY(scale.repaints(0.0, {"2"}));
    QVERIFY(scale.repaints(-1.0, {"2"}));
}

void tst_XYScale::fixedLabels()
{
    QFontMetrics const metrics(getPlotRenderSettings().fixedLabelFont);
    QSize const box(metrics.horizontalAdvance("E01"), metrics.height());
    QMap<Form, QPoint> const corners{{Left, QPoint(50 - box.width(), 200 - box.height() / 2)},
                                     {Above, QPoint(100 - box.width() / 2, 1)}};
    for (Form const form : corners.keys()) {
        TestScale scale(form);
        QCOMPARE(scale.getRequiredWidthForLabelsAtFixedPosition(), 0);
        scale.addIntervalToHideScale(0, 300);
        for (int const place : {100, INT_MIN, INT_MAX})
            scale.addLabelAtFixedPosition(place, "E01");
        QCOMPARE(scale.count(), 0); // no spacing yet
        scale.feed(10.0, 0.0);
        QVERIFY(scale.count() > 0);
        QCOMPARE(scale.count(QRect(corners.value(form), box)), scale.count());

        scale.addLabelAtFixedPosition(0, "Galileo");
        scale.addLabelAtFixedPosition(0, "L");
        getPlotRenderSettings().majorTickLength = 9; // five quarters, cut: 11
        QCOMPARE(scale.getRequiredWidthForLabelsAtFixedPosition(),
                 form == Left ? metrics.horizontalAdvance("Galileo") + 11 : 0);
        plotRenderSettings.clear();
    }
}

void tst_XYScale::oddSpacingEnds()
{
    for (Form const form : {Left, Below, Above}) {
        for (auto const& [step, first, divisions] :
             {std::tuple(10.0, -1e300, 5), {10.0, 1e300, 5}, {-10.0, 100.0, 5}, {1e6, -10.0, 0}}) {
            TestScale scale(form);
            scale.feed(step, first, {"1", "2"}, divisions);
            QCOMPARE(scale.count(), 0);
        }
    }
}

QTEST_MAIN(tst_XYScale)
#include "tst_xyscale.moc"
