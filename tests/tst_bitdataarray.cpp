#include "bitdataarray.h"
#include "librarytest.h"

#include <climits>
#include <random>

namespace {
QString cellsOf(BitDataArray const& column)
{
    QString text;
    for (int i = 0; i < column.dataSize(); ++i)
        text += column.getValue(i) == 1.0 ? '1' : '0';
    return text;
}
} // namespace

class tst_BitDataArray : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void cellsAndRoom();
    void agreesWithAString();
};

void tst_BitDataArray::cellsAndRoom()
{
    BitDataArray column;
    for (double const value : {0.5, 0.0, NaN, -0.0, 1.0})
        column.append(value);
    QCOMPARE(cellsOf(column), "10101");
    QCOMPARE(column.linearSearchIndexOf(0.5), -1);
    QCOMPARE(column.linearSearchIndexOf(-0.0), 1);
    QCOMPARE(column.getMemoryConsumption(), 1); // room for eight
    column.squeeze();
    QCOMPARE(column.getMemoryConsumption(), 0);
    column.replaceData(5, 0.0); // outside
    column.removeData(3, INT_MAX);
    QVERIFY(messages->tookOnly("out of range"));
    column.removeData(-1, 2);
    QVERIFY(messages->tookOnly("out of range"));
    QCOMPARE(cellsOf(column), "01");
    column.reinit();
    QCOMPARE(column.linearSearchIndexOf(0.0), -1);
}

void tst_BitDataArray::agreesWithAString()
{
    std::mt19937 random(7);
    BitDataArray column;
    QString cells;
    for (int step = 0; step < 3000; ++step) {
        int const bit = int(random() % 2);
        int const at = cells.isEmpty() ? 0 : int(random() % unsigned(cells.size()));
        switch (cells.isEmpty() ? 1 : random() % (cells.size() > 100 ? 6 : 4)) {
        case 0:
            column.replace(at, bit);
            cells.replace(at, 1, QString::number(bit));
            break;
        case 4:
            column.leftshift(at);
            cells.remove(0, at);
            break;
        case 5:
            column.decimateKeepEven();
            for (int i = int(cells.size() - 1) | 1; i > 0; i -= 2)
                cells.remove(i, 1);
            break;
        default:
            column.appendBool(bit == 1);
            cells += QString::number(bit);
        }
        QCOMPARE(cellsOf(column), cells);
        QCOMPARE(column.linearSearchIndexOf(1.0), int(cells.indexOf('1')));
    }
}

QTEST_GUILESS_MAIN(tst_BitDataArray)
#include "tst_bitdataarray.moc"
