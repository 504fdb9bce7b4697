#include "colorbardrawlistener.h"
#include "dataarraytemplate.h"
#include "librarytest.h"
#include "viewportmaskfilter.h"
#include "xydataset.h"

#include <QScopedPointer>

using Column = DataArrayTemplate<double>;

class tst_XYDataSet : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void bounds();
    void columnsMoveTheLookAndTellTheFirstValue();
    void destroysLookListenerFilterColumns();

private:
    static XYDataSet* makeDataSet(DataArray* x = new Column, DataArray* y = new Column)
    {
        return new XYDataSet(x, y, QStringLiteral("speed"), Qt::red, SYMBOL_DOT, Qt::SolidLine, 1);
    }

    void makeObjects() override { dataSet.reset(makeDataSet()); }
    void deleteObjects() override { dataSet.reset(); }

    QScopedPointer<XYDataSet> dataSet;
};

void tst_XYDataSet::bounds()
{
    // x counts from 0.
    auto const included = [](auto include, bool bar, QVector<double> const& y, Bounds bounds) {
        QScopedPointer<XYDataSet> const data(makeDataSet());
        for (int i = 0; i < y.size(); ++i)
            data->append(i, y[i]);
        data->getLook()->setOffsettedFixedPositioned(10); // alone still counts in y
        if (bar)
            data->getLook()->setColorBar(10);
        (data.get()->*include)(bounds);
        auto const text = QStringLiteral("%1..%2 %3..%4"); // NaN does not equal itself
        return text.arg(bounds.minX).arg(bounds.maxX).arg(bounds.minY).arg(bounds.maxY);
    };
    auto const all = &XYDataSet::includeInBounds;
    auto const last = &XYDataSet::includeLastInBounds;
    QCOMPARE(included(all, false, {4, 2}, {NaN, 9, 1, NaN}), "0..9 1..4"); // each end counts alone
    QCOMPARE(included(all, false, {NaN, NaN}, {NaN, NaN, NaN, 7}), "0..1 nan..7"); // holes leave y
    QCOMPARE(included(all, true, {4, 2}, {}), "0..1 nan..nan");
    QCOMPARE(included(last, false, {9, 2}, {NaN, 3, 3, NaN}), "1..1 2..2"); // drops both ends
}

void tst_XYDataSet::columnsMoveTheLookAndTellTheFirstValue()
{
    QString heard;
    connect(dataSet->yData, &DataArray::dataChanged, this, [&] { heard += 'y'; });
    connect(dataSet.get(), &XYDataSet::yDataNoLongerEmpty, this, [&] { heard += '!'; });
    dataSet->append(1.0, NaN);
    dataSet->append(2.0, 5.0);
    QCOMPARE(heard, "yy!");
    dataSet->getLook()->changeFromLast(Qt::green);
    dataSet->yData->leftshift(1);
    QCOMPARE(dataSet->getLook()->getHistory().first().index, 0);
}

void tst_XYDataSet::destroysLookListenerFilterColumns()
{
    QVector<ColorBarDrawListener*> listeners;
    dataSet->setDrawListener(new ColorBarDrawListener(dataSet.get()));
    dataSet->setFilter(new ViewportMaskFilter(dataSet.get(), &listeners));
    QVector<qsizetype> order;
    QVector<QObject const*> const parts{dataSet->getLook(), dataSet->getDrawListener(),
                                        dataSet->getFilter(), dataSet->xData, dataSet->yData};
    for (QObject const* part : parts)
        connect(part, &QObject::destroyed, this, [&, part] { order += parts.indexOf(part); });
    dataSet.reset();
    QCOMPARE(order, (QVector<qsizetype>{0, 1, 2, 3, 4}));
    for (bool const counted : {true, false}) {
        auto* const inBothPlaces = new Column;
        inBothPlaces->setReferenceCounted(counted);
        delete makeDataSet(inBothPlaces, inBothPlaces);
    }
}

QTEST_MAIN(tst_XYDataSet)
#include "tst_xydataset.moc"
