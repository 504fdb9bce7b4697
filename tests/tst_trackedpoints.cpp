#include "canvasstage.h"
#include "colorbardrawlistener.h"
#include "datasettracer.h"
#include "librarytest.h"
#include "recordingsink.h"
#include "trackedpoints.h"
#include "viewportmaskfilter.h"

#include <random>

/// Points entered when asked for must stand in the cells as if entered while drawn.
class tst_TrackedPoints : public LibraryTest
{
    Q_OBJECT
    int below(int limit) { return int(random() % unsigned(limit)); }
    bool isSameLater();
    std::mt19937 random;

private Q_SLOTS:
    void askingLaterAmountsToEntering();
    void cellsThatComeLateOrGoAreNotRead();
};

/// Draws runs of all that can happen to a curve, asks and changes cells in between.
bool tst_TrackedPoints::isSameLater()
{
    CanvasStage stage;
    XYDataSet& bar = *stage.add({0.0, 7.0, 90.0}, {1.0, 1.0, 1.0});
    bar.getLook()->changeFromLast(Qt::red);
    ColorBarDrawListener mask(&bar);
    mask.filterEntry(bar.getLook()->getApplicableLookEntry(2), true);
    QVector<ColorBarDrawListener*> masks(below(2), &mask);
    XYDataSet& dataSet = *stage.add({}, {});
    dataSet.setFilter(new ViewportMaskFilter(&dataSet, &masks));
    int const lines = 1 + qMax(0, below(6) - 3);
    dataSet.getLook()->setDefaultLineThickness(7); // between parallel lines
    if (below(4) == 0)
        dataSet.getLook()->setColorBar(20);

    ViewportMap<int> const empty(300, 90, below(2) * 5);
    TrackedPoints points[] = {TrackedPoints(empty), TrackedPoints(empty)};
    points[0].handOut(); // which are entered at once
    TraceSettings settings;
    settings.dataSet = &dataSet;
    double x = -10.0;
    bool same = true;
    for (int run = 0; run < 12; ++run) {
        if (run == 0 || below(12) == 0)
            settings.transform.set(Bounds{run * 1.0, 200.0, 0.0, 90.0 - run}, 300, 90);
        int const first = dataSet.yData->dataSize();
        int const count = below(4) == 0 ? 5000 : 1 + below(300);
        for (int i = 0; i < count; ++i) {
            double const y = (below(100) - 5) * (below(50) == 0 ? 1e300 : 1.0);
            dataSet.append(x += below(3) * 40.0 / count, below(7) == 0 ? NaN : y);
        }
        for (int pixel = below(300); pixel < 300; pixel += 1 + below(40))
            mask.drawingDataPoint(below(3), pixel);
        for (int line = 0; line < lines * 2; ++line) {
            settings.visitsEachPoint = line % 2 == 0;
            settings.tracked = &points[line % 2];
            RecordingSink sink;
            VerticalEnvelope envelope;
            DataSetTracer(settings, envelope, sink)
                .trace(line / 2, first, dataSet.yData->dataSize() - 1, Unlinked);
        }
        for (int asked = below(5), at = below(300); asked > 0; --asked, at = below(300))
            same = same && *points[0].cellAt(at, at % 90) == *points[1].cellAt(at, at % 90);
        int const index = below(dataSet.yData->dataSize());
        int const change = below(12);
        for (DataArray* const column : {dataSet.xData, dataSet.yData}) {
            column->blockSignals(below(2) == 0); // which is no concern of the points
            if (change == 0) // x remains in order or, seldom, does not
                column->replace(index, column->getValue(index) + (below(20) == 0 ? 30.0 : 0.0));
            if (change == 1)
                column->leftshift(index / 2);
            if (change == 2)
                column->decimateKeepEven();
            if (change == 3)
                column->reinit();
        }
        if (change == 4)
            dataSet.yData->replace(index, 50.0);
    }
    for (int cell = 0; cell < 400; ++cell)
        same = same
            && points[0].filled().getItemVector(cell / 20, cell % 20)
                == points[1].filled().getItemVector(cell / 20, cell % 20);
    return same;
}

void tst_TrackedPoints::askingLaterAmountsToEntering()
{
    for (unsigned seed = 1; seed <= 50; ++seed) {
        random.seed(seed);
        QVERIFY2(isSameLater(), qPrintable(QString::number(seed)));
    }
}

void tst_TrackedPoints::cellsThatComeLateOrGoAreNotRead()
{
    CanvasStage stage(Bounds{0.0, 200.0, 0.0, 100.0});
    stage->setDefaultMouseOverDataTrackingEnabled(true);
    XYDataSet* const dataSet = stage.add({10.0, 50.0}, {45.0, 45.0});
    dataSet->yData->append(45.0);
    stage.paint();
    QVERIFY(messages->tookOnly("index out of bounds"));
    dataSet->xData->append(90.0);
    XYCanvas::datahit_t hit;
    QVERIFY(!stage->dataHitTest(90, 55, hit, 2) && stage->dataHitTest(50, 55, hit, 2));
    // Another column comes in place of one that goes, with points of it still to be entered.
    dataSet->disposeDataArray(dataSet->yData);
    dataSet->yData = new DataArrayTemplate<double>;
    dataSet->yData->addReference();
    QVERIFY(!stage->dataHitTest(10, 55, hit, 2));
    dataSet->yData->append(47.0);
    QVERIFY(stage->dataHitTest(10, 55, hit, 2)); // where the former was drawn
}

QTEST_MAIN(tst_TrackedPoints)
#include "tst_trackedpoints.moc"
