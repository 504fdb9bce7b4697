#include "cellvector.h"
#include "librarytest.h"

#include <QFile>
#include <numeric>
#include <random>

class tst_CellVector : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void holdsAndSparesWhatAQVectorDoes();
    void givesMappedMemoryBack();
};

void tst_CellVector::holdsAndSparesWhatAQVectorDoes()
{
    std::mt19937 random(11);
    auto const below = [&](int limit) { return int(random() % unsigned(limit)); };
    for (int round = 0; round < 60; ++round) {
        bool const isLarge = round % 20 == 0; // up to some large pages
        CellVector<double> cells;
        QVector<double> expected;
        for (int step = 0; step < 150; ++step) {
            int const size = cells.size();
            int const added = below(isLarge ? 30000 : 60);
            switch (below(isLarge ? 40 : 9)) {
            case 0:
                cells.squeeze();
                expected.squeeze();
                break;
            case 1:
                cells.remove(0, added % (size + 1));
                expected.remove(0, added % (size + 1));
                break;
            case 2:
                cells.remove(size / 2, size / 4);
                expected.remove(size / 2, size / 4);
                break;
            case 3:
                if (below(20) == 0) {
                    cells.clear();
                    expected = {};
                }
                break;
            case 4:
                for (int i = 0; i < added; ++i) {
                    cells.append(i);
                    expected.append(i);
                }
                break;
            case 5:
                expected.resize(size + added, -0.0);
                std::iota(expected.begin() + size, expected.end(), step);
                cells.append(expected.constData() + size, added);
                break;
            default:
                std::fill_n(cells.extend(added), added, step);
                expected.resize(size + added, step);
            }
            QCOMPARE(cells.capacity(), expected.capacity());
            QCOMPARE(cells.size(), int(expected.size()));
            QVERIFY(std::equal(expected.cbegin(), expected.cend(), cells.data()));
        }
    }
}

void tst_CellVector::givesMappedMemoryBack()
{
    QFile pages(QStringLiteral("/proc/self/statm")); // of the address space, then others
    QVERIFY(pages.open(QFile::ReadOnly | QFile::Unbuffered));
    auto const count = [&] {
        pages.seek(0);
        return pages.readAll().split(' ').first().toInt();
    };
    int const before = count();
    for (int i = 0; i < 50; ++i) {
        CellVector<double> cells;
        for (int size = 1; size < 4000000; size *= 2)
            cells.extend(size);
        cells.remove(0, cells.size() / 2);
        cells.squeeze();
        cells.remove(100, cells.size() - 100);
        if (i % 2 == 0)
            cells.squeeze();
    }
    constexpr int pagesOfMegabyte = 256;
    QVERIFY(count() - before < 40 * pagesOfMegabyte); // 32 are kept
    releaseSpareCellMemory();
    QVERIFY(count() - before < 4 * pagesOfMegabyte);
}

QTEST_GUILESS_MAIN(tst_CellVector)
#include "tst_cellvector.moc"
