#include "logreader.h"

#include <QFile>
#include <QTest>
#include <algorithm>
#include <random>

/// Faults: the bundled logs read otherwise than counted by hand, lines lost, no end.
class tst_LogReader : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsRealLogs_data();
    void readsRealLogs();
    void sortsLines_data();
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

} // namespace

void tst_LogReader::readsRealLogs_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QList<qint64>>("contents"); // sentences, epochs, early, back, other faults
    QTest::addColumn<QList<double>>("start"); // first and last time, quality, altitude, in use
    QTest::addColumn<QString>("cn0"); // readings, their sum, keys
    QTest::newRow("cold start") << coldStart << QList<qint64>{1558, 186, 37, 1, 0}
                                << QList<double>{1236423131710.0, 1236423317408.0, 1.0, 109.44, 4.0}
                                << "1126, 40990, 7 from G13 to G28";
    QTest::newRow("four constellations")
        << constellations << QList<qint64>{1403, 61, 0, 0, 0}
        << QList<double>{1278542283000.0, 1278542343000.0, 2.0, 83.1, 25.0}
        << "1701, 57854, 30 from G10 L1 to C33 B1I";
}

void tst_LogReader::readsRealLogs()
{
    QFETCH(QString, path);
    ReceiverLog log;
    QCOMPARE(LogReader::readFile(path, Placement{}, log), QString());

    QVERIFY(log.isDateKnown && !log.epochs.isEmpty() && !log.keys.isEmpty());
    EpochCounts const& out = log.leftOut;
    qint64 const others
        = log.failedChecksums + log.noSentences + out.withoutTime + out.cn0WithoutNumber;
    QTEST(QList<qint64>(
              {log.soundSentences, log.epochs.size(), out.beforeFirstTime, out.backInTime, others}),
          "contents");
    Epoch const& first = log.epochs.first();
    double const quality = int(first.quality.value_or(FixQuality::Other));
    QTEST(QList<double>({double(first.time), double(log.epochs.last().time), quality,
                         first.altitude, first.satellitesInUse}),
          "start");
    int readings = 0;
    double sum = 0.0;
    for (Epoch const& epoch : std::as_const(log.epochs)) {
        QVERIFY(epoch.quality == first.quality); // neither log changes it
        for (SatelliteSignal const key : std::as_const(log.keys)) {
            double const cn0 = epoch.cn0Of(key);
            readings += qIsNaN(cn0) ? 0 : 1;
            sum += qIsNaN(cn0) ? 0.0 : cn0;
        }
    }
    QTEST(QStringLiteral("%1, %2, %3 from %4 to %5")
              .arg(readings)
              .arg(sum)
              .arg(log.keys.size())
              .arg(log.keys.first().label(), log.keys.last().label()),
          "cn0");
}

void tst_LogReader::sortsLines_data()
{
    QByteArray const good = "$GPGLL,,,,,,V,N*64";
    QByteArray const bad = "$GPGLL,,,,,,V,N*65";
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<qint64>>("counts"); // sound, failed checksum, no sentence
    auto const row = [](char const* name, QByteArray const& bytes, QList<qint64> const& counts) {
        QTest::newRow(name) << bytes << counts;
    };
    row("CR and LF", good + "\r\n" + good + "\r\n", {2, 0, 0});
    row("CR alone", "boot\r" + bad + '\r' + good, {1, 1, 1});
    row("comment, blank line", "# " + bad + "\n \t\n\n " + good, {1, 0, 0});
    row("text, cut, binary", QByteArray("boot\n$GPGGA,12\n\0\xFF\xB5\n", 19) + good, {1, 0, 3});
    row("line end lost behind a whole one", good + good, {2, 0, 0});
    row("line end lost behind a cut one", "$GPGGA,12" + good, {1, 0, 1});
    row("two faults in a line count once", bad + "$GP" + good, {1, 1, 0});
    row("other protocol in front", QByteArray("\xB5\x62\0\x01", 4) + good, {1, 0, 0});
    row("beyond all measure", good + QByteArray(200000, 'x') + '\n' + good, {1, 0, 1});
}

void tst_LogReader::sortsLines()
{
    QFETCH(QByteArray, bytes);
    for (qsizetype const pieceSize : {qsizetype(1), qsizetype(7), bytes.size()}) {
        ReceiverLog const log = read(bytes, pieceSize);
        QTEST(QList<qint64>({log.soundSentences, log.failedChecksums, log.noSentences}), "counts");
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
        QVERIFY(std::is_sorted(log.keys.cbegin(), log.keys.cend()));
        for (int i = 1; i < log.epochs.size(); ++i)
            QVERIFY(log.epochs.at(i).time > log.epochs.at(i - 1).time);
    }
}

QTEST_APPLESS_MAIN(tst_LogReader)
#include "tst_logreader.moc"
