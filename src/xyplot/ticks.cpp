#include "ticks.h"

#include "rounding.h"

namespace {
/// The range in units of a tenth of its power of ten, 10 to 100, above which a multiplier holds.
struct MultiplierRow
{
    int above;
    double multiplier;
};
constexpr MultiplierRow multiplierTable[] = {{80, 20.0}, {40, 10.0}, {20, 5.0}};
constexpr double smallestMultiplier = 2.0;

double multiplierFor(int tenths)
{
    for (MultiplierRow const& row : multiplierTable) {
        if (tenths > row.above)
            return row.multiplier;
    }
    return smallestMultiplier;
}

/// Decimals kept beyond the leading digit of a step below one while its noise is rounded away.
constexpr double guardDigits = 3.0;

/// Places behind the point down to the leading digit of a value, given its logarithm.
int placesOf(double logarithm)
{
    int const places = truncateToInt(-std::floor(logarithm));
    return places < 0 ? 0 : places;
}
} // namespace

TickSpacing chooseTicks(double low, double range, int extent)
{
    double const pixelsPerUnit = extent / range;
    double const base = std::pow(10.0, std::floor(std::log10(std::fabs(range))) - 1.0);
    double const step = base * pixelsPerUnit * multiplierFor(roundHalfUp(range / base));
    double const lowPixel = low * pixelsPerUnit;
    return {step, std::floor(lowPixel / step) * step - lowPixel};
}

int decimalsOfStep(double dataStep)
{
    if (!(dataStep > 0.0))
        return 0;
    double const logarithm = std::log10(dataStep);
    int const keptPlaces = placesOf(logarithm < 0.0 ? logarithm - guardDigits : logarithm);
    // A step computed from pixels may read 0.199999, whose leading digit is one place too far.
    double const scale = std::pow(10.0, keptPlaces);
    double const cleaned = std::floor(dataStep * scale + 0.5) / scale;
    return placesOf(std::log10(cleaned));
}
