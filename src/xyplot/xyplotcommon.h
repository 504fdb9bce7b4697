#pragma once

#include "zelplot_export.h"
#include <QFont>
#include <QStack>

/**
 * Fonts, pen widths and tick lengths with which everything is drawn, in pixels.
 *
 * All drawing code asks getPlotRenderSettings() instead of using constants, so that the same code
 * serves the screen and a picture with other fonts and line widths.
 */
struct ZELPLOT_EXPORT PlotRenderSettings_t
{
    QFont axisTitleFont; ///< titles of the axes
    QFont scaleFont; ///< tick labels
    QFont fixedLabelFont; ///< labels at fixed positions of a scale
    QFont legendTitleFont; ///< title of a rendered legend
    QFont plotTitleFont; ///< title of a rendered plot
    int gridPenWidth = 1; ///< grid lines and major ticks
    int minorPenWidth = 1; ///< minor ticks
    int majorTickLength = 8; ///< five quarters of it is the strip that a scale keeps for its ticks
    int minorTickLength = 4;
    int lineThicknessFactor = 1; ///< multiplies the thickness of lines other than colour bars
    int barThicknessFactor = 1; ///< multiplies the thickness of colour bars and pixel offsets
    int legendSymbolWidth = 14;
    int legendSymbolGap = 5; ///< between symbol and text of a legend line

    ~PlotRenderSettings_t();
    PlotRenderSettings_t();
    PlotRenderSettings_t(PlotRenderSettings_t const&);
    PlotRenderSettings_t(PlotRenderSettings_t&&) noexcept;
    PlotRenderSettings_t& operator=(PlotRenderSettings_t const&);
    PlotRenderSettings_t& operator=(PlotRenderSettings_t&&) noexcept;
};

/// Settings in force, the innermost on top; empty until the first reader comes.
ZELPLOT_EXPORT extern QStack<PlotRenderSettings_t> plotRenderSettings;

/// The settings of the screen, made anew from the application's present font.
ZELPLOT_EXPORT PlotRenderSettings_t getDefaultPlotRenderSettings();

/// The settings in force. Fills the stack with the defaults if it is empty.
ZELPLOT_EXPORT PlotRenderSettings_t& getPlotRenderSettings();
