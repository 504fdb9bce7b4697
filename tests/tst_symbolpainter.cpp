#include "symbolpainter.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>
#include <array>

namespace {

/// Symbols from @p symbol on, 8 pixels apart; '#' is painted, each line of pixels follows the last.
QString painted(int symbol, int count, int radius, QPoint centre = {4, 3})
{
    int const width = 8 * count + 1;
    QImage image(width, 7, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, radius != 3);
    for (int i = 0; i < count; ++i)
        paintSymbol(painter, centre + QPoint(8 * i, 0), E_SYMBOL(symbol + i), radius);
    QString pixels;
    for (int i = 0; i < width * 7; ++i)
        pixels += image.pixelColor(i % width, i / width) == Qt::white ? '.' : '#';
    return pixels;
}

} // namespace

class tst_SymbolPainter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shapes();
    void dashesOfATriangle();
    void strangeValuesEnd();
};

void tst_SymbolPainter::shapes()
{
    // Rectangles are stroked around their right and lower edge. What Qt may raster otherwise has
    // a question mark.
    QStringList const expected = {
        "............#....#.....#.#######.#######....#.......???#.#???.....??#??.....#....",
        "............#.....#...#..#.....#.??..???..????....?????#.#?????..???.???...#.#...",
        "............#......#.#...#.....#.???.???..?????...????.#.#.????..??...??..#...#..",
        "....####.#######....#....#.....#.???.??..???.??..#??...#.#...??#.#.....#.#.....#.",
        "....#..#....#......#.#...#.....#..?????..???.???..?????#.#?????..??...??..#...#..",
        "....#..#....#.....#...#..#.....#..????...??..???...????#.#????...???.???...#.#...",
        "....####....#....#.....#.#######....#....#######.....??#.#??......??#??.....#....",
    };
    QString const pixels = painted(SYMBOL_DOT, 10, 3);
    for (int y = 0; y < 7; ++y) {
        QString const line = pixels.mid(qsizetype(81) * y, 81);
        auto const pattern = QRegularExpression::fromWildcard(expected[y]);
        QVERIFY2(pattern.match(line).hasMatch(), qPrintable(line));
    }
}

void tst_SymbolPainter::dashesOfATriangle()
{
    // Its flat side goes to the right, and each end of that to the apex.
    QImage images[2];
    for (QImage& image : images) {
        image = QImage(25, 25, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setPen(QPen(Qt::black, 1, Qt::DashLine, Qt::FlatCap));
        if (&image == images)
            paintSymbol(painter, {12, 12}, SYMBOL_TRIANGLE_DOWN, 9);
        else
            painter.drawLines(QVector<QLine>{{3, 3, 21, 3}, {3, 3, 12, 21}, {21, 3, 12, 21}});
    }
    QCOMPARE(images[0], images[1]);
}

void tst_SymbolPainter::strangeValuesEnd()
{
    constexpr int highest = std::numeric_limits<int>::max(), lowest = -highest - 1;
    for (int const symbol : {lowest, -1, 0, 11, highest})
        QVERIFY(!painted(symbol, 1, 3).contains('#'));
    for (int i = 0; i < 15 * 11; ++i) {
        int const place = std::array{lowest, 4, highest}[i % 3];
        painted(i / 15, 1, std::array{lowest, -1, 0, 1, highest}[i / 3 % 5], {place, place});
    }
    QVERIFY(painted(SYMBOL_PLUS, 1, highest).count('#') > 14); // bars across the picture
}

QTEST_MAIN(tst_SymbolPainter)
#include "tst_symbolpainter.moc"
