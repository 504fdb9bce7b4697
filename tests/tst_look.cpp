#include "dataarraytemplate.h"
#include "look.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QImage>
#include <QPainter>
#include <QScopedPointer>
#include <QTest>
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

class tst_Look : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void history_data();
    void history();
    void changeSignalsPresenceThenAppearance();
    void readsInAnyOrderAgree();
    void legendTextOfTheMostSpecificRule();
    void hashHasNeitherSeedNorAlpha();
    void fixedPosition_data();
    void fixedPosition();
    void markerWhereYChanges();
    void interpolationTruncatesAndStaysAColor();
    void grooveOfAColorBar();

private:
    /// Changes at these points, numbered from 1, with a column that ends at the last.
    void makeRows(QVector<int> const& indices);

    QScopedPointer<MessageRecorder> messages;
    QScopedPointer<XYDataSet> dataSet;
    Look* look = nullptr;
};

void tst_Look::init()
{
    messages.reset(new MessageRecorder);
    dataSet.reset(new XYDataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                                QString(), Qt::black, SYMBOL_NONE, Qt::SolidLine, 0));
    look = dataSet->getLook();
}

void tst_Look::cleanup()
{
    dataSet.reset();
    plotRenderSettings.clear();
    QCOMPARE(messages->take(), QStringList());
    QCOMPARE(liveObjects(), QStringList());
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

void tst_Look::history_data()
{
    QTest::addColumn<QVector<int>>("rows");
    QTest::addColumn<char>("operation");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("result"); // index:number of each row
    auto const row = [](char const* name, QVector<int> const& rows, char operation, int count,
                        char const* result) {
        QTest::newRow(name) << rows << operation << count << QString::fromLatin1(result);
    };
    // Change number 9, after the column came down to so many cells without a word to the look.
    row("change: second at one index", {3, 6}, 'c', 7, "3:1 6:9");
    row("change: shrunk to a row", {3, 6, 8}, 'c', 7, "3:1 6:9");
    row("change: shrunk between rows", {3, 6, 8}, 'c', 5, "3:1 4:9");
    row("change: shrunk below all rows", {3, 6, 8}, 'c', 2, "1:9");
    row("change: emptied", {-1, 3}, 'c', 0, "-1:9");
    row("shift: into the middle row", {0, 5, 9}, 's', 7, "0:2 2:3");
    row("shift: onto a row", {0, 5, 9}, 's', 5, "0:2 4:3");
    row("shift: before the first row, all go", {3, 5}, 's', 2, "");
    row("shift: a row before the first point", {-1, 5}, 's', 0, "0:1 5:2");
    row("shift: largest count", {-1}, 's', largest, "0:1");
    row("shift: smallest count", {0}, 's', smallest, "");
    row("thin: only point removed", {1, 2}, 'd', 0, "1:2");
    row("thin: odd moves to the next slot", {1, 6}, 'd', 0, "1:1 3:2");
    row("thin: odd neighbours", {2, 3, 5}, 'd', 0, "1:1 2:2 3:3");
    row("thin: before the first point, alone", {-1}, 'd', 0, "1:1");
    row("thin: before the first point, then odd", {-1, 1}, 'd', 0, "1:2");
    row("thin: before the first point, then even", {-1, 2}, 'd', 0, "1:2");
}

void tst_Look::history()
{
    QFETCH(QVector<int>, rows);
    QFETCH(char, operation);
    QFETCH(int, count);
    makeRows(rows);

    if (operation == 'c') {
        dataSet->yData->removeData(count, dataSet->yData->dataSize() - count);
        look->changeFromLast(numbered(9));
    } else if (operation == 's') {
        look->leftShift(count);
    } else {
        look->decimateKeepEven();
    }

    QStringList result;
    for (Look::IndexedEntry const& row : look->getHistory())
        result << QStringLiteral("%1:%2").arg(row.index).arg(row.entry.lineThickness);
    QTEST(result.join(QLatin1Char(' ')), "result");
    if (operation == 's')
        QCOMPARE(look->getPresentLookEntries().size(), result.size());
}

void tst_Look::changeSignalsPresenceThenAppearance()
{
    QStringList heard;
    connect(look, &Look::presentLookEntriesChanged, this, [&] { heard << QStringLiteral("new"); });
    connect(dataSet.get(), &XYDataSet::lastAppearanceChanged, this,
            [&] { heard << QStringLiteral("last"); });
    look->changeFromLast(numbered(1)); // no point yet that could look otherwise
    QVERIFY(look->isChanged(0));
    dataSet->append(0.0, 0.0);
    look->changeFromLast(Qt::blue); // as it is
    QCOMPARE(look->getHistory().size(), 1);
    look->changeFromLast(numbered(1));
    look->changeFromLast(numbered(2));
    look->changeFromLast(numbered(2)); // as it is
    look->setDefault(Qt::black, SYMBOL_NONE, Qt::SolidLine, 0); // as it is
    look->setDefaultLineThickness(3);
    QCOMPARE(heard.join(QLatin1Char(' ')), QStringLiteral("new last new last last"));
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
            int const number
                = int(std::upper_bound(rows.begin(), rows.end(), index) - rows.begin());
            QCOMPARE(look->getLineThickness(index), number);
            QCOMPARE(look->isChanged(index), index == 0 || rows.contains(index));
        }
    }
    QCOMPARE(look->getLineThickness(smallest), 0);
    QCOMPARE(look->getLineThickness(largest), 7);
}

void tst_Look::legendTextOfTheMostSpecificRule()
{
    auto const textOf = [this](QColor const& color, E_SYMBOL symbol) {
        return look->getLookEntryLegendText({color, symbol, Qt::DashLine, 2});
    };
    Look::Entry const redCross{Qt::red, SYMBOL_CROSS, Qt::DotLine, 1};
    look->setLegendText(redCross, QStringLiteral("cross"), Look::EntryPartSymbol);
    look->setLegendText(redCross, QStringLiteral("both"),
                        Look::EntryPartColor | Look::EntryPartSymbol);
    look->setLegendText(Qt::red, QStringLiteral("red"));
    look->setLegendText(Qt::green, QStringLiteral("older"));
    look->setLegendText(Qt::green, QStringLiteral("newer"));

    QCOMPARE(textOf(Qt::red, SYMBOL_CROSS), QStringLiteral("both"));
    QCOMPARE(textOf(Qt::red, SYMBOL_PLUS), QStringLiteral("red"));
    QCOMPARE(textOf(Qt::green, SYMBOL_PLUS), QStringLiteral("newer"));
    // The colour's rule does not include the symbol, so the first one stays.
    QCOMPARE(textOf(Qt::green, SYMBOL_CROSS), QStringLiteral("cross"));
    QCOMPARE(textOf(Qt::blue, SYMBOL_PLUS), QString());
    QVERIFY(!look->getLookEntryByLegendText(QStringLiteral("none")).color.isValid());
    look->setMustIncludeAllEntriesInLegend(true);
    QCOMPARE(look->getLookEntriesForLegend().size(), 5); // green twice
}

void tst_Look::hashHasNeitherSeedNorAlpha()
{
    Look::Entry const entry{QColor(1, 2, 3), SYMBOL_PLUS, Qt::DotLine, 16};
    Look::Entry glassy = entry;
    glassy.color.setAlpha(100);
    QVERIFY(glassy != entry);
    // 0x10203, with 2, 3 and 16 put over it.
    QCOMPARE(qHash(entry, 77), size_t(0x10212));
    QCOMPARE(qHash(glassy), size_t(0x10212));
    QCOMPARE(qHash(Look::Entry{Qt::black, E_SYMBOL(-1), Qt::NoPen, -1}), size_t(0));
}

void tst_Look::fixedPosition_data()
{
    QTest::addColumn<char>("kind");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("position");
    QTest::newRow("half goes up") << 'f' << 0.7 << 5 << 4;
    QTest::newRow("half goes up below zero") << 'f' << -0.5 << 5 << -2;
    QTest::newRow("left to the plot") << 'f' << -1.0 << 5 << -5;
    QTest::newRow("from the bottom, not scaled") << 'o' << -10.0 << 100 << 90;
    QTest::newRow("both negative, saturated") << 'o' << double(smallest) << -1 << smallest;
    QTest::newRow("bar from the bottom, scaled") << 'b' << -10.0 << 100 << 70;
}

void tst_Look::fixedPosition()
{
    QFETCH(char, kind);
    QFETCH(double, value);
    QFETCH(int, height);
    getPlotRenderSettings().barThicknessFactor = 3;
    look->setFractionallyFixedPositioned(-1.0F); // what follows takes its place
    if (kind == 'f')
        look->setFractionallyFixedPositioned(float(value));
    else if (kind == 'o')
        look->setOffsettedFixedPositioned(int(value));
    else
        look->setColorBar(int(value));
    QTEST(look->getFixedYPosition(height), "position");
    QCOMPARE(look->isAutoPositioned(), kind == 'f' && value == -1.0);
}

void tst_Look::markerWhereYChanges()
{
    for (double const y : {1.0, 1.0, 2.0, NaN, NaN})
        dataSet->append(0.0, y);
    QVERIFY(!look->mustDrawMarker(2));
    look->setDrawMarkerOnYValueChange(true);
    QVector<bool> markers;
    for (int index = -1; index < 5; ++index)
        markers << look->mustDrawMarker(index);
    QCOMPARE(markers, (QVector<bool>{false, false, false, true, true, true}));
}

void tst_Look::interpolationTruncatesAndStaysAColor()
{
    Look::Entry const a{QColor(0, 50, 100, 40), SYMBOL_PLUS, Qt::DotLine, 2};
    Look::Entry const b{QColor(255, 50, 1, 90), SYMBOL_DOT, Qt::SolidLine, 9};
    Look::Entry const half{QColor(127, 50, 50, 40), SYMBOL_PLUS, Qt::DotLine, 5};
    QVERIFY(Look::interpolateLookEntry(a, b, 0.5) == half);
    Look::Entry const beyond{QColor(255, 50, 0, 40), SYMBOL_PLUS, Qt::DotLine, 23};
    QVERIFY(Look::interpolateLookEntry(a, b, 3.0) == beyond);
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
    painter.end();

    // Thickness 6: half of it, rounded up, is 3 to each side.
    int y = 16;
    for (char const* name : {"#ffffff", "#e0e0e0", "#e4e4e4", "#e9e9e9", "#ededed", "#e9e9e9",
                             "#e4e4e4", "#e0e0e0", "#ffffff"}) {
        QColor const color
            = name == QLatin1String("#ffffff") ? Qt::white : QColor(name).lighter(90);
        QCOMPARE(image.pixelColor(5, y++).name(), color.name());
    }
}

QTEST_MAIN(tst_Look)
#include "tst_look.moc"
