#include "satellite.h"

namespace {

struct TalkerSystem
{
    QByteArrayView talker;
    Constellation system;
};

constexpr TalkerSystem talkers[] = {
    {"GP", Constellation::Gps},    {"GL", Constellation::Glonass}, {"GA", Constellation::Galileo},
    {"GB", Constellation::BeiDou}, {"BD", Constellation::BeiDou},  {"GQ", Constellation::Qzss},
    {"QZ", Constellation::Qzss},   {"GI", Constellation::NavIc},
};

struct NumberRange
{
    int first;
    int last;
    Constellation system;
    int offset; // what the sentence's number has over the satellite's own
};

/// In sentences of GPS and of no certain system, where every system has a range of its own.
constexpr NumberRange commonRanges[] = {
    {1, 32, Constellation::Gps, 0},          {33, 64, Constellation::Sbas, 13},
    {65, 99, Constellation::Glonass, 64},    {120, 158, Constellation::Sbas, 100},
    {193, 200, Constellation::Qzss, 192},    {201, 263, Constellation::BeiDou, 200},
    {301, 336, Constellation::Galileo, 300}, {401, 463, Constellation::BeiDou, 400},
};

/// In sentences of the other systems: numbers that are not simply the satellite's own.
constexpr NumberRange glonassRanges[] = {
    {33, 64, Constellation::Sbas, 13},
    {65, 99, Constellation::Glonass, 64},
};
constexpr NumberRange galileoRanges[] = {{301, 336, Constellation::Galileo, 300}};
constexpr NumberRange beiDouRanges[] = {
    {201, 263, Constellation::BeiDou, 200},
    {401, 463, Constellation::BeiDou, 400},
};
constexpr NumberRange qzssRanges[] = {{193, 202, Constellation::Qzss, 192}};

template<size_t Count>
Satellite lookUp(NumberRange const (&ranges)[Count], Constellation system, int number)
{
    for (NumberRange const& range : ranges) {
        if (number >= range.first && number <= range.last)
            return {range.system, static_cast<quint16>(number - range.offset)};
    }
    return {system, static_cast<quint16>(number)};
}

constexpr char const* systemLetters[] = {"G", "S", "R", "E", "C", "J", "I", "?"};

/// Names by signal id; an id beyond the list, or without a name in it, is shown as a number.
constexpr char const* gpsSignals[]
    = {"", "L1", "L1P", "L1M", "L2P", "L2CM", "L2CL", "L5I", "L5Q", "L1C"};
constexpr char const* glonassSignals[] = {"", "L1", "L1P", "L2", "L2P"};
constexpr char const* galileoSignals[] = {"", "E5a", "E5b", "E5", "E6A", "E6", "E1A", "E1"};
constexpr char const* beiDouSignals[]
    = {"", "B1I", "B1Q", "B1C", "B1A", "B2a", "B2b", "B2", "B3I", "B3Q", "B3A", "B2I", "B2Q"};
constexpr char const* qzssSignals[]
    = {"", "L1", "L1CD", "L1CP", "L1S", "L2CM", "L2CL", "L5I", "L5Q", "L6D", "L6E"};
constexpr char const* navIcSignals[] = {"", "L5", "S", "L5RS", "SRS", "L1"};

template<size_t Count> QString nameIn(char const* const (&names)[Count], quint8 signal)
{
    if (signal < Count)
        return QString::fromLatin1(names[signal]);
    return QStringLiteral("#%1").arg(signal);
}

QString signalName(Constellation system, quint8 signal)
{
    switch (system) {
    case Constellation::Gps:
    case Constellation::Sbas:
        return nameIn(gpsSignals, signal);
    case Constellation::Glonass:
        return nameIn(glonassSignals, signal);
    case Constellation::Galileo:
        return nameIn(galileoSignals, signal);
    case Constellation::BeiDou:
        return nameIn(beiDouSignals, signal);
    case Constellation::Qzss:
        return nameIn(qzssSignals, signal);
    case Constellation::NavIc:
        return nameIn(navIcSignals, signal);
    case Constellation::Unknown:
        break;
    }
    return signal == 0 ? QString() : QStringLiteral("#%1").arg(signal);
}

} // namespace

QString Satellite::label() const
{
    return QLatin1String(systemLetters[static_cast<int>(constellation)])
        + QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

QString SatelliteSignal::label() const
{
    QString const name = satellite.label();
    QString const signalPart = signalName(satellite.constellation, signal);
    return signalPart.isEmpty() ? name : name + QLatin1Char(' ') + signalPart;
}

Constellation constellationOfTalker(QByteArrayView talker)
{
    for (TalkerSystem const& entry : talkers) {
        if (entry.talker == talker)
            return entry.system;
    }
    return Constellation::Unknown;
}

Constellation constellationOfSystemId(QByteArrayView systemId)
{
    static constexpr Constellation systems[]
        = {Constellation::Gps,    Constellation::Glonass, Constellation::Galileo,
           Constellation::BeiDou, Constellation::Qzss,    Constellation::NavIc};
    if (systemId.size() != 1 || systemId.front() < '1' || systemId.front() > '6')
        return Constellation::Unknown;
    return systems[systemId.front() - '1'];
}

std::optional<Satellite> satelliteOf(Constellation system, int number)
{
    if (number < 1 || number > 999)
        return std::nullopt;
    switch (system) {
    case Constellation::Glonass:
        return lookUp(glonassRanges, system, number);
    case Constellation::Galileo:
        return lookUp(galileoRanges, system, number);
    case Constellation::BeiDou:
        return lookUp(beiDouRanges, system, number);
    case Constellation::Qzss:
        return lookUp(qzssRanges, system, number);
    case Constellation::NavIc:
    case Constellation::Sbas:
        return Satellite{system, static_cast<quint16>(number)};
    case Constellation::Gps:
    case Constellation::Unknown:
        break;
    }
    return lookUp(commonRanges, system, number);
}
