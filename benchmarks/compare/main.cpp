#include "cellmemory.h"
#include "dataarray.h"
#include "measure.h"
#include "ourplot.h"
#include "points.h"
#include "table.h"
#include "theirplot.h"

#include <QApplication>
#include <cstdio>
#include <iterator>
#include <optional>

namespace {

constexpr double msPerSecond = 1e3;
constexpr double nsPerSecond = 1e9;

/// What is done at one number of points, and what the ratios are not to exceed.
struct Size
{
    int count;
    char const* name;
    int redraws; // repetitions of a drawing
    int fillings; // and of an append of all points
    double fullRedraw;
    double onePercent;
    double appendTen;
    std::optional<double> bytes;
    std::optional<double> oneByOne;
    std::optional<double> inRuns;
};

constexpr Size sizes[] = {
    {10000, "1e4", 41, 41, 0.7, 1.0, 0.25, {}, {}, {}},
    {100000, "1e5", 41, 21, 0.7, 1.0, 0.15, 1.1, 1.5, 0.2},
    {1000000, "1e6", 21, 9, 0.5, 1.0, 0.1, 1.1, 1.5, 0.2},
    {10000000, "1e7", 9, 5, 0.1, 1.0, 0.02, 1.1, 1.0, 0.2},
};

constexpr int seriesCount = 40;
constexpr int pointsOfSeries = 100000;
constexpr int holeEvery = 100;
constexpr int appendedAtOnce = 10;
constexpr int ownRepetitions = 21;

// What these ratios are not to exceed.
constexpr double floorOfMarks = 1.0;
constexpr double floorOfSizes = 1.5;
constexpr double floorOfPens = 1.5;

Pair operator*(Pair const& pair, double factor)
{
    return {pair.ours * factor, pair.theirs * factor};
}

double msToShow(PlotUnderTest& plot, View const& view)
{
    return secondsOf([&] { plot.show(view); }) * msPerSecond;
}

/// Bytes that filling takes, with whatever the first drawing adds to the data.
double bytesToFill(PlotUnderTest& plot, Points const& points)
{
    plot.startAnew();
    plot.show(viewOfAll(points, 0));
    // Memory kept for later columns counts no more than what the heap keeps.
    auto const bytesOfData = [] {
        releaseSpareCellMemory();
        return bytesInUse();
    };
    qint64 const before = bytesOfData();
    plot.appendOneByOne(points);
    plot.show(viewOfAll(points, 0));
    return double(bytesOfData() - before);
}

/// The measurements at one size, in an order that leaves both plots filled for the next one.
class Comparison
{
public:
    Comparison(Size const& sizeOfIt, OurPlot& ourPlot, TheirPlot& theirPlot, Table& rows,
               QString& columnsNote)
        : size(sizeOfIt)
        , points(noisyWalk(sizeOfIt.count))
        , ours(ourPlot)
        , theirs(theirPlot)
        , table(rows)
        , columnsCount(columnsNote)
    {
    }

    void run()
    {
        compareAppending();
        compareRedraws();
        compareMemory();
        compareLive();
    }

private:
    void compareAppending()
    {
        auto const filling = [&](auto const& append) {
            return mediansOf(size.fillings, ours, theirs,
                             [&](PlotUnderTest& plot, int) {
                                 plot.startAnew();
                                 return secondsOf([&] { append(plot); });
                             })
                * (nsPerSecond / size.count);
        };
        add("append, one point at a time", "ns/point",
            filling([&](PlotUnderTest& plot) { plot.appendOneByOne(points); }), size.oneByOne);
        add("append, runs of 1000", "ns/point",
            filling([&](PlotUnderTest& plot) { plot.appendInRuns(points); }), size.inRuns);
        add("the same, then bounds", "ns/point", filling([&](PlotUnderTest& plot) {
                plot.appendInRuns(points);
                plot.findBounds();
            }),
            {});
    }

    void compareMemory()
    {
        ours.startAnew();
        quint32 const columnsBefore = DataArray::getTotalVectorMemoryConsumption();
        Pair const bytes = {bytesToFill(ours, points), bytesToFill(theirs, points)};
        quint32 const columns = DataArray::getTotalVectorMemoryConsumption() - columnsBefore;
        add("memory, x and y", "bytes/point", bytes * (1.0 / size.count), size.bytes);
        columnsCount.append(QString::asprintf("%s %.2f at %s", columnsCount.isEmpty() ? "" : ",",
                                              double(columns) / size.count, size.name));
    }

    void compareRedraws()
    {
        add("full redraw, view changed", "ms",
            mediansOf(size.redraws, ours, theirs,
                      [&](PlotUnderTest& plot, int step) {
                          return msToShow(plot, viewOfAll(points, step));
                      }),
            size.fullRedraw);
        add("redraw of a 1 % view", "ms",
            mediansOf(size.redraws, ours, theirs,
                      [&](PlotUnderTest& plot, int step) {
                          return msToShow(plot, viewOfOnePercent(points, step));
                      }),
            size.onePercent);
    }

    /// New points come at the distance of the others, into the room that the view has for them.
    void compareLive()
    {
        ours.show(viewOfAll(points, 0));
        theirs.show(viewOfAll(points, 0));
        QVector<double> const& newYs = points.runs.last().ys;
        auto const appendAndShow = [&](PlotUnderTest& plot, int step) {
            return secondsOf([&] {
                for (int i = 0; i < appendedAtOnce; ++i)
                    plot.append(size.count + step * appendedAtOnce + i, newYs.at(i));
                plot.showAppended();
            });
        };
        add("append 10 and show", "ms",
            mediansOf(size.redraws, ours, theirs, appendAndShow) * msPerSecond, size.appendTen);
    }

    void add(char const* work, char const* unit, Pair figures, std::optional<double> limit)
    {
        table.add({work, size.name, figures, unit, limit});
    }

    Size const& size;
    Points points;
    OurPlot& ours;
    TheirPlot& theirs;
    Table& table;
    QString& columnsCount;
};

void compareMarks(OurPlot& ours, TheirPlot& theirs, Table& table)
{
    Points const points = noisyWalk(pointsOfSeries);
    using Marks = PlotUnderTest::Marks;
    for (Marks const marks : {Marks::Crosses, Marks::Circles}) {
        for (PlotUnderTest* const plot :
             {static_cast<PlotUnderTest*>(&ours), static_cast<PlotUnderTest*>(&theirs)}) {
            plot->startAnew();
            plot->setMarks(marks);
            plot->appendInRuns(points);
        }
        Pair const figures
            = mediansOf(ownRepetitions, ours, theirs, [&](PlotUnderTest& plot, int step) {
                  return msToShow(plot, viewOfAll(points, step));
              });
        table.add({marks == Marks::Crosses ? "crosses in view" : "circles in view", "1e5", figures,
                   "ms", floorOfMarks});
    }
}

/// Two of our own plots in turns, the second the yardstick.
void compareOwn(Table& table)
{
    OurPlot plot;
    OurPlot yardstick;
    auto const measure = [&](char const* work, char const* size, Points const& shown,
                             Points const& shownByYardstick, double limit) {
        auto const msToShowAll = [&](PlotUnderTest& measured, int step) {
            bool const isYardstick = &measured == &yardstick;
            return msToShow(measured, viewOfAll(isYardstick ? shownByYardstick : shown, step));
        };
        Pair const figures = mediansOf(ownRepetitions, plot, yardstick, msToShowAll);
        table.add({work, size, figures, "ms", limit});
        plot.startAnew();
        yardstick.startAnew();
    };

    Points const fewest = noisyWalk(std::begin(sizes)->count);
    Points const most = noisyWalk(std::rbegin(sizes)->count);
    plot.appendInRuns(most);
    yardstick.appendInRuns(fewest);
    measure("full redraw at 1e7 points over 1e4", "", most, fewest, floorOfSizes);

    Points const points = noisyWalk(pointsOfSeries);
    plot.appendInRuns(points);
    plot.setLineThickness(3);
    yardstick.appendInRuns(points);
    measure("pen of 3 pixels over a pen of 1", "1e5", points, points, floorOfPens);

    Points const withHoles = noisyWalk(pointsOfSeries, holeEvery);
    yardstick.appendInRuns(withHoles);
    plot.appendInRuns(withHoles);
    for (int i = 1; i < seriesCount; ++i) {
        plot.addSeries();
        plot.appendInRuns(withHoles);
    }
    measure("40 data sets with holes over one", "1e5", withHoles, withHoles, seriesCount);
}

bool savePictures(OurPlot& ours, TheirPlot& theirs, QString const& folder)
{
    Points const points = noisyWalk(pointsOfSeries);
    bool saved = true;
    for (PlotUnderTest* const plot :
         {static_cast<PlotUnderTest*>(&ours), static_cast<PlotUnderTest*>(&theirs)}) {
        plot->startAnew();
        plot->appendInRuns(points);
        plot->show(viewOfAll(points, 0));
        saved = plot->savePicture(folder + (plot == &ours ? "/ours.png" : "/theirs.png")) && saved;
    }
    return saved;
}

void printConditions(OurPlot const& ours, TheirPlot const& theirs)
{
    QRect const our = ours.dataRect();
    QRect const their = theirs.dataRect();
    std::printf("Qt %s, platform %s, window %d x %d; data area ours %d x %d, theirs %d x %d.\n",
                qVersion(), qPrintable(QGuiApplication::platformName()), plotSize.width(),
                plotSize.height(), our.width(), our.height(), their.width(), their.height());
    std::puts(
        "Not equal: our background has no transparency, each layer of theirs has; fonts,\n"
        "ticks and labels are each one's own; ours has scroll bars beside the data;\n"
        "ours joins points at whole pixels, theirs at fractions of them; our columns count sum,\n"
        "extremes and order when somebody asks, which the row \"then bounds\" shows.");
}

} // namespace

int main(int argc, char** argv)
{
    // Both paint into memory, on every machine alike.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication const application(argc, argv);
    QStringList const arguments = QApplication::arguments();

    OurPlot ours;
    TheirPlot theirs(ours.dataRect());
    printConditions(ours, theirs);
    if (arguments.size() == 3 && arguments.at(1) == QStringLiteral("--pictures"))
        return savePictures(ours, theirs, arguments.at(2)) ? 0 : 1;
    bool const cpuTime = arguments.contains(QStringLiteral("--cpu-time"));
    if (cpuTime)
        countCpuTime();
    std::printf("Medians of %s time.\n\n", cpuTime ? "CPU" : "wall clock");

    Table common;
    QString columnsCount;
    for (Size const& size : sizes)
        Comparison(size, ours, theirs, common, columnsCount).run();
    compareMarks(ours, theirs, common);
    common.print("ours", "theirs");
    std::printf("\nBytes per point as our columns count them:%s.\n", qPrintable(columnsCount));

    Table own;
    compareOwn(own);
    std::puts("");
    own.print("this", "over");
    return 0;
}
