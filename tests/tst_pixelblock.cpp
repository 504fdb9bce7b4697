#include "librarytest.h"
#include "pixelblock.h"
#include "plainraster.h"

#include <QVector>
#include <random>

class tst_PixelBlock : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void blendsAsPixelByPixel();
};

/// Every byte under every coverage, in blocks that are taken singly and in pairs.
void tst_PixelBlock::blendsAsPixelByPixel()
{
    constexpr qsizetype stride = 7;
    constexpr QRgb pen = 0xff4080c0;
    std::mt19937 random(2);
    for (QRgb coverage = 0; coverage <= 255; ++coverage) {
        for (QRgb byte = 0; byte <= 255; ++byte) {
            auto const rows = qsizetype(1 + random() % 5);
            QVector<QRgb> image(stride * rows);
            for (QRgb& pixel : image)
                pixel = qPremultiply(QRgb(random()));
            for (qsizetype row = 0; row < rows; ++row)
                image[row * stride] = byte * 0x01010101U;
            QVector<QRgb> expected = image;
            PixelBlock block;
            for (int i = 0; i < PixelBlock::count - 1; ++i) { // the last pixel stays
                int const part = i == 0 ? int(coverage) : int(random() % 256);
                QRgb const share = scaledPixel(pen, part);
                block.set(i, share, part);
                for (qsizetype row = 0; row < rows; ++row)
                    blendPixel(expected[row * stride + i], share, part);
            }
            QVector<QRgb> down = image;
            block.blendDown(down.data(), stride, int(rows));
            QVERIFY(down == expected);
            QVector<PlacedBlock> blocks(rows, PlacedBlock{block, 0});
            for (qsizetype row = 0; row < rows; ++row)
                blocks[row].offset = row * stride;
            blendBlocks(image.data(), blocks.constData(), size_t(blocks.size()));
            QVERIFY(image == expected);
        }
    }
}

QTEST_GUILESS_MAIN(tst_PixelBlock)
#include "tst_pixelblock.moc"
