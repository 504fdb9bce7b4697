#pragma once

#include "points.h"
#include <QRect>
#include <QString>

/// Both widgets, whole, in pixels.
constexpr QSize plotSize(1000, 600);

/// A plot in a window of its own, used as an application would use it.
class PlotUnderTest
{
public:
    enum class Marks { None, Crosses, Circles };
    static constexpr int markSize = 8; ///< pixels across

    PlotUnderTest() = default;
    PlotUnderTest(PlotUnderTest const&) = delete;
    PlotUnderTest& operator=(PlotUnderTest const&) = delete;
    virtual ~PlotUnderTest() = default;

    /// Drops all data; an empty series with a line of 1 pixel, and no marks, remains.
    virtual void startAnew() = 0;
    /// Marks in place of the line.
    virtual void setMarks(Marks marks) = 0;
    virtual void append(double x, double y) = 0;
    virtual void appendOneByOne(Points const& points) = 0;
    virtual void appendInRuns(Points const& points) = 0;
    /// The extremes of x and y, which a first drawing asks for.
    virtual View findBounds() = 0;
    /// Draws everything anew in @p view and puts it into the window.
    virtual void show(View const& view) = 0;
    /// Puts what was appended into the window, in the view as it is.
    virtual void showAppended() = 0;

    /// Where the data are drawn, pixels of the window.
    virtual QRect dataRect() const = 0;
    virtual bool savePicture(QString const& fileName) = 0;
};
