#include "symbolpainter.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <limits>

namespace {

constexpr int rows = 9;
constexpr QPoint centre(4, 4);

QImage paper(int columns)
{
    QImage image(columns, rows, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

QImage painted(E_SYMBOL symbol, int radius, QPoint place = centre, bool smooth = false)
{
    QImage image = paper(9);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, smooth);
    paintSymbol(painter, place, symbol, radius);
    return image;
}

bool isPainted(QImage const& image, QPoint pixel)
{
    return image.pixelColor(pixel) != QColor(Qt::white);
}

} // namespace

class tst_SymbolPainter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shapes();
    void trianglePointsItsWay_data();
    void trianglePointsItsWay();
    void circleTouchesItsSquare();
    void otherValuesDrawNothing();
    void extremeSizesAndPlacesEnd();
};

void tst_SymbolPainter::shapes()
{
    // Dot, plus, cross, square and diamond about row 4 and every ninth column from 4, with a
    // radius of 3. Rectangles are stroked around their right and lower edge.
    QStringList const expected = {
        ".............................................", //
        ".............#.....#.....#..#######.....#....", //
        ".............#......#...#...#.....#....#.#...", //
        ".............#.......#.#....#.....#...#...#..", //
        "....####..#######.....#.....#.....#..#.....#.", //
        "....#..#.....#.......#.#....#.....#...#...#..", //
        "....#..#.....#......#...#...#.....#....#.#...", //
        "....####.....#.....#.....#..#######.....#....", //
        ".............................................", //
    };
    QImage image = paper(45);
    QPainter painter(&image);
    QPoint place = centre;
    for (E_SYMBOL const symbol :
         {SYMBOL_DOT, SYMBOL_PLUS, SYMBOL_CROSS, SYMBOL_SQUARE, SYMBOL_DIAMOND}) {
        paintSymbol(painter, place, symbol, 3);
        place.rx() += 9;
    }
    painter.end();

    for (int y = 0; y < rows; ++y) {
        QString row;
        for (int x = 0; x < image.width(); ++x)
            row += QLatin1Char(isPainted(image, {x, y}) ? '#' : '.');
        QCOMPARE(row, expected.at(y));
    }
}

void tst_SymbolPainter::trianglePointsItsWay_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QPoint>("apex"); // from the centre, in radii, y downwards
    QTest::newRow("down") << int(SYMBOL_TRIANGLE_DOWN) << QPoint(0, 1);
    QTest::newRow("up") << int(SYMBOL_TRIANGLE_UP) << QPoint(0, -1);
    QTest::newRow("left") << int(SYMBOL_TRIANGLE_LEFT) << QPoint(-1, 0);
    QTest::newRow("right") << int(SYMBOL_TRIANGLE_RIGHT) << QPoint(1, 0);
}

void tst_SymbolPainter::trianglePointsItsWay()
{
    QFETCH(int, symbol);
    QFETCH(QPoint, apex);
    QImage const image = painted(E_SYMBOL(symbol), 3);
    QPoint const across(apex.y(), apex.x());

    QVERIFY(isPainted(image, centre + 3 * apex));
    for (int const i : {-3, -2, -1, 1, 2, 3}) {
        QVERIFY(isPainted(image, centre - 3 * apex + i * across)); // the flat side
        QVERIFY(!isPainted(image, centre + 3 * apex + i * across));
    }
    QVERIFY(!isPainted(image, centre)); // an outline only
}

void tst_SymbolPainter::otherValuesDrawNothing()
{
    for (int const value : {-1, 0, 11, std::numeric_limits<int>::min(), 1000000})
        QCOMPARE(painted(E_SYMBOL(value), 3), paper(9));
}

void tst_SymbolPainter::circleTouchesItsSquare()
{
    QImage const circle = painted(SYMBOL_CIRCLE, 3);
    QVERIFY(isPainted(circle, {1, 4}) && isPainted(circle, {7, 4}));
    QVERIFY(!isPainted(circle, {1, 1}) && !isPainted(circle, {0, 4}) && !isPainted(circle, {8, 4}));
}

void tst_SymbolPainter::extremeSizesAndPlacesEnd()
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    for (int symbol = SYMBOL_NONE; symbol <= SYMBOL_DIAMOND; ++symbol) {
        for (int const radius : {lowest, -1, 0, 1, highest}) {
            for (int const place : {lowest, 4, highest})
                painted(E_SYMBOL(symbol), radius, QPoint(place, place), true);
        }
    }
    QVERIFY(isPainted(painted(SYMBOL_PLUS, highest), {4, 0})); // bars across the whole picture
}

QTEST_MAIN(tst_SymbolPainter)
#include "tst_symbolpainter.moc"
