#include "librarytest.h"
#include "testimage.h"
#include "verticallabel.h"
#include "verticalscrollbar.h"

#include <QStyle>
#include <QStyleFactory>

using Slider = QAbstractSlider;

class PressedBar : public VerticalScrollBar
{
public:
    using Slider::repeatAction;
    using VerticalScrollBar::VerticalScrollBar;
};

class tst_VerticalWidgets : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void labelReadsUpwards();
    void pressMovesTheOtherWay_data();
    void pressMovesTheOtherWay();
    void barGoesWithinItsStep();
};

void tst_VerticalWidgets::labelReadsUpwards()
{
    VerticalLabel label("__", nullptr);
    QFontMetrics const metrics(label.font());
    QSize const size(metrics.height(), metrics.horizontalAdvance("__"));
    QCOMPARE(label.pixmap().size(), size);
    TestImage const shown(size, 1.0,
                          [&](QPainter* painter) { painter->drawPixmap(0, 0, label.pixmap()); });
    QRect const ink = extentOf(shown.getImage(), Qt::yellow, true);
    // Turned to the left, the foot of the text stands at the right.
    QVERIFY(ink.left() > size.width() / 2 && ink.height() > size.height() / 2);

    label.setFontAndUpdate(label.font());
    QVERIFY(label.text().isEmpty() && label.pixmap().isNull());
}

void tst_VerticalWidgets::pressMovesTheOtherWay_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("moved");
    QTest::addColumn<int>("repeated");
    QTest::newRow("upper arrow adds a step") << 3 << 1 << int(Slider::SliderSingleStepAdd);
    QTest::newRow("lower arrow takes a step") << 196 << -1 << int(Slider::SliderSingleStepSub);
    QTest::newRow("above the handle adds a page") << 30 << 10 << int(Slider::SliderPageStepAdd);
    QTest::newRow("below the handle takes a page") << 170 << -10 << int(Slider::SliderPageStepSub);
    QTest::newRow("the handle stays") << 100 << 0 << int(Slider::SliderNoAction);
}

void tst_VerticalWidgets::pressMovesTheOtherWay()
{
    QFETCH(int, y);
    QFETCH(int, moved);
    QFETCH(int, repeated);
    std::unique_ptr<QStyle> const style(QStyleFactory::create("windows"));
    PressedBar bar(nullptr);
    bar.setStyle(style.get());
    bar.setRange(0, 100);
    bar.setValue(50);
    bar.setPageStep(10);
    bar.resize(16, 200);

    QTest::mousePress(&bar, Qt::LeftButton, {}, {8, y});

    QCOMPARE(bar.value() - 50, moved);
    QCOMPARE(int(bar.repeatAction()), repeated);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {8, y});
    QCOMPARE(bar.repeatAction(), Slider::SliderNoAction);
    QCOMPARE(bar.isSliderDown(), moved == 0); // only the repetition ends
}

void tst_VerticalWidgets::barGoesWithinItsStep()
{
    QPointer<VerticalScrollBar> const bar = new VerticalScrollBar(nullptr);
    bar->resize(16, 200);
    bar->setValue(50);
    connect(bar, &Slider::valueChanged, this, [=] { delete bar; });
    QTest::mousePress(bar, Qt::LeftButton, {}, {8, 3});
    QVERIFY(!bar);
}

QTEST_MAIN(tst_VerticalWidgets)
#include "tst_verticalwidgets.moc"
