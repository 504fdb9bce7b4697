#include "dataarraytemplate.h"
#include "datasettracer.h"
#include "lookpen.h"
#include "objectcounts.h"
#include "recordingsink.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QRandomGenerator>
#include <QTest>
#include <array>
#include <limits>
#include <set>

namespace {

constexpr int width = 100;
constexpr int height = 50;

class RecordingListener : public XYDataSetDrawListener
{
public:
    using XYDataSetDrawListener::XYDataSetDrawListener;
    void drawingDataPoint(int index, int viewportX) override
    {
        told += QStringLiteral("%1@%2 ").arg(index).arg(viewportX);
    }
    QString told;
};

class FourthPointFilter : public XYDataSetFilter
{
public:
    using XYDataSetFilter::XYDataSetFilter;
    bool excludeDataPoint(int index, int viewportX) override
    {
        asked += QStringLiteral("%1@%2 ").arg(index).arg(viewportX);
        return index == 4;
    }
    QString asked;
};

class ParallelLook : public Look
{
public:
    ParallelLook(XYDataSet* owner, int lines, int thickness)
        : Look(owner, Qt::red, SYMBOL_NONE, Qt::SolidLine, thickness)
    {
        multiLineCount = lines;
    }
    QColor getMultiLineColor(int /*index*/, int line) override
    {
        return QColor(line == 1 ? "blue" : "red");
    }
};

/**
 * A data set in a view of 100 by 50 units on as many pixels, written as words.
 *
 * A point is "x,y" or "gap". A look before it, "blue:10,10", applies from it on; "dots" has green
 * pluses and no lines. Before the first point, words set options. The default look is a red line.
 */
class Curve
{
public:
    explicit Curve(QString const& words = QString())
        : dataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                  QStringLiteral("curve"), Qt::red, SYMBOL_NONE, Qt::SolidLine, 1)
    {
        settings.dataSet = &dataSet;
        settings.transform.set(Bounds{0.0, width, 0.0, height}, width, height);
        settings.dataMarkers = &markers;
        for (QString const& word : words.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            take(word);
    }

    int size() const { return dataSet.yData->dataSize(); }

    /// Draws what an earlier run has left, up to point @p last.
    void runTo(int last)
    {
        VerticalEnvelope envelope;
        DataSetTracer tracer(settings, envelope, sink);
        int const isolationBefore = isolation;
        for (int line = 0; line < dataSet.getLook()->getMultiLineCount(); ++line)
            isolation = tracer.trace(line, next, last, isolationBefore).isolation;
        next = last + 1;
    }
    /// The strokes of one run over all points.
    QString draw()
    {
        runTo(size() - 1);
        return sink.text();
    }

    XYDataSet dataSet;
    TraceSettings settings;
    QList<Marker_t> markers;
    RecordingSink sink;
    int isolation = Unlinked;
    int next = 0;

private:
    void take(QString const& word)
    {
        if (word == QLatin1String("complete"))
            dataSet.setComplete(true);
        else if (word == QLatin1String("bar"))
            dataSet.getLook()->setColorBar(5);
        else if (word == QLatin1String("plus"))
            dataSet.getLook()->setDefault(Qt::red, SYMBOL_PLUS, Qt::SolidLine, 1);
        else if (word == QLatin1String("symbols-off"))
            settings.symbolsDrawn = false;
        else if (word == QLatin1String("forward-only"))
            settings.suppressBackwardLines = true;
        else if (word.startsWith(QLatin1String("apart>")))
            settings.disconnectionThreshold = word.mid(6).toDouble();
        else
            append(word);
    }
    void append(QString const& word)
    {
        QStringList const parts = word.split(QLatin1Char(':'));
        QStringList const numbers = parts.last().split(QLatin1Char(','));
        bool const gap = numbers.size() != 2;
        dataSet.append(gap ? NaN : numbers.first().toDouble(),
                       gap ? NaN : numbers.last().toDouble());
        if (parts.size() != 2)
            return;
        if (parts.first() == QLatin1String("dots"))
            dataSet.getLook()->changeFromLast(QColor("green"), SYMBOL_PLUS, Qt::NoPen, 1);
        else
            dataSet.getLook()->changeFromLast(QColor(parts.first()), SYMBOL_NONE, Qt::SolidLine, 1);
    }
};

/// What strokes cover, whichever way upright lines are cut into strokes.
std::set<std::array<int, 6>> coverage(RecordingSink const& sink)
{
    std::set<std::array<int, 6>> covered;
    for (RecordingSink::Stroke const& stroke : sink.strokes) {
        QLine const& line = stroke.line;
        int const color = int(stroke.pen.color().rgb() & 0xffffffu);
        if (stroke.symbol != SYMBOL_NONE || line.x1() != line.x2()) {
            covered.insert({color, stroke.symbol, line.x1(), line.y1(), line.x2(), line.y2()});
            continue;
        }
        int const low = qMax(0, qMin(line.y1(), line.y2()));
        int const high = qMin(height, qMax(line.y1(), line.y2()));
        for (int y = low; y <= high; ++y)
            covered.insert({color, 0, line.x1(), y, line.x1(), y});
    }
    return covered;
}

} // namespace

class tst_DataSetTracer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void strokes_data();
    void strokes();
    void firstPointOfARunStandsApart();
    void splitRunsCoverTheSame();
    void filteredPointsAreGaps();
    void mapHoldsPointsInsideFromTheTop();
    void markersStandWhereYChanges();
    void parallelLinesLieAboutThePoint();
    void pensFollowLookAndSettings();
    void pensAreSetOnlyAtChanges();
    void hugeOffsetsDoNotTrap();
};

void tst_DataSetTracer::strokes_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QString>("drawn");
    QTest::addColumn<int>("isolation");
    auto const row = [](char const* name, char const* curve, char const* drawn, int isolation) {
        QTest::newRow(name) << QString::fromLatin1(curve) << QString::fromLatin1(drawn)
                            << isolation;
    };

    row("lone point: a diamond", "10,10", "#10 at 10,10", 1);
    row("lone point: its own symbol", "plus 10,10", "#2 at 10,10", 1);
    row("lone point: seen at any scale", "plus symbols-off 10,10", "#2 at 10,10", 1);
    row("lone point outside", "-1,10", "", 1);
    row("lone point, complete", "complete 10,10", "#10 at 10,10; 10,10-11,10", 1);
    row("lone bar has width", "bar 10,0", "10,45-20,45", 1);
    row("bar: a hole in y is a point", "bar 10,nan 20,nan", "10,45-20,45", 0);
    row("one valid of two cells is not alone", "10,10 gap", "10,10-11,10", 1);

    row("line", "10,10 20,20", "10,10-20,20", 0);
    row("lines out of view and back", "10,10 -10,10 10,20", "0,10-10,10; 10,20-0,15", 0);
    row("lines that stay outside", "-10,10 -20,40 -5,60 50,70", "", 0);
    row("same pixel: nothing, and nothing learnt", "10,10 10.2,10 10.3,10", "", 1);
    row("same pixel: no threshold either", "apart>0.1 10,10 10.3,10 gap", "10,10-11,10", 1);
    row("symbols, then lines to them", "plus 10,10 20,20", "#2 at 10,10; #2 at 20,20; 10,10-20,20",
        0);
    row("symbols off", "plus symbols-off 10,10 20,20", "10,10-20,20", 0);
    row("symbols on the edges, not beyond", "plus 100,50 101,50 gap", "#2 at 100,50; 100,50-100,50",
        1);

    row("one column: one stroke", "10,20 10,30 10,10 10,15 20,20", "10,10-10,30; 10,15-20,20", 0);
    row("one column is held to the viewport", "10,-20 10,80", "10,0-10,50", 0);
    row("one column, strokes that do not touch", "10,10 10,20 gap 10,40 10,45 20,45",
        "10,10-10,20; 10,40-10,45; 10,45-20,45", 0);
    row("column 99 is the last", "99,10 99,20 100,20 100,30", "99,10-99,20; 99,20-100,20", 0);
    row("columns outside link all the same", "complete -5,10 -5,20", "", 0);

    row("dash: alone before a gap", "10,10 gap", "10,10-11,10", 1);
    row("dash: not when linked", "10,10 20,20 gap", "10,10-20,20", 1);
    row("dash: not outside", "-10,10 gap 110,10 gap", "", 1);
    row("dash: not under a symbol", "plus 10,10 gap", "#2 at 10,10", 1);
    row("dash: not under a symbol before an odd gap", "plus 10,10 blue:gap", "#2 at 10,10", 1);
    row("dash: symbols off", "plus symbols-off 10,10 gap", "10,10-11,10", 1);
    row("dash: longer for a bar", "bar 10,0 gap", "10,45-12,45", 1);
    row("dash: each of two gaps too wide, but not the last", "apart>15 complete 10,10 30,10 50,10",
        "10,10-11,10; 30,10-31,10", 2);
    row("dash: wide gap, then a gap", "apart>15 complete 10,10 30,10 gap",
        "10,10-11,10; 30,10-31,10", 1);
    row("dash: not before the first wide gap if linked", "apart>15 10,10 12,12 40,10 60,10",
        "10,10-12,12; 40,10-41,10", 2);
    row("dash: not under a symbol at a wide gap", "plus apart>15 10,10 30,10",
        "#2 at 10,10; #2 at 30,10", 2);
    row("dash: the left symbol counts, not the right", "plus apart>15 10,10 blue:30,10",
        "#2 at 10,10", 2);
    row("as wide as the threshold: linked", "apart>15 10,10 25,10", "10,10-25,10", 0);
    row("distance that is no number: unlinked", "inf,10 inf,20", "", 2);
    row("infinite distance: linked", "10,10 inf,10", "100,10-10,10", 0);
    row("complete: dash at the end", "complete 10,10 20,20 gap 40,10", "10,10-20,20; 40,10-41,10",
        1);
    row("complete: dash after one wide gap", "complete apart>15 10,10 12,10 40,10",
        "10,10-12,10; 40,10-41,10", 1);
    row("complete: not when linked", "complete 10,10 20,20", "10,10-20,20", 0);
    row("complete: not at a gap", "complete 10,10 20,20 gap", "10,10-20,20", 1);
    row("complete: not outside", "complete gap 110,10", "", 1);
    row("complete: not under a symbol", "complete plus gap 10,10", "#2 at 10,10", 1);

    row("a line has the look of its left point", "10,10 blue:20,20 30,30",
        "10,10-20,20; blue 20,20-30,30", 0);
    row("a pending column too", "10,10 10,30 blue:10,40 20,40", "10,10-10,40; blue 10,40-20,40", 0);
    row("a pending column before an unlinked change", "10,10 10,30 gap blue:20,20 30,20",
        "10,10-10,30; blue 20,20-30,20", 0);
    row("a dash at a wide gap too", "apart>15 10,10 blue:30,10 50,10",
        "10,10-11,10; blue "
        "30,10-31,10",
        2);
    row("a change on the same pixel is a dot", "10,10 blue:10,10 gap", "10,10-10,10", 1);
    row("the look of a gap takes over what is pending", "10,10 10,30 blue:gap 20,20 30,30",
        "blue 10,10-10,30; blue 20,20-30,30", 0);
    row("after a leading gap, the new look comes early", "gap 10,10 blue:20,20", "blue 10,10-20,20",
        0);
    row("no pen: symbols, and nothing learnt", "dots:10,10 20,20 gap dots:30,30",
        "green #2 at 10,10; green #2 at 20,20; green #2 at 30,30", 1);
    row("no pen: lines end before it and begin after it", "10,10 dots:20,20 30,30 blue:40,40",
        "green #2 at 20,20; green #2 at 30,30; green 30,30-40,40", 0);
    row("no pen: a pending column is drawn as before", "10,10 10,30 dots:20,20",
        "green #2 at 20,20; 10,10-10,30", 0);

    row("backwards", "10,10 20,20 15,30 25,30", "10,10-20,20; 20,20-15,30; 15,30-25,30", 0);
    row("backwards suppressed, then linked again", "forward-only 10,10 20,20 15,30 25,30",
        "10,10-20,20; 15,30-25,30", 0);
    row("backwards suppressed: a column is not backwards", "forward-only 10,10 10,20",
        "10,10-10,20", 0);
    row("backwards suppressed: nothing learnt", "complete forward-only 10,10 20,20 15,30",
        "10,10-20,20", 0);

    row("far away keeps its side", "10,10 1e300,1e300", "50,50-10,10", 0);
    row("from infinity to infinity", "-inf,20 inf,20", "100,20-0,20", 0);
    row("far up and down on a column", "10,-1e300 10,1e300", "10,0-10,50", 0);
    row("lone bar far away", "bar 1e300,0", "268435456,45-268435466,45", 1);
}

void tst_DataSetTracer::strokes()
{
    QFETCH(QString, curve);
    Curve traced(curve);
    QTEST(traced.draw(), "drawn");
    QTEST(traced.isolation, "isolation");
}

void tst_DataSetTracer::firstPointOfARunStandsApart()
{
    // On the pixel of its predecessor it is a dot that counts as a link, so no dash follows.
    Curve repeated(QStringLiteral("10,10 10,10 gap"));
    repeated.runTo(0);
    QCOMPARE(repeated.draw(), QStringLiteral("10,10-10,10"));

    // The look of a gap would be lost, but the run that begins behind it takes it.
    QString const changing = QStringLiteral("gap blue:10,10 red:gap 20,20 blue:30,30");
    QCOMPARE(Curve(changing).draw(), QStringLiteral("10,10-11,10; blue 20,20-30,30"));
    Curve changed(changing);
    changed.runTo(2);
    QCOMPARE(changed.draw(), QStringLiteral("10,10-11,10; 20,20-30,30"));

    // A run without points only closes a data set that has become complete.
    Curve finished(QStringLiteral("10,10 20,20 gap 40,10"));
    finished.draw();
    finished.sink.strokes.clear();
    finished.runTo(3);
    QCOMPARE(finished.draw(), QString());
    finished.dataSet.setComplete(true);
    QCOMPARE(finished.draw(), QStringLiteral("40,10-41,10"));
}

void tst_DataSetTracer::splitRunsCoverTheSame()
{
    QRandomGenerator random(20240229);
    char const* const looks[] = {"red", "blue", "dots"};
    int const steps[] = {-1, 0, 0, 0, 1, 1, 2, 6};
    for (int round = 0; round < 500; ++round) {
        // A random curve whose look changes at valid points only.
        QStringList words;
        for (char const* const option : {"apart>3", "forward-only", "complete", "plus"}) {
            if (random.bounded(2) == 0)
                words << QLatin1String(option);
        }
        int const options = int(words.size());
        int x = random.bounded(-10, 90);
        int y = random.bounded(-20, 70);
        QSet<int> splits;
        for (int i = 0; i < 60; ++i) {
            if (i > 0 && random.bounded(6) == 0) {
                words << QStringLiteral("gap");
                splits.insert(i);
                continue;
            }
            int const dx = steps[random.bounded(8)];
            int const dy = random.bounded(3) == 0 ? 0 : random.bounded(-20 - y, 70 - y);
            if (i > 0 && (dx != 0 || dy != 0))
                splits.insert(i); // elsewhere a point lies on the pixel of the one before
            x += dx;
            y += dy;
            QString const look
                = random.bounded(8) == 0 ? QLatin1String(looks[random.bounded(3)]) : QString();
            QString const point = QStringLiteral("%1,%2").arg(x).arg(y);
            words << (look.isEmpty() ? point : look + QLatin1Char(':') + point);
        }
        QString const text = words.join(QLatin1Char(' '));
        Curve whole(text);
        Curve split(text);

        whole.draw();
        bool const complete = split.dataSet.isComplete();
        split.dataSet.setComplete(false);
        for (int i = 1; i < words.size() - options; ++i) {
            if (splits.contains(i) && random.bounded(4) == 0)
                split.runTo(i - 1);
        }
        split.dataSet.setComplete(complete);
        split.draw();

        QVERIFY2(coverage(split.sink) == coverage(whole.sink), qPrintable(text));
        QVERIFY2(split.isolation == whole.isolation, qPrintable(text));
    }
}

void tst_DataSetTracer::filteredPointsAreGaps()
{
    Curve curve(QStringLiteral("-10,10 20,20 gap 30,30 40,40 50,40"));
    auto* const filter = new FourthPointFilter(&curve.dataSet);
    auto* const listener = new RecordingListener(&curve.dataSet);
    curve.dataSet.setFilter(filter);
    curve.dataSet.setDrawListener(listener);

    curve.runTo(4);
    QCOMPARE(curve.draw(), QStringLiteral("20,20-0,13; 30,30-31,30"));
    // A gap is not asked about; the point before the second run is asked about again.
    QCOMPARE(filter->asked, QStringLiteral("0@-10 1@20 3@30 4@40 4@40 5@50 "));
    QCOMPARE(listener->told, QStringLiteral("0@-10 1@20 3@30 5@50 "));
}

void tst_DataSetTracer::mapHoldsPointsInsideFromTheTop()
{
    Curve curve(QStringLiteral("10,10 20,0 30,49 40,50 -1,10 10,60 gap"));
    ViewportMap<int> map(width, height, 0, width, height); // a cell per pixel
    curve.settings.map = &map;
    curve.draw();

    QCOMPARE(map.getItemVector(10, 39), QVector<int>({0}));
    QCOMPARE(map.getItemVector(20, 49), QVector<int>({1}));
    QCOMPARE(map.getItemVector(30, 0), QVector<int>({2}));
    int entries = 0;
    for (int column = 0; column < width; ++column) {
        for (int row = 0; row < height; ++row)
            entries += int(map.getItemVector(column, row).size());
    }
    QCOMPARE(entries, 3);
}

void tst_DataSetTracer::markersStandWhereYChanges()
{
    Curve curve(QStringLiteral("5,5 0,10 50.25,20 60,20 98,30 99,40 -1,50 gap 70,50"));
    curve.dataSet.getLook()->setDrawMarkerOnYValueChange(true);
    curve.draw();

    // Neither in the last column nor outside; after a gap y has always changed.
    QVector<double> values;
    for (Marker_t const& marker : std::as_const(curve.markers))
        values.append(marker.value);
    QCOMPARE(values, QVector<double>({0.0, 50.25, 98.0, 70.0}));
    Marker_t const& marker = curve.markers.constFirst();
    QCOMPARE(marker.type, eFOREGROUND_MARKER);
    QCOMPARE(marker.orientation, eHORIZONTAL);
    QCOMPARE(marker.color, QColor(Qt::darkGray));
    QCOMPARE(marker.penStyle, Qt::DashLine);
    QCOMPARE(marker.lineWidth, 0);
    QVERIFY(marker.label.isEmpty());
}

void tst_DataSetTracer::parallelLinesLieAboutThePoint()
{
    // Half a thickness of 3 to each side: -1.5 and 1.5, halves upwards.
    Curve two;
    new ParallelLook(&two.dataSet, 2, 3);
    two.dataSet.append(10, 10);
    two.dataSet.append(20, 20);
    two.runTo(0);
    two.sink.strokes.clear();
    QCOMPARE(two.draw(), QStringLiteral("10,9-20,19; blue 10,12-20,22"));
}

void tst_DataSetTracer::pensFollowLookAndSettings()
{
    PlotRenderSettings_t settings = getDefaultPlotRenderSettings();
    settings.lineThicknessFactor = 3;
    settings.barThicknessFactor = 5;
    plotRenderSettings.push(settings);
    Curve line;
    Curve bar(QStringLiteral("bar"));
    auto const penOf = [](Curve& curve, Qt::PenStyle style, int thickness) {
        curve.dataSet.getLook()->setDefault(Qt::red, SYMBOL_NONE, style, thickness);
        return lookPen(*curve.dataSet.getLook(), 0, 0).pen;
    };
    auto const red = [](double width, Qt::PenStyle style, Qt::PenCapStyle cap) {
        return QPen(QColor(Qt::red), width, style, cap, Qt::BevelJoin);
    };
    QCOMPARE(penOf(line, Qt::DotLine, 2), red(6.0, Qt::DotLine, Qt::SquareCap));
    QCOMPARE(penOf(line, Qt::SolidLine, 0), red(3.0, Qt::SolidLine, Qt::SquareCap));
    QCOMPARE(penOf(line, Qt::SolidLine, 2000000000), red(6e9, Qt::SolidLine, Qt::SquareCap));
    QCOMPARE(penOf(bar, Qt::SolidLine, 2), red(10.0, Qt::SolidLine, Qt::FlatCap));
    // A pen for symbols only is not scaled.
    QCOMPARE(penOf(bar, Qt::NoPen, 2), red(2.0, Qt::SolidLine, Qt::SquareCap));
    plotRenderSettings.clear();
}

void tst_DataSetTracer::pensAreSetOnlyAtChanges()
{
    Curve curve;
    for (int i = 0; i < 1000; ++i)
        curve.dataSet.append(i * 0.1, i % 50);
    curve.draw();
    QCOMPARE(curve.sink.penChanges, 1);
}

void tst_DataSetTracer::hugeOffsetsDoNotTrap()
{
    Curve curve;
    new ParallelLook(&curve.dataSet, 3, std::numeric_limits<int>::max());
    for (double const y : {1e300, -1e300, 10.0, 20.0}) {
        curve.dataSet.append(10.0, y);
        curve.dataSet.append(20.0, -y);
    }
    QVERIFY(!curve.draw().isEmpty());
}

QTEST_MAIN(tst_DataSetTracer)
#include "tst_datasettracer.moc"
