#pragma once

#include "satellite.h"

#include <QVector>
#include <limits>
#include <optional>

enum class FixQuality { None, Autonomous, Differential, Float, Fixed, DeadReckoning, Other };

/// The C/N0 of one signal of a satellite, in dB-Hz.
struct SignalStrength
{
    SatelliteSignal key;
    double cn0 = 0.0;
};

/// What a receiver told about one moment, put together from all its sentences of that time.
struct Epoch
{
    qint64 time = 0; ///< GNSS time, milliseconds since 1980-01-06 00:00:00
    std::optional<FixQuality> quality; ///< none where the epoch has no GGA
    /// Metres above mean sea level; NaN where it is not told or there is no fix.
    double altitude = std::numeric_limits<double>::quiet_NaN();
    /// NaN where the epoch has neither GSA nor the figure of a GGA.
    double satellitesInUse = std::numeric_limits<double>::quiet_NaN();
    QVector<Satellite> used; ///< ascending; from GSA only
    QVector<SignalStrength> strengths; ///< ascending by key, each key once, only with a C/N0

    /// NaN where the epoch does not tell it: the value to append to the column of @p key.
    double cn0Of(SatelliteSignal key) const;
};
