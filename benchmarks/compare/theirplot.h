#pragma once

#include "plotundertest.h"
#include <memory>

class QCPGraph;
class QCustomPlot;

/// The peer with its settings as they come, but for the pen, which is ours.
class TheirPlot final : public PlotUnderTest
{
public:
    /// @param data  where the data are to be drawn, pixels of the window
    explicit TheirPlot(QRect data);
    ~TheirPlot() override;

    void startAnew() override;
    void setMarks(Marks marks) override;
    void append(double x, double y) override;
    void appendOneByOne(Points const& points) override;
    void appendInRuns(Points const& points) override;
    View findBounds() override;
    void show(View const& view) override;
    void showAppended() override;
    QRect dataRect() const override;
    bool savePicture(QString const& fileName) override;

private:
    std::unique_ptr<QCustomPlot> plot;
    QCPGraph* graph = nullptr; // the plot's
};
