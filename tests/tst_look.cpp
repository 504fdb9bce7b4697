#include "dataarraytemplate.h"
#include "librarytest.h"
#include "look.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QImage>
#include <QPainter>
#include <QScopedPointer>
#include <algorithm>
#include <limits>

namespace {
constexpr int smallest = std::numeric_limits<int>::min();
constexpr int largest = std::numeric_limits<int>::max();

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
    void colorsOfEntries();
    void fixedPosition();
    void markerWhereYChanges();
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
        if (operation == 'c') { // number 9, the column having shrunk without a word to the look
            dataSet->yData->removeData(count, dataSet->yData->dataSize() - count);
            look->changeFromLast(numbered(9));
        } else {
            operation == 's' ? look->leftShift(count) : look->decimateKeepEven();
        }
        QStringList result;
        for (Look::IndexedEntry const& row : look->getHistory())
            result << QStringLiteral("%1:%2").arg(row.index).arg(row.entry.lineThickness);
        return result.join(' ');
    };
    QCOMPARE(after({3, 6, 8}, 'c', 5), "3:1 4:9"); // shrunk between rows
    QCOMPARE(after({3, 6, 8}, 'c', 2), "1:9"); // shrunk below all rows
    QCOMPARE(after({0, 5, 9}, 's', 7), "0:2 2:3"); // into the middle row
    QCOMPARE(after({0, 5, 9}, 's', 5), "0:2 4:3"); // onto a row
    QCOMPARE(after({3, 5}, 's', 2), ""); // before the first row, all go
    QCOMPARE(after({-1}, 's', largest), "0:1");
    QCOMPARE(after({0}, 's', smallest), "");
    QCOMPARE(after({1, 2}, 'd', 0), "1:2"); // the row of the only point removed goes
    QCOMPARE(after({1, 6}, 'd', 0), "1:1 3:2"); // odd moves to the next slot
    QCOMPARE(after({2, 3, 5}, 'd', 0), "1:1 2:2 3:3"); // odd neighbours
    QCOMPARE(after({-1, 2}, 'd', 0), "1:2"); // before the first point
}

void tst_Look::changeSignalsPresenceThenAppearance()
{
    QString heard;
    connect(look, &Look::presentLookEntriesChanged, this, [&] { heard += "new "; });
    connect(dataSet.get(), &XYDataSet::lastAppearanceChanged, this, [&] { heard += "last "; });
    look->changeFromLast(numbered(1)); // no point yet that could look otherwise
    dataSet->append(0.0, 0.0);
    look->changeFromLast(Qt::blue); // as it is
    look->changeFromLast(numbered(1));
    look->changeFromLast(numbered(2));
    look->changeFromLast(numbered(2)); // as it is
    look->setDefault(Qt::black, SYMBOL_NONE, Qt::SolidLine, 0); // as it is
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
    look->setLegendText(Qt::red, "red");
    look->setLegendText(Qt::green, "older");
    look->setLegendText(Qt::green, "newer");
    QCOMPARE(textOf({Qt::red, SYMBOL_CROSS, Qt::DashLine, 2}), "both");
    QCOMPARE(textOf({Qt::green, SYMBOL_PLUS, Qt::DashLine, 2}), "newer");
    QCOMPARE(textOf({Qt::green, SYMBOL_CROSS, Qt::DashLine, 2}),
             "cross"); // no rule of green includes the symbol
}

void tst_Look::colorsOfEntries()
{
    Look::Entry const a{QColor(0, 50, 100, 40), SYMBOL_PLUS, Qt::DotLine, 2};
    Look::Entry const b{QColor(255, 50, 1, 90), SYMBOL_DOT, Qt::SolidLine, 9};
    auto const between
        = [&](double fraction) { return Look::interpolateLookEntry(a, b, fraction); };
    QVERIFY(between(0.5) == (Look::Entry{QColor(127, 50, 50, 40), SYMBOL_PLUS, Qt::DotLine, 5}));
    QVERIFY(between(3) == (Look::Entry{QColor(255, 50, 0, 40), SYMBOL_PLUS, Qt::DotLine, 23}));
    // 0x10203, with 2, 3 and 16 put over it; neither seed nor alpha.
    QCOMPARE(qHash(Look::Entry{QColor(1, 2, 3, 9), SYMBOL_PLUS, Qt::DotLine, 16}, 77), 0x10212U);
}

void tst_Look::fixedPosition()
{
    look->setFractionallyFixedPositioned(-0.5F); // half goes up below zero
    QCOMPARE(look->getFixedYPosition(5), -2);
    look->setFractionallyFixedPositioned(-1.0F);
    QVERIFY(look->isAutoPositioned());
    look->setOffsettedFixedPositioned(smallest);
    QCOMPARE(look->getFixedYPosition(-1), smallest);
    getPlotRenderSettings().barThicknessFactor = 3;
    look->setOffsettedFixedPositioned(-10); // from the bottom, not scaled
    QCOMPARE(look->getFixedYPosition(100), 90);
    look->setColorBar(-10); // scaled
    QCOMPARE(look->getFixedYPosition(100), 70);
}

void tst_Look::markerWhereYChanges()
{
    look->setDrawMarkerOnYValueChange(true);
    for (double const y : {1.0, 1.0, 2.0, NaN, NaN})
        dataSet->append(0.0, y);
    for (int index = -1; index < 5; ++index)
        QCOMPARE(look->mustDrawMarker(index), index >= 2);
}

void tst_Look::grooveOfAColorBar()
{
    getPlotRenderSettings().barThicknessFactor = 2;
    QImage image(10, 40, QImage::Format_RGB32);
    QPainter painter(&image);
    for (int const thickness : {largest, smallest, 3}) {
        painter.fillRect(image.rect(), Qt::white);
        look->setDefaultLineThickness(thickness);
        look->drawColorBarBackground(painter, QPoint(0, thickness == 3 ? 20 : thickness), 10);
    }
    // Thickness 6: half of it, rounded up, is 3 to each side.
    int y = 17;
    for (char const* name :
         {"#e0e0e0", "#e4e4e4", "#e9e9e9", "#ededed", "#e9e9e9", "#e4e4e4", "#e0e0e0"})
        QCOMPARE(image.pixelColor(5, y++).name(), QColor(name).lighter(90).name());
    QCOMPARE(image.pixelColor(5, 16), QColor(Qt::white));
    QCOMPARE(image.pixelColor(5, 24), QColor(Qt::white));
}

QTEST_MAIN(tst_Look)
#include "tst_look.moc"
