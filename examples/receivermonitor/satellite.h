#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>
#include <tuple>

/// In the order in which the monitor lists them.
enum class Constellation : quint8 { Gps, Sbas, Glonass, Galileo, BeiDou, Qzss, NavIc, Unknown };

/// A satellite by the number that its own system gives it (PRN or slot; SBAS: PRN less 100).
struct Satellite
{
    Constellation constellation = Constellation::Unknown;
    quint16 number = 0;

    /// "G05".
    QString label() const;

    friend bool operator==(Satellite a, Satellite b)
    {
        return a.constellation == b.constellation && a.number == b.number;
    }
    friend bool operator<(Satellite a, Satellite b)
    {
        return std::tie(a.constellation, a.number) < std::tie(b.constellation, b.number);
    }
};

/// One signal of a satellite, which is what a receiver measures: the key of a column of C/N0.
struct SatelliteSignal
{
    Satellite satellite;
    quint8 signal = 0; ///< signal id of NMEA 4.11, 0 to 15; 0: not told, or all signals together

    /// "G05 L1": satellite and signal; the satellite alone where no signal is told.
    QString label() const;

    friend bool operator==(SatelliteSignal a, SatelliteSignal b)
    {
        return a.satellite == b.satellite && a.signal == b.signal;
    }
    friend bool operator<(SatelliteSignal a, SatelliteSignal b)
    {
        return std::tie(a.satellite, a.signal) < std::tie(b.satellite, b.signal);
    }
};

/// The one system that @p talker speaks for; Unknown for GN and for talkers that are no receivers.
Constellation constellationOfTalker(QByteArrayView talker);

/// The system with this system id of NMEA 4.11 ("1" GPS to "6" NavIC); Unknown for any other text.
Constellation constellationOfSystemId(QByteArrayView systemId);

/**
 * The satellite that goes by @p number in a sentence of @p system.
 *
 * Receivers number satellites of other systems in ranges of their own: a GPS sentence may well hold
 * SBAS or GLONASS. Those ranges decide alone where the system is Unknown. A number outside all of
 * them is taken as it stands.
 *
 * @return none unless the number is 1 to 999
 */
std::optional<Satellite> satelliteOf(Constellation system, int number);
