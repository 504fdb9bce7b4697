#include "epochassembler.h"

#include <algorithm>
#include <utility>

namespace {

using Kind = NmeaSentence::Kind;

constexpr qint64 msPerHour = 3600000;
constexpr qint64 msPerDay = 24 * msPerHour;
/// A time of day that falls by more has passed midnight; by less, it has stepped back.
constexpr qint64 midnightFall = 12 * msPerHour;
/// A time of day that rises by more has stepped back over midnight; by less, the log has a gap.
constexpr qint64 midnightRise = 23 * msPerHour;

/// Fields of a GSA that hold satellite numbers.
constexpr int gsaFirstId = 2;
constexpr int gsaLastId = 13;

/// Number of the @p count digits at @p from; -1 if they are not all digits.
int digitsAt(QByteArrayView text, qsizetype from, qsizetype count)
{
    int value = 0;
    for (char const c : text.sliced(from, count)) {
        if (c < '0' || c > '9')
            return -1;
        value = value * 10 + (c - '0');
    }
    return value;
}

/// Milliseconds of "hhmmss" or "hhmmss.s...", finer digits dropped; second 60 is a leap second.
std::optional<qint64> timeOfDayOf(QByteArrayView text)
{
    if (text.size() < 6 || (text.size() > 6 && text[6] != '.'))
        return std::nullopt;
    int const hours = digitsAt(text, 0, 2);
    int const minutes = digitsAt(text, 2, 2);
    int const seconds = digitsAt(text, 4, 2);
    if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 60)
        return std::nullopt;
    int milliseconds = 0;
    int weight = 100;
    for (qsizetype i = 7; i < text.size(); ++i, weight /= 10) {
        int const digit = digitsAt(text, i, 1);
        if (digit < 0)
            return std::nullopt;
        milliseconds += digit * weight;
    }
    return ((hours * 60 + minutes) * 60 + seconds) * qint64(1000) + milliseconds;
}

qint64 daysSinceGnssStart(QDate date)
{
    return QDate(1980, 1, 6).daysTo(date);
}

/// Days since 1980-01-06 of "ddmmyy"; years 80 to 99 belong to the last century.
std::optional<qint64> dayOf(QByteArrayView text)
{
    if (text.size() != 6)
        return std::nullopt;
    int const year = digitsAt(text, 4, 2);
    QDate const date(year < 80 ? 2000 + year : 1900 + year, digitsAt(text, 2, 2),
                     digitsAt(text, 0, 2));
    if (year < 0 || !date.isValid())
        return std::nullopt;
    return daysSinceGnssStart(date);
}

/// Nothing where the field is empty.
std::optional<FixQuality> qualityOf(NmeaSentence const& gga)
{
    constexpr FixQuality qualities[]
        = {FixQuality::None,         FixQuality::Autonomous, FixQuality::Differential,
           FixQuality::Differential, FixQuality::Fixed,      FixQuality::Float,
           FixQuality::DeadReckoning};
    if (gga.field(5).isEmpty())
        return std::nullopt;
    int const told = gga.integer(5).value_or(-1);
    return told >= 0 && told < int(std::size(qualities)) ? qualities[told] : FixQuality::Other;
}

/// Signal id that NMEA 4.11 puts behind the groups of four; 0 in the older, shorter form.
quint8 signalOf(NmeaSentence const& gsv)
{
    if (gsv.fieldCount() < 4 || gsv.fieldCount() % 4 != 0)
        return 0;
    bool isHex = false;
    QByteArrayView const id = gsv.field(gsv.fieldCount() - 1);
    uint const value = id.size() == 1 ? id.toUInt(&isHex, 16) : 0;
    return isHex ? static_cast<quint8>(value) : quint8(0);
}

/// System of the numbers in a GSA: told by the id of NMEA 4.11 or else by the talker.
Constellation systemOf(NmeaSentence const& gsa)
{
    Constellation const told = constellationOfSystemId(gsa.field(17));
    return told != Constellation::Unknown ? told : constellationOfTalker(gsa.talker());
}

/**
 * Of a GSV its talker and signal, of a GSA its talker and system.
 *
 * Where a GSA names no system its first satellite does, since some receivers send the GSV of one
 * system before they go on to the GSA of the next.
 */
quint32 groupOf(NmeaSentence const& sentence)
{
    quint32 detail = 0;
    if (sentence.kind() == Kind::Gsv) {
        detail = signalOf(sentence);
    } else {
        Constellation system = systemOf(sentence);
        if (system == Constellation::Unknown) {
            auto const first = satelliteOf(system, sentence.integer(gsaFirstId).value_or(0));
            system = first ? first->constellation : system;
        }
        detail = static_cast<quint32>(system);
    }
    auto const letter = [&](int i) { return static_cast<unsigned char>(sentence.talker()[i]); };
    return quint32(letter(0)) << 16 | quint32(letter(1)) << 8 | detail;
}

/// Whether the sentence can only be the rest of a cycle.
bool isRemainder(NmeaSentence const& sentence)
{
    return sentence.kind() == Kind::Gsv && sentence.integer(1).value_or(1) > 1;
}

} // namespace

EpochAssembler::EpochAssembler(Placement const& placement)
    : m_placement(placement)
{
}

bool EpochDraft::beginsAnew(NmeaSentence const& sentence) const
{
    quint32 const group = groupOf(sentence);
    if (sentence.kind() == Kind::Gsv) {
        auto const last = gsvParts.constFind(group);
        return last != gsvParts.cend() && sentence.integer(1).value_or(*last + 1) <= *last;
    }
    // GSA of one group follow each other where a system has more satellites than one can hold.
    auto const last = gsaRuns.constFind(group);
    return last != gsaRuns.cend() && !(inGsaRun && *last == gsaRun);
}

void EpochDraft::absorb(EpochDraft const& later)
{
    epoch.strengths += later.epoch.strengths;
    epoch.used += later.epoch.used;
    gsaRuns.insert(later.gsaRuns);
    gsvParts.insert(later.gsvParts);
    gsaRun += later.gsaRun;
    inGsaRun = false;
}

void EpochAssembler::add(NmeaSentence const& sentence)
{
    if (sentence.kind() == Kind::Other)
        return;
    bool const timed = sentence.kind() == Kind::Gga || sentence.kind() == Kind::Rmc;
    if (!std::exchange(m_begun, true))
        m_timeFollowsSatellites = !timed && !isRemainder(sentence);
    if (timed)
        addTimed(sentence);
    else
        addSatellites(sentence);
}

void EpochAssembler::lineRefused()
{
    m_begun = true;
}

void EpochAssembler::finish()
{
    closeCurrent();
    close(m_loose);
    if (!m_dateKnown)
        releaseWaiting(m_placement.date.isValid() ? daysSinceGnssStart(m_placement.date) : 0);
}

QVector<Epoch> EpochAssembler::takeEpochs()
{
    return std::exchange(m_ready, {});
}

void EpochAssembler::addTimed(NmeaSentence const& sentence)
{
    bool const isGga = sentence.kind() == Kind::Gga;
    std::optional<qint64> const timeOfDay = timeOfDayOf(sentence.field(0));
    bool const isFirst = m_opener == Kind::Other;
    if (isFirst)
        m_opener = sentence.kind();
    bool joins = false;
    if (m_current && timeOfDay && m_current->timeOfDay) {
        joins = *timeOfDay == *m_current->timeOfDay;
        m_timeFollowsSatellites
            = m_timeFollowsSatellites || (joins && (m_loose || m_current->hasSatellites()));
    } else if (m_current && !m_loose) {
        // Where a time is missing, GGA and RMC take turns.
        bool const isPresent = isGga ? m_current->hasGga : m_current->hasRmc;
        joins = !isPresent && sentence.kind() != m_opener;
    }

    if (joins) {
        if (m_loose)
            m_current->absorb(*m_loose);
    } else {
        closeCurrent();
        if (isFirst && std::exchange(m_timeFollowsSatellites, false))
            m_lead = std::exchange(m_loose, std::nullopt);
        else if (!m_timeFollowsSatellites)
            close(m_loose);
        m_current = m_loose ? std::move(*m_loose) : EpochDraft();
    }
    m_loose.reset();

    EpochDraft& draft = *m_current;
    draft.inGsaRun = false;
    if (timeOfDay)
        draft.timeOfDay = timeOfDay;
    if (isGga) {
        readGga(draft, sentence);
        return;
    }
    draft.hasRmc = true;
    if (std::optional<qint64> const day = dayOf(sentence.field(8)))
        draft.day = day;
}

void EpochAssembler::addSatellites(NmeaSentence const& sentence)
{
    if (m_lead)
        settleLead(sentence);
    if (m_loose && m_loose->beginsAnew(sentence)) {
        closeCurrent();
        m_current = std::exchange(m_loose, EpochDraft());
    } else if (!m_loose && (!m_current || m_timeEndsEpochs || m_current->beginsAnew(sentence))) {
        m_loose.emplace();
    }
    EpochDraft& draft = m_loose ? *m_loose : *m_current;
    if (sentence.kind() == Kind::Gsa)
        readGsa(draft, sentence);
    else
        readGsv(draft, sentence);
}

/// Decides by @p next, the first satellites behind a time, what those in front of it are.
void EpochAssembler::settleLead(NmeaSentence const& next)
{
    m_lead->inGsaRun = false;
    m_timeEndsEpochs = m_lead->beginsAnew(next);
    m_timeFollowsSatellites = m_timeEndsEpochs;
    if (m_timeEndsEpochs)
        m_current->absorb(*std::exchange(m_lead, std::nullopt));
    else
        close(m_lead);
}

void EpochAssembler::readGga(EpochDraft& draft, NmeaSentence const& sentence)
{
    draft.hasGga = true;
    draft.epoch.quality = qualityOf(sentence);
    draft.inUseByGga = sentence.integer(6);
    // Without a fix some receivers fill in a zero.
    bool const hasFix = draft.epoch.quality && draft.epoch.quality != FixQuality::None;
    std::optional<double> const altitude = sentence.decimal(8);
    draft.epoch.altitude
        = hasFix && altitude ? *altitude : std::numeric_limits<double>::quiet_NaN();
}

void EpochAssembler::readGsa(EpochDraft& draft, NmeaSentence const& sentence)
{
    if (!std::exchange(draft.inGsaRun, true))
        ++draft.gsaRun;
    draft.gsaRuns[groupOf(sentence)] = draft.gsaRun;
    Constellation const system = systemOf(sentence);
    for (int i = gsaFirstId; i <= gsaLastId; ++i) {
        if (auto const satellite = satelliteOf(system, sentence.integer(i).value_or(0)))
            draft.epoch.used.append(*satellite);
    }
}

void EpochAssembler::readGsv(EpochDraft& draft, NmeaSentence const& sentence)
{
    constexpr int firstGroup = 3;
    constexpr double cn0Limit = 100.0; // the field has two places in front of the point
    draft.inGsaRun = false;
    draft.gsvParts[groupOf(sentence)] = sentence.integer(1).value_or(0);
    Constellation const system = constellationOfTalker(sentence.talker());
    quint8 const signal = signalOf(sentence);
    for (qsizetype i = firstGroup; i + 3 < sentence.fieldCount(); i += 4) {
        std::optional<double> const cn0 = sentence.decimal(i + 3);
        if (!cn0 || *cn0 < 0.0 || *cn0 >= cn0Limit)
            continue;
        if (auto const satellite = satelliteOf(system, sentence.integer(i).value_or(0)))
            draft.epoch.strengths.append({{*satellite, signal}, *cn0});
        else
            ++m_counts.cn0WithoutNumber;
    }
}

void EpochAssembler::closeCurrent()
{
    if (m_lead) // nothing has shown them to be of another time
        m_current->absorb(*std::exchange(m_lead, std::nullopt));
    close(m_current);
}

void EpochAssembler::close(std::optional<EpochDraft>& closing)
{
    std::optional<EpochDraft> draft = std::exchange(closing, std::nullopt);
    if (!draft)
        return;
    if (!draft->timeOfDay) {
        ++(m_lastTimeOfDay ? m_counts.withoutTime : m_counts.beforeFirstTime);
        return;
    }
    Epoch& epoch = draft->epoch;
    std::sort(epoch.used.begin(), epoch.used.end());
    epoch.used.erase(std::unique(epoch.used.begin(), epoch.used.end()), epoch.used.end());
    if (!draft->gsaRuns.isEmpty())
        epoch.satellitesInUse = static_cast<double>(epoch.used.size());
    else if (draft->inUseByGga)
        epoch.satellitesInUse = *draft->inUseByGga;

    // Newest first among equals, so that what was told last is what stays.
    QVector<SignalStrength>& strengths = epoch.strengths;
    std::reverse(strengths.begin(), strengths.end());
    std::stable_sort(
        strengths.begin(), strengths.end(),
        [](SignalStrength const& a, SignalStrength const& b) { return a.key < b.key; });
    strengths.erase(std::unique(strengths.begin(), strengths.end(),
                                [](SignalStrength const& a, SignalStrength const& b) {
                                    return a.key == b.key;
                                }),
                    strengths.end());
    place(std::move(epoch), *draft->timeOfDay, draft->day);
}

void EpochAssembler::place(Epoch&& epoch, qint64 timeOfDay, std::optional<qint64> toldDay)
{
    qint64 day = m_lastDay;
    qint64 const rise = timeOfDay - m_lastTimeOfDay.value_or(timeOfDay);
    if (rise < -midnightFall)
        ++day;
    else if (rise > midnightRise)
        --day;
    if (toldDay) {
        if (!std::exchange(m_dateKnown, true))
            releaseWaiting(*toldDay - day);
        day = *toldDay;
    }
    m_lastTimeOfDay = timeOfDay;
    m_lastDay = day;
    epoch.time = day * msPerDay + timeOfDay + m_placement.leapSeconds * qint64(1000);
    if (m_dateKnown)
        append(std::move(epoch));
    else
        m_waiting.append(std::move(epoch));
}

void EpochAssembler::releaseWaiting(qint64 days)
{
    for (Epoch& epoch : std::exchange(m_waiting, {})) {
        epoch.time += days * msPerDay;
        append(std::move(epoch));
    }
}

void EpochAssembler::append(Epoch&& epoch)
{
    if (m_lastTime && epoch.time <= *m_lastTime) {
        ++m_counts.backInTime;
        return;
    }
    m_lastTime = epoch.time;
    m_ready.append(std::move(epoch));
}
