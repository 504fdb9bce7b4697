#include "canvasstage.h"
#include "messagerecorder.h"
#include "objectcounts.h"

#include <QTest>
#include <functional>

namespace {

constexpr QSize size(100, 50);

struct TwoLineLook : Look
{
    explicit TwoLineLook(XYDataSet* owner)
        : Look(owner, Qt::black, SYMBOL_NONE, Qt::SolidLine, 15)
    {
        multiLineCount = 2;
    }
    QColor getMultiLineColor(int, int line) override { return line == 1 ? Qt::blue : Qt::red; }
};

} // namespace

class tst_XYCanvasDataSets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void runs_data();
    void runs();
};

void tst_XYCanvasDataSets::runs_data()
{
    QTest::addColumn<QString>("script");
    auto const row = [](char const* name, QString const& script) { QTest::newRow(name) << script; };
    row("100 pending: all", "points:100 view:10:20 range:0:99");
    row("101 pending: one beyond each edge", "points:101 view:10:20 range:9:20");
    row("101 pending, not sorted: all", "points:101 at:0:10 view:10:20 range:0:101");
    row("view beyond the data", "points:101 view:90.5:200 range:90:100");
    row("the rest of the view", "points:200 done:14 view:10:20 range:15:20");
    row("nothing more in view", "points:200 done:20 view:10:20 range:21:20");
    // The upper of two lines, at 45 + 8, is out of view and has no dash.
    row("end dash", "two-lines at:9:9 at:nan:nan at:30:45 paint idle complete runs idle");
    row("closing line", "points:9 paint idle connect:1 runs idle connect:0 connect:1 runs");
    row("shrunk x", "points:9 paint <x idle <y points:20 idle view:0:99 paint at:50:20 runs");
    row("shrunk y", "points:9 paint <y idle <x points:20 idle view:0:99 paint at:50:20 runs");
    row("x lags behind: not shrunk", "points:9 y paint warned idle x points:2 runs");
    // Half a thickness of 15 to each side, halves upwards: they meet between y 10 and 11.
    row("parallel lines about the points", "two-lines at:9:10 at:90:10 blue:38 red:40");
}

/// A script appends points and acts on the canvas. "runs" and "idle" are drawing runs that paint
/// something or nothing; "range:9:20" names the points that a run would take.
void tst_XYCanvasDataSets::runs()
{
    QFETCH(QString, script);
    MessageRecorder messages;
    CanvasStage stage;
    Bounds view{0.0, 100.0, 0.0, 50.0};
    stage.show(view);
    XYDataSet* const dataSet = stage.add({}, {});
    int first = 0, last = 0;
    auto const draw = [&](QPainter* painter) { stage->drawDataSet(painter, dataSet); };
    QHash<QString, std::function<void(double, double)>> const actions = {
        {"at", [&](double x, double y) { dataSet->append(x, y); }},
        {"points",
         [&](double count, double) {
             for (int i = 0; i < count; ++i)
                 dataSet->append(i, 10.0);
         }},
        {"x", [&](double, double) { dataSet->xData->append(13.0); }},
        {"y", [&](double, double) { dataSet->yData->append(10.0); }},
        {"<x", [&](double, double) { dataSet->xData->leftshift(5); }},
        {"<y", [&](double, double) { dataSet->yData->leftshift(5); }},
        {"two-lines", [&](double, double) { new TwoLineLook(dataSet); }},
        {"complete", [&](double, double) { dataSet->setComplete(true); }},
        {"connect", [&](double on, double) { stage->setConnectFirstLast(on > 0.0); }},
        {"view", [&](double a, double b) { view.minX = a, view.maxX = b, stage.show(view); }},
        {"done", [&](double index, double) { stage->setLastProcessedIndex(dataSet, int(index)); }},
        {"paint", [&](double, double) { stage.paint(size); }},
        {"red", [&](double y, double) { QCOMPARE(stage.paint(size).at(50, int(y)), Qt::red); }},
        {"blue", [&](double y, double) { QCOMPARE(stage.paint(size).at(50, int(y)), Qt::blue); }},
        {"runs", [&](double, double) { QVERIFY(TestImage(size, 1.0, draw).countPainted() > 0); }},
        {"idle", [&](double, double) { QCOMPARE(TestImage(size, 1.0, draw).countPainted(), 0); }},
        {"warned", [&](double, double) { QVERIFY(messages.tookOnly("index out of bounds")); }},
        {"range", [&](double a, double b) { QCOMPARE(QPointF(first, last), QPointF(a, b)); }},
    };
    for (QString const& word : script.split(' ')) {
        QStringList const parts = word.split(':');
        actions[parts.first()](parts.value(1).toDouble(), parts.value(2).toDouble());
        stage->getPointsToBeDrawn(dataSet, first, last);
    }
    QCOMPARE(messages.take(), QStringList());
}

QTEST_MAIN(tst_XYCanvasDataSets)
#include "tst_xycanvas_datasets.moc"
