#include "lookpen.h"

#include "look.h"
#include "xyplotcommon.h"

LookPen lookPen(Look& look, int index, int lineIndex)
{
    Qt::PenStyle const style = look.getPenStyle(index);
    if (style == Qt::NoPen) {
        qreal const width = qMax(look.getLineThickness(index), 0);
        return {QPen(look.getColor(index), width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin),
                false};
    }
    PlotRenderSettings_t const& settings = getPlotRenderSettings();
    bool const bar = look.isColorBar();
    // Multiplied as real numbers: a thickness times a factor may leave an int.
    qreal const width = qreal(qMax(look.getLineThickness(index), 1))
        * (bar ? settings.barThicknessFactor : settings.lineThicknessFactor);
    return {QPen(look.getMultiLineColor(index, lineIndex), qMax(width, 0.0), style,
                 bar ? Qt::FlatCap : Qt::SquareCap, Qt::BevelJoin),
            true};
}
