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
    void lines();
    void labels_data();
    void labels();
    void labelOnCanvas();
    void decimalsAreReportedForTheVerticalAxisOnly();
    void scaleIsFedWhateverIsDrawn();
    void labelText();
};

void tst_LinearGrid::lines()
{
    auto const isLine = [](E_ORIENTATION_TYPE orientation, QPoint place, double xMin = 0.0,
                           qreal ratio = 1.0) {
        LinearGrid grid(orientation, nullptr);
        grid.setLabelType(eNO_LABELS);
        TestImage image(QSize(600, 400), ratio);
        image.getPainter()->setViewport(QRect(QPoint(30, 20), canvas));
        draw(grid, image.getPainter(), xMin);
        int const reach = ratio == 1.0 ? 1 : 2; // a line of 1.5 pixels may touch its neighbours
        QPoint const across = orientation == eVERTICAL ? QPoint(0, reach) : QPoint(reach, 0);
        auto const colorAt = [&](QPoint point) { return image.at(point.x() + 30, point.y() + 20); };
        return colorAt(place) == Qt::lightGray && colorAt(place + across) == Qt::yellow
            && colorAt(place - across) == Qt::yellow;
    };
    QVERIFY(isLine(eHORIZONTAL, {200, 17}));
    QVERIFY(isLine(eVERTICAL, {17, 250}));
    QVERIFY(isLine(eHORIZONTAL, {200, 17}, 0.0, 1.5));
    QVERIFY(isLine(eVERTICAL, {17, 250}, 0.0, 1.5));
    QVERIFY(isLine(eHORIZONTAL, {199, 17}, 0.002)); // a tick at 199.9 is truncated
    QVERIFY(isLine(E_ORIENTATION_TYPE(7), {200, 17}));
}

void tst_LinearGrid::labels_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QString>("texts");
    QTest::newRow("a font height past the end") << 0.0 << 5.9 << "0 1 2 3 4 5 6";
    QTest::newRow("more than that past it") << 0.0 << 5.5 << "0 1 2 3 4 5";
    QTest::newRow("first tick below the view") << -0.5 << 5.0 << "-1 0 1 2 3 4 5";
    QTest::newRow("decimals") << 0.0 << 0.85 << "0.0 0.2 0.4 0.6 0.8";
    QTest::newRow("inverted") << 1.0 << 0.15 << "";
    QTest::newRow("not a number") << NaN << NaN << "";
    QTest::newRow("overflowing") << -1e308 << 1e308 << "";
    QTest::newRow("denormal") << 0.0 << 5e-324 << "";
}

void tst_LinearGrid::labels()
{
    QFETCH(double, min);
    QFETCH(double, max);
    for (E_ORIENTATION_TYPE const orientation : {eVERTICAL, eHORIZONTAL}) {
        LinearGrid grid(orientation, nullptr);
        TestImage image(canvas);
        grid.drawGrid(image.getPainter(), min, min, max, max);
        grid.drawLabels(image.getPainter(), min, min, max, max);
        QTEST(grid.getLabels().join(QLatin1Char(' ')), "texts");
        bool const isEmpty = grid.getLabels().isEmpty();
        QVERIFY(isEmpty ? grid.getNumberOfDecimals() == 0 : image.countPainted() > 0);
        QVERIFY(!isEmpty || image.countPainted() == 0);
    }
}

void tst_LinearGrid::labelOnCanvas()
{
    for (E_ORIENTATION_TYPE const orientation : {eVERTICAL, eHORIZONTAL}) {
        LinearGrid grid(orientation, nullptr);
        grid.setGridColor(Qt::red);
        TestImage image(canvas);
        QFontMetrics const metrics = image.getPainter()->fontMetrics();
        draw(grid, image.getPainter());

        // The white patch of "4" lies on its line and goes five pixels beyond the text; that of x
        // is turned and begins at the lower edge.
        int const tick = orientation == eVERTICAL ? 100 : 200;
        int const bottom = tick + metrics.height() / 2;
        int const patchWidth = metrics.boundingRect("4").width() + 9;
        auto const colorAt = [&](int along, int across) {
            return orientation == eVERTICAL ? image.at(along, across)
                                            : image.at(across, 299 - along);
        };
        QColor const white(Qt::white);
        QColor const yellow(Qt::yellow);
        QVERIFY(colorAt(1, tick) == white && colorAt(patchWidth - 1, bottom - 2) == white);
        QVERIFY(colorAt(patchWidth + 2, bottom - 2) == yellow);
        QCOMPARE(colorAt(patchWidth + 2, tick), QColor(Qt::red));
        QVERIFY(colorAt(1, bottom + 2) == yellow);
        QVERIFY(colorAt(1, bottom - metrics.height() - 2) == yellow);
        int ink = 0;
        for (int i = 5; i < patchWidth - 4; ++i)
            ink += colorAt(i, tick + 2) != white;
        QVERIFY(ink > 0);
    }
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

void tst_LinearGrid::scaleIsFedWhateverIsDrawn()
{
    QWidget plot;
    LinearGrid grid(eVERTICAL, &plot);
    plot.show();
    QVERIFY(!grid.isVisible());
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

void tst_LinearGrid::labelText()
{
    LinearGrid grid(eVERTICAL, nullptr);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QString const text = grid.getLabel(1234.5, 1) + ' ' + grid.getLabel(0.26, -1);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(text, QString("1.234,5 0,3")); // -1 is one decimal
    QCOMPARE(grid.getLabel(2.5, 0), QString("3"));
    QCOMPARE(grid.getLabel(-0.5, 0), QString("0")); // not -0
    QCOMPARE(grid.getLabel(1.0, INT_MAX), QString("nan"));
}

QTEST_MAIN(tst_LinearGrid)
#include "tst_lineargrid.moc"
