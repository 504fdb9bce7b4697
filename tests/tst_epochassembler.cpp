#include "epochassembler.h"

#include <QDateTime>
#include <QTest>

/// Faults: sentences in the wrong epoch, epochs at the wrong time, anything lost without a count.
class tst_EpochAssembler : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void putsTogether_data();
    void putsTogether();
    void placesWithoutDate();
    void mapsQuality();
};

namespace {

/// Feeds sentences given without '$' and checksum, parted by blanks; '#' is a line refused.
void feed(EpochAssembler& assembler, QByteArray const& log)
{
    NmeaSentence sentence;
    for (QByteArray const& body : log.split(' ')) {
        if (body == "#") {
            assembler.lineRefused();
            continue;
        }
        char sum = 0;
        for (char const c : body)
            sum = char(sum ^ c);
        QByteArray const text = '$' + body + '*' + QByteArray(1, sum).toHex();
        QCOMPARE(sentence.read(text), NmeaSentence::Verdict::Sound);
        assembler.add(sentence);
    }
}

/// "2 00:00:01 5m 3 used G05=40": day of 2020, time, altitude, satellites; what is NaN is left out.
QString text(Epoch const& epoch)
{
    qint64 const toUnixTime = 315964800000;
    QDateTime const time = QDateTime::fromMSecsSinceEpoch(epoch.time + toUnixTime, Qt::UTC);
    QString result = QStringLiteral("%1 ").arg(QDate(2019, 12, 31).daysTo(time.date()))
        + time.toString(time.time().msec() == 0 ? "hh:mm:ss" : "hh:mm:ss.zzz");
    if (!qIsNaN(epoch.altitude))
        result += QStringLiteral(" %1m").arg(epoch.altitude);
    if (!qIsNaN(epoch.satellitesInUse))
        result += QStringLiteral(" %1 used").arg(epoch.satellitesInUse);
    for (SignalStrength const& strength : epoch.strengths)
        result += QStringLiteral(" %1=%2").arg(strength.key.label()).arg(strength.cn0);
    return result;
}

QString text(EpochCounts const& counts)
{
    return QStringLiteral("%1 early, %2 timeless, %3 back, %4 numberless")
        .arg(counts.beforeFirstTime)
        .arg(counts.withoutTime)
        .arg(counts.backInTime)
        .arg(counts.cn0WithoutNumber);
}

} // namespace

void tst_EpochAssembler::putsTogether_data()
{
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QStringList>("epochs");
    QTest::addColumn<QString>("leftOut");
    auto const row = [](char const* name, QByteArray const& log, QStringList const& epochs,
                        char const* leftOut = "0 early, 0 timeless, 0 back, 0 numberless") {
        QTest::newRow(name) << log << epochs << QString::fromLatin1(leftOut);
    };

    // Which sentences make an epoch.
    row("RMC first",
        "GPRMC,000001,A,,,,,,,010120 GPGGA,000001.00,,,,,1,03,,5 GPGSV,1,1,1,5,,,40 "
        "GPRMC,000002,A,,,,,,,010120 GPGGA,000002,,,,,1,04,,6 GPGSV,1,1,1,5,,,41",
        {"1 00:00:01 5m 3 used G05=40", "1 00:00:02 6m 4 used G05=41"});
    row("RMC last",
        "GPGGA,000001,,,,,1,03,,5 GPGSV,1,1,1,5,,,40 GPRMC,000001,A,,,,,,,010120 "
        "GPGGA,000002,,,,,1,04,,6 GPGSV,1,1,1,5,,,41 GPRMC,000002,A,,,,,,,010120",
        {"1 00:00:01 5m 3 used G05=40", "1 00:00:02 6m 4 used G05=41"});
    row("satellites in front of their time",
        "GPGSV,1,1,1,5,,,40 GPRMC,000001,A,,,,,,,010120 GPGSV,1,1,1,5,,,41 "
        "GPRMC,000002,A,,,,,,,010120",
        {"1 00:00:01 G05=40", "1 00:00:02 G05=41"});
    row("log cut in front of satellites",
        "# GPGSV,1,1,1,5,,,40 GPRMC,000001,A,,,,,,,010120 GPGSV,1,1,1,5,,,41 "
        "GPRMC,000002,A,,,,,,,010120 GPGSV,1,1,1,5,,,42",
        {"1 00:00:01 G05=41", "1 00:00:02 G05=42"}, "1 early, 0 timeless, 0 back, 0 numberless");
    row("log cut within the satellites",
        "GPGSV,2,2,5,5,,,40 GPRMC,000001,A,,,,,,,010120 GPGSV,2,1,5,6,,,41 GPGSV,2,2,5,5,,,42",
        {"1 00:00:01 G05=42 G06=41"}, "1 early, 0 timeless, 0 back, 0 numberless");
    row("log cut in front of a whole sentence",
        "GLGSV,1,1,1,65,,,30 GPRMC,000001,A,,,,,,,010120 GPGSV,1,1,1,5,,,41 GLGSV,1,1,1,65,,,31 "
        "GPRMC,000002,A,,,,,,,010120 GPGSV,1,1,1,5,,,42 GLGSV,1,1,1,65,,,32",
        {"1 00:00:01 G05=41 R01=31", "1 00:00:02 G05=42 R01=32"},
        "1 early, 0 timeless, 0 back, 0 numberless");
    row("first of the satellites lost in front of their time",
        "GPGSV,1,1,1,5,,,40 GLGSV,1,1,1,65,,,30 GPRMC,000001,A,,,,,,,010120 # GLGSV,1,1,1,65,,,31 "
        "GPRMC,000002,A GPGSV,1,1,1,5,,,42 GLGSV,1,1,1,65,,,32 GPRMC,000003,A",
        {"1 00:00:01 G05=40 R01=30", "1 00:00:02 R01=31", "1 00:00:03 G05=42 R01=32"});
    row("remains of an epoch whose time is lost",
        "GPRMC,000001,A,,,,,,,010120 GPGSV,2,1,5,6,,,41 GPGSV,2,2,5,5,,,40 # GPGSV,2,2,5,5,,,49 "
        "GPRMC,000003,A,,,,,,,010120 GPGSV,2,1,5,6,,,43",
        {"1 00:00:01 G05=40 G06=41", "1 00:00:03 G06=43"},
        "0 early, 1 timeless, 0 back, 0 numberless");
    row("GGA lost where RMC ends the epoch",
        "GPGGA,000001 GPGSA GPRMC,000001,A,,,,,,,010120 GPGSA,,,5 GPRMC,000002,A",
        {"1 00:00:01 0 used", "1 00:00:02 1 used"});
    row("satellites twice within one time",
        "GPGGA,000001 GPGSV,1,1,1,5,,,40 GPGSV,1,1,1,6,,,41 GPRMC,000001,A,,,,,,,010120",
        {"1 00:00:01 G05=40 G06=41"});
    row("group cut short",
        "GPRMC,000001,A,,,,,,,010120 GPGSV,3,1,9,5,,,40 GPRMC,000002,A GPGSV,3,3,9,6,,,41",
        {"1 00:00:01 G05=40", "1 00:00:02 G06=41"});
    row("cold start: cycles without a time",
        "GPGGA GPGSV,1,1,1,5,,,40 GPRMC GPGGA GPGSV,1,1,1,5,,,40 GPRMC "
        "GPGGA,000003,,,,,1 GPRMC,000003,A,,,,,,,010120",
        {"1 00:00:03"}, "2 early, 0 timeless, 0 back, 0 numberless");
    row("cycles without a time, RMC first and once lost",
        "GPRMC GPGGA GPGSV,1,1,1,5,,,40 # GPGGA GPGSV,1,1,1,5,,,41 GPRMC GPGGA "
        "GPRMC,000004,A,,,,,,,010120 GPGGA,000004 GPGSV,1,1,1,5,,,43",
        {"1 00:00:04 G05=43"}, "3 early, 0 timeless, 0 back, 0 numberless");
    row("time lost for a while",
        "GPRMC,000001,A,,,,,,,010120 GPGGA,000001 GPRMC GPGGA GPRMC,000003 GPGGA,000003",
        {"1 00:00:01", "1 00:00:03"}, "0 early, 1 timeless, 0 back, 0 numberless");

    // What they tell.
    row("two signals, the older form without",
        "GPRMC,000001,A,,,,,,,010120 GPGSV,1,1,1,5,,,40,1 GPGSV,1,1,1,5,,,30,6 GAGSV,1,1,1,5,,,35",
        {"1 00:00:01 G05 L1=40 G05 L2CL=30 E05=35"});
    row("C/N0 empty, absurd or cut off",
        "GPRMC,000001,A,,,,,,,010120 GPGSV,1,1,4,5,,,,6,,,100,7,,,-1,8,,", {"1 00:00:01"});
    row("C/N0 without a number",
        "GLRMC,000001,A,,,,,,,010120 GLGSV,1,1,4,,,,53,0,,,40,x,,,41,,,,,65,,,42",
        {"1 00:00:01 R01=42"}, "0 early, 0 timeless, 0 back, 3 numberless");
    row("GSV of nothing", "GPRMC,000001,A,,,,,,,010120 GPGSV GPGSV, GPGSV,1,1,00,1",
        {"1 00:00:01"});
    row("more in use than GGA can tell",
        "GNRMC,000001,A,,,,,,,010120 GNGGA,000001,,,,,1,12,,5 "
        "GNGSA,A,3,1,2,3,4,5,6,7,8,9,10,11,12,,,,1 GNGSA,A,3,13,12,,,,,,,,,,,,,,1 "
        "GNGSA,A,3,1,2,,,,,,,,,,,,,,3",
        {"1 00:00:01 5m 15 used"});
    row("GSA between the GSV of its system",
        "GNRMC,000001,A,,,,,,,010120 GNGSA,A,3,1,2 GPGSV,1,1,1,1,,,40 GNGSA,A,3,65 "
        "GLGSV,1,1,1,65,,,41",
        {"1 00:00:01 3 used G01=40 R01=41"});
    row("altitude without a fix", "GPRMC,000001,A,,,,,,,010120 GPGGA,000001,,,,,0,00,,0.0",
        {"1 00:00:01 0 used"});

    // When it was.
    row("midnight without RMC",
        "GPRMC,235959,A,,,,,,,010120 GPGGA,000000 GPGGA,235959.9 GPGGA,000001",
        {"1 23:59:59", "2 00:00:00", "2 00:00:01"}, "0 early, 0 timeless, 1 back, 0 numberless");
    row("date late, behind midnight",
        "GPGGA,235959 GPGGA,000000 GPRMC,000001,A,,,,,,,020120 GPGGA,000001",
        {"1 23:59:59", "2 00:00:00", "2 00:00:01"});
    row("a gap of half a day is no step back", "GPRMC,060000,A,,,,,,,010120 GPGGA,200000",
        {"1 06:00:00", "1 20:00:00"});
    row("step back",
        "GPGGA,000001.71 GPRMC,000001.71,A,,,,,,,010120 GPGGA,000001.408 GPRMC,000001.408,A "
        "GPGGA,000002.408",
        {"1 00:00:01.710", "1 00:00:02.408"}, "0 early, 0 timeless, 1 back, 0 numberless");
    row("no such time, no such date",
        "GPGGA,246060 GPRMC,00:001,,,,,,,,010120 GPRMC,000001,A,,,,,,,310220 "
        "GPRMC,000002,A,,,,,,,010120",
        {"1 00:00:01", "1 00:00:02"}, "1 early, 0 timeless, 0 back, 0 numberless");
}

void tst_EpochAssembler::putsTogether()
{
    QFETCH(QByteArray, log);
    EpochAssembler assembler(Placement{0, QDate()});

    feed(assembler, log);
    assembler.finish();

    QStringList epochs;
    for (Epoch const& epoch : assembler.takeEpochs())
        epochs.append(text(epoch));
    QTEST(epochs, "epochs");
    QTEST(text(assembler.counts()), "leftOut");
    QVERIFY(assembler.isDateKnown());
}

void tst_EpochAssembler::placesWithoutDate()
{
    EpochAssembler dated(Placement{18, QDate(2020, 7, 11)});
    feed(dated, "GPGGA,223745");
    QVERIFY(dated.takeEpochs().isEmpty());
    dated.finish();
    QVector<Epoch> const placed = dated.takeEpochs();
    QCOMPARE(placed.size(), 1);
    QCOMPARE(placed.first().time, 1278542283000);
    QVERIFY(!dated.isDateKnown());

    EpochAssembler undated(Placement{0, QDate()});
    feed(undated, "GPGGA,000001.5");
    undated.finish();
    QCOMPARE(undated.takeEpochs().value(0).time, 1500);
}

void tst_EpochAssembler::mapsQuality()
{
    // The figures of fixed and float stand the other way round in a GGA.
    QByteArrayList const told = {"0", "1", "2", "3", "4", "5", "6", "7", "D", ""};
    QVector<int> qualities;
    for (QByteArray const& figure : told) {
        EpochAssembler assembler(Placement{});
        feed(assembler, "GPGGA,000001,,,,," + figure);
        assembler.finish();
        auto const quality = assembler.takeEpochs().value(0).quality;
        qualities.append(quality ? int(*quality) : -1);
    }
    QCOMPARE(qualities, QVector<int>({0, 1, 2, 2, 4, 3, 5, 6, 6, -1}));
}

QTEST_APPLESS_MAIN(tst_EpochAssembler)
#include "tst_epochassembler.moc"
