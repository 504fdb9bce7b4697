#pragma once

#include "epoch.h"
#include "nmeasentence.h"

#include <QDate>
#include <QHash>

/// How UTC times of day become GNSS time.
struct Placement
{
    int leapSeconds = 18; ///< GNSS time less UTC
    QDate date; ///< day of the first epoch, for a log that never tells; may be invalid
};

/// What became of everything that is in no epoch.
struct EpochCounts
{
    qint64 beforeFirstTime = 0; ///< epochs without a time of day, before the log told one
    qint64 withoutTime = 0; ///< such epochs later on
    qint64 backInTime = 0; ///< epochs not later than one before them
    qint64 cn0WithoutNumber = 0;
};

/// An epoch under construction, and what tells whether a sentence still belongs to it.
struct EpochDraft
{
    Epoch epoch;
    std::optional<qint64> timeOfDay; // milliseconds, UTC
    std::optional<qint64> day; // since 1980-01-06, UTC
    std::optional<int> inUseByGga;
    bool hasGga = false;
    bool hasRmc = false;
    bool inGsaRun = false;
    int gsaRun = 0;
    QHash<quint32, int> gsaRuns; // talker and system -> run in which it came last
    QHash<quint32, int> gsvParts; // talker and signal -> number of its last sentence

    bool hasSatellites() const { return !gsaRuns.isEmpty() || !gsvParts.isEmpty(); }
    /// True if @p sentence, a GSA or GSV, has had its turn, so that it is of another cycle.
    bool beginsAnew(NmeaSentence const& sentence) const;
    /// Takes over the satellites of @p later.
    void absorb(EpochDraft const& later);
};

/**
 * Puts sentences together to epochs and gives these their place in GNSS time.
 *
 * GGA and RMC of equal time belong together, and so does what stands between them. GSA and GSV tell
 * no time: they belong to the epoch that is open, up to the point where one of them comes round
 * again. Then a new cycle has begun, perhaps one whose GGA and RMC are damaged, and the satellites
 * wait for a time. They get the next one if an epoch that RMC or GGA ended has shown that this
 * receiver sends the time behind its satellites; if not, their time is lost.
 *
 * A log that begins with satellites comes from a receiver that sends all time behind them, or it is
 * cut. The first satellites behind a time tell: if they have been among those in front of it, these
 * were a whole cycle, and from then on satellites behind a time wait for the next.
 *
 * Only RMC knows the date. Epochs without it take the date of their predecessor and pass midnight
 * on their own; those before the first date wait for it.
 */
class EpochAssembler
{
public:
    explicit EpochAssembler(Placement const& placement);

    /// Takes the next sentence of the log; one of kind Other is passed over.
    void add(NmeaSentence const& sentence);

    /// Tells that a line had to be refused here, so that a log that begins with one is known as
    /// cut.
    void lineRefused();

    /// Ends the log: closes the open epoch and places those that still wait for a date.
    void finish();

    /// The epochs that are ready, of strictly ascending time over all calls; none are kept.
    QVector<Epoch> takeEpochs();

    EpochCounts const& counts() const { return m_counts; }

    /// False as long as no sentence has told a date.
    bool isDateKnown() const { return m_dateKnown; }

private:
    void addTimed(NmeaSentence const& sentence);
    void addSatellites(NmeaSentence const& sentence);
    void settleLead(NmeaSentence const& next);
    void readGga(EpochDraft& draft, NmeaSentence const& sentence);
    void readGsa(EpochDraft& draft, NmeaSentence const& sentence);
    void readGsv(EpochDraft& draft, NmeaSentence const& sentence);
    void closeCurrent();
    void close(std::optional<EpochDraft>& draft);
    void place(Epoch&& epoch, qint64 timeOfDay, std::optional<qint64> toldDay);
    void releaseWaiting(qint64 days);
    void append(Epoch&& epoch);

    Placement m_placement;
    EpochCounts m_counts;
    std::optional<EpochDraft> m_current; // what the next sentence of equal time joins
    std::optional<EpochDraft> m_loose; // satellites behind it that may be of another time
    std::optional<EpochDraft> m_lead; // satellites in front of the first time, until settled
    bool m_begun = false;
    NmeaSentence::Kind m_opener = NmeaSentence::Kind::Other; // the first of GGA and RMC in the log
    bool m_timeFollowsSatellites = false;
    bool m_timeEndsEpochs = false; // no satellites stand behind it

    std::optional<qint64> m_lastTimeOfDay;
    qint64 m_lastDay = 0; // since 1980-01-06, or since the first day of the log if no date is known
    bool m_dateKnown = false;
    QVector<Epoch> m_waiting; // for the date; their times count from the log's first day
    std::optional<qint64> m_lastTime;
    QVector<Epoch> m_ready;
};
