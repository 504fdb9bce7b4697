#pragma once

#include <QVector>

/// Points in runs, as a driver hands them over; x counts them from 0.
struct Points
{
    static constexpr int runLength = 1000;

    struct Run
    {
        QVector<double> xs;
        QVector<double> ys;
    };

    QVector<Run> runs; ///< each but the last of runLength points
    int count = 0;
    double lowest = 0.0; ///< in y
    double highest = 0.0;
};

/// A random walk with noise. Each @p holeEvery-th y is NaN; 0 for none.
Points noisyWalk(int count, int holeEvery = 0);

/// The part of a data plane that is shown.
struct View
{
    double minX;
    double maxX;
    double minY;
    double maxY;
};

/// All of @p points, with room for those appended later; moved by a pixel or so with each @p step.
View viewOfAll(Points const& points, int step);
/// A hundredth of them.
View viewOfOnePercent(Points const& points, int step);
