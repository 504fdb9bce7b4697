#include "receiverdata.h"

#include "dataarraytemplate.h"
#include "look.h"

#include <algorithm>

namespace {

/// Missing epochs are not bridged: a line is drawn up to this many intervals of the log.
constexpr double intervalsPerLink = 1.5;

/// Used where a log has no two epochs.
constexpr double usualIntervalMs = 1000.0;

/// The line of a bar, as its legend has it too.
constexpr int barThickness = 12; // pixels
constexpr int barCentre = 9; // pixels below the upper edge of its canvas

struct System
{
    Constellation constellation;
    int hue;
};

constexpr System systems[] = {
    {Constellation::Gps, 215},     {Constellation::Sbas, 48},     {Constellation::Glonass, 2},
    {Constellation::Galileo, 130}, {Constellation::BeiDou, 282},  {Constellation::Qzss, 182},
    {Constellation::NavIc, 24},    {Constellation::Unknown, 330},
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
    , m_quality(new DataArrayTemplate<double>())
{
    for (SatelliteSignal const& key : qAsConst(m_keys))
        m_strengths.push_back(makeDataSet(key.label(), colorOf(key)));
    m_altitude = makeDataSet(tr("Altitude"), QColor(0x1f, 0x4e, 0x9c));
    m_inUse = makeDataSet(tr("Satellites in use"), QColor(0x1f, 0x4e, 0x9c));

    for (auto& bar : m_qualityBars)
        bar = makeQualityBar();
}

ReceiverData::~ReceiverData() = default;

std::unique_ptr<XYDataSet> ReceiverData::makeDataSet(QString const& name, QColor const& color) const
{
    auto dataSet = std::make_unique<XYDataSet>(m_time, new DataArrayTemplate<double>(), name, color,
                                               SYMBOL_NONE, Qt::SolidLine, 1, nullptr);
    dataSet->getLook()->setHorizontalDisconnectionThreshold(m_longestLink);
    // The log tells which satellites come, so the legend need not grow while it is replayed.
    dataSet->setShowInLegendEvenIfEmpty(true);
    return dataSet;
}

std::unique_ptr<XYDataSet> ReceiverData::makeQualityBar() const
{
    auto bar = std::make_unique<XYDataSet>(m_qualityTime, m_quality, tr("Fix quality"),
                                           colorOf(FixQuality::None), SYMBOL_NONE, Qt::SolidLine,
                                           barThickness, nullptr);
    bar->setShowInLegendEvenIfEmpty(true);
    Look* const look = bar->getLook();
    look->setColorBar(barCentre);
    look->setHorizontalDisconnectionThreshold(m_longestLink);
    for (Quality const& row : qualities)
        look->setLegendText(QColor::fromRgb(row.color), tr(row.name));
    return bar;
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
    m_qualityTime->append(time);
    m_quality->append(double(int(*epoch.quality)));
    if (m_lastQuality == epoch.quality)
        return;
    m_lastQuality = epoch.quality;
    // As a whole entry, since a legend does not count a colour that merely is the default.
    Look::Entry const entry{colorOf(*epoch.quality), SYMBOL_NONE, Qt::SolidLine, barThickness};
    for (auto const& bar : m_qualityBars)
        bar->getLook()->changeFromLast(entry);
}

void ReceiverData::clear()
{
    m_timeExtent.clear();
    m_time->reinit();
    m_qualityTime->reinit();
    m_quality->reinit();
    for (auto const& dataSet : m_strengths)
        dataSet->yData->reinit();
    m_altitude->yData->reinit();
    m_inUse->yData->reinit();
    for (auto const& bar : m_qualityBars)
        bar->getLook()->clear();
    m_lastQuality.reset();
}

DataSetList ReceiverData::strengths() const
{
    DataSetList dataSets;
    for (auto const& dataSet : m_strengths)
        dataSets.append(dataSet.get());
    return withBar(dataSets, StrengthPlot);
}

DataSetList ReceiverData::altitude() const
{
    return withBar({m_altitude.get()}, AltitudePlot);
}

DataSetList ReceiverData::satellitesInUse() const
{
    return withBar({m_inUse.get()}, InUsePlot);
}

DataSetList ReceiverData::withBar(DataSetList dataSets, Plot plot) const
{
    dataSets.append(m_qualityBars[plot].get());
    return dataSets;
}
