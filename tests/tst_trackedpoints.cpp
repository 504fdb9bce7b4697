#include "canvasstage.h"
#include "colorbardrawlistener.h"
#include "datasettracer.h"
#include "librarytest.h"
#include "recordingsink.h"
#include "trackedpoints.h"
#include "viewportmaskfilter.h"

#include <array>
#include <random>

namespace {

constexpr QSize viewport(300, 90);

struct ParallelLines : Look
{
    ParallelLines(XYDataSet* owner, int count)
        : Look(owner, Qt::black, SYMBOL_NONE, Qt::SolidLine, 7)
    {
        multiLineCount = count;
    }
};

} // namespace

/// Points entered when asked for must stand in the cells as if entered while drawn.
class tst_TrackedPoints : public LibraryTest
{
    Q_OBJECT
    int below(int limit) { return int(random() % unsigned(limit)); }
    void append(XYDataSet& dataSet, int count);
    void changeCells(XYDataSet& dataSet);
    std::mt19937 random;
    double x = 0.0; // data units, of the newest point

private Q_SLOTS:
    void askingLaterAmountsToEntering_data();
    void askingLaterAmountsToEntering();
    void cellsThatComeLateOrGoAreNotRead();
};

void tst_TrackedPoints::append(XYDataSet& dataSet, int count)
{
    for (int i = 0; i < count; ++i) {
        x += below(3) * 40.0 / count;
        double const far = below(50) == 0 ? 1e300 : 1.0;
        dataSet.append(x, below(7) == 0 ? NaN : (below(100) - 5) * far);
    }
}

void tst_TrackedPoints::changeCells(XYDataSet& dataSet)
{
    int const change = below(12);
    int const index = below(dataSet.yData->dataSize());
    if (change == 0)
        dataSet.yData->replace(index, below(100));
    if (change == 1)
        dataSet.xData->replace(index, below(20) == 0 ? NaN : dataSet.xData->getValue(index));
    for (DataArray* const column : {dataSet.xData, dataSet.yData}) {
        if (change == 2)
            column->leftshift(index / 2);
        if (change == 3)
            column->decimateKeepEven();
        if (change == 4)
            column->reinit();
    }
}

void tst_TrackedPoints::askingLaterAmountsToEntering_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 100; ++seed)
        QTest::addRow("%u", seed) << seed;
}

void tst_TrackedPoints::askingLaterAmountsToEntering()
{
    QFETCH(unsigned, seed);
    random.seed(seed);
    x = -10.0;
    CanvasStage stage;
    XYDataSet& dataSet = *stage.add({}, {});
    XYDataSet& bar = *stage.add({0.0, 7.0, 90.0}, {1.0, 1.0, 1.0});
    bar.getLook()->changeFromLast(Qt::red);
    QVector<ColorBarDrawListener*> masks{new ColorBarDrawListener(&bar)};
    bar.setDrawListener(masks.first());
    masks.first()->filterEntry(bar.getLook()->getApplicableLookEntry(2), true);
    if (below(2) == 0)
        dataSet.setFilter(new ViewportMaskFilter(&dataSet, &masks));
    int const lines = 1 + qMax(0, below(6) - 3);
    Look* const look = new ParallelLines(&dataSet, lines);
    if (below(4) == 0)
        look->setColorBar(20);

    ViewportMap<int> const empty(viewport.width(), viewport.height(), below(2) * 5);
    TrackedPoints atOnce(empty);
    TrackedPoints later(empty);
    atOnce.handOut();
    TraceSettings settings;
    settings.dataSet = &dataSet;
    QList<Marker_t> markers;
    settings.dataMarkers = &markers;
    settings.transform.set(Bounds{0.0, 200.0, 0.0, 90.0}, viewport.width(), viewport.height());
    for (int run = 0; run < 12; ++run) {
        int const first = dataSet.yData->dataSize();
        append(dataSet, std::array{1, 10, 300, 5000}[size_t(below(4))]);
        for (int pixel = below(300); pixel < 300; pixel += 1 + below(40))
            masks.first()->drawingDataPoint(below(3), pixel);
        if (below(12) == 0)
            settings.transform.set(Bounds{5.0, 190.0, 3.0, 70.0}, 300, 90);
        for (TrackedPoints* const points : {&atOnce, &later}) {
            settings.tracked = points;
            settings.visitsEachPoint = points == &atOnce;
            RecordingSink sink;
            VerticalEnvelope envelope;
            DataSetTracer tracer(settings, envelope, sink);
            for (int line = 0; line < lines; ++line)
                tracer.trace(line, first, dataSet.yData->dataSize() - 1, Unlinked);
        }
        for (int asked = below(5); asked > 0; --asked) {
            QPoint const at(below(300), below(90));
            QCOMPARE(*later.cellAt(at.x(), at.y()), *atOnce.cellAt(at.x(), at.y()));
        }
        changeCells(dataSet);
    }
    for (int cell = 0; cell < 400; ++cell)
        QCOMPARE(later.filled().getItemVector(cell / 20, cell % 20),
                 atOnce.filled().getItemVector(cell / 20, cell % 20));
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
    QVERIFY(stage->dataHitTest(50, 55, hit, 2) && !stage->dataHitTest(90, 55, hit, 2));

    // Whoever holds the map sees each run at once.
    ViewportMap<int>* const map = stage->getViewportMap(dataSet);
    dataSet->append(150.0, 45.0);
    stage->drawNewPointsOnBackGround();
    QCOMPARE(map->getItemVector(15, 11), QVector<int>{3});

    // The columns go, with points of theirs still to be entered.
    stage->fullRepaint();
    stage.paint();
    for (DataArray** const column : {&dataSet->xData, &dataSet->yData}) {
        dataSet->disposeDataArray(*column);
        *column = new DataArrayTemplate<double>;
        (*column)->addReference();
    }
    QVERIFY(!stage->dataHitTest(50, 55, hit, 2));
}

QTEST_MAIN(tst_TrackedPoints)
#include "tst_trackedpoints.moc"
