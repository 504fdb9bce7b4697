#pragma once

#include "logreader.h"
#include "xydataset.h"

#include <QColor>
#include <QString>
#include <QVector>
#include <memory>
#include <vector>

/// Data sets of a plot, in drawing order.
using DataSetList = QList<XYDataSet*>;

/// One colour of the picture and what it means.
struct ColorName
{
    QColor color;
    QString name;
};

/**
 * The columns and data sets of a log, filled epoch by epoch.
 *
 * All data sets over time share one x column, so that time is kept once. The fix quality has
 * columns of its own: an epoch that tells none is no point of its bar.
 */
class ReceiverData
{
    Q_DECLARE_TR_FUNCTIONS(ReceiverData)
public:
    /// Makes the data sets that @p log will fill; all are empty.
    explicit ReceiverData(ReceiverLog const& log);
    ReceiverData(ReceiverData const&) = delete;
    ReceiverData& operator=(ReceiverData const&) = delete;
    ~ReceiverData();

    void append(Epoch const& epoch);
    /// Empties all columns, for a replay from the start.
    void clear();

    DataSetList strengths() const; ///< C/N0, one data set for each signal
    DataSetList altitude() const { return {m_altitude.get()}; }
    DataSetList satellitesInUse() const { return {m_inUse.get()}; }
    DataSetList quality() const { return {m_quality.get()}; } ///< a colour bar

    /// First and last time of all epochs so far, so that all plots show the same span.
    QVector<double>* timeExtent() { return &m_timeExtent; }

    /// Colours of the systems in the log.
    QVector<ColorName> systemColors() const;
    /// Colours of all fix qualities.
    static QVector<ColorName> qualityColors();

private:
    std::unique_ptr<XYDataSet> makeDataSet(QString const& name, QColor const& color) const;

    QVector<SatelliteSignal> m_keys;
    double m_longestLink; // milliseconds; epochs further apart are not connected
    QVector<double> m_timeExtent;
    DataArray* m_time;
    DataArray* m_qualityTime;
    std::vector<std::unique_ptr<XYDataSet>> m_strengths; // in the order of the keys
    std::unique_ptr<XYDataSet> m_altitude;
    std::unique_ptr<XYDataSet> m_inUse;
    std::unique_ptr<XYDataSet> m_quality;
    std::optional<FixQuality> m_lastQuality;
};
