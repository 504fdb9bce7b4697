#include "look.h"
#include "xydataset.h"
#include "xylegend.h"
#include "xyplot.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

XYLegend* XYPlot::getLegend() const
{
    return legend;
}

void XYPlot::addLegend(bool checkable, E_LEGEND_POSITION position, QMenu* menu)
{
    if (legend) {
        legend->update();
    } else {
        legend = new XYLegend(dataSets.get(), checkable, position, menu, minimumSize().height(),
                              nullptr);
        if (hasVisibleColorBar())
            legend->setTitle(tr("Datasets"));
        placeLegend(position);
        connect(legend, &XYLegend::dataSetVisibilityChanged, this,
                &XYPlot::redrawCanvasWithoutInterruption);
        setLegendVisible(legendVisible);
    }
    // Who hears of the update may have removed the legend.
    if (legend)
        connectLegend();
}

bool XYPlot::hasVisibleColorBar() const
{
    return std::any_of(dataSets->cbegin(), dataSets->cend(), [](XYDataSet* dataSet) {
        return dataSet->visible && dataSet->getLook()->isColorBar();
    });
}

void XYPlot::placeLegend(E_LEGEND_POSITION position)
{
    legendPosition = position;
    if (parentLayoutForLegend)
        parentLayoutForLegend->addWidget(legend);
    else if (position == eLEGEND_RIGHT)
        rowLayout->addWidget(legend);
    else if (position == eLEGEND_BOTTOM)
        mainLayout->addWidget(legend);
}

/// So that each data set is connected exactly once.
void XYPlot::connectLegend()
{
    for (XYDataSet const* const dataSet : qAsConst(*dataSets)) {
        for (auto const signal :
             {&XYDataSet::lastAppearanceChanged, &XYDataSet::yDataNoLongerEmpty}) {
            disconnect(dataSet, signal, legend, &XYLegend::updateLater);
            connect(dataSet, signal, legend, &XYLegend::updateLater);
        }
    }
}

void XYPlot::removeLegend()
{
    if (!legend)
        return;
    disconnect(legend, &XYLegend::dataSetVisibilityChanged, this,
               &XYPlot::redrawCanvasWithoutInterruption);
    if (legendPosition == eLEGEND_RIGHT)
        rowLayout->removeWidget(legend);
    else if (legendPosition == eLEGEND_BOTTOM)
        mainLayout->removeWidget(legend);
    legend->retire();
    legend = nullptr;
}

void XYPlot::setParentLayoutForLegend(QLayout* layout)
{
    parentLayoutForLegend = layout;
}

void XYPlot::setLegendVisible(bool flag)
{
    legendVisible = flag;
    if (!legend)
        return;
    // Without a place it would come up as a window of its own; it shows once it gets one.
    if (flag && !legend->parentWidget())
        legend->setAttribute(Qt::WA_WState_ExplicitShowHide, false);
    else
        legend->setVisible(flag);
}
