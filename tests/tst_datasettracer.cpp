#include "dataarraytemplate.h"
#include "datasettracer.h"
#include "lookpen.h"
#include "objectcounts.h"
#include "recordingsink.h"
#include "trackedpoints.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QRandomGenerator>
#include <QTest>
#include <functional>

namespace {

using Column = DataArrayTemplate<double>;
constexpr int width = 100, height = 50;

struct FourthPointFilter : XYDataSetFilter
{
    using XYDataSetFilter::XYDataSetFilter;
    bool excludeDataPoint(int index, int x) override { return index == 4 && x == 40; }
};

struct RecordingListener : XYDataSetDrawListener
{
    using XYDataSetDrawListener::XYDataSetDrawListener;
    void drawingDataPoint(int index, int x) override { told << index << x; }
    QVector<int> told;
};

/// A data set in a view of 100 by 50 units on as many pixels, written as words.
///
/// A point is "x,y", a gap "nan". "=blue" behind a point is its look and that of all that follow;
/// "=dots" stands for green pluses without lines. "|" ends a drawing run.
struct Curve
{
    Curve()
    {
        settings.dataSet = &dataSet;
        settings.transform.set(Bounds{0.0, width, 0.0, height}, width, height);
        settings.dataMarkers = &markers;
    }

    /// What all runs have drawn, the last of which follows the last word.
    QString draw(QString const& words)
    {
        for (QString const& word : (words + " |").split(' ', Qt::SkipEmptyParts)) {
            double const x = word.section(',', 0, 0).toDouble();
            if (options.contains(word))
                options[word]();
            else
                dataSet.append(x, word.section(',', -1).toDouble());
        }
        return sink.drawn;
    }
    void run()
    {
        VerticalEnvelope envelope;
        DataSetTracer tracer(settings, envelope, sink);
        int const first = std::exchange(next, dataSet.yData->dataSize());
        isolation = tracer.trace(0, first, next - 1, isolation).isolation;
    }
    Look* look() { return dataSet.getLook(); }

    XYDataSet dataSet{new Column, new Column, "curve", Qt::red, SYMBOL_NONE, Qt::SolidLine, 1};
    TraceSettings settings;
    QList<Marker_t> markers;
    RecordingSink sink;
    int isolation = Unlinked;
    int next = 0;
    QHash<QString, std::function<void()>> const options = {
        {"|", [this] { run(); }},
        {"complete", [this] { dataSet.setComplete(true); }},
        {"bar", [this] { look()->setColorBar(5); }},
        {"plus", [this] { look()->setDefault(Qt::red, SYMBOL_PLUS, Qt::SolidLine, 1); }},
        {"=red", [this] { look()->changeFromLast(Qt::red, SYMBOL_NONE, Qt::SolidLine, 1); }},
        {"=blue", [this] { look()->changeFromLast(Qt::blue, SYMBOL_NONE, Qt::SolidLine, 1); }},
        {"=dots", [this] { look()->changeFromLast(Qt::green, SYMBOL_PLUS, Qt::NoPen, 1); }},
        {"symbols-off", [this] { settings.symbolsDrawn = false; }},
        {"forward-only", [this] { settings.suppressBackwardLines = true; }},
        {"apart>3", [this] { settings.disconnectionThreshold = 3.0; }},
    };
};

} // namespace

class tst_DataSetTracer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void strokes_data();
    void strokes();
    void splitRunsPaintTheSame();
    void pointsAreToldMappedAndMarked();
    void pensFollowLookAndSettings();
};

void tst_DataSetTracer::strokes_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QString>("drawn");
    auto const row = [](char const* name, QString const& curve, QString const& drawn) {
        QTest::newRow(name) << curve << drawn;
    };

    row("lone point: a diamond", "complete 10,10", "#10 at 10,10; 10,10-11,10");
    row("lone point: its symbol at any scale", "plus symbols-off 10,10", "#2 at 10,10");
    row("lone bar has width", "bar 10,0", "10,45-20,45");
    row("bar: a hole in y is a point", "bar 10,nan 20,nan", "10,45-20,45");
    row("symbols to the edges", "plus 100,50 101,50", "#2 at 100,50; 100,50-100,50");

    row("out of view and back", "10,10 -10,10 10,20", "0,10-10,10; 10,20-0,15");
    row("far away keeps its side", "10,10 1e300,1e300", "50,50-10,10");
    row("column: one stroke", "10,20 10,30 10,10 10,15 20,20", "10,10-10,30; 10,15-20,20");
    row("column: apart", "10,10 10,20 nan 10,40 10,45", "10,10-10,20; 10,40-10,45");
    row("column: held to the viewport", "10,-1e300 10,1e300", "10,0-10,50");
    row("column: 99 is the last", "99,10 99,20 100,20 100,30", "99,10-99,20; 99,20-100,20");

    row("dash: not linked by its own pixel", "symbols-off plus 9,9 9.2,9 nan", "9,9-10,9");
    row("dash: not outside", "complete -10,10 nan 110,10", "");
    row("dash: not under a symbol", "complete plus nan 10,10 | nan =blue", "#2 at 10,10");
    row("dash: longer for a bar", "bar 10,0 nan", "10,45-12,45");
    row("wide gap: twice", "apart>3 complete 10,10 30,10 50,10", "10,10-11,10; 30,10-31,10");
    row("wide gap, then a gap", "apart>3 10,10 30,10 nan", "10,10-11,10; 30,10-31,10");
    row("wide gap: linked", "apart>3 10,10 13,9 40,10 60,10", "10,10-13,9; 40,10-41,10");
    row("wide gap: symbol on the left", "plus apart>3 10,10 30,10 =blue", "#2 at 10,10");
    row("complete: not when linked", "complete 10,10 20,20", "10,10-20,20");
    row("complete: not at a gap", "complete 10,10 20,20 nan", "10,10-20,20");
    row("complete: late", "apart>3 10,10 12,9 40,10 | | complete", "10,10-12,9; 40,10-41,10");

    row("look: of the left", "10,10 20,20 =blue 30,30", "10,10-20,20; blue 20,20-30,30");
    row("look: of a column", "9,10 9,30 9,40 =blue 20,40", "9,10-9,40; blue 9,40-20,40");
    row("look: column, gap", "9,1 9,3 nan 20,20 =blue 30,20", "9,1-9,3; blue 20,20-30,20");
    row("look: of a dash", "apart>3 1,1 30,10 =blue 50,10", "1,1-2,1; blue 30,10-31,10");
    row("look: on the same pixel", "10,10 10,10 =blue nan", "10,10-10,10");
    row("look: of a gap", "9,1 9,3 nan =blue 20,20 30,30", "blue 9,1-9,3; blue 20,20-30,30");
    row("look: early after a leading gap", "nan 10,10 20,20 =blue", "blue 10,10-20,20");
    row("look: lost in a gap", "nan 5,5 =blue nan =red 6,6 7,7 =blue", "5,5-6,5; blue 6,6-7,7");
    row("no lines: no link", "symbols-off 10,10 =dots 20,20 nan", "green 20,20-21,20");
    row("no lines: until a look", "symbols-off 1,1 =dots 2,2 3,3 =blue", "green 2,2-3,3");
    row("no lines: after a column", "9,1 9,3 20,20 =dots", "green #2 at 20,20; 9,1-9,3");
    row("backwards suppressed", "forward-only 9,9 20,20 15,30 15,40", "9,9-20,20; 15,30-15,40");
}

void tst_DataSetTracer::strokes()
{
    QFETCH(QString, curve);
    QTEST(Curve().draw(curve), "drawn");
}

void tst_DataSetTracer::splitRunsPaintTheSame()
{
    QRandomGenerator random(20240229);
    auto const oneIn = [&](int count) { return random.bounded(count) == 0; };
    for (int round = 0; round < 500; ++round) {
        QString words;
        for (char const* const option : {"apart>3 ", "forward-only ", "plus "})
            words += oneIn(2) ? option : "";
        QPoint last(random.bounded(-10, 90), 0);
        for (int i = 0; i < 60; ++i) {
            int const y = oneIn(3) ? last.y() : random.bounded(-20, 70);
            QPoint const point(last.x() + (oneIn(2) ? 0 : random.bounded(-1, 7)), y);
            bool const gap = i > 0 && oneIn(6);
            // A run that begins on the pixel before it may differ.
            words += i > 1 && (gap || point != last) && oneIn(4) ? "| " : "";
            words += gap ? "nan " : QString::asprintf("%d,%d ", point.x(), y);
            last = gap ? last : point;
            words += gap || !oneIn(8) ? "" : oneIn(2) ? "=blue " : "=dots ";
        }
        words += oneIn(2) ? "complete" : "";
        Curve split;
        split.draw(words);
        Curve whole;
        whole.draw(QString(words).remove('|'));
        QVERIFY2(split.sink.picture == whole.sink.picture, qPrintable(words));
    }
}

void tst_DataSetTracer::pointsAreToldMappedAndMarked()
{
    Curve curve;
    auto* const listener = new RecordingListener(&curve.dataSet);
    curve.dataSet.setFilter(new FourthPointFilter(&curve.dataSet));
    curve.dataSet.setDrawListener(listener);
    TrackedPoints tracked(ViewportMap<int>(width, height, 0, width, height)); // a cell per pixel
    curve.settings.tracked = &tracked;
    curve.look()->setDrawMarkerOnYValueChange(true);
    curve.draw("5,5 0,10 nan 30.25,20 40,40 | 98,49 99,48 98,48 -1,30");

    QCOMPARE(curve.sink.drawn, "5,5-0,10; 30,20-31,20; 98,49-99,48; 99,48-98,48; 0,30-98,48");
    QCOMPARE(curve.sink.penChanges, 3); // one a run, one to continue
    QCOMPARE(listener->told, QVector<int>({0, 5, 1, 0, 3, 30, 5, 98, 6, 99, 7, 98, 8, -1}));
    ViewportMap<int>& map = tracked.filled();
    // Rows count from the top; what is filtered or out of view is not entered.
    QCOMPARE(map.getItemVector(0, 39) + map.getItemVector(98, 0), QVector<int>({1, 5}));
    QCOMPARE(map.getItemVector(40, 9) + map.getItemVector(0, 19), QVector<int>());
    // Neither in the last column nor outside; after a gap y has always changed.
    QVector<double> values;
    for (Marker_t const& marker : std::as_const(curve.markers)) {
        values.append(marker.value);
        QVERIFY(marker.type == eFOREGROUND_MARKER && marker.orientation == eHORIZONTAL);
        QVERIFY(marker.color == Qt::darkGray && marker.penStyle == Qt::DashLine);
    }
    QCOMPARE(values, QVector<double>({0.0, 30.25, 98.0}));
}

void tst_DataSetTracer::pensFollowLookAndSettings()
{
    PlotRenderSettings_t settings = getDefaultPlotRenderSettings();
    settings.lineThicknessFactor = 3;
    settings.barThicknessFactor = 5;
    plotRenderSettings.push(settings);
    auto const compare = [](bool bar, Qt::PenStyle style, int thickness, QPen pen) {
        Curve curve;
        curve.draw(bar ? "bar" : "");
        curve.look()->setDefault(Qt::red, SYMBOL_NONE, style, thickness);
        pen.setJoinStyle(Qt::BevelJoin);
        QCOMPARE(lookPen(*curve.look(), 0, 0).pen, pen);
    };
    compare(false, Qt::DotLine, 2, {Qt::red, 6.0, Qt::DotLine});
    compare(false, Qt::SolidLine, 0, {Qt::red, 3.0});
    compare(false, Qt::SolidLine, 2000000000, {Qt::red, 6e9});
    compare(true, Qt::SolidLine, 2, {Qt::red, 10.0, Qt::SolidLine, Qt::FlatCap});
    compare(true, Qt::NoPen, 2, {Qt::red, 2.0}); // for symbols only
    plotRenderSettings.clear();
}

QTEST_MAIN(tst_DataSetTracer)
#include "tst_datasettracer.moc"
