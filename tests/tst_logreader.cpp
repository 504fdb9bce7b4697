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

QString const dataFolder = QStringLiteral(EXAMPLE_DATA_DIR "/");

ReceiverLog read(QByteArray const& bytes, qsizetype pieceSize)
{
    LogReader reader(Placement{});
    for (qsizetype begin = 0; begin < bytes.size(); begin += pieceSize)
        reader.feed(QByteArrayView(bytes).sliced(begin, qMin(pieceSize, bytes.size() - begin)));
    return reader.finish();
}

QByteArray contents(char const* name)
{
    QFile file(dataFolder + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void tst_LogReader::readsRealLogs_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("contents");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("cn0");
    QTest::newRow("cold start")
        << "cold-start-4min.nmea"
        << "1558 sentences, 186 epochs, 37 early, 1 back, 0 other faults, 0 unlike the first"
        << "1236423131710 to 1236423317408, quality 1, 109.44 m, 4 used"
        << "1126 readings, sum 40990, 7 keys, G13 to G28";
    QTest::newRow("four constellations")
        << "four-constellations-1min.nmea"
        << "1403 sentences, 61 epochs, 0 early, 0 back, 0 other faults, 0 unlike the first"
        << "1278542283000 to 1278542343000, quality 2, 83.1 m, 25 used"
        << "1701 readings, sum 57854, 30 keys, G10 L1 to C33 B1I";
}

void tst_LogReader::readsRealLogs()
{
    QFETCH(QString, name);
    ReceiverLog log;

    QCOMPARE(LogReader::readFile(dataFolder + name, Placement{}, log), QString());

    QVERIFY(log.isDateKnown && !log.epochs.isEmpty() && !log.keys.isEmpty());
    Epoch const& first = log.epochs.first();
    int unlike = 0; // in quality, which neither log changes
    int readings = 0;
    double sum = 0.0;
    for (Epoch const& epoch : std::as_const(log.epochs)) {
        unlike += epoch.quality == first.quality ? 0 : 1;
        for (SatelliteSignal const key : std::as_const(log.keys)) {
            double const cn0 = epoch.cn0Of(key);
            readings += qIsNaN(cn0) ? 0 : 1;
            sum += qIsNaN(cn0) ? 0.0 : cn0;
        }
    }
    qint64 const otherFaults = log.failedChecksums + log.noSentences + log.leftOut.withoutTime
        + log.leftOut.cn0WithoutNumber;
    QTEST(QStringLiteral("%1 sentences, %2 epochs, %3 early, %4 back, %5 other faults, "
                         "%6 unlike the first")
              .arg(log.soundSentences)
              .arg(log.epochs.size())
              .arg(log.leftOut.beforeFirstTime)
              .arg(log.leftOut.backInTime)
              .arg(otherFaults)
              .arg(unlike),
          "contents");
    QTEST(QStringLiteral("%1 to %2, quality %3, %4 m, %5 used")
              .arg(first.time)
              .arg(log.epochs.last().time)
              .arg(int(first.quality.value_or(FixQuality::Other)))
              .arg(first.altitude)
              .arg(first.satellitesInUse),
          "start");
    QTEST(QStringLiteral("%1 readings, sum %2, %3 keys, %4 to %5")
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
    QTest::addColumn<QString>("counts"); // sound, failed checksum, no sentence
    QTest::newRow("CR and LF") << good + "\r\n" + good + "\r\n"
                               << "2 0 0";
    QTest::newRow("CR alone") << good + '\r' + good << "2 0 0";
    QTest::newRow("no line end at the end") << good + '\n' + good << "2 0 0";
    QTest::newRow("comment, blank line") << "# " + bad + "\n \t\n\n " + good << "1 0 0";
    QTest::newRow("failed checksum") << bad + '\n' + good << "1 1 0";
    QTest::newRow("text, truncated, binary")
        << QByteArray("boot\n$GPGGA,12\n\0\xFF\xB5\n", 19) + good << "1 0 3";
    QTest::newRow("line end lost behind a whole one") << good + good << "2 0 0";
    QTest::newRow("line end lost behind a cut one") << "$GPGGA,12" + good << "1 0 1";
    QTest::newRow("two faults in a line count once") << bad + "$GP" + good << "1 1 0";
    QTest::newRow("other protocol in front") << QByteArray("\xB5\x62\0\x01", 4) + good << "1 0 0";
    QTest::newRow("line beyond all measure")
        << good + QByteArray(200000, 'x') + '\n' + good << "1 0 1";
}

void tst_LogReader::sortsLines()
{
    QFETCH(QByteArray, bytes);
    for (qsizetype const pieceSize : {qsizetype(1), qsizetype(7), bytes.size()}) {
        ReceiverLog const log = read(bytes, pieceSize);
        QTEST(QStringLiteral("%1 %2 %3")
                  .arg(log.soundSentences)
                  .arg(log.failedChecksums)
                  .arg(log.noSentences),
              "counts");
    }
}

/// Any bytes end in an ordered log, and in the same one however they arrive.
void tst_LogReader::survivesDamage()
{
    QByteArray const whole = contents("cold-start-4min.nmea").mid(10000, 10000)
        + contents("four-constellations-1min.nmea").left(10000);
    QCOMPARE(whole.size(), 20000);
    std::mt19937 random(20200711);
    for (int run = 0; run < 60; ++run) {
        QByteArray bytes = whole;
        for (int i = 0; i < 100; ++i) {
            auto const at = qsizetype(random() % 19000U);
            switch (random() % 3U) {
            case 0:
                bytes[at] = char(random());
                break;
            case 1:
                bytes.insert(at, char(random()));
                break;
            default:
                bytes.remove(at, 1 + int(random() % 5U));
            }
        }
        ReceiverLog const log = read(bytes, bytes.size());
        ReceiverLog const again = read(bytes, 100);
        QVERIFY(log.failedChecksums > 0 && !log.epochs.isEmpty());
        QCOMPARE(again.soundSentences, log.soundSentences);
        QCOMPARE(again.epochs.size(), log.epochs.size());
        QVERIFY(std::is_sorted(log.keys.cbegin(), log.keys.cend()));
        auto const late
            = std::adjacent_find(log.epochs.cbegin(), log.epochs.cend(),
                                 [](Epoch const& a, Epoch const& b) { return a.time >= b.time; });
        QVERIFY(late == log.epochs.cend());
    }
}

QTEST_APPLESS_MAIN(tst_LogReader)
#include "tst_logreader.moc"
