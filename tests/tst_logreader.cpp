#include "logreader.h"

#include <QFile>
#include <QTest>
#include <random>

/// Faults: the bundled logs read otherwise than counted by hand, lines lost, no end.
class tst_LogReader : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsRealLogs();
    void sortsLines();
    void survivesDamage();
};

namespace {

QString const coldStart = QStringLiteral(EXAMPLE_DATA_DIR "/cold-start-4min.nmea");
QString const constellations = QStringLiteral(EXAMPLE_DATA_DIR "/four-constellations-1min.nmea");

ReceiverLog read(QByteArray const& bytes, qsizetype pieceSize)
{
    LogReader reader(Placement{});
    for (qsizetype begin = 0; begin < bytes.size(); begin += pieceSize)
        reader.feed(QByteArrayView(bytes).sliced(begin, qMin(pieceSize, bytes.size() - begin)));
    return reader.finish();
}

QByteArray contents(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Sound sentences, epochs, early, back; first and last time, quality, altitude, in use; readings,
/// their sum, keys.
QString summaryOf(ReceiverLog const& log)
{
    Epoch const first = log.epochs.value(0);
    int readings = 0;
    double sum = 0.0;
    for (Epoch const& epoch : log.epochs) {
        readings += int(epoch.strengths.size());
        for (SignalStrength const& strength : epoch.strengths)
            sum += strength.cn0;
    }
    return QString::asprintf("%lld %lld %lld %lld; %lld %lld %d %g %g; %d %g %lld",
                             log.soundSentences, log.epochs.size(), log.leftOut.beforeFirstTime,
                             log.leftOut.backInTime, first.time, log.epochs.last().time,
                             int(first.quality.value_or(FixQuality::Other)), first.altitude,
                             first.satellitesInUse, readings, sum, log.keys.size());
}

} // namespace

void tst_LogReader::readsRealLogs()
{
    ReceiverLog log;
    QCOMPARE(LogReader::readFile(coldStart, Placement{}, log), QString());
    QCOMPARE(summaryOf(log), "1558 186 37 1; 1236423131710 1236423317408 1 109.44 4; 1126 40990 7");
    QCOMPARE(LogReader::readFile(constellations, Placement{}, log), QString());
    QCOMPARE(summaryOf(log), "1403 61 0 0; 1278542283000 1278542343000 2 83.1 25; 1701 57854 30");
}

void tst_LogReader::sortsLines()
{
    QByteArray const good = "$GPGLL,,,,,,V,N*64";
    QByteArray const bad = "$GPGLL,,,,,,V,N*65";
    using Row = std::pair<QByteArray, QList<qint64>>; // sound, failed checksum, no sentence
    for (auto const& [bytes, counts] :
         {Row("boot\r" + bad + '\r' + good, {1, 1, 1}),
          Row("# " + bad + "\n \t\n\n " + good, {1, 0, 0}),
          Row(QByteArray("boot\n$GPGGA,12\n\0\xFF\xB5\n", 19) + good, {1, 0, 3}),
          // A lost line end, behind a whole sentence or a cut one; two faults count once.
          Row(good + good, {2, 0, 0}), Row("$GPGGA,12" + good, {1, 0, 1}),
          Row(bad + "$GP" + good, {1, 1, 0}),
          Row(QByteArray("\xB5\x62\0\x01", 4) + good, {1, 0, 0}),
          Row(good + QByteArray(200000, 'x') + '\n' + good, {1, 0, 1})}) {
        ReceiverLog const log = read(bytes, 1);
        QCOMPARE(QList<qint64>({log.soundSentences, log.failedChecksums, log.noSentences}), counts);
    }
}

/// Any bytes end in an ordered log, and in the same one however they arrive.
void tst_LogReader::survivesDamage()
{
    QByteArray const whole
        = contents(coldStart).mid(10000, 10000) + contents(constellations).left(10000);
    std::mt19937 random(20200711);
    for (int run = 0; run < 60; ++run) {
        QByteArray bytes = whole;
        for (int i = 0; i < 100; ++i) {
            // Replaces, removes or inserts.
            QByteArray const damage(int(random() % 2U), char(random()));
            bytes.replace(qsizetype(random() % 19000U), qsizetype(random() % 5U), damage);
        }
        ReceiverLog const log = read(bytes, bytes.size());
        ReceiverLog const again = read(bytes, 100);
        QVERIFY(log.failedChecksums > 0 && !log.epochs.isEmpty());
        QCOMPARE(again.soundSentences, log.soundSentences);
        QCOMPARE(again.epochs.size(), log.epochs.size());
        for (int i = 1; i < log.epochs.size(); ++i)
            QVERIFY(log.epochs.at(i).time > log.epochs.at(i - 1).time);
    }
}

QTEST_APPLESS_MAIN(tst_LogReader)
#include "tst_logreader.moc"
