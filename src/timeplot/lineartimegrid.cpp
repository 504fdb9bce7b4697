#include "lineartimegrid.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"

namespace {
DebugTag debugTag("LinearTimeGrid", "src/timeplot/lineartimegrid");

constexpr quint64 msPerSecond = 1000;
constexpr quint64 msPerWeek = 604800000;
/// Start of GNSS time, in seconds since 1970-01-01.
constexpr quint32 gnssEpoch = 315964800;
constexpr int secondsPerHour = 3600;

/// Whole milliseconds; a negative value becomes a huge one, as modulo and division count it.
quint64 toMilliseconds(double value)
{
    return quint64(roundHalfUp64(value));
}

/// The second in which a value lies, with the seconds of 1970 in 32 bits, which wrap in 2106.
QDateTime toUtcSecond(quint64 ms)
{
    QDateTime second;
    second.setTimeSpec(Qt::UTC);
    second.setSecsSinceEpoch(quint32(ms / msPerSecond) + gnssEpoch);
    return second;
}

/// Decimals of the seconds without trailing zeros.
int decimalsOf(quint64 ms)
{
    if (ms % 1000 == 0)
        return 0;
    if (ms % 100 == 0)
        return 1;
    return ms % 10 == 0 ? 2 : 3;
}

QString timeOfDay(QDateTime const& moment, quint64 ms)
{
    QString text = moment.time().toString(QStringLiteral("H:mm:ss"));
    int const decimals = decimalsOf(ms);
    if (decimals > 0)
        text += QString::number(double(ms % msPerSecond) / 1000.0, 'f', decimals).mid(1);
    return text;
}

QString plainSeconds(quint64 ms)
{
    return QStringLiteral("%L1").arg(double(ms) / 1000.0, 0, 'f', decimalsOf(ms), QLatin1Char(' '));
}
} // namespace

LinearTimeGrid::LinearTimeGrid(short leapSeconds, E_ORIENTATION_TYPE axis, QWidget* parent)
    : LinearGrid(axis, parent)
    , deltaLS(leapSeconds)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("LinearTimeGrid"));
}

LinearTimeGrid::~LinearTimeGrid()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("LinearTimeGrid"));
}

void LinearTimeGrid::changeTimeFormat(ETimeType newTimeType)
{
    timeType = newTimeType;
    update();
}

QDateTime LinearTimeGrid::getDateTime(double value) const
{
    quint64 ms = toMilliseconds(value);
    if (timeType == eSHOW_UTC || timeType == eSHOW_LOCAL) {
        if (deltaLS == unknownDeltaLS)
            return QDateTime();
        // The first seconds of the axis stay uncorrected, since the difference would wrap.
        auto const correction = quint64(qint64(deltaLS) * qint64(msPerSecond));
        if (deltaLS < 0 || ms >= correction)
            ms -= correction;
    }
    QDateTime moment = toUtcSecond(ms);
    if (timeType == eSHOW_LOCAL)
        moment = moment.addSecs(truncateToInt(double(utcOffset) * secondsPerHour));
    return moment.addMSecs(qint64(ms % msPerWeek % msPerSecond));
}

float LinearTimeGrid::getLocalTimeOffsetHours(double value) const
{
    if (utcOffset != unknownUtcOffset)
        return utcOffset;
    QDateTime const utc = toUtcSecond(toMilliseconds(value));
    QDateTime local = utc.toTimeSpec(Qt::LocalTime);
    local.setTimeSpec(Qt::UTC);
    qint64 const wholeHours = utc.secsTo(local) / secondsPerHour;
    return float(wholeHours);
}

QString LinearTimeGrid::getLabel(double value, int /*decimals*/)
{
    QDateTime const moment = getDateTime(value);
    if (!moment.isValid()) {
        QString const prefix = timeType == eSHOW_LOCAL ? QStringLiteral("Local ")
            : timeType == eSHOW_UTC                    ? QStringLiteral("UTC ")
                                                       : QString();
        return prefix + tr("N/A");
    }
    quint64 const ms = toMilliseconds(value);
    switch (timeType) {
    case eSHOW_GNSS:
    case eSHOW_UTC:
    case eSHOW_LOCAL:
        return timeOfDay(moment, ms);
    case eSHOW_TOW:
        return plainSeconds(ms % msPerWeek);
    case eSHOW_SECONDS:
        return plainSeconds(ms);
    case eSHOW_EOL:
        debugTag.assertionFailed(__func__, __LINE__, "eSHOW_EOL should not occur");
        break;
    }
    return QString();
}
