#include "points.h"

#include "benchcanvas.h"

#include <algorithm>
#include <limits>

namespace {

/// Share of the points by which the full view is longer, and by which each step moves a view.
constexpr double room = 0.05;
constexpr double shift = 0.001;

} // namespace

Points noisyWalk(int count, int holeEvery)
{
    NoisyWalk walk;
    Points points;
    points.count = count;
    for (int first = 0; first < count; first += Points::runLength) {
        Points::Run run;
        for (int i = first; i < std::min(first + Points::runLength, count); ++i) {
            double const y = walk.next();
            points.lowest = std::min(points.lowest, y);
            points.highest = std::max(points.highest, y);
            bool const isHole = holeEvery > 0 && i % holeEvery == holeEvery - 1;
            run.xs.append(i);
            run.ys.append(isHole ? std::numeric_limits<double>::quiet_NaN() : y);
        }
        points.runs.append(run);
    }
    return points;
}

View viewOfAll(Points const& points, int step)
{
    double const offset = (step % 2) * shift * points.count;
    return {-offset, points.count * (1.0 + room) - offset, points.lowest, points.highest};
}

View viewOfOnePercent(Points const& points, int step)
{
    double const from = points.count * (0.5 + (step % 2) * shift * 0.01);
    return {from, from + points.count * 0.01, points.lowest, points.highest};
}
