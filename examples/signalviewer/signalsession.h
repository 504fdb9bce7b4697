#pragma once

#include "powerspectrum.h"
#include "signalsimulator.h"
#include "signaltracker.h"
#include "xydataset.h"

#include <QCoreApplication>
#include <memory>
#include <vector>

/**
 * A simulated sky, a receiver that follows it, and the data sets that show one of its satellites.
 *
 * Data sets keep their points from block to block; only the values of these change.
 */
class SignalSession
{
    Q_DECLARE_TR_FUNCTIONS(SignalSession)
public:
    static constexpr int blockMs = 20; ///< is correlated coherently
    /// The frequency at which the carrier stands in the spectra; an axis cannot go below 0.
    static constexpr double intermediateFrequencyMHz = 2.0;
    /// Decibels of the noise in the spectra, for the same reason.
    static constexpr double noiseDb = 40.0;

    /// Acquires all satellites of the first block. @param seed  of the noise
    explicit SignalSession(unsigned seed);

    /// Lets the next block come and follows all satellites.
    void advance();

    qsizetype satelliteCount() const { return qsizetype(m_channels.size()); }
    SignalTracker const& tracker(qsizetype index) const;
    /// Satellite @p index as the simulator has it; null for a false alarm.
    SimulatedSatellite const* simulated(qsizetype index) const;

    /// Shows satellite @p index, 0 to less than satelliteCount(), in the last block.
    void select(qsizetype index);
    qsizetype selected() const { return m_selected; } ///< of no use if there is no satellite
    double seconds() const { return m_seconds; } ///< of signal so far

    // Percent over lag in chips, for the selected satellite.
    XYDataSet* measuredCorrelation() { return &m_measured; }
    XYDataSet* expectedCorrelation() { return &m_expected; } ///< where it was put
    // dB over MHz, for all satellites together.
    XYDataSet* receivedSpectrum() { return &m_received; }
    XYDataSet* satelliteSpectrum() { return &m_satellites; } ///< without the noise

private:
    struct Channel
    {
        SignalTracker tracker;
        double trueLag; // of the satellite at the start of the last block; NaN for a false alarm
    };

    void showCorrelation();
    void showSpectra();

    SignalSimulator m_simulator;
    SignalSimulator::Block m_block;
    std::vector<Channel> m_channels;
    PowerSpectrum m_spectrum;
    qsizetype m_selected = 0;
    double m_seconds = 0.0;
    XYDataSet m_measured;
    XYDataSet m_expected;
    XYDataSet m_received;
    XYDataSet m_satellites;
};
