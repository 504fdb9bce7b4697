#include "lineargrid.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "testimage.h"
#include "xyplotcommon.h"
#include "xyscale.h"
#include "zelplotglobals.h"

#include <QSignalSpy>
#include <QTest>
#include <climits>
#include <limits>

namespace {
constexpr QSize canvas(500, 300);
QColor const lineColor(Qt::lightGray);

/// A view in which x has a tick every 100 pixels and y one every 50.
void draw(LinearGrid& grid, QPainter* painter, double xMin = 0.0, double yMin = 0.0)
{
    grid.drawGrid(painter, xMin, yMin, xMin + 10.0, yMin + 6.0);
    grid.drawLabels(painter, xMin, yMin, xMin + 10.0, yMin + 6.0);
}
} // namespace

class tst_LinearGrid : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void lines_data();
    void lines();
    void lineIsTruncated();
    void viewportBesideTheOrigin();
    void hiddenLinesFeedTheScaleAllTheSame();
    void labels_data();
    void labels();
    void labelsOnCanvas_data();
    void labelsOnCanvas();
    void decimalsAreReportedForTheVerticalAxisOnly();
    void oddRangeDrawsNothing_data();
    void oddRangeDrawsNothing();
    void scaleIsFed_data();
    void scaleIsFed();
    void scaleMayDieFirst();
    void isNeverShown();
    void labelText_data();
    void labelText();
};

void tst_LinearGrid::cleanup()
{
    QCOMPARE(liveObjects(), QStringList());
    QLocale::setDefault(QLocale::c());
}

void tst_LinearGrid::lines_data()
{
    QTest::addColumn<E_ORIENTATION_TYPE>("orientation");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QPoint>("onLine");
    QTest::addColumn<QPoint>("across");
    QTest::newRow("x axis") << eHORIZONTAL << 1.0 << QPoint(200, 17) << QPoint(1, 0);
    QTest::newRow("y axis counts upwards") << eVERTICAL << 1.0 << QPoint(17, 250) << QPoint(0, 1);
    QTest::newRow("x axis, ratio 1.5") << eHORIZONTAL << 1.5 << QPoint(200, 17) << QPoint(2, 0);
    QTest::newRow("y axis, ratio 1.5") << eVERTICAL << 1.5 << QPoint(17, 250) << QPoint(0, 2);
    QTest::newRow("unknown axis is an x axis")
        << E_ORIENTATION_TYPE(7) << 1.0 << QPoint(200, 17) << QPoint(1, 0);
}

void tst_LinearGrid::lines()
{
    QFETCH(E_ORIENTATION_TYPE, orientation);
    QFETCH(qreal, ratio);
    QFETCH(QPoint, onLine);
    QFETCH(QPoint, across);
    LinearGrid grid(orientation, nullptr);
    grid.setLabelType(eNO_LABELS);
    TestImage image(canvas, ratio);
    draw(grid, image.getPainter());
    QCOMPARE(image.at(onLine.x(), onLine.y()), lineColor);
    QCOMPARE(image.countPainted(QRect(onLine + across, QSize(1, 1))), 0);
    QCOMPARE(image.countPainted(QRect(onLine - across, QSize(1, 1))), 0);
}

void tst_LinearGrid::lineIsTruncated()
{
    LinearGrid grid(eHORIZONTAL, nullptr);
    grid.setLabelType(eNO_LABELS);
    TestImage image(canvas);
    draw(grid, image.getPainter(), 0.002); // ticks at 99.9, 199.9, ...
    QCOMPARE(image.at(99, 17), lineColor);
    QCOMPARE(image.at(100, 17), QColor(Qt::yellow));
}

void tst_LinearGrid::viewportBesideTheOrigin()
{
    LinearGrid grid(eHORIZONTAL, nullptr);
    grid.setLabelType(eNO_LABELS);
    getPlotRenderSettings().gridPenWidth = 3;
    TestImage image(QSize(600, 400));
    QRect const window(0, 0, 60, 40);
    image.getPainter()->setWindow(window);
    image.getPainter()->setViewport(QRect(QPoint(30, 20), canvas));
    draw(grid, image.getPainter());
    plotRenderSettings.clear();
    QCOMPARE(image.countPainted(QRect(120, 100, 20, 1)), 3);
    QCOMPARE(image.at(130, 100), lineColor);
    QCOMPARE(image.countPainted(QRect(0, 0, 600, 18)), 0);
    QCOMPARE(image.getPainter()->window(), window);
    QCOMPARE(image.getPainter()->pen().width(), 1);
}

void tst_LinearGrid::hiddenLinesFeedTheScaleAllTheSame()
{
    XYScale scale(eVERTICAL, eNO_LABELS, true, nullptr);
    LinearGrid grid(eVERTICAL, nullptr);
    grid.setScale(&scale);
    grid.setLabelType(eNO_LABELS);
    grid.setGridLinesHidden(true);
    TestImage image(canvas);
    draw(grid, image.getPainter());
    QCOMPARE(image.countPainted(), 0);
    QCOMPARE(scale.getOverhang(), 18);
}

void tst_LinearGrid::labels_data()
{
    QTest::addColumn<E_ORIENTATION_TYPE>("orientation");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QString>("texts");
    QTest::newRow("y axis") << eVERTICAL << 0.0 << 6.0 << "0 1 2 3 4 5 6";
    QTest::newRow("within a font height past the end")
        << eVERTICAL << 0.0 << 5.9 << "0 1 2 3 4 5 6";
    QTest::newRow("more than that past it") << eVERTICAL << 0.0 << 5.5 << "0 1 2 3 4 5";
    QTest::newRow("first tick below the view") << eVERTICAL << -0.5 << 5.0 << "-1 0 1 2 3 4 5";
    QTest::newRow("x axis") << eHORIZONTAL << 0.0 << 10.0 << "0 2 4 6 8 10";
    QTest::newRow("decimals") << eHORIZONTAL << 0.0 << 0.85 << "0.0 0.2 0.4 0.6 0.8";
}

void tst_LinearGrid::labels()
{
    QFETCH(E_ORIENTATION_TYPE, orientation);
    QFETCH(double, min);
    QFETCH(double, max);
    LinearGrid grid(orientation, nullptr);
    grid.setLabelType(eSCALE_LABELS);
    TestImage image(canvas);
    grid.drawLabels(image.getPainter(), min, min, max, max);
    QTEST(grid.getLabels().join(QLatin1Char(' ')), "texts");
    QCOMPARE(image.countPainted(), 0);
}

void tst_LinearGrid::labelsOnCanvas_data()
{
    QTest::addColumn<E_ORIENTATION_TYPE>("orientation");
    QTest::addColumn<qreal>("ratio");
    QTest::newRow("y axis, from the left edge") << eVERTICAL << 1.0;
    QTest::newRow("x axis, turned, from the lower edge") << eHORIZONTAL << 1.0;
    QTest::newRow("y axis, ratio 1.5") << eVERTICAL << 1.5;
    QTest::newRow("x axis, ratio 1.5") << eHORIZONTAL << 1.5;
}

void tst_LinearGrid::labelsOnCanvas()
{
    QFETCH(E_ORIENTATION_TYPE, orientation);
    QFETCH(qreal, ratio);
    bool const vertical = orientation == eVERTICAL;
    LinearGrid grid(orientation, nullptr);
    grid.setGridColor(Qt::red);
    TestImage image(canvas, ratio);
    QFontMetrics const metrics = image.getPainter()->fontMetrics();
    draw(grid, image.getPainter(), 0.0, 0.0);

    // The label "4" of a tick: a white patch from the edge inwards, then the line goes on.
    QRect const box = metrics.boundingRect(QStringLiteral("4"));
    int const inner = box.width() - 1 + 5 + 5;
    int const bottom = (vertical ? 100 : 200) + metrics.height() / 2;
    auto const colorAt = [&](int along, int across) {
        return vertical ? image.at(along, across) : image.at(across, canvas.height() - 1 - along);
    };
    QCOMPARE(colorAt(1, bottom - 2), QColor(Qt::white));
    QCOMPARE(colorAt(1, bottom - box.height() + 3), QColor(Qt::white));
    QCOMPARE(colorAt(1, bottom + 2), QColor(Qt::yellow));
    QCOMPARE(colorAt(1, bottom - box.height() - 2), QColor(Qt::yellow));
    QCOMPARE(colorAt(inner - 1, bottom - 2), QColor(Qt::white));
    QCOMPARE(colorAt(inner + 2, bottom - 2), QColor(Qt::yellow));
    QCOMPARE(colorAt(inner + 2, vertical ? 100 : 200), QColor(Qt::red));
    int ink = 0;
    for (int across = bottom - box.height() + 1; across <= bottom; ++across) {
        for (int along = 0; along < inner; ++along)
            ink += colorAt(along, across) == QColor(Qt::white) ? 0 : 1;
    }
    QVERIFY(ink > 5);
}

void tst_LinearGrid::decimalsAreReportedForTheVerticalAxisOnly()
{
    for (E_ORIENTATION_TYPE const orientation : {eVERTICAL, eHORIZONTAL}) {
        LinearGrid grid(orientation, nullptr);
        grid.setLabelType(eSCALE_LABELS);
        QSignalSpy const spy(&grid, &XYAbstractGrid::numberOfDecimalsChanged);
        TestImage image(canvas);
        for (double const max : {10.0, 0.1, 0.1, 10.0})
            grid.drawLabels(image.getPainter(), 0.0, 0.0, max, max);
        QCOMPARE(spy.count(), orientation == eVERTICAL ? 2 : 0);
        grid.drawLabels(image.getPainter(), 0.0, 0.0, 0.1, 0.1);
        QCOMPARE(grid.getNumberOfDecimals(), 2);
    }
}

void tst_LinearGrid::oddRangeDrawsNothing_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    double const inf = std::numeric_limits<double>::infinity();
    QTest::newRow("zero") << 1.0 << 1.0;
    QTest::newRow("inverted") << 1.0 << 0.15;
    QTest::newRow("not a number") << NaN << NaN;
    QTest::newRow("infinite") << -inf << inf;
    QTest::newRow("overflowing") << -1e308 << 1e308;
    QTest::newRow("denormal") << 0.0 << 5e-324;
}

void tst_LinearGrid::oddRangeDrawsNothing()
{
    QFETCH(double, min);
    QFETCH(double, max);
    for (E_ORIENTATION_TYPE const orientation : {eVERTICAL, eHORIZONTAL}) {
        XYScale scale(orientation, eSCALE_AND_CANVAS_LABELS, false, nullptr);
        LinearGrid grid(orientation, nullptr);
        grid.setScale(&scale);
        grid.setLabelType(eSCALE_AND_CANVAS_LABELS);
        TestImage image(canvas);
        draw(grid, image.getPainter());
        int const before = image.countPainted();
        grid.drawGrid(image.getPainter(), min, min, max, max);
        grid.drawLabels(image.getPainter(), min, min, max, max);
        scale.paint(image.getPainter());
        QCOMPARE(image.countPainted(), before);
        QCOMPARE(grid.getLabels(), QStringList());
        QCOMPARE(grid.getNumberOfDecimals(), 0);
    }
}

void tst_LinearGrid::scaleIsFed_data()
{
    QTest::addColumn<E_LABEL_TYPE>("type");
    QTest::addColumn<bool>("textOnScale");
    QTest::newRow("no labels") << eNO_LABELS << false;
    QTest::newRow("on the scale") << eSCALE_LABELS << true;
    QTest::newRow("on the canvas") << eCANVAS_LABELS << false;
    QTest::newRow("on both") << eSCALE_AND_CANVAS_LABELS << true;
}

void tst_LinearGrid::scaleIsFed()
{
    QFETCH(E_LABEL_TYPE, type);
    XYScale scale(eHORIZONTAL, eCANVAS_LABELS, false, nullptr);
    LinearGrid grid(eHORIZONTAL, nullptr);
    grid.setScale(&scale);
    grid.setLabelType(type);
    TestImage background(canvas);
    draw(grid, background.getPainter());

    TestImage image(QSize(canvas.width(), 40));
    scale.paint(image.getPainter());
    QCOMPARE(image.countPainted(QRect(101, 6, 50, 1)), 0); // between two major ticks
    QCOMPARE(image.countPainted(QRect(100, 6, 1, 1)), 1);
    QCOMPARE(image.countPainted(QRect(120, 2, 1, 1)), 1); // a fifth of the step
    QTEST(image.countPainted(QRect(0, 9, canvas.width(), 31)) > 0, "textOnScale");
}

void tst_LinearGrid::scaleMayDieFirst()
{
    LinearGrid grid(eVERTICAL, nullptr);
    {
        XYScale scale(eVERTICAL, eSCALE_LABELS, true, nullptr);
        grid.setScale(&scale);
    }
    QVERIFY(!grid.getScale());
    TestImage image(canvas);
    grid.setLabelType(eSCALE_LABELS);
    draw(grid, image.getPainter());
}

void tst_LinearGrid::isNeverShown()
{
    QWidget plot;
    auto* const grid = new LinearGrid(eVERTICAL, &plot);
    plot.show();
    QVERIFY(!grid->isVisible());
}

void tst_LinearGrid::labelText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");
    QTest::newRow("groups of the locale") << 1234.5 << 1 << "1.234,5";
    QTest::newRow("-1 is one decimal") << 0.26 << -1 << "0,3";
    QTest::newRow("half goes up") << 2.5 << 0 << "3";
    QTest::newRow("negative half goes up, to no -0") << -0.5 << 0 << "0";
    QTest::newRow("negative") << -2.51 << 0 << "-3";
    QTest::newRow("not a number") << NaN << 0 << "nan";
    QTest::newRow("absurd decimals") << 1.0 << INT_MAX << "nan";
}

void tst_LinearGrid::labelText()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    LinearGrid grid(eVERTICAL, nullptr);
    QTEST(grid.getLabel(value, decimals), "text");
}

QTEST_MAIN(tst_LinearGrid)
#include "tst_lineargrid.moc"
