#include "colorbardrawlistener.h"
#include "dataarraytemplate.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "viewportmaskfilter.h"
#include "xydataset.h"

#include <QScopedPointer>
#include <QTest>

using Column = DataArrayTemplate<double>;

class tst_XYDataSet : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void bounds_data();
    void bounds();
    void appendsXFirstAndForwardsTheFirstValue();
    void onlyALeftShiftOfYMovesTheLook();
    void lookIsReplacedAndNeverNull();
    void destroysLookListenerFilterColumns();
    void columnsInTwoPlaces();

private:
    static XYDataSet* makeDataSet(DataArray* x = new Column, DataArray* y = new Column)
    {
        return new XYDataSet(x, y, QStringLiteral("speed"), Qt::red, SYMBOL_DOT, Qt::SolidLine, 1);
    }

    QScopedPointer<MessageRecorder> messages;
    QScopedPointer<XYDataSet> dataSet;
};

void tst_XYDataSet::init()
{
    messages.reset(new MessageRecorder);
    dataSet.reset(makeDataSet());
}

void tst_XYDataSet::cleanup()
{
    dataSet.reset();
    QCOMPARE(messages->take(), QStringList());
    QCOMPARE(liveObjects(), QStringList());
}

void tst_XYDataSet::bounds_data()
{
    QTest::addColumn<char>("kind"); // all points or the last, upper case for a colour bar
    QTest::addColumn<QVector<double>>("y"); // x counts from 0
    QTest::addColumn<Bounds>("before");
    QTest::addColumn<QString>("after");
    auto const row = [](char const* name, char kind, QVector<double> const& y, Bounds const& before,
                        char const* after) {
        QTest::newRow(name) << kind << y << before << QString::fromLatin1(after);
    };
    row("all: points widen", 'a', {4, 2}, {1, 9, 3, 3}, "0..9 2..4");
    row("all: wide enough", 'a', {4, 2}, {-1, 9, 1, 5}, "-1..9 1..5");
    row("all: an end not determined counts alone", 'a', {4, 2}, {NaN, 9, 1, NaN}, "0..9 1..4");
    row("all: holes leave y", 'a', {NaN, NaN}, {NaN, NaN, NaN, 7}, "0..1 nan..7");
    row("all: colour bar leaves y", 'A', {4, 2}, {}, "0..1 nan..nan");
    row("last: point widens", 'l', {9, 2}, {2, 3, 3, 4}, "1..3 2..4");
    row("last: an end not determined drops both", 'l', {9, 2}, {NaN, 3, 3, NaN}, "1..1 2..2");
    row("last: hole leaves y", 'l', {9, NaN}, {0, 0, 3, 4}, "0..1 3..4");
    row("last: empty", 'l', {}, {NaN, 3, 3, 4}, "nan..3 3..4");
    row("last: colour bar leaves y", 'L', {9, 2}, {}, "1..1 nan..nan");
}

void tst_XYDataSet::bounds()
{
    QFETCH(char, kind);
    QFETCH(QVector<double>, y);
    QFETCH(Bounds, before);
    for (int i = 0; i < y.size(); ++i)
        dataSet->append(i, y[i]);
    dataSet->getLook()->setOffsettedFixedPositioned(10); // alone still counts in y
    if (kind == 'A' || kind == 'L')
        dataSet->getLook()->setColorBar(10);

    Bounds bounds = before;
    if (kind == 'a' || kind == 'A')
        dataSet->includeInBounds(bounds);
    else
        dataSet->includeLastInBounds(bounds);

    auto const text = QStringLiteral("%1..%2 %3..%4"); // NaN does not equal itself
    QTEST(text.arg(bounds.minX).arg(bounds.maxX).arg(bounds.minY).arg(bounds.maxY), "after");
}

void tst_XYDataSet::appendsXFirstAndForwardsTheFirstValue()
{
    QString heard;
    connect(dataSet->xData, &DataArray::dataChanged, this, [&] { heard += QLatin1Char('x'); });
    connect(dataSet->yData, &DataArray::dataChanged, this, [&] { heard += QLatin1Char('y'); });
    connect(dataSet.get(), &XYDataSet::yDataNoLongerEmpty, this,
            [&] { heard += QLatin1Char('!'); });
    dataSet->append(1.0, NaN);
    dataSet->append(2.0, 5.0);
    QCOMPARE(heard, QStringLiteral("xyxy!"));
}

void tst_XYDataSet::onlyALeftShiftOfYMovesTheLook()
{
    dataSet->append(0.0, 0.0);
    dataSet->getLook()->changeFromLast(Qt::blue);
    dataSet->append(1.0, 1.0);
    dataSet->append(2.0, 2.0);
    dataSet->getLook()->changeFromLast(Qt::green);
    dataSet->xData->leftshift(1);
    QCOMPARE(dataSet->getLook()->getHistory().constLast().index, 2);
    dataSet->yData->leftshift(1);
    QCOMPARE(dataSet->getLook()->getHistory().constLast().index, 1);
}

void tst_XYDataSet::lookIsReplacedAndNeverNull()
{
    int heard = 0;
    connect(dataSet.get(), &XYDataSet::lastAppearanceChanged, this, [&] { ++heard; });
    Look* foundAtTheEndOfTheOld = nullptr;
    connect(dataSet->getLook(), &QObject::destroyed, this,
            [&] { foundAtTheEndOfTheOld = dataSet->getLook(); });
    auto* const newLook = new Look(dataSet.get(), Qt::blue, SYMBOL_NONE, Qt::DotLine, 2);
    QCOMPARE(foundAtTheEndOfTheOld, newLook);
    dataSet->setLook(newLook); // connects a second time
    newLook->setDefaultLineThickness(3);
    QCOMPARE(heard, 2);

    dataSet->setLook(nullptr);
    QVERIFY(!dataSet->hasFixedYPixelPosition());
    dataSet->yData->leftshift(1);
    QCOMPARE(dataSet->getLook()->getDefaultColor(), QColor(Qt::black));

    // A look that was taken off outlives its data set.
    QScopedPointer<Look> const look(dataSet->getLook());
    dataSet->unsetLook(look.get());
    dataSet.reset();
    look->changeFromLast(Qt::red);
}

void tst_XYDataSet::destroysLookListenerFilterColumns()
{
    QVector<ColorBarDrawListener*> listeners;
    dataSet->setDrawListener(new ColorBarDrawListener(dataSet.get()));
    {
        QObject parent; // takes its filter along, which is then forgotten
        dataSet->setFilter(new ViewportMaskFilter(dataSet.get(), &listeners, &parent));
    }
    QVERIFY(!dataSet->getFilter());
    dataSet->setFilter(new ViewportMaskFilter(dataSet.get(), &listeners));
    QCOMPARE(
        liveObjects(),
        (QStringList{"ColorBarDrawListener: 1", "DataArray: 2", "Look: 1", "ViewportMaskFilter: 1",
                     "XYDataSet: 1", "XYDataSetDrawListener: 1", "XYDataSetFilter: 1"}));
    QString heard;
    auto const hear = [&](QObject const* object, char letter) {
        connect(object, &QObject::destroyed, this,
                [&heard, letter] { heard += QLatin1Char(letter); });
    };
    hear(dataSet->yData, 'y');
    hear(dataSet->xData, 'x');
    hear(dataSet->getFilter(), 'f');
    hear(dataSet->getDrawListener(), 'd');
    hear(dataSet->getLook(), 'l');
    dataSet.reset();
    QCOMPARE(heard, QStringLiteral("ldfxy"));
}

void tst_XYDataSet::columnsInTwoPlaces()
{
    delete makeDataSet(dataSet->xData);
    QCOMPARE(dataSet->xData->getNumberOfReferences(), 1);
    for (bool const counted : {true, false}) {
        auto* const column = new Column;
        column->setReferenceCounted(counted);
        delete makeDataSet(column, column);
    }
}

QTEST_MAIN(tst_XYDataSet)
#include "tst_xydataset.moc"
