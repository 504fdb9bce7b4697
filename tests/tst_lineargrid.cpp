#include "lineargrid.h"
#include "objectcounts.h"
#include "testimage.h"
#include "xyscale.h"
#include "zelplotglobals.h"

#include <QSignalSpy>
#include <QTest>
#include <climits>

namespace {
constexpr QSize canvas(500, 300);

/// A view in which x has a tick every 100 pixels and y one every 50.
void draw(LinearGrid& grid, QPainter* painter, double xMin = 0.0)
{
    grid.drawGrid(painter, xMin, 0.0, xMin + 10.0, 6.0);
    grid.drawLabels(painter, xMin, 0.0, xMin + 10.0, 6.0);
}
} // namespace

class tst_LinearGrid : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void lines_data();
    void lines();
    void viewportBesideTheOrigin();
    void labels_data();
    void labels();
    void labelOnCanvas_data();
    void labelOnCanvas();
    void decimalsAreReportedForTheVerticalAxisOnly();
    void oddRangeDrawsNothing_data();
    void oddRangeDrawsNothing();
    void scaleIsFedWhateverIsDrawn();
    void isNeverShown();
    void labelText_data();
    void labelText();
};

void tst_LinearGrid::lines_data()
{
    QTest::addColumn<E_ORIENTATION_TYPE>("orientation");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<double>("xMin");
    QTest::addColumn<QPoint>("onLine");
    QTest::newRow("x axis") << eHORIZONTAL << 1.0 << 0.0 << QPoint(200, 17);
    QTest::newRow("y axis counts upwards") << eVERTICAL << 1.0 << 0.0 << QPoint(17, 250);
    QTest::newRow("x axis, ratio 1.5") << eHORIZONTAL << 1.5 << 0.0 << QPoint(200, 17);
    QTest::newRow("y axis, ratio 1.5") << eVERTICAL << 1.5 << 0.0 << QPoint(17, 250);
    QTest::newRow("tick at 199.9: truncated") << eHORIZONTAL << 1.0 << 0.002 << QPoint(199, 17);
    QTest::newRow("unknown axis") << E_ORIENTATION_TYPE(7) << 1.0 << 0.0 << QPoint(200, 17);
}

void tst_LinearGrid::lines()
{
    QFETCH(E_ORIENTATION_TYPE, orientation);
    QFETCH(qreal, ratio);
    QFETCH(double, xMin);
    QFETCH(QPoint, onLine);
    LinearGrid grid(orientation, nullptr);
    grid.setLabelType(eNO_LABELS);
    TestImage image(canvas, ratio);
    draw(grid, image.getPainter(), xMin);
    QCOMPARE(image.at(onLine.x(), onLine.y()), QColor(Qt::lightGray));
    int const reach = ratio == 1.0 ? 1 : 2; // a line of 1.5 pixels may touch its neighbours
    QPoint const across = orientation == eVERTICAL ? QPoint(0, reach) : QPoint(reach, 0);
    QCOMPARE(image.at((onLine + across).x(), (onLine + across).y()), QColor(Qt::yellow));
    QCOMPARE(image.at((onLine - across).x(), (onLine - across).y()), QColor(Qt::yellow));
}

void tst_LinearGrid::viewportBesideTheOrigin()
{
    LinearGrid grid(eHORIZONTAL, nullptr);
    grid.setLabelType(eNO_LABELS);
    TestImage image(QSize(600, 400));
    QRect const window = image.getPainter()->window();
    image.getPainter()->setViewport(QRect(QPoint(30, 20), canvas));
    draw(grid, image.getPainter());
    QCOMPARE(image.at(130, 100), QColor(Qt::lightGray));
    QCOMPARE(image.countPainted(QRect(31, 100, 500, 1)), 5);
    QCOMPARE(image.getPainter()->window(), window);
}

void tst_LinearGrid::labels_data()
{
    QTest::addColumn<E_ORIENTATION_TYPE>("orientation");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QString>("texts");
    QTest::newRow("a font height past the end") << eVERTICAL << 0.0 << 5.9 << "0 1 2 3 4 5 6";
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

void tst_LinearGrid::labelOnCanvas_data()
{
    QTest::addColumn<E_ORIENTATION_TYPE>("orientation");
    QTest::newRow("y axis, from the left edge") << eVERTICAL;
    QTest::newRow("x axis, turned, from the lower edge") << eHORIZONTAL;
}

void tst_LinearGrid::labelOnCanvas()
{
    QFETCH(E_ORIENTATION_TYPE, orientation);
    LinearGrid grid(orientation, nullptr);
    grid.setGridColor(Qt::red);
    TestImage image(canvas);
    QFontMetrics const metrics = image.getPainter()->fontMetrics();
    draw(grid, image.getPainter());

    // The white patch of "4" lies on its line and goes five pixels beyond the text.
    int const tick = orientation == eVERTICAL ? 100 : 200;
    int const bottom = tick + metrics.height() / 2;
    int const patchWidth = metrics.boundingRect("4").width() + 9;
    auto const colorAt = [&](int along, int across) {
        return orientation == eVERTICAL ? image.at(along, across) : image.at(across, 299 - along);
    };
    QCOMPARE(colorAt(1, tick), QColor(Qt::white));
    QCOMPARE(colorAt(patchWidth - 1, bottom - 2), QColor(Qt::white));
    QCOMPARE(colorAt(patchWidth + 2, bottom - 2), QColor(Qt::yellow));
    QCOMPARE(colorAt(patchWidth + 2, tick), QColor(Qt::red));
    QCOMPARE(colorAt(1, bottom + 2), QColor(Qt::yellow));
    QCOMPARE(colorAt(1, bottom - metrics.height() - 2), QColor(Qt::yellow));
    int ink = 0;
    for (int across = bottom - metrics.height() + 2; across < bottom; ++across) {
        for (int along = 5; along < patchWidth - 4; ++along)
            ink += colorAt(along, across) == QColor(Qt::white) ? 0 : 1;
    }
    QVERIFY(ink > 5);
}

void tst_LinearGrid::decimalsAreReportedForTheVerticalAxisOnly()
{
    for (E_ORIENTATION_TYPE const orientation : {eVERTICAL, eHORIZONTAL}) {
        LinearGrid grid(orientation, nullptr);
        QSignalSpy const spy(&grid, &XYAbstractGrid::numberOfDecimalsChanged);
        TestImage image(canvas);
        for (double const max : {10.0, 0.1, 0.1, 10.0, 0.1})
            grid.drawLabels(image.getPainter(), 0.0, 0.0, max, max);
        QCOMPARE(spy.count(), orientation == eVERTICAL ? 3 : 0);
        QCOMPARE(grid.getNumberOfDecimals(), 2);
    }
}

void tst_LinearGrid::oddRangeDrawsNothing_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::newRow("zero") << 1.0 << 1.0;
    QTest::newRow("inverted") << 1.0 << 0.15;
    QTest::newRow("not a number") << NaN << NaN;
    QTest::newRow("overflowing") << -1e308 << 1e308;
    QTest::newRow("denormal") << 0.0 << 5e-324;
}

void tst_LinearGrid::oddRangeDrawsNothing()
{
    QFETCH(double, min);
    QFETCH(double, max);
    for (E_ORIENTATION_TYPE const orientation : {eVERTICAL, eHORIZONTAL}) {
        LinearGrid grid(orientation, nullptr);
        TestImage image(canvas);
        grid.drawGrid(image.getPainter(), min, min, max, max);
        grid.drawLabels(image.getPainter(), min, min, max, max);
        QCOMPARE(image.countPainted(), 0);
        QCOMPARE(grid.getLabels(), QStringList());
        QCOMPARE(grid.getNumberOfDecimals(), 0);
    }
}

void tst_LinearGrid::scaleIsFedWhateverIsDrawn()
{
    LinearGrid grid(eVERTICAL, nullptr);
    grid.setGridLinesHidden(true);
    TestImage image(canvas);
    for (E_LABEL_TYPE const type : {eNO_LABELS, eSCALE_LABELS}) {
        XYScale scale(eVERTICAL, eCANVAS_LABELS, true, nullptr);
        grid.setScale(&scale);
        grid.setLabelType(type);
        draw(grid, image.getPainter());
        QCOMPARE(scale.getLabelType(), type);
        QCOMPARE(scale.getOverhang(), 18);
    }
    QVERIFY(!grid.getScale()); // gone with the loop
    draw(grid, image.getPainter());
    QCOMPARE(image.countPainted(), 0);
}

void tst_LinearGrid::isNeverShown()
{
    QWidget plot;
    LinearGrid const grid(eVERTICAL, &plot);
    plot.show();
    QVERIFY(!grid.isVisible());
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
    QTest::newRow("absurd decimals") << 1.0 << INT_MAX << "nan";
}

void tst_LinearGrid::labelText()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    LinearGrid grid(eVERTICAL, nullptr);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QString const text = grid.getLabel(value, decimals);
    QLocale::setDefault(QLocale::c());
    QTEST(text, "text");
}

QTEST_MAIN(tst_LinearGrid)
#include "tst_lineargrid.moc"
