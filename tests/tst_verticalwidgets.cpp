#include "librarytest.h"
#include "verticallabel.h"
#include "verticalscrollbar.h"

#include <QPainter>
#include <QStyle>
#include <QStyleFactory>
#include <QTransform>

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
    VerticalLabel label("Jig", nullptr);
    QFontMetrics const metrics(label.font());
    QImage upright(metrics.horizontalAdvance("Jig"), metrics.height(),
                   QImage::Format_ARGB32_Premultiplied);
    upright.fill(Qt::transparent);
    QPainter painter(&upright);
    painter.setFont(label.font());
    painter.setPen(label.palette().color(QPalette::WindowText));
    painter.drawText(upright.rect(), Qt::AlignCenter, "Jig");
    painter.end();
    QImage const shown = label.pixmap().toImage().convertToFormat(upright.format());
    // Glyphs that lie are hinted otherwise, so the ink is only nearly the same.
    auto const difference = [&](double angle) {
        QImage const turned = upright.transformed(QTransform().rotate(angle));
        int sum = turned.size() == shown.size() ? 0 : 1 << 28;
        for (int i = 0; i < shown.width() * shown.height() && sum < 1 << 28; ++i) {
            QPoint const pixel(i % shown.width(), i / shown.width());
            sum += qAbs(qAlpha(turned.pixel(pixel)) - qAlpha(shown.pixel(pixel)));
        }
        return sum;
    };
    QVERIFY(difference(-90.0) * 2 < difference(90.0));

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
