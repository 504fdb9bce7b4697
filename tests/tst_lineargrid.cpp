#include "librarytest.h"
#include "lineargrid.h"
#include "testimage.h"
#include "xyscale.h"

#include <QSignalSpy>

namespace {
constexpr QSize canvas(500, 300);

/// From 0 to 10 there is a tick every 100 pixels of x and every 60 of y.
void draw(LinearGrid& grid, TestImage& image, double min = 0.0, double max = 10.0)
{
    grid.drawGrid(image.getPainter(), min, min, max, max);
    grid.drawLabels(image.getPainter(), min, min, max, max);
}
} // namespace

class tst_LinearGrid : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void lines();
    void labels_data();
    void labels();
    void labelOnCanvas();
    void labelText();
};

void tst_LinearGrid::lines()
{
    auto const isLine = [](auto axis, int x, int y, double min = 0.0) {
        LinearGrid grid(axis, nullptr);
        XYScale scale(axis, eCANVAS_LABELS, true, nullptr);
        grid.setScale(&scale);
        grid.setLabelType(eNO_LABELS); // does not keep the ticks from the scale
        TestImage image(QSize(600, 400));
        image.getPainter()->setViewport(QRect(QPoint(30, 20), canvas));
        draw(grid, image, min, min + 10.0);
        return scale.getOverhang() == (axis == eVERTICAL ? 18 : 0)
            && image.at(x + 30, y + 20) == Qt::lightGray
            && image.countPainted(QRect(x + 29, y + 19, 3, 3)) == 3;
    };
    QVERIFY(isLine(eHORIZONTAL, 200, 17));
    QVERIFY(isLine(eVERTICAL, 17, 180));
    QVERIFY(isLine(eHORIZONTAL, 199, 17, 0.002)); // a tick at 199.9 is truncated
}

void tst_LinearGrid::labels_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QString>("texts");
    QTest::newRow("a font height past the end") << 0.0 << 5.9 << "0 1 2 3 4 5 6";
    QTest::newRow("first tick below the view") << -0.5 << 5.0 << "-1 0 1 2 3 4 5";
    QTest::newRow("decimals") << 0.0 << 0.85 << "0.0 0.2 0.4 0.6 0.8";
    QTest::newRow("inverted") << 1.0 << 0.15 << "";
    QTest::newRow("overflowing") << -1e308 << 1e308 << "";
}

void tst_LinearGrid::labels()
{
    QFETCH(double, min);
    QFETCH(double, max);
    for (E_ORIENTATION_TYPE const axis : {eVERTICAL, eHORIZONTAL}) {
        LinearGrid grid(axis, nullptr);
        QSignalSpy const spy(&grid, &XYAbstractGrid::numberOfDecimalsChanged);
        TestImage image(canvas);
        draw(grid, image, min, max);
        QTEST(grid.getLabels().join(QLatin1Char(' ')), "texts");
        QCOMPARE(image.countPainted() == 0, grid.getLabels().isEmpty());
        grid.setGridLinesHidden(true);
        grid.setLabelType(eSCALE_LABELS);
        TestImage empty(canvas);
        draw(grid, empty, min, max);
        QCOMPARE(empty.countPainted(), 0);
        // From none; labels of x take the same room whatever their length.
        QCOMPARE(spy.count(), axis == eVERTICAL && grid.getNumberOfDecimals() != 0 ? 1 : 0);
    }
}

void tst_LinearGrid::labelOnCanvas()
{
    for (E_ORIENTATION_TYPE const axis : {eVERTICAL, eHORIZONTAL}) {
        LinearGrid grid(axis, nullptr);
        TestImage image(canvas);
        QFontMetrics const metrics = image.getPainter()->fontMetrics();
        draw(grid, image);
        // The white patch of "4" lies on its line and goes five pixels beyond the text; that of x
        // is turned and begins at the lower edge.
        int const tick = axis == eVERTICAL ? 180 : 200;
        int const bottom = tick + metrics.height() / 2;
        int const width = metrics.boundingRect("4").width() + 9;
        auto const colorAt = [&](int along, int across) {
            return axis == eVERTICAL ? image.at(along, across) : image.at(across, 299 - along);
        };
        QVERIFY(colorAt(1, tick) == Qt::white && colorAt(width - 1, bottom - 2) == Qt::white);
        QVERIFY(colorAt(width + 2, bottom - 2) == Qt::yellow
                && colorAt(1, bottom + 2) == Qt::yellow);
        int ink = 0;
        for (int i = 5; i < width - 4; ++i)
            ink += colorAt(i, tick + 2) != Qt::white;
        QVERIFY(ink > 0);
    }
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
}

QTEST_MAIN(tst_LinearGrid)
#include "tst_lineargrid.moc"
