#include "librarytest.h"
#include "testimage.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <climits>

namespace {
enum Form { Left, Below, Above };

/// A scale of 300 by 60 pixels, addressed by the place along it.
struct TestScale : XYScale
{
    explicit TestScale(Form its)
        : XYScale(its == Left ? eVERTICAL : eHORIZONTAL, eSCALE_LABELS, its != Below, nullptr)
        , form(its)
    {
        resize(form == Left ? QSize(60, 300) : QSize(300, 60));
    }
    /// The first tick counts from the low end of the scale, 18 pixels below that of a y axis.
    void feed(double step, double first, QStringList texts = {})
    {
        drawScale(step, form == Left ? first - 18.0 : first, 5, &texts);
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
        return form == Left ? count({0, 0, 50, 300}) : count({0, form == Below ? 10 : 0, 300, 50});
    }

    /// Whether taking over these labels, 40 pixels apart, asks for a paint.
    bool repaints(double first, QStringList texts)
    {
        painted = false;
        drawScale(40.0, first, 5, &texts);
        QEvent request(QEvent::UpdateRequest); // paints at once what update() has asked for
        QCoreApplication::sendEvent(this, &request);
        return painted;
    }
    void paintEvent(QPaintEvent* event) override
    {
        painted = true;
        XYScale::paintEvent(event);
    }

    Form const form;
    bool painted = false;
};
} // namespace

class tst_XYScale : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void ticks();
    void labelAtAnEnd();
    void hiddenIntervals();
    void repaintsOnChange();
    void fixedLabels();
};

void tst_XYScale::ticks()
{
    // Major, minor, the step before, where major ticks are only above, and beside a tick; a tick is
    // a pixel longer where it ends beside the far edge.
    for (auto const& [form, lengths] : std::initializer_list<QPair<Form, QVector<int>>>{
             {Left, {9, 5, 5, 0, 0}}, {Below, {8, 4, 4, 0, 0}}, {Above, {9, 5, 9, 0, 0}}}) {
        TestScale scale(form);
        scale.feed(100.0, 159.5); // rounded up; a fifth of the step is 20
        for (qreal const ratio : {1.0, 1.5}) {
            QVector<int> measured;
            for (int const place : {260, 180, 60, 158, 162})
                measured.append(scale.tickLength(place, ratio));
            QCOMPARE(measured, lengths);
        }
    }
}

void tst_XYScale::labelAtAnEnd()
{
    QFontMetrics const metrics(getPlotRenderSettings().scaleFont);
    int const width = metrics.horizontalAdvance("888");
    for (Form const form : {Left, Below, Above}) {
        TestScale scale(form);
        int const low = form == Left ? metrics.height() - metrics.height() / 2 : width / 2 + 1;
        int const high = form == Left ? 299 - metrics.height() / 2 : 300 - width + width / 2;
        for (auto const& [place, isDrawn] :
             {std::pair(low - 1, false), {low, true}, {high, true}, {high + 1, false}}) {
            scale.feed(1000.0, place, {"888"});
            QCOMPARE(scale.countText() > 0, isDrawn);
        }
    }
}

void tst_XYScale::hiddenIntervals()
{
    TestScale scale(Left);
    scale.feed(100.0, 50.0, {"8", "8", "8"});
    int const three = scale.countText();
    scale.addIntervalToHideScale(151, 152); // meets the second label, but not its tick
    scale.addIntervalToHideScale(230, 250);
    QCOMPARE(scale.countText() * 3, three);
    QVERIFY(scale.tickLength(150) > 0 && scale.tickLength(250) == 0);
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
    QVERIFY(scale.repaints(-1.0, {}));
    QVERIFY(!scale.repaints(-1.0, {}));
}

void tst_XYScale::fixedLabels()
{
    QFontMetrics const metrics(getPlotRenderSettings().fixedLabelFont);
    QSize const box(metrics.horizontalAdvance("E01"), metrics.height());
    for (Form const form : {Left, Above}) {
        TestScale scale(form);
        scale.addIntervalToHideScale(0, 300);
        for (int const place : {100, INT_MIN, INT_MAX})
            scale.addLabelAtFixedPosition(place, "E01");
        scale.feed(10.0, 0.0);
        QPoint const corner = form == Left ? QPoint(50 - box.width(), 200 - box.height() / 2)
                                           : QPoint(100 - box.width() / 2, 1);
        QVERIFY(scale.count() > 0 && scale.count(QRect(corner, box)) == scale.count());
        QCOMPARE(scale.getRequiredWidthForLabelsAtFixedPosition(),
                 form == Left ? box.width() + 10 : 0);
    }
}

QTEST_MAIN(tst_XYScale)
#include "tst_xyscale.moc"
