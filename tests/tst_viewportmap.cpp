#include "viewportmap.h"

#include <QTest>
#include <limits>

class tst_ViewportMap : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void itemStandsInAllCellsItTouches();
};

void tst_ViewportMap::itemStandsInAllCellsItTouches()
{
    // Column and row of each; the height is 400, so 20 cells of 20 pixels.
    auto const cells = [](int width, int radius, int x, int y) {
        ViewportMap<int> map(width, 400, radius);
        map.addItem(6, x, y);
        map.clearData();
        map.addItem(7, x, y);
        QString found;
        for (int cell = 0; width >= 0 && cell < 400; ++cell) {
            if (map.getItemVector(cell / 20, cell % 20) == QVector<int>{7})
                found += QString::asprintf("%d:%d ", cell / 20, cell % 20);
        }
        int column = 0;
        int row = 0;
        if (!map.lookupCell(x, y, column, row))
            return found + "outside";
        return found + QString::asprintf("around %d:%d", column, row);
    };
    constexpr int largest = std::numeric_limits<int>::max();
    QCOMPARE(cells(200, 5, 0, 0), "0:0 around 0:0");
    QCOMPARE(cells(200, 5, 199, 399), "19:19 around 19:19");
    QCOMPARE(cells(200, 5, 10, 40), "0:1 0:2 1:1 1:2 around 1:2");
    QCOMPARE(cells(200, 5, 25, 34), "2:1 3:1 around 2:1"); // one pixel short of the next row
    QCOMPARE(cells(200, 0, 10, 40), "1:2 around 1:2");
    QCOMPARE(cells(200, 5, 200, 30), "outside"); // by less than the radius
    QCOMPARE(cells(200, 5, -1, 30), "outside");
    QCOMPARE(cells(401, 0, 20, 0), "0:0 around 0:0"); // cells of 21
    QCOMPARE(cells(401, 0, 401, 0), "outside"); // though in the last cell
    QCOMPARE(cells(0, 5, 0, 0), "outside");
    QCOMPARE(cells(-5, 5, 0, 0), "outside");
    QCOMPARE(cells(largest, 5, largest - 1, 0), "19:0 around 19:0");
}

QTEST_GUILESS_MAIN(tst_ViewportMap)
#include "tst_viewportmap.moc"
