#include "receiverdata.h"

#include "dataarraytemplate.h"
#include "look.h"

#include <algorithm>

namespace {

/// Missing epochs are not bridged: a line is drawn up to this many intervals of the log.
constexpr double intervalsPerLink = 1.5;

/// Used where a log has no two epochs.
constexpr double usualIntervalMs = 1000.0;

constexpr int barThickness = 16; // pixels
constexpr int barCentre = 13; // pixels below the upper edge of its canvas

struct System
{
    Constellation constellation;
    char const* name;
    int hue;
};

constexpr System systems[] = {
    {Constellation::Gps, "GPS", 215},       {Constellation::Sbas, "SBAS", 48},
    {Constellation::Glonass, "GLONASS", 2}, {Constellation::Galileo, "Galileo", 130},
    {Constellation::BeiDou, "BeiDou", 282}, {Constellation::Qzss, "QZSS", 182},
    {Constellation::NavIc, "NavIC", 24},    {Constellation::Unknown, "unknown system", 330},
};

struct Quality
{
    FixQuality quality;
    char const* name;
    QRgb color;
};

constexpr Quality qualities[] = {
    {FixQuality::None, QT_TRANSLATE_NOOP("ReceiverData", "none"), 0xffc62828},
    {FixQuality::Autonomous, QT_TRANSLATE_NOOP("ReceiverData", "autonomous"), 0xfff9a825},
    {FixQuality::Differential, QT_TRANSLATE_NOOP("ReceiverData", "differential"), 0xff9ccc65},
    {FixQuality::Float, QT_TRANSLATE_NOOP("ReceiverData", "float"), 0xff29a3e0},
    {FixQuality::Fixed, QT_TRANSLATE_NOOP("ReceiverData", "fixed"), 0xff1b7a2f},
    {FixQuality::DeadReckoning, QT_TRANSLATE_NOOP("ReceiverData", "dead reckoning"), 0xff8e24aa},
    {FixQuality::Other, QT_TRANSLATE_NOOP("ReceiverData", "other"), 0xff616161},
};

QColor colorOf(FixQuality quality)
{
    for (Quality const& row : qualities) {
        if (row.quality == quality)
            return QColor::fromRgb(row.color);
    }
    return Qt::black;
}

System const& systemOf(Constellation constellation)
{
    auto const row = std::find_if(std::begin(systems), std::end(systems) - 1, [=](System const& s) {
        return s.constellation == constellation;
    });
    return *row;
}

/// The colour of its system; neighbouring satellites differ in lightness.
QColor colorOf(SatelliteSignal key)
{
    constexpr int shades = 5;
    int const shade = (key.satellite.number + 2 * key.signal) % shades;
    return QColor::fromHsl(systemOf(key.satellite.constellation).hue, 190, 70 + 18 * shade);
}

/// The usual time between two epochs, milliseconds.
double intervalOf(QVector<Epoch> const& epochs)
{
    QVector<qint64> intervals;
    for (qsizetype i = 1; i < epochs.size(); ++i)
        intervals.append(epochs.at(i).time - epochs.at(i - 1).time);
    if (intervals.isEmpty())
        return usualIntervalMs;
    auto const middle = intervals.begin() + intervals.size() / 2;
    std::nth_element(intervals.begin(), middle, intervals.end());
    return double(*middle);
}

} // namespace

ReceiverData::ReceiverData(ReceiverLog const& log)
    : m_keys(log.keys)
    , m_longestLink(intervalsPerLink * intervalOf(log.epochs))
    , m_time(new DataArrayTemplate<double>())
    , m_qualityTime(new DataArrayTemplate<double>())
{
    for (SatelliteSignal const& key : qAsConst(m_keys))
        m_strengths.push_back(makeDataSet(key.label(), colorOf(key)));
    m_altitude = makeDataSet(tr("Altitude"), QColor(0x1f, 0x4e, 0x9c));
    m_inUse = makeDataSet(tr("Satellites in use"), QColor(0x1f, 0x4e, 0x9c));

    m_quality = std::make_unique<XYDataSet>(m_qualityTime, new DataArrayTemplate<double>(),
                                            tr("Fix quality"), colorOf(FixQuality::None),
                                            SYMBOL_NONE, Qt::SolidLine, barThickness, nullptr);
    m_quality->getLook()->setColorBar(barCentre);
    m_quality->getLook()->setHorizontalDisconnectionThreshold(m_longestLink);
}

ReceiverData::~ReceiverData() = default;

std::unique_ptr<XYDataSet> ReceiverData::makeDataSet(QString const& name, QColor const& color) const
{
    auto dataSet = std::make_unique<XYDataSet>(m_time, new DataArrayTemplate<double>(), name, color,
                                               SYMBOL_NONE, Qt::SolidLine, 1, nullptr);
    dataSet->getLook()->setHorizontalDisconnectionThreshold(m_longestLink);
    return dataSet;
}

void ReceiverData::append(Epoch const& epoch)
{
    auto const time = double(epoch.time);
    m_time->append(time);
    m_timeExtent = {m_timeExtent.value(0, time), time};
    for (qsizetype i = 0; i < m_keys.size(); ++i)
        m_strengths[size_t(i)]->yData->append(epoch.cn0Of(m_keys.at(i)));
    m_altitude->yData->append(epoch.altitude);
    m_inUse->yData->append(epoch.satellitesInUse);

    if (!epoch.quality)
        return;
    m_quality->append(time, double(int(*epoch.quality)));
    if (m_lastQuality != epoch.quality)
        m_quality->getLook()->changeFromLast(colorOf(*epoch.quality));
    m_lastQuality = epoch.quality;
}

void ReceiverData::clear()
{
    m_timeExtent.clear();
    m_time->reinit();
    m_qualityTime->reinit();
    for (auto const& dataSet : m_strengths)
        dataSet->yData->reinit();
    for (XYDataSet const* const dataSet : {m_altitude.get(), m_inUse.get(), m_quality.get()})
        dataSet->yData->reinit();
    m_quality->getLook()->clear();
    m_lastQuality.reset();
}

DataSetList ReceiverData::strengths() const
{
    DataSetList dataSets;
    for (auto const& dataSet : m_strengths)
        dataSets.append(dataSet.get());
    return dataSets;
}

QVector<ColorName> ReceiverData::systemColors() const
{
    QVector<ColorName> colors;
    for (System const& system : systems) {
        bool const present = std::any_of(m_keys.cbegin(), m_keys.cend(), [&](auto const& key) {
            return key.satellite.constellation == system.constellation;
        });
        if (present)
            colors.append({QColor::fromHsl(system.hue, 190, 100), tr(system.name)});
    }
    return colors;
}

QVector<ColorName> ReceiverData::qualityColors()
{
    QVector<ColorName> colors;
    for (Quality const& row : qualities)
        colors.append({QColor::fromRgb(row.color), tr(row.name)});
    return colors;
}
