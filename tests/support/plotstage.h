#pragma once

#include "dataarraytemplate.h"
#include "lineargrid.h"
#include "xycanvas.h"
#include "xydataset.h"
#include "xyplot.h"

#include <QMouseEvent>
#include <QPushButton>
#include <memory>
#include <vector>

/// Data sets over dense columns, which go with the stage.
class DataSetStage
{
public:
    /// A data set with these y values over 0, 1, 2 and so on.
    XYDataSet* add(QString const& name, QVector<double> const& ys = {1.0}, int thickness = 1)
    {
        owned.push_back(std::make_unique<XYDataSet>(new DataArrayTemplate<double>,
                                                    new DataArrayTemplate<double>, name, Qt::blue,
                                                    SYMBOL_NONE, Qt::SolidLine, thickness));
        for (int i = 0; i < ys.size(); ++i)
            owned.back()->append(i, ys.at(i));
        return owned.back().get();
    }

private:
    std::vector<std::unique_ptr<XYDataSet>> owned;
};

/// A plot with grids and both scales, and what it draws.
class PlotStage : public DataSetStage
{
public:
    explicit PlotStage(bool withScrollBars = true)
        : plot(withScrollBars, true, false, nullptr)
    {
        for (E_ORIENTATION_TYPE const axis : {eHORIZONTAL, eVERTICAL}) {
            plot.getCanvas()->setGrid(axis, new LinearGrid(axis, &plot), false);
            plot.setLabelType(axis, eSCALE_LABELS);
            plot.addScale(axis, true);
        }
    }

    XYPlot* operator->() { return &plot; }

    XYDataSet* addToPlot(QString const& name, QVector<double> const& ys = {1.0}, int thickness = 1)
    {
        XYDataSet* const dataSet = add(name, ys, thickness);
        plot.addDataSet(dataSet);
        return dataSet;
    }

    /// The button whose tool tip begins so.
    QPushButton* button(QString const& toolTip)
    {
        for (auto* const found : plot.findChildren<QPushButton*>()) {
            if (found->toolTip().startsWith(toolTip))
                return found;
        }
        return nullptr;
    }

    XYPlot plot;
};
