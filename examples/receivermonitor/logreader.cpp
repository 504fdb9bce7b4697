#include "logreader.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <utility>

namespace {

/// No sentence is nearly as long; what is longer is not even kept until its end.
constexpr qsizetype longestLine = 65536;
constexpr qint64 pieceOfFile = 1048576;

/// Takes over what is missing in @p all, both ascending.
template<typename Item, typename Range, typename KeyOf>
void merge(QVector<Item>& all, Range const& further, KeyOf keyOf)
{
    qsizetype const known = all.size();
    for (auto const& element : further) {
        Item const item = keyOf(element);
        bool const isRepeated = all.size() > known && all.constLast() == item;
        if (!isRepeated && !std::binary_search(all.cbegin(), all.cbegin() + known, item))
            all.append(item);
    }
    std::inplace_merge(all.begin(), all.begin() + known, all.end());
}

} // namespace

LogReader::LogReader(Placement const& placement)
    : m_assembler(placement)
{
}

void LogReader::feed(QByteArrayView bytes)
{
    auto const isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
    while (!bytes.isEmpty()) {
        auto const end = std::find_if(bytes.begin(), bytes.end(), isLineEnd);
        QByteArrayView const part(bytes.begin(), end);
        if (end == bytes.end()) {
            keep(part);
            return;
        }
        if (m_unfinishedLine.isEmpty()) {
            readLine(part);
        } else {
            keep(part);
            readLine(std::exchange(m_unfinishedLine, {}));
        }
        bytes = bytes.sliced(part.size() + 1);
    }
}

ReceiverLog LogReader::finish()
{
    readLine(std::exchange(m_unfinishedLine, {}));
    m_assembler.finish();
    m_log.epochs = m_assembler.takeEpochs();
    m_log.leftOut = m_assembler.counts();
    m_log.isDateKnown = m_assembler.isDateKnown();

    for (Epoch const& epoch : std::as_const(m_log.epochs)) {
        merge(m_log.keys, epoch.strengths, [](SignalStrength const& s) { return s.key; });
        merge(m_log.satellites, epoch.used, [](Satellite satellite) { return satellite; });
    }
    merge(m_log.satellites, m_log.keys, [](SatelliteSignal key) { return key.satellite; });
    return std::move(m_log);
}

QString LogReader::readFile(QString const& path, Placement const& placement, ReceiverLog& log)
{
    QFileInfo const info(path);
    if (!info.exists())
        return tr("%1: there is no such file").arg(path);
    if (info.isDir())
        return tr("%1: this is a folder, not a log").arg(path);
    if (!info.isFile())
        return tr("%1: this is not a regular file").arg(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return tr("%1: cannot be opened (%2)").arg(path, file.errorString());

    LogReader reader(placement);
    QByteArray piece(pieceOfFile, Qt::Uninitialized);
    bool isEmpty = true;
    qint64 count = 0;
    while ((count = file.read(piece.data(), pieceOfFile)) > 0) {
        isEmpty = false;
        reader.feed(QByteArrayView(piece.constData(), count));
    }
    if (count < 0)
        return tr("%1: cannot be read (%2)").arg(path, file.errorString());
    if (isEmpty)
        return tr("%1: the file is empty").arg(path);
    ReceiverLog read = reader.finish();
    if (read.soundSentences == 0)
        return tr("%1: there is not one sound NMEA 0183 sentence in it").arg(path);
    log = std::move(read);
    return {};
}

void LogReader::keep(QByteArrayView part)
{
    // One byte too many is kept, so that the line is known as too long when it ends.
    qsizetype const room = longestLine + 1 - m_unfinishedLine.size();
    m_unfinishedLine.append(part.first(std::min(room, part.size())));
}

void LogReader::readLine(QByteArrayView line)
{
    using Verdict = NmeaSentence::Verdict;
    line = line.trimmed();
    if (line.isEmpty() || line.front() == '#')
        return;
    qsizetype begin = line.front() == '!' ? 0 : line.indexOf('$');
    if (line.size() > longestLine || begin < 0) {
        refuse(Verdict::NoSentence);
        return;
    }
    Verdict fault = Verdict::Sound;
    while (begin >= 0) {
        qsizetype const next = line.indexOf('$', begin + 1);
        qsizetype const end = next < 0 ? line.size() : next;
        Verdict const verdict = m_sentence.read(line.sliced(begin, end - begin));
        if (verdict == Verdict::Sound) {
            ++m_log.soundSentences;
            m_assembler.add(m_sentence);
        } else if (fault == Verdict::Sound) {
            fault = verdict;
        }
        begin = next;
    }
    if (fault != Verdict::Sound)
        refuse(fault);
}

void LogReader::refuse(NmeaSentence::Verdict verdict)
{
    ++(verdict == NmeaSentence::Verdict::FailedChecksum ? m_log.failedChecksums
                                                        : m_log.noSentences);
    m_assembler.lineRefused();
}
