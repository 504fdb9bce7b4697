#include "xyplotcommon.h"

PlotRenderSettings_t::PlotRenderSettings_t() = default;
PlotRenderSettings_t::~PlotRenderSettings_t() = default;
PlotRenderSettings_t::PlotRenderSettings_t(PlotRenderSettings_t const&) = default;
PlotRenderSettings_t::PlotRenderSettings_t(PlotRenderSettings_t&&) noexcept = default;
PlotRenderSettings_t& PlotRenderSettings_t::operator=(PlotRenderSettings_t const&) = default;
PlotRenderSettings_t& PlotRenderSettings_t::operator=(PlotRenderSettings_t&&) noexcept = default;

QStack<PlotRenderSettings_t> plotRenderSettings;

namespace {
constexpr double fixedLabelFontScale = 0.8;
constexpr int titlePointSize = 16;

/// Scales a font by whichever of its two sizes is set: one set in pixels has no point size.
void scaleFontSize(QFont& font, double factor)
{
    if (font.pointSizeF() > 0.0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else if (font.pixelSize() > 0)
        font.setPixelSize(qMax(1, int(font.pixelSize() * factor)));
}
} // namespace

PlotRenderSettings_t getDefaultPlotRenderSettings()
{
    PlotRenderSettings_t settings;
    scaleFontSize(settings.fixedLabelFont, fixedLabelFontScale);
    settings.legendTitleFont.setPointSize(titlePointSize);
    settings.legendTitleFont.setWeight(QFont::Bold);
    settings.legendTitleFont.setUnderline(true);
    settings.plotTitleFont.setPointSize(titlePointSize);
    return settings;
}

PlotRenderSettings_t& getPlotRenderSettings()
{
    if (plotRenderSettings.isEmpty())
        plotRenderSettings.push(getDefaultPlotRenderSettings());
    return plotRenderSettings.top();
}
