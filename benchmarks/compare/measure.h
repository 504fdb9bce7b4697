#pragma once

#include <QtGlobal>
#include <vector>

class PlotUnderTest;

/// The same figure of both, in the same unit.
struct Pair
{
    double ours = 0.0;
    double theirs = 0.0;

    double ratio() const { return ours / theirs; }
};

double median(std::vector<double> values);

/// Bytes taken from the heap or mapped, and not given back; touched or not.
qint64 bytesInUse();

/// Counts from now on the time on the processor, for machines that have more to do.
void countCpuTime();
/// Seconds since some moment.
double readClock();

/// Seconds that @p work takes.
template<typename Work> double secondsOf(Work const& work)
{
    double const start = readClock();
    work();
    return readClock() - start;
}

/**
 * Medians of what @p measure(plot, step) gives for two plots, taken in turns, so that whatever else
 * the machine does hits both. A first turn, in which caches fill, does not count.
 */
template<typename Plot, typename OtherPlot, typename Measure>
Pair mediansOf(int repetitions, Plot& ours, OtherPlot& theirs, Measure const& measure)
{
    std::vector<double> ourFigures;
    std::vector<double> theirFigures;
    for (int step = 0; step <= repetitions; ++step) {
        double const our = measure(ours, step);
        double const their = measure(theirs, step);
        if (step > 0) {
            ourFigures.push_back(our);
            theirFigures.push_back(their);
        }
    }
    return {median(ourFigures), median(theirFigures)};
}
