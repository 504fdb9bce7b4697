#include "nmeasentence.h"
#include "satellite.h"

#include <QTest>

namespace {
using Verdict = NmeaSentence::Verdict;
constexpr Verdict sound = Verdict::Sound;
constexpr Verdict failed = Verdict::FailedChecksum;
constexpr Verdict none = Verdict::NoSentence;
} // namespace

/// Faults: damaged sentences taken, sound ones refused, a satellite under the wrong name.
class tst_NmeaSentence : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void judges_data();
    void judges();
    void takesFieldsApart();
    void readsOnlyPlainNumbers();
    void namesSatellites();
};

void tst_NmeaSentence::judges_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("verdict");
    auto const row = [](char const* name, QByteArray const& text, Verdict verdict) {
        QTest::newRow(name) << text << int(verdict);
    };
    row("checksum in lower case", "$GPGSA,A,1,,,,,,,,,,,,,,,*1e", sound);
    row("time stamp of a logger behind it", "$GPGLL,,,,,,V,N*64,1552560000", sound);
    row("one bit flipped", "$GPGSA,A,0,,,,,,,,,,,,,,,*1E", failed);
    row("high bit set", "$GPGLL,,,,,,\xD6,N*64", failed);
    row("without an address", "$*00", none);
    row("address in lower case", "$gp*17", none);
    row("without a checksum", "$GPGLL,,,,,,V,N", none);
    row("checksum of three digits", "$GPGLL,,,,,,V,N*640", none);
    row("NUL, which no checksum sees", QByteArray("$GPGLL,,,\0,,,V,N*64", 19), none);
    row("two high bits, which cancel", "$GPGLL,,,,,,\xD6,\xCE*64", none);
    row("no start", "GPGLL,,,,,,V,N*64", none);
}

void tst_NmeaSentence::judges()
{
    QFETCH(QByteArray, text);
    QTEST(int(NmeaSentence().read(text)), "verdict");
}

void tst_NmeaSentence::takesFieldsApart()
{
    NmeaSentence sentence;
    QCOMPARE(sentence.read("$GPRMC,,V,,,,,,,,,,N*53"), sound);
    QCOMPARE(sentence.kind(), NmeaSentence::Kind::Rmc);
    QCOMPARE(sentence.talker(), QByteArrayView("GP"));
    QCOMPARE(sentence.fieldCount(), 12);
    QCOMPARE(sentence.field(11), QByteArrayView("N"));
    QVERIFY(sentence.field(12).isEmpty());
    // A maker's own address is no GSA.
    QCOMPARE(sentence.read("$PRGSA,1*4A"), sound);
    QCOMPARE(sentence.kind(), NmeaSentence::Kind::Other);
}

void tst_NmeaSentence::readsOnlyPlainNumbers()
{
    NmeaSentence sentence;
    QString numbers;
    for (QByteArray const text : {"$GPGGA,9999999999*7A", "$GPGGA,-29.5*47", "$GPGGA,.*54",
                                  "$GPGGA,nan*1B", "$GPGGA,1e9*17"}) {
        QCOMPARE(sentence.read(text), sound);
        numbers += QString::number(sentence.integer(0).value_or(-1));
        numbers += QStringLiteral(" %1; ").arg(sentence.decimal(0).value_or(-1.0));
    }
    QCOMPARE(numbers, QString("-1 1e+10; -1 -29.5; -1 -1; -1 -1; -1 -1; "));
}

void tst_NmeaSentence::namesSatellites()
{
    auto const label = [](char const* talker, int number, int signal) {
        auto const satellite = satelliteOf(constellationOfTalker(talker), number);
        return satellite ? SatelliteSignal{*satellite, quint8(signal)}.label() : QString();
    };
    QCOMPARE(label("GP", 5, 6), QString("G05 L2CL"));
    QCOMPARE(label("GP", 51, 1), QString("S38 L1")); // SBAS among GPS: PRN 138
    QCOMPARE(label("GN", 65, 0), QString("R01")); // GLONASS among others
    QCOMPARE(label("GL", 24, 3), QString("R24 L2")); // GLONASS by slot
    QCOMPARE(label("GN", 336, 0), QString("E36"));
    QCOMPARE(label("BD", 60, 8), QString("C60 B3I")); // beyond 37, yet no SBAS
    QCOMPARE(label("GQ", 193, 1), QString("J01 L1")); // by its PRN
    QCOMPARE(label("GN", 850, 3), QString("?850 #3")); // outside every range
    QCOMPARE(label("GP", 0, 0), QString());
}

QTEST_APPLESS_MAIN(tst_NmeaSentence)
#include "tst_nmeasentence.moc"
