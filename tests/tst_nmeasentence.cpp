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
    void judges();
    void takesFieldsApart();
    void readsOnlyPlainNumbers();
    void namesSatellites();
};

void tst_NmeaSentence::judges()
{
    using Row = std::pair<QByteArray, Verdict>;
    for (auto const& [text, verdict] :
         {Row("$GPGSA,A,1,,,,,,,,,,,,,,,*1e", sound), // lower case
          Row("$GPGLL,,,,,,V,N*64,1552560000", sound), // time stamp of a logger
          Row("$GPGSA,A,0,,,,,,,,,,,,,,,*1E", failed), // one bit flipped
          Row("$GPGLL,,,,,,\xD6,N*64", failed), Row("$*00", none), Row("$gp*17", none),
          Row("$GPGLL,,,,,,V,N", none), Row("$GPGLL,,,,,,V,N*640", none),
          Row(QByteArray("$GPGLL,,,\0,,,V,N*64", 19), none), // NUL, which no checksum sees
          Row("$GPGLL,,,,,,\xD6,\xCE*64", none), // two high bits, which cancel
          Row("GPGLL,,,,,,V,N*64", none)})
        QVERIFY2(NmeaSentence().read(text) == verdict, text);
}

void tst_NmeaSentence::takesFieldsApart()
{
    NmeaSentence sentence;
    QCOMPARE(sentence.read("$GPRMC,,V,,,,,,,,,,N*53"), sound);
    QCOMPARE(sentence.kind(), NmeaSentence::Kind::Rmc);
    QCOMPARE(sentence.talker(), QByteArrayView("GP"));
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
        numbers += QString("%1 ").arg(sentence.integer(0).value_or(-1));
        numbers += QString("%1; ").arg(sentence.decimal(0).value_or(-1.0));
    }
    QCOMPARE(numbers, QString("-1 1e+10; -1 -29.5; -1 -1; -1 -1; -1 -1; "));
}

void tst_NmeaSentence::namesSatellites()
{
    auto const label = [](char const* talker, int number, int signal) {
        auto const satellite = satelliteOf(constellationOfTalker(talker), number);
        return satellite ? SatelliteSignal{*satellite, quint8(signal)}.label() : QString();
    };
    QCOMPARE(label("GP", 51, 1), QString("S38 L1")); // SBAS among GPS: PRN 138
    QCOMPARE(label("GN", 65, 0), QString("R01")); // GLONASS among others
    QCOMPARE(label("BD", 60, 8), QString("C60 B3I")); // beyond 37, yet no SBAS
    QCOMPARE(label("GQ", 193, 1), QString("J01 L1")); // by its PRN
    QCOMPARE(label("GN", 850, 3), QString("?850 #3")); // outside every range
    QCOMPARE(label("GP", 0, 0), QString());
}

QTEST_APPLESS_MAIN(tst_NmeaSentence)
#include "tst_nmeasentence.moc"
