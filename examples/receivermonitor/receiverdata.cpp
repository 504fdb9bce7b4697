#include "receiverdata.h"

#include "dataarraytemplate.h"
#include "look.h"
#include "trackinglook.h"
#include "valuebasedlook.h"

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
    char const* name;
};

constexpr System systems[] = {
    {Constellation::Gps, 215, "GPS"},       {Constellation::Sbas, 48, "SBAS"},
    {Constellation::Glonass, 2, "GLONASS"}, {Constellation::Galileo, 130, "Galileo"},
    {Constellation::BeiDou, 282, "BeiDou"}, {Constellation::Qzss, 182, "QZSS"},
    {Constellation::NavIc, 24, "NavIC"},    {Constellation::Unknown, 330, "?"},
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
    , m_quality(new CompressedDataArrayTemplate<int>())
{
    for (SatelliteSignal const& key : qAsConst(m_keys))
        m_strengths.push_back(makeDataSet(key.label(), colorOf(key)));
    m_altitude = makeDataSet(tr("Altitude"), QColor(0x1f, 0x4e, 0x9c));
    m_inUse = makeDataSet(tr("Satellites in use"), QColor(0x1f, 0x4e, 0x9c));

    for (auto& bar : m_qualityBars)
        bar = makeQualityBar();
    makeTrackingRows(log.satellites);
}

ReceiverData::~ReceiverData()
{
    // A compressed column does not release its runs when it goes.
    m_quality->reinit();
}

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
    auto bar = std::make_unique<XYDataSet>(m_qualityTime, m_quality, tr("Fix quality"), Qt::black,
                                           SYMBOL_NONE, Qt::SolidLine, barThickness, nullptr);
    bar->setShowInLegendEvenIfEmpty(true);
    giveQualityLook(bar.get());
    return bar;
}

/// A new one for each replay: a look remembers its last appearance, and would not tell it again.
void ReceiverData::giveQualityLook(XYDataSet* bar) const
{
    auto* const look = new ValueBasedLook(bar, Qt::black, SYMBOL_NONE, Qt::SolidLine, barThickness);
    look->setColorBar(barCentre);
    look->setHorizontalDisconnectionThreshold(m_longestLink);
    for (Quality const& row : qualities)
        look->addTableEntry(double(row.quality), QColor::fromRgb(row.color), tr(row.name));
}

/// From top to bottom, with a free row between two systems.
void ReceiverData::makeTrackingRows(QVector<Satellite> const& satellites)
{
    QVector<qsizetype> places;
    for (Satellite const satellite : satellites) {
        bool const isFirst = places.isEmpty();
        bool const beginsSystem
            = !isFirst && satellite.constellation != satellites.at(places.size() - 1).constellation;
        places.append(isFirst ? 0 : places.constLast() + (beginsSystem ? 2 : 1));
    }
    auto const isOfLesserSystem
        = [](Satellite a, Satellite b) { return a.constellation < b.constellation; };
    for (qsizetype i = 0; i < satellites.size(); ++i) {
        Satellite const satellite = satellites.at(i);
        auto const system
            = std::equal_range(satellites.cbegin(), satellites.cend(), satellite, isOfLesserSystem);
        // The scale has no room for all names; in the middle stands that of the system.
        bool const isMiddle
            = satellites.cbegin() + i == system.first + (system.second - system.first - 1) / 2;
        char const* const name = isMiddle ? systemOf(satellite.constellation).name : "";
        double const fraction = (double(places.at(i)) + 0.5) / (double(places.constLast()) + 1.0);
        m_trackingRows.push_back(makeTrackingRow(satellite, QString::fromLatin1(name), fraction));
    }
}

ReceiverData::TrackingRow ReceiverData::makeTrackingRow(Satellite satellite, QString const& name,
                                                        double fraction) const
{
    TrackingRow row{satellite, new BitDataArray, new BitDataArray, nullptr};
    row.dataSet = std::make_unique<XYDataSet>(m_time, row.inUse, name, Qt::black, SYMBOL_NONE,
                                              Qt::SolidLine, 1, nullptr);
    auto* const look
        = new TrackingLook(row.dataSet.get(), row.inUse, row.tracked, colorOf({satellite, 0}));
    look->setHorizontalDisconnectionThreshold(m_longestLink);
    look->setFractionallyFixedPositioned(float(fraction));
    return row;
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
    appendTracking(epoch);
    if (epoch.quality) {
        m_qualityTime->append(time);
        m_quality->appendTyped(int(*epoch.quality));
    }
}

/// One walk over rows and epoch together, as all of it ascends.
void ReceiverData::appendTracking(Epoch const& epoch)
{
    auto used = epoch.used.cbegin();
    auto strength = epoch.strengths.cbegin();
    for (TrackingRow const& row : m_trackingRows) {
        while (used != epoch.used.cend() && *used < row.satellite)
            ++used;
        while (strength != epoch.strengths.cend() && strength->key.satellite < row.satellite)
            ++strength;
        row.tracked->appendBool(strength != epoch.strengths.cend()
                                && strength->key.satellite == row.satellite);
        row.inUse->appendBool(used != epoch.used.cend() && *used == row.satellite);
    }
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
        giveQualityLook(bar.get());
    for (TrackingRow const& row : m_trackingRows) {
        row.tracked->reinit();
        row.inUse->reinit();
    }
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

DataSetList ReceiverData::tracking() const
{
    DataSetList dataSets;
    for (TrackingRow const& row : m_trackingRows)
        dataSets.append(row.dataSet.get());
    return dataSets;
}

QString ReceiverData::describe(XYDataSet const* dataSet, int index) const
{
    double const value = dataSet->yData->getValue(index);
    if (dataSet->yData == m_quality) {
        auto const quality
            = std::find_if(std::begin(qualities), std::end(qualities), [=](Quality const& row) {
                  return row.quality == FixQuality(int(value));
              });
        return tr("%1: %2").arg(dataSet->name, tr(quality->name));
    }
    for (TrackingRow const& row : m_trackingRows) {
        if (row.dataSet.get() != dataSet)
            continue;
        QString const states[]
            = {tr("not tracked"), tr("tracked, not used"), tr("used in the fix")};
        auto const* const look = static_cast<TrackingLook const*>(row.dataSet->getLook());
        return tr("%1: %2").arg(row.satellite.label(), states[look->stateOf(index)]);
    }
    QString const number = QString::number(value);
    if (dataSet == m_inUse.get())
        return tr("%1: %2").arg(dataSet->name, number);
    return tr("%1: %2 %3")
        .arg(dataSet->name, number, dataSet == m_altitude.get() ? tr("m") : tr("dB-Hz"));
}

DataSetList ReceiverData::withBar(DataSetList dataSets, Plot plot) const
{
    dataSets.append(m_qualityBars[plot].get());
    return dataSets;
}
