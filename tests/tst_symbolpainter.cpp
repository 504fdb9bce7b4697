#include "symbolpainter.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <limits>

namespace {

constexpr int side = 9;
constexpr QPoint centre(4, 4);

/// What a symbol leaves on a small picture, row by row from the top, '#' where it has painted.
QString picture(E_SYMBOL symbol, int radius, QPoint place = centre, bool smooth = false)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(Qt::black);
    painter.setRenderHint(QPainter::Antialiasing, smooth);
    paintSymbol(painter, place, symbol, radius);
    painter.end();

    QStringList rows;
    for (int y = 0; y < side; ++y) {
        QString row;
        for (int x = 0; x < side; ++x)
            row += QLatin1Char(image.pixelColor(x, y) == QColor(Qt::white) ? '.' : '#');
        rows.append(row);
    }
    return rows.join(QLatin1Char('\n'));
}

} // namespace

class tst_SymbolPainter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shape_data();
    void shape();
    void trianglePointsItsWay_data();
    void trianglePointsItsWay();
    void circleTouchesItsSquare();
    void otherValuesDrawNothing();
    void extremeSizesAndPlacesEnd();
};

void tst_SymbolPainter::shape_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("expected");
    auto const row = [](char const* name, E_SYMBOL symbol, QStringList const& rows) {
        QTest::newRow(name) << int(symbol) << rows.join(QLatin1Char('\n'));
    };
    // All about (4, 4) with a radius of 3. A rectangle is stroked around its right and lower edge.
    row("dot, from the centre on", SYMBOL_DOT,
        {".........", //
         ".........", //
         ".........", //
         ".........", //
         "....####.", //
         "....#..#.", //
         "....#..#.", //
         "....####.", //
         "........."});
    row("plus", SYMBOL_PLUS,
        {".........", //
         "....#....", //
         "....#....", //
         "....#....", //
         ".#######.", //
         "....#....", //
         "....#....", //
         "....#....", //
         "........."});
    row("cross", SYMBOL_CROSS,
        {".........", //
         ".#.....#.", //
         "..#...#..", //
         "...#.#...", //
         "....#....", //
         "...#.#...", //
         "..#...#..", //
         ".#.....#.", //
         "........."});
    row("square", SYMBOL_SQUARE,
        {".........", //
         ".#######.", //
         ".#.....#.", //
         ".#.....#.", //
         ".#.....#.", //
         ".#.....#.", //
         ".#.....#.", //
         ".#######.", //
         "........."});
    row("diamond", SYMBOL_DIAMOND,
        {".........", //
         "....#....", //
         "...#.#...", //
         "..#...#..", //
         ".#.....#.", //
         "..#...#..", //
         "...#.#...", //
         "....#....", //
         "........."});
}

void tst_SymbolPainter::shape()
{
    QFETCH(int, symbol);
    QTEST(picture(E_SYMBOL(symbol), 3), "expected");
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
    QStringList const rows = picture(E_SYMBOL(symbol), 3).split(QLatin1Char('\n'));
    auto const painted
        = [&rows](QPoint pixel) { return rows.at(pixel.y()).at(pixel.x()) == QLatin1Char('#'); };
    QPoint const across(apex.y(), apex.x());

    QVERIFY(painted(centre + 3 * apex));
    for (int i = 1; i <= 3; ++i) {
        QVERIFY(painted(centre - 3 * apex + i * across)); // the flat side
        QVERIFY(painted(centre - 3 * apex - i * across));
        QVERIFY(!painted(centre + 3 * apex + i * across));
        QVERIFY(!painted(centre + 3 * apex - i * across));
    }
    QVERIFY(!painted(centre)); // an outline only
    QVERIFY(!painted(centre + 4 * apex));
    QVERIFY(!painted(centre - 4 * apex));
}

void tst_SymbolPainter::circleTouchesItsSquare()
{
    QStringList const rows = picture(SYMBOL_CIRCLE, 3).split(QLatin1Char('\n'));
    QCOMPARE(rows.at(0), QStringLiteral("........."));
    QCOMPARE(rows.at(1).at(4), QLatin1Char('#'));
    QCOMPARE(rows.at(4), QStringLiteral(".#.....#."));
    QCOMPARE(rows.at(7).at(4), QLatin1Char('#'));
    QCOMPARE(rows.at(8), QStringLiteral("........."));
    QCOMPARE(rows.at(1).at(1), QLatin1Char('.')); // a corner of the square
}

void tst_SymbolPainter::otherValuesDrawNothing()
{
    QString const nothing = picture(SYMBOL_NONE, 3);
    QVERIFY(!nothing.contains(QLatin1Char('#')));
    for (int const value : {-1, 11, std::numeric_limits<int>::min(), 1000000})
        QCOMPARE(picture(E_SYMBOL(value), 3), nothing);
}

void tst_SymbolPainter::extremeSizesAndPlacesEnd()
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    for (int symbol = SYMBOL_NONE; symbol <= SYMBOL_DIAMOND; ++symbol) {
        for (int const radius : {lowest, -1, 0, 1, highest}) {
            for (int const place : {lowest, 4, highest})
                picture(E_SYMBOL(symbol), radius, QPoint(place, place), true);
        }
    }
    // Where the picture sees only the middle of huge bars.
    QVERIFY(picture(SYMBOL_PLUS, highest).startsWith(QLatin1String("....#....")));
}

QTEST_MAIN(tst_SymbolPainter)
#include "tst_symbolpainter.moc"
