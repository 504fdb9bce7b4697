#include "nmeasentence.h"
#include "satellite.h"

#include <QTest>

using Verdict = NmeaSentence::Verdict;

/// Faults: damaged sentences taken, sound ones refused, a satellite under the wrong name.
class tst_NmeaSentence : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void judges_data();
    void judges();
    void takesFieldsApart();
    void readsOnlyPlainNumbers_data();
    void readsOnlyPlainNumbers();
    void namesSatellites_data();
    void namesSatellites();
};

void tst_NmeaSentence::judges_data()
{
    int const sound = int(Verdict::Sound);
    int const failed = int(Verdict::FailedChecksum);
    int const none = int(Verdict::NoSentence);
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("verdict");
    QTest::newRow("as received") << QByteArray("$GPGSA,A,1,,,,,,,,,,,,,,,*1E") << sound;
    QTest::newRow("checksum in lower case") << QByteArray("$GPGSA,A,1,,,,,,,,,,,,,,,*1e") << sound;
    QTest::newRow("time stamp of a logger behind it")
        << QByteArray("$GPGLL,,,,,,V,N*64,1552560000") << sound;
    QTest::newRow("maker's own") << QByteArray("$PTNL*06") << sound;
    QTest::newRow("one bit flipped") << QByteArray("$GPGSA,A,0,,,,,,,,,,,,,,,*1E") << failed;
    QTest::newRow("letter too many") << QByteArray("$GGPGSV,1,1,00*79") << failed;
    QTest::newRow("high bit set") << QByteArray("$GPGLL,,,,,,\xD6,N*64") << failed;
    QTest::newRow("empty") << QByteArray() << none;
    QTest::newRow("without an address") << QByteArray("$*00") << none;
    QTest::newRow("address in lower case") << QByteArray("$gp*17") << none;
    QTest::newRow("without a checksum") << QByteArray("$GPGLL,,,,,,V,N") << none;
    QTest::newRow("cut in the checksum") << QByteArray("$GPGLL,,,,,,V,N*6") << none;
    QTest::newRow("checksum of three digits") << QByteArray("$GPGLL,,,,,,V,N*640") << none;
    QTest::newRow("NUL, which no checksum sees") << QByteArray("$GPGLL,,,\0,,,V,N*64", 19) << none;
    QTest::newRow("two high bits, which cancel") << QByteArray("$GPGLL,,,,,,\xD6,\xCE*64") << none;
    QTest::newRow("no start") << QByteArray("GPGLL,,,,,,V,N*64") << none;
}

void tst_NmeaSentence::judges()
{
    QFETCH(QByteArray, text);
    NmeaSentence sentence;
    QTEST(int(sentence.read(text)), "verdict");
}

void tst_NmeaSentence::takesFieldsApart()
{
    NmeaSentence sentence;

    QCOMPARE(sentence.read("$GPRMC,,V,,,,,,,,,,N*53"), Verdict::Sound);
    QCOMPARE(sentence.kind(), NmeaSentence::Kind::Rmc);
    QCOMPARE(sentence.talker(), QByteArrayView("GP"));
    QCOMPARE(sentence.fieldCount(), 12);
    QCOMPARE(sentence.field(1), QByteArrayView("V"));
    QCOMPARE(sentence.field(11), QByteArrayView("N"));
    QVERIFY(sentence.field(12).isEmpty());

    QCOMPARE(sentence.read("$PRGSA,1*4A"), Verdict::Sound);
    QCOMPARE(sentence.kind(), NmeaSentence::Kind::Other);
    QCOMPARE(sentence.fieldCount(), 0);
}

void tst_NmeaSentence::readsOnlyPlainNumbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("integer");
    QTest::addColumn<double>("decimal");
    QTest::newRow("ten digits overflow")
        << QByteArray("$GPGGA,9999999999*7A") << -1 << 9999999999.0;
    QTest::newRow("below zero") << QByteArray("$GPGGA,-29.5*47") << -1 << -29.5;
    QTest::newRow("point alone") << QByteArray("$GPGGA,.*54") << -1 << -1.0;
    QTest::newRow("not a number") << QByteArray("$GPGGA,nan*1B") << -1 << -1.0;
    QTest::newRow("exponent") << QByteArray("$GPGGA,1e9*17") << -1 << -1.0;
}

void tst_NmeaSentence::readsOnlyPlainNumbers()
{
    QFETCH(QByteArray, text);
    NmeaSentence sentence;
    QCOMPARE(sentence.read(text), Verdict::Sound);
    QTEST(sentence.integer(0).value_or(-1), "integer");
    QTEST(sentence.decimal(0).value_or(-1.0), "decimal");
}

void tst_NmeaSentence::namesSatellites_data()
{
    QTest::addColumn<QByteArray>("talker");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("signal");
    QTest::addColumn<QString>("label");
    QTest::newRow("no signal told") << QByteArray("GP") << 5 << 0 << "G05";
    QTest::newRow("two signals of one band") << QByteArray("GP") << 5 << 6 << "G05 L2CL";
    QTest::newRow("SBAS among GPS: PRN 138") << QByteArray("GP") << 51 << 1 << "S38 L1";
    QTest::newRow("GLONASS among others") << QByteArray("GN") << 65 << 0 << "R01";
    QTest::newRow("GLONASS by slot") << QByteArray("GL") << 24 << 3 << "R24 L2";
    QTest::newRow("Galileo among others") << QByteArray("GN") << 336 << 0 << "E36";
    QTest::newRow("BeiDou beyond 37 is no SBAS") << QByteArray("BD") << 60 << 8 << "C60 B3I";
    QTest::newRow("QZSS by its PRN") << QByteArray("GQ") << 193 << 1 << "J01 L1";
    QTest::newRow("outside every range") << QByteArray("GN") << 850 << 3 << "?850 #3";
    QTest::newRow("no number") << QByteArray("GP") << 0 << 0 << "none";
}

void tst_NmeaSentence::namesSatellites()
{
    QFETCH(QByteArray, talker);
    QFETCH(int, number);
    QFETCH(int, signal);
    auto const satellite = satelliteOf(constellationOfTalker(talker), number);
    SatelliteSignal const key = {satellite.value_or(Satellite()), quint8(signal)};
    QTEST(satellite ? key.label() : QStringLiteral("none"), "label");
}

QTEST_APPLESS_MAIN(tst_NmeaSentence)
#include "tst_nmeasentence.moc"
