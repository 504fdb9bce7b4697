#pragma once

#include "bitdataarray.h"
#include "compresseddataarraytemplate.h"
#include "logreader.h"
#include "xydataset.h"

#include <QColor>
#include <QString>
#include <QVector>
#include <array>
#include <memory>
#include <vector>

/// Data sets of a plot, in drawing order.
using DataSetList = QList<XYDataSet*>;

/**
 * The columns and data sets of a log, filled epoch by epoch.
 *
 * All data sets over time share one x column, so that time is kept once. The fix quality has
 * columns of its own: an epoch that tells none is no point of its bar. Each plot has a bar of its
 * own over them, as what is turned off in its legend concerns that plot alone.
 *
 * What is a status takes little room: the quality is a compressed column, and two bits for each
 * satellite and epoch tell whether it was tracked and used.
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

    // What the plots show, each list with the bar of its plot at the end.

    DataSetList strengths() const; ///< C/N0, one data set for each signal
    DataSetList altitude() const;
    DataSetList satellitesInUse() const;
    /// A row for each satellite without a y axis of its own; empty if the log tells of none.
    DataSetList tracking() const;

    /// "G05 L1: 43 dB-Hz": a point in words, with its unit. Not for each point: it makes a text.
    QString describe(XYDataSet const* dataSet, int index) const;

    /// First and last time of all epochs so far, so that all plots show the same span.
    QVector<double>* timeExtent() { return &m_timeExtent; }

private:
    enum Plot : int { StrengthPlot, AltitudePlot, InUsePlot, PlotCount };
    struct TrackingRow
    {
        Satellite satellite;
        BitDataArray* inUse; // the y column of the data set
        BitDataArray* tracked; // held by its look
        std::unique_ptr<XYDataSet> dataSet;
    };

    std::unique_ptr<XYDataSet> makeDataSet(QString const& name, QColor const& color) const;
    std::unique_ptr<XYDataSet> makeQualityBar() const;
    void giveQualityLook(XYDataSet* bar) const;
    void makeTrackingRows(QVector<Satellite> const& satellites);
    TrackingRow makeTrackingRow(Satellite satellite, QString const& name, double fraction) const;
    void appendTracking(Epoch const& epoch);
    DataSetList withBar(DataSetList dataSets, Plot plot) const;

    QVector<SatelliteSignal> m_keys;
    double m_longestLink; // milliseconds; epochs further apart are not connected
    QVector<double> m_timeExtent;
    DataArray* m_time;
    DataArray* m_qualityTime;
    CompressedDataArrayTemplate<int>* m_quality; // values of FixQuality
    std::vector<std::unique_ptr<XYDataSet>> m_strengths; // in the order of the keys
    std::unique_ptr<XYDataSet> m_altitude;
    std::unique_ptr<XYDataSet> m_inUse;
    std::array<std::unique_ptr<XYDataSet>, PlotCount> m_qualityBars;
    std::vector<TrackingRow> m_trackingRows; // ascending by satellite
};
