#pragma once

#include <QByteArrayView>
#include <QVarLengthArray>
#include <optional>

/**
 * One NMEA 0183 sentence that passed its checksum, taken apart into fields.
 *
 * Talker and fields are views into the bytes that were read; those must outlive the sentence.
 */
class NmeaSentence
{
public:
    /// What the monitor makes use of; a sound sentence of any other kind is Other.
    enum class Kind { Gga, Gsa, Gsv, Rmc, Other };
    enum class Verdict { Sound, FailedChecksum, NoSentence };

    /**
     * Reads one sentence from @p text, which begins at its '$' or '!'.
     *
     * Text behind the checksum is not looked at, since loggers like to put a time stamp there.
     * Without "*hh" there is no sentence, as there is none with bytes outside printable ASCII. The
     * sentence is only changed, and only then of use, where the verdict is Sound.
     */
    Verdict read(QByteArrayView text);

    Kind kind() const { return m_kind; }

    /// Two letters; empty for Other.
    QByteArrayView talker() const { return m_talker; }

    /// Fields behind the address; 0 for Other, whose fields nobody asks for.
    qsizetype fieldCount() const { return m_fields.size(); }

    /// Field @p index, 0 being the first behind the address; empty beyond the last one.
    QByteArrayView field(qsizetype index) const;

    /// Field @p index as a number of one to nine digits without a sign; none if it is anything
    /// else.
    std::optional<int> integer(qsizetype index) const;

    /// Field @p index as a finite decimal number without an exponent; none if it is anything else.
    std::optional<double> decimal(qsizetype index) const;

private:
    Kind m_kind = Kind::Other;
    QByteArrayView m_talker;
    QVarLengthArray<QByteArrayView, 24> m_fields;
};
