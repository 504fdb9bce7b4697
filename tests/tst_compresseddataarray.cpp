#include "compresseddataarraytemplate.h"
#include "librarytest.h"

#include <climits>
#include <cmath>
#include <random>

namespace {
using Column = CompressedDataArrayTemplate<int>;

/// The runs of a column as "0 2 4|3": cells of a run, runs apart.
QString runs(Column const& column)
{
    QString text;
    for (int i = 0; i < column.dataSize(); ++i) {
        bool const opens = i > 0 && column.getChunkIndex(i) != column.getChunkIndex(i - 1);
        text += opens ? "|" : i > 0 ? " " : "";
        text += QString::number(column.getTypedValue(i));
    }
    return text;
}

/// A column that gives up its runs before it goes.
struct OwnColumn : Column
{
    explicit OwnColumn(QVector<int> const& cells = {})
    {
        for (int const cell : cells)
            append(cell);
    }
    explicit OwnColumn(int sentinel)
        : Column(sentinel)
    {
    }
    ~OwnColumn() override { reinit(); }
};
} // namespace

class tst_CompressedDataArray : public LibraryTest
{
    Q_OBJECT
    void makeObjects() override { chunksBefore = Column::Chunk::numberOfChunks; }
    void deleteObjects() override { QCOMPARE(Column::Chunk::numberOfChunks, chunksBefore); }
    int chunksBefore = 0;

private Q_SLOTS:
    void runsOfAppendedCells();
    void replaceSplitsAndJoins();
    void extremesOfAnInt();
    void conversions();
    void agreesWithAVector();
    void destructorKeepsItsRuns();
};

void tst_CompressedDataArray::runsOfAppendedCells()
{
    QCOMPARE(runs(OwnColumn({7, 7, 7, 7})), "7 7 7 7");
    QCOMPARE(runs(OwnColumn({5, 3})), "5|3");
    QCOMPARE(runs(OwnColumn({1, 1000, 1999, 2000})), "1 1000 1999|2000");
    QCOMPARE(runs(OwnColumn({0, 1, 2, 2, 2})), "0 1 2|2 2");

    OwnColumn evens({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    evens.decimateKeepEven();
    QCOMPARE(runs(evens), "0 2 4 6 8");
    QCOMPARE(evens.getMemoryConsumption() % 20, 0);
    evens.squeeze();
    QCOMPARE(evens.getMemoryConsumption(), 20);
    evens.removeData(1, 3);
    QCOMPARE(runs(evens), "0 8");
}

void tst_CompressedDataArray::replaceSplitsAndJoins()
{
    OwnColumn column({5, 5, 5});
    column.replace(1, 6);
    QCOMPARE(runs(column), "5 6|5");
    column.replace(1, 5);
    QCOMPARE(runs(column), "5 5 5");
    column.replaceData(3, 1); // outside
    column.replaceData(-1, 1);
    column.removeData(0, 0);
    column.removeData(INT_MIN, INT_MIN + 2); // in 32 bits its end would be 2
    column.removeData(2, INT_MAX);
    QCOMPARE(runs(column), "5 5");
}

void tst_CompressedDataArray::extremesOfAnInt()
{
    OwnColumn column({INT_MIN, INT_MAX}); // further apart than a step can be
    QCOMPARE(runs(column), QString("%1|%2").arg(INT_MIN).arg(INT_MAX));
    OwnColumn wide({-2000000000, 0, 2000000000});
    QCOMPARE(wide.getNumberOfChunks(), 1);
    wide.appendTyped(-294967296); // where the progression would wrap to
    QCOMPARE(wide.getNumberOfChunks(), 2);
    wide.decimateKeepEven();
    QCOMPARE(runs(wide), "-2000000000|2000000000");
    QVERIFY(wide.testRepresentationInvariant());
}

void tst_CompressedDataArray::conversions()
{
    OwnColumn plain({1, 2, 3});
    QCOMPARE(plain.linearSearchIndexOf(2.9), 1);
    plain.append(NaN);
    plain.append(1e300);
    QCOMPARE(plain.getTypedValue(3), INT_MIN);
    QCOMPARE(plain.getTypedValue(4), INT_MAX);
    QCOMPARE(plain.getNrOfValidValues(), 4);

    OwnColumn holed(-1);
    for (double const value : {3.7, NaN, -1.0, 4.0})
        holed.append(value);
    QVERIFY(holed.holdsDoNotUseValue(1) && std::isnan(holed.getValue(2)));
    QCOMPARE(holed.linearSearchIndexOf(NaN), 1);
    QCOMPARE(holed.getNrOfValidValues(), 2);
}

void tst_CompressedDataArray::agreesWithAVector()
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        auto const below = [&](int limit) { return int(random() % unsigned(qMax(limit, 1))); };
        // Few values, so that runs of all kinds meet; every fourth round with huge ones.
        auto const value = [&] { return seed % 4 == 0 ? (below(5) - 2) * 1000000000 : below(4); };
        OwnColumn column;
        QVector<int> cells;
        for (int step = 0; step < 1500; ++step) {
            int const index = below(int(cells.size()));
            switch (below(cells.size() > 60 ? 12 : 8)) {
            case 0:
            case 1:
            case 2:
            case 3: {
                int const last = cells.isEmpty() ? 0 : cells.constLast();
                cells.append(below(2) == 0 && last < 1000 && last > -1000 ? last + below(2)
                                                                          : value());
                column.append(cells.constLast());
                break;
            }
            case 9:
                for (int i = int(cells.size() - 1) / 2 * 2 + 1; i > 0; i -= 2) {
                    if (i < cells.size())
                        cells.remove(i);
                }
                column.decimateKeepEven();
                break;
            case 10:
                cells.remove(0, index);
                column.leftshift(index);
                break;
            case 11: {
                int const count = below(int(cells.size()) - index);
                cells.remove(index, count);
                column.removeData(index, count);
                break;
            }
            default:
                if (!cells.isEmpty()) {
                    cells[index] = value();
                    column.replace(index, cells.at(index));
                }
            }
            QString const place = QStringLiteral("seed %1, step %2").arg(seed).arg(step);
            QVERIFY2(column.testRepresentationInvariant(), qPrintable(place));
            QVERIFY2(column.dataSize() == cells.size(), qPrintable(place));
            for (int i = 0; i < cells.size(); ++i)
                QVERIFY2(column.getTypedValue(i) == cells.at(i), qPrintable(place));
            int const sought = value();
            QCOMPARE(column.linearSearchIndexOf(sought), int(cells.indexOf(sought)));
        }
    }
}

void tst_CompressedDataArray::destructorKeepsItsRuns()
{
    Column::Chunk const* kept = nullptr;
    {
        auto column = std::make_unique<Column>();
        column->append(1);
        QCOMPARE(Column::Chunk::numberOfChunks, chunksBefore + 1);
        kept = column->getChunk(0);
    }
    QCOMPARE(Column::Chunk::numberOfChunks, chunksBefore + 1);
    delete kept;
}

QTEST_GUILESS_MAIN(tst_CompressedDataArray)
#include "tst_compresseddataarray.moc"
