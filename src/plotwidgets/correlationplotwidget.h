#pragma once

#include "toolbarplotwidget.h"
#include "zelplot_export.h"

class XYDataSet;

/**
 * A correlation curve: normalised amplitude in percent, -150 to 150, over lag in chips, -1.5 to
 * 1.5, with a vertical marker, as for the prompt correlator.
 *
 * Besides the signals of ToolBarPlotWidget the parent may have connectFirstLast(bool).
 */
class ZELPLOT_EXPORT CorrelationPlotWidget : public ToolBarPlotWidget
{
    Q_OBJECT
public:
    /// The data sets stay the caller's and must outlive the widget.
    CorrelationPlotWidget(XYDataSet* first, XYDataSet* second, QWidget* parent);
    ~CorrelationPlotWidget() override;

    /// Puts the marker at a lag of @p value chips and redraws.
    void updatePlot(double value);

Q_SIGNALS:
    void showFullPlot();

protected:
    void setXYPlot() override;

private:
    XYPlot* plot;
};
