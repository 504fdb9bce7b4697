#pragma once

#include "acquisition.h"
#include "correlator.h"

/**
 * Follows an acquired satellite: a loop of second order holds its carrier, one of first order its
 * code, which the Doppler of the carrier helps along. Needs a signal without navigation data.
 */
class SignalTracker
{
public:
    /// Starts at the first sample that the acquisition has searched.
    explicit SignalTracker(AcquiredSignal const& signal);

    /// Takes up the next samples, whole milliseconds, and corrects the phase by what they tell.
    void track(Samples const& samples);

    int prn() const { return m_prn; }
    /// Where the receiver takes the signal to stand, at the next sample to be tracked.
    SignalPhase const& phase() const { return m_phase; }
    /// The last samples given, correlated coherently; the prompt lag is where phase() had put it.
    Correlator const& correlator() const { return m_correlator; }
    /// Lag at which early and late weigh the same, chips; a mean over the last half second.
    double promptLag() const { return m_promptLag; }
    /// Of the signal, as a mean over the last half second; always more than 0.
    double amplitude() const;
    /// Mean over the last half second, dB-Hz; negative infinity if there is nothing to be found.
    double cn0() const;

private:
    void correctCarrier(Complex prompt);
    void correctCode(std::size_t milliseconds);
    void averagePrompt(Complex prompt);

    int m_prn;
    SignalPhase m_phase;
    Correlator m_correlator;
    double m_promptLag = 0.0;
    double m_promptsAveraged = 0.0;
    double m_meanInPhase = 0.0;
    double m_meanPower = 0.0;
};
