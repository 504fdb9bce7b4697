#pragma once

#include "epochassembler.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

/// What a whole log holds, and what of it had to be left out.
struct ReceiverLog
{
    QVector<Epoch> epochs; ///< of strictly ascending time
    QVector<SatelliteSignal> keys; ///< every signal with a C/N0 in some epoch, ascending
    QVector<Satellite> satellites; ///< every one with a C/N0 or in use in some epoch, ascending
    qint64 soundSentences = 0; ///< of any kind
    qint64 failedChecksums = 0; ///< lines with a sentence whose checksum does not agree
    qint64 noSentences = 0; ///< lines that are no sentence, no comment and not blank
    EpochCounts leftOut;
    bool isDateKnown = false; ///< if not, the date is that of the placement or else day 0
};

/**
 * Reads an NMEA 0183 log from bytes of any kind, in pieces of any size.
 *
 * Lines end with CR, LF or both. Lines that begin with '#' are comments. A line may hold several
 * sentences, where a line end was lost, and bytes of another protocol in front of the first.
 */
class LogReader
{
    Q_DECLARE_TR_FUNCTIONS(LogReader)
public:
    explicit LogReader(Placement const& placement);

    void feed(QByteArrayView bytes);

    /// Ends the log and gives what was read; the reader is used up.
    ReceiverLog finish();

    /**
     * Reads the file @p path.
     *
     * @return an empty text, or in one line why there is no log: the file is missing, no regular
     *         file, cannot be read, is empty or holds no sound sentence; @p log is then unchanged
     */
    static QString readFile(QString const& path, Placement const& placement, ReceiverLog& log);

private:
    void keep(QByteArrayView part);
    void readLine(QByteArrayView line);
    void refuse(NmeaSentence::Verdict verdict);

    EpochAssembler m_assembler;
    NmeaSentence m_sentence;
    ReceiverLog m_log;
    QByteArray m_unfinishedLine;
};
