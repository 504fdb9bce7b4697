#include "dataarraytemplate.h"
#include "librarytest.h"
#include "look.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QImage>
#include <QPainter>
#include <QScopedPointer>
#include <algorithm>
#include <climits>

namespace {
/// A change is told apart from the others by its thickness; 0 is the default entry.
Look::Entry numbered(int number)
{
    return {Qt::blue, SYMBOL_DOT, Qt::SolidLine, number};
}
} // namespace

class tst_Look : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void history();
    void changeSignalsPresenceThenAppearance();
    void readsInAnyOrderAgree();
    void legendTextOfTheMostSpecificRule();
    void fixedPosition();
    void grooveOfAColorBar();

private:
    void makeObjects() override;
    void deleteObjects() override { dataSet.reset(); }
    /// Changes at these points, numbered from 1, with a column that ends at the last.
    void makeRows(QVector<int> const& indices);

    QScopedPointer<XYDataSet> dataSet;
    Look* look = nullptr;
};

void tst_Look::makeObjects()
{
    plotRenderSettings.clear();
    dataSet.reset(new XYDataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                                QString(), Qt::black, SYMBOL_NONE, Qt::SolidLine, 0));
    look = dataSet->getLook();
}

void tst_Look::makeRows(QVector<int> const& indices)
{
    int number = 0;
    for (int const index : indices) {
        while (dataSet->yData->dataSize() <= index)
            dataSet->append(0.0, 0.0);
        look->changeFromLast(numbered(++number));
    }
}

void tst_Look::history()
{
    // Gives index:number of each row.
    auto const after = [this](QVector<int> const& rows, char operation, int count) {
        makeObjects();
        makeRows(rows);
        operation == 's' ? look->leftShift(count) : look->decimateKeepEven();
        QStringList result;
        for (Look::IndexedEntry const& row : look->getHistory())
            result << QStringLiteral("%1:%2").arg(row.index).arg(row.entry.lineThickness);
        return result.join(' ');
    };
    QCOMPARE(after({0, 5, 9}, 's', 7), "0:2 2:3"); // into the middle row
    QCOMPARE(after({3, 5}, 's', 2), ""); // before the first row, all go
    QCOMPARE(after({-1}, 's', INT_MAX), "0:1");
    QCOMPARE(after({1, 2}, 'd', 0), "1:2"); // the row of the only point removed goes
    QCOMPARE(after({1, 6}, 'd', 0), "1:1 3:2"); // odd moves to the next slot
}

void tst_Look::changeSignalsPresenceThenAppearance()
{
    QString heard;
    connect(look, &Look::presentLookEntriesChanged, this, [&] { heard += "new "; });
    connect(dataSet.get(), &XYDataSet::lastAppearanceChanged, this, [&] { heard += "last "; });
    look->changeFromLast(numbered(1)); // no point yet that could look otherwise
    dataSet->append(0.0, 0.0);
    look->changeFromLast(numbered(1));
    look->changeFromLast(numbered(2));
    look->changeFromLast(numbered(2)); // as it is
    look->setDefaultLineThickness(3);
    QCOMPARE(heard, "new last new last last ");
    // The entry replaced at its index stays present until the next count.
    QCOMPARE(look->getPresentLookEntries().size(), 2);
}

void tst_Look::readsInAnyOrderAgree()
{
    QVector<int> const rows{2, 3, 7, 20, 21, 22, 50};
    makeRows(rows);
    for (int from : {0, 3, 21, 22, 59}) {
        for (int index = 0; index < 60; ++index) {
            look->getLineThickness(from); // leaves its hint
            auto const next = std::upper_bound(rows.begin(), rows.end(), index);
            QCOMPARE(look->getLineThickness(index), int(next - rows.begin()));
            QCOMPARE(look->isChanged(index), index == 0 || rows.contains(index));
        }
    }
}

void tst_Look::legendTextOfTheMostSpecificRule()
{
    auto const textOf = [this](Look::Entry const& e) { return look->getLookEntryLegendText(e); };
    Look::Entry const redCross{Qt::red, SYMBOL_CROSS, Qt::DotLine, 1};
    look->setLegendText(redCross, "cross", Look::EntryPartSymbol);
    look->setLegendText(redCross, "both", Look::EntryPartColor | Look::EntryPartSymbol);
    look->setLegendText(Qt::green, "green");
    QCOMPARE(textOf({Qt::red, SYMBOL_CROSS, Qt::DashLine, 2}), "both");
    QCOMPARE(textOf({Qt::green, SYMBOL_PLUS, Qt::DashLine, 2}), "green");
    QCOMPARE(textOf({Qt::green, SYMBOL_CROSS, Qt::DashLine, 2}),
             "cross"); // the symbol goes before the color
}

void tst_Look::fixedPosition()
{
    look->setFractionallyFixedPositioned(-0.5F); // half goes up below zero
    QCOMPARE(look->getFixedYPosition(5), -2);
    getPlotRenderSettings().barThicknessFactor = 3;
    look->setOffsettedFixedPositioned(-10); // from the bottom, not scaled
    QCOMPARE(look->getFixedYPosition(100), 90);
    look->setColorBar(-10); // scaled
    QCOMPARE(look->getFixedYPosition(100), 70);
}

void tst_Look::grooveOfAColorBar()
{
    getPlotRenderSettings().barThicknessFactor = 2;
    QImage image(10, 40, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(image.rect(), Qt::white);
    look->setDefaultLineThickness(3);
    look->drawColorBarBackground(painter, QPoint(0, 20), 10);
    // Thickness 6: half of it, rounded up, is 3 to each side.
    int y = 17;
    for (int const gray : {0xe0, 0xe4, 0xe9, 0xed, 0xe9, 0xe4, 0xe0})
        QCOMPARE(image.pixel(5, y++), QColor(gray, gray, gray).lighter(90).rgb());
    QVERIFY(image.pixelColor(5, 16) == Qt::white && image.pixelColor(5, 24) == Qt::white);
}

QTEST_MAIN(tst_Look)
#include "tst_look.moc"
