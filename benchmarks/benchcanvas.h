#pragma once

#include "lineargrid.h"
#include "look.h"
#include "xycanvas.h"
#include "xydataset.h"
#include <QImage>
#include <random>

/// A random walk with noise on every point, the shape of most receiver data.
class NoisyWalk
{
public:
    double next();

private:
    std::mt19937 generator{20260207};
    std::normal_distribution<double> step{0.0, 0.02};
    std::normal_distribution<double> noise{0.0, 0.5};
    double level = 0.0;
};

/**
 * A canvas of 1000 by 600 with grids and one data set of sorted points, painted into an image.
 *
 * The points fill x from 0 to dataExtent; the view leaves room for appended ones.
 */
class BenchCanvas
{
public:
    static constexpr double dataExtent = 1e6;
    static constexpr double roomFactor = 1.25;

    explicit BenchCanvas(int points);

    /// A colour bar at the upper edge, of so many states over the points.
    void addColorBar(int states);
    /// Goes the road of an application: append, bounds, new points.
    void appendAndDraw(int points);
    /// Paints the canvas, which draws everything anew if that is due.
    void paint();

    XYCanvas& getCanvas() { return canvas; }
    Look& getLook() { return *dataSet.getLook(); }

private:
    QList<XYDataSet*> dataSets;
    QList<Marker_t*> markers;
    QList<EllipseMarker_t*> ellipses;
    QList<CrossMarker_t*> crosses;
    XYCanvas canvas;
    LinearGrid xGrid;
    LinearGrid yGrid;
    XYDataSet dataSet;
    XYDataSet colorBar;
    NoisyWalk walk;
    QImage image;
    double lastX = 0.0;
};
