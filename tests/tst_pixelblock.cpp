#include "librarytest.h"
#include "pixelblock.h"
#include "plainraster.h"

#include <random>
#include <vector>

class tst_PixelBlock : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void blendsAsPixelByPixel();
};

/// Every byte under every coverage, in blocks that are taken singly and in pairs.
void tst_PixelBlock::blendsAsPixelByPixel()
{
    constexpr size_t stride = 7;
    constexpr QRgb pen = 0xff4080c0;
    std::mt19937 random(2);
    for (QRgb coverage = 0; coverage <= 255; ++coverage) {
        for (QRgb byte = 0; byte <= 255; ++byte) {
            size_t const rows = 1 + random() % 5;
            std::vector<QRgb> image(stride * rows);
            for (QRgb& pixel : image)
                pixel = qPremultiply(QRgb(random()));
            for (size_t row = 0; row < rows; ++row)
                image[row * stride] = byte * 0x01010101U;
            std::vector<QRgb> expected = image;
            PixelBlock block;
            for (int i = 0; i < PixelBlock::count - 1; ++i) { // the last pixel stays
                int const part = i == 0 ? int(coverage) : int(random() % 256);
                QRgb const share = scaledPixel(pen, part);
                block.set(i, share, part);
                for (size_t row = 0; row < rows; ++row)
                    blendPixel(expected[row * stride + size_t(i)], share, part);
            }
            std::vector<QRgb> down = image;
            block.blendDown(down.data(), stride, int(rows));
            QVERIFY(down == expected);
            std::vector<PlacedBlock> blocks(rows, PlacedBlock{block, 0});
            for (size_t row = 0; row < rows; ++row)
                blocks[row].offset = qsizetype(row * stride);
            blendBlocks(image.data(), blocks.data(), blocks.size());
            QVERIFY(image == expected);
        }
    }
}

QTEST_GUILESS_MAIN(tst_PixelBlock)
#include "tst_pixelblock.moc"
