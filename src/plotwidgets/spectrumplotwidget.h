#pragma once

#include "toolbarplotwidget.h"
#include "zelplot_export.h"

class XYDataSet;

/// A power spectrum: power in dB over frequency in MHz, with a vertical marker.
class ZELPLOT_EXPORT SpectrumPlotWidget : public ToolBarPlotWidget
{
    Q_OBJECT
public:
    explicit SpectrumPlotWidget(QWidget* parent);
    ~SpectrumPlotWidget() override;

    /// Puts the marker at @p value MHz and redraws.
    void updatePlot(double value);
    /**
     * Adds a data set and makes the corners given, x before y and the lower before the upper, the
     * bounds of the plot in place of the present ones. The data set stays the caller's and must
     * outlive the widget.
     */
    void addDataSet(XYDataSet* dataSet, unsigned int minX, unsigned int minY, unsigned int maxX,
                    unsigned int maxY);
    /// As that of XYPlot, whose sense of the orientation it has.
    void setAxisTitle(E_ORIENTATION_TYPE orientation, QString title);

Q_SIGNALS:
    void showFullPlot();

protected:
    void setXYPlot() override;

private:
    XYPlot* plot;
};
