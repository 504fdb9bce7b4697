#pragma once

#include "plotundertest.h"
#include "xydataset.h"
#include "xyplot.h"
#include <memory>
#include <vector>

class OurPlot final : public PlotUnderTest
{
public:
    OurPlot();
    ~OurPlot() override;

    void startAnew() override;
    void setMarks(Marks marks) override;
    void append(double x, double y) override { dataSets.back()->append(x, y); }
    void appendOneByOne(Points const& points) override;
    void appendInRuns(Points const& points) override;
    View findBounds() override;
    void show(View const& view) override;
    void showAppended() override;
    QRect dataRect() const override;
    bool savePicture(QString const& fileName) override;

    /// One more series, to which points are appended from then on.
    void addSeries();
    void setLineThickness(int pixels);

private:
    XYPlot plot;
    std::vector<std::unique_ptr<XYDataSet>> dataSets;
};
