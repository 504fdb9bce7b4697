#include "viewportmap.h"

#include <QTest>
#include <limits>

class tst_ViewportMap : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void itemStandsInAllCellsItTouches_data();
    void itemStandsInAllCellsItTouches();
    void clearedMapTakesItemsAgain();
};

void tst_ViewportMap::itemStandsInAllCellsItTouches_data()
{
    int const largest = std::numeric_limits<int>::max();
    QTest::addColumn<int>("width"); // the height is 400: 20 cells of 20 pixels
    QTest::addColumn<int>("radius");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<QString>("cells"); // column:row
    auto const row = [](char const* name, int width, int radius, int x, int y, char const* cells) {
        QTest::newRow(name) << width << radius << x << y << QString::fromLatin1(cells);
    };
    row("corner of the map", 200, 5, 0, 0, "0:0");
    row("far corner", 200, 5, 199, 399, "19:19");
    row("crossing of four", 200, 5, 10, 40, "0:1 0:2 1:1 1:2");
    row("one pixel short of the next row", 200, 5, 25, 34, "2:1 3:1");
    row("touches the next row", 200, 5, 25, 35, "2:1 2:2 3:1 3:2");
    row("no radius", 200, 0, 10, 40, "1:2");
    row("outside by less than the radius", 200, 5, 200, 30, "");
    row("left of the map", 200, 5, -1, 30, "");
    row("cells of 21", 401, 0, 20, 0, "0:0");
    row("last cell ends beyond the map", 401, 0, 400, 0, "19:0");
    row("in that cell, outside the map", 401, 0, 401, 0, "");
    row("no width", 0, 5, 0, 0, "");
    row("negative width", -5, 5, 0, 0, "");
    row("largest width", largest, 5, largest - 1, 0, "19:0");
}

void tst_ViewportMap::itemStandsInAllCellsItTouches()
{
    QFETCH(int, width);
    QFETCH(int, radius);
    QFETCH(int, x);
    QFETCH(int, y);
    ViewportMap<int> map(width, 400, radius);
    map.addItem(7, x, y);

    QStringList cells;
    for (int column = 0; width >= 0 && column < 20; ++column) {
        for (int row = 0; row < 20; ++row) {
            if (map.getItemVector(column, row) == QVector<int>{7})
                cells << QStringLiteral("%1:%2").arg(column).arg(row);
        }
    }
    QTEST(cells.join(QLatin1Char(' ')), "cells");
    int column = -1;
    int row = -1;
    QCOMPARE(map.lookupCell(x, y, column, row), !cells.isEmpty());
    QVERIFY(cells.isEmpty() || cells.contains(QStringLiteral("%1:%2").arg(column).arg(row)));
}

void tst_ViewportMap::clearedMapTakesItemsAgain()
{
    ViewportMap<int> map(200, 400, std::numeric_limits<int>::max(), 2, 2);
    map.addItem(1, 199, 399);
    map.addItem(2, 0, 0);
    QCOMPARE(map.getItemVector(1, 0), (QVector<int>{1, 2}));
    map.clearData();
    map.addItem(3, 5, 5);
    QCOMPARE(map.getItemVector(1, 1), QVector<int>{3});
}

QTEST_GUILESS_MAIN(tst_ViewportMap)
#include "tst_viewportmap.moc"
