#include "epochassembler.h"

#include <QRegularExpression>
#include <QTest>
#include <functional>
#include <numeric>

/// Faults: sentences in the wrong epoch, epochs at the wrong time, anything lost without a count.
class tst_EpochAssembler : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void putsTogether_data();
    void putsTogether();
    void placesWithoutDate();
};

namespace {

/// Epochs of sentences without '$' and checksum, parted by blanks; '#' is a line refused. In short,
/// d1 is the RMC of second 1 of 2020, r1 has no date, a1 is a GGA, g5=40 and l65=30 are whole GSV.
QVector<Epoch> assemble(EpochAssembler& assembler, QString log)
{
    log.replace(QRegularExpression("d(\\S+)"), "GPRMC,00000\\1,A,,,,,,,010120");
    log.replace("r", "GPRMC,00000").replace("a", "GPGGA,00000");
    log.replace(QRegularExpression("g(\\d+)="), "GPGSV,1,1,1,\\1,,,");
    log.replace(QRegularExpression("l(\\d+)="), "GLGSV,1,1,1,\\1,,,");
    NmeaSentence sentence;
    for (QByteArray const& body : log.toLatin1().split(' ')) {
        char const sum = std::accumulate(body.begin(), body.end(), '\0', std::bit_xor<char>());
        QByteArray const text = '$' + body + '*' + QByteArray(1, sum).toHex();
        if (sentence.read(text) == NmeaSentence::Verdict::Sound)
            assembler.add(sentence);
        else
            assembler.lineRefused();
    }
    assembler.finish();
    return assembler.takeEpochs();
}

/// "1.5 q1 5m 3used G05=40": second of 2020, quality, altitude, satellites; what is NaN is left
/// out.
QString textOf(Epoch const& epoch)
{
    QString text = QString::number(double(epoch.time - 1261872000000) / 1000.0);
    if (epoch.quality)
        text += QStringLiteral(" q%1").arg(int(*epoch.quality));
    if (!qIsNaN(epoch.altitude))
        text += QStringLiteral(" %1m").arg(epoch.altitude);
    if (!qIsNaN(epoch.satellitesInUse))
        text += QStringLiteral(" %1used").arg(epoch.satellitesInUse);
    for (SignalStrength const& strength : epoch.strengths)
        text += QStringLiteral(" %1=%2").arg(strength.key.label()).arg(strength.cn0);
    return text;
}

} // namespace

void tst_EpochAssembler::putsTogether_data()
{
    QTest::addColumn<QString>("log");
    QTest::addColumn<QString>("text"); // ends with epochs early, timeless, back, and numberless
    auto const row = [](char const* name, QString const& log, QString const& epochs,
                        QString const& leftOut = "0000") {
        QTest::newRow(name) << log << epochs + "; " + leftOut;
    };
    // Which sentences make an epoch.
    row("RMC first", "d1 a1,,,,,1,03,,5 g5=40 d2 a2 g5=41", "1 q1 5m 3used G05=40; 2 G05=41");
    row("RMC last", "a1,,,,,1,03,,5 g5=40 d1 a2 g5=41 d2", "1 q1 5m 3used G05=40; 2 G05=41");
    row("cut in front of a whole sentence", "l65=30 d1 g5=41 l65=31 d2 g5=42 l65=32",
        "1 G05=41 R01=31; 2 G05=42 R01=32", "1000");
    row("first satellites lost", "g5=40 l65=30 d1 # l65=31 r2 g5=42 l65=32 r3",
        "1 G05=40 R01=30; 2 R01=31; 3 G05=42 R01=32");
    row("time lost",
        "d1 GPGSV,2,1,5,6,,,41 GPGSV,2,2,5,5,,,40 # GPGSV,2,2,5,5,,,49 d3 GPGSV,2,1,5,6,,,43",
        "1 G05=40 G06=41; 3 G06=43", "0100");
    row("GGA lost where RMC ends the epoch", "a1 GPGSA d1 GPGSA,,,5 r2", "1 0used; 2 1used");
    row("cold start", "GPGGA g5=40 GPRMC GPGGA g5=40 GPRMC a3 d3", "3", "2000");
    // What they tell.
    row("two signals", "d1 g5=40,1 g5=30,6 g6=35", "1 G05 L1=40 G05 L2CL=30 G06=35");
    row("C/N0 empty, absurd or cut off", "d1 GPGSV,1,1,4,5,,,,6,,,100,7,,,-1,8,,", "1");
    row("no number", "d1 GLGSV,1,1,4,,,,53,0,,,40,x,,,41,,,,,65,,,42", "1 R01=42", "0003");
    row("more in use than GGA can tell",
        "d1 a1,,,,,1,12,,5 GNGSA,A,3,1,2,3,4,5,6,7,8,9,10,11,12,,,,1 "
        "GNGSA,A,3,13,12,,,,,,,,,,,,,,1 GNGSA,A,3,1,2,,,,,,,,,,,,,,3",
        "1 q1 5m 15used");
    row("altitude without a fix", "d1 a1,,,,,0,00,,0.0", "1 q0 0used");
    row("figures of fixed and float",
        "d1 a1,,,,,2 a2,,,,,3 a3,,,,,4 a4,,,,,5 a5,,,,,6 a6,,,,,7 a7,,,,,D a8,,,,,",
        "1 q2; 2 q2; 3 q4; 4 q3; 5 q5; 6 q6; 7 q6; 8");
    // When it was.
    row("midnight without RMC", "GPRMC,235959,A,,,,,,,010120 a0 GPGGA,235959.9 a1",
        "86399; 86400; 86401", "0010");
    row("date late", "GPGGA,235959 a0 GPRMC,000001,A,,,,,,,020120 a1", "86399; 86400; 86401");
    row("a gap of half a day is no step back", "d1 GPGGA,140001", "1; 50401");
    row("step back", "a1.71 d1.71 a1.408 r1.408 a2.408", "1.71; 2.408", "0010");
}

void tst_EpochAssembler::putsTogether()
{
    QFETCH(QString, log);
    EpochAssembler assembler(Placement{0, QDate()});
    QStringList texts;
    for (Epoch const& epoch : assemble(assembler, log))
        texts += textOf(epoch);
    EpochCounts const& out = assembler.counts();
    texts += QString::asprintf("%lld%lld%lld%lld", out.beforeFirstTime, out.withoutTime,
                               out.backInTime, out.cn0WithoutNumber);
    QTEST(texts.join("; "), "text");
    QVERIFY(assembler.isDateKnown());
}

void tst_EpochAssembler::placesWithoutDate()
{
    EpochAssembler dated(Placement{18, QDate(2020, 7, 11)});
    QCOMPARE(assemble(dated, "GPGGA,223745").value(0).time, 1278542283000);
    QVERIFY(!dated.isDateKnown());
    EpochAssembler undated(Placement{0, QDate()});
    QCOMPARE(assemble(undated, "a1.5").value(0).time, 1500);
}

QTEST_APPLESS_MAIN(tst_EpochAssembler)
#include "tst_epochassembler.moc"
