#include "epoch.h"

#include <algorithm>

double Epoch::cn0Of(SatelliteSignal key) const
{
    auto const found = std::lower_bound(
        strengths.cbegin(), strengths.cend(), key,
        [](SignalStrength const& a, SatelliteSignal const& b) { return a.key < b; });
    if (found == strengths.cend() || !(found->key == key))
        return std::numeric_limits<double>::quiet_NaN();
    return found->cn0;
}
