#include "lineartimegrid.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "testimage.h"
#include "zelplotglobals.h"

#include <QTest>
#include <limits>

namespace {
constexpr float noOffset = LinearTimeGrid::unknownUtcOffset;
}

class tst_LinearTimeGrid : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void label_data();
    void label();
    void dateAndTime();
    void localOffset_data();
    void localOffset();
    void endOfListIsAnAssertion();
    void drawnLabelsAreTimes();
};

void tst_LinearTimeGrid::label_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<ETimeType>("type");
    QTest::addColumn<int>("deltaLS");
    QTest::addColumn<float>("utcOffset");
    QTest::addColumn<QString>("text");
    auto const row = [](char const* name, double value, ETimeType type, int deltaLS,
                        float utcOffset, char const* text) {
        QTest::newRow(name) << value << type << deltaLS << utcOffset << text;
    };
    row("start of the axis", 0.0, eSHOW_GNSS, 15, noOffset, "0:00:00");
    row("one decimal", 1500.0, eSHOW_GNSS, 15, noOffset, "0:00:01.5");
    row("two decimals", 43205250.0, eSHOW_GNSS, 15, noOffset, "12:00:05.25");
    row("three decimals, leading zeros", 1005.0, eSHOW_GNSS, 15, noOffset, "0:00:01.005");
    row("rounded to the millisecond", 999.5, eSHOW_GNSS, 15, noOffset, "0:00:01");
    row("day boundary wraps", 86400000.0, eSHOW_GNSS, 15, noOffset, "0:00:00");
    row("GNSS needs no leap seconds", 20000.0, eSHOW_GNSS, -128, noOffset, "0:00:20");

    row("leap seconds", 20000.0, eSHOW_UTC, 15, noOffset, "0:00:05");
    row("too early for leap seconds", 10000.0, eSHOW_UTC, 15, noOffset, "0:00:10");
    row("leap seconds on the spot", 15000.0, eSHOW_UTC, 15, noOffset, "0:00:00");
    row("negative leap seconds are added", 0.0, eSHOW_UTC, -2, noOffset, "0:00:02");
    row("UTC not known", 20000.0, eSHOW_UTC, -128, noOffset, "UTC N/A");

    row("half hour ahead", 15000.0, eSHOW_LOCAL, 15, 5.5F, "5:30:00");
    row("half hour behind, with leap seconds", 15250.0, eSHOW_LOCAL, 15, -3.5F, "20:30:00.25");
    row("offset truncated to seconds", 1000.0, eSHOW_LOCAL, 0, -0.0004F, "0:00:00");
    row("offset not a number", 1000.0, eSHOW_LOCAL, 0, float(NaN), "0:00:01");
    row("endless offset", 0.0, eSHOW_LOCAL, 0, std::numeric_limits<float>::infinity(), "3:14:07");
    row("local time not known", 20000.0, eSHOW_LOCAL, -128, 1.0F, "Local N/A");

    row("end of the week", 604799999.0, eSHOW_TOW, -128, noOffset, "604.799,999");
    row("week boundary wraps", 604800000.0, eSHOW_TOW, -128, noOffset, "0");
    row("form of the locale", 604800250.0, eSHOW_TOW, -128, noOffset, "0,25");
    row("seconds never wrap", 604800000.0, eSHOW_SECONDS, -128, noOffset, "604.800");
    row("seconds of today", 1278542283100.0, eSHOW_SECONDS, 18, noOffset, "1.278.542.283,1");

    row("unknown form", 1000.0, ETimeType(9), 15, noOffset, "");
    row("negative counts as huge", -1.0, eSHOW_SECONDS, 15, noOffset, "18.446.744.073.709.552,000");
    row("negative modulo the week", -1.0, eSHOW_TOW, 15, noOffset, "570.351,615");
    row("negative time of day", -1.0, eSHOW_GNSS, 15, noOffset, "5:45:19.615");
    row("not a number is the start", double(NaN), eSHOW_GNSS, 15, noOffset, "0:00:00");
    row("huge saturates", 1e300, eSHOW_GNSS, 15, noOffset, "6:17:31.904");
    // The second 2^32 of 1970 falls on its start; unwrapped it would read 6:28:16.
    row("32 bits of seconds", 3979002496000.0, eSHOW_GNSS, 15, noOffset, "0:00:00");
}

void tst_LinearTimeGrid::label()
{
    QFETCH(double, value);
    QFETCH(ETimeType, type);
    QFETCH(int, deltaLS);
    QFETCH(float, utcOffset);
    LinearTimeGrid grid(short(deltaLS), eHORIZONTAL, nullptr);
    grid.utcOffset = utcOffset;
    grid.changeTimeFormat(type);
    QTEST(grid.getLabel(value, 7), "text");
}

void tst_LinearTimeGrid::dateAndTime()
{
    LinearTimeGrid grid(15, eHORIZONTAL, nullptr);
    QCOMPARE(grid.getDateTime(86400250.0),
             QDateTime(QDate(1980, 1, 7), QTime(0, 0, 0, 250), Qt::UTC));
    grid.timeType = eSHOW_LOCAL;
    grid.utcOffset = -1.0F;
    QCOMPARE(grid.getDateTime(15000.0), QDateTime(QDate(1980, 1, 5), QTime(23, 0), Qt::UTC));
    grid.deltaLS = LinearTimeGrid::unknownDeltaLS;
    QVERIFY(grid.getDateTime(15000.0).isNull());
}

void tst_LinearTimeGrid::localOffset_data()
{
    QTest::addColumn<float>("given");
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<float>("hours");
    QTest::newRow("given: with its half") << 5.5F << QByteArray("XXX-2") << 5.5F;
    QTest::newRow("of the host") << noOffset << QByteArray("XXX-2") << 2.0F;
    QTest::newRow("of the host, east: half cut") << noOffset << QByteArray("XXX-5:30") << 5.0F;
    QTest::newRow("of the host, west: half cut") << noOffset << QByteArray("XXX3:30") << -3.0F;
}

void tst_LinearTimeGrid::localOffset()
{
    QFETCH(float, given);
    QFETCH(QByteArray, zone);
    QByteArray const kept = qgetenv("TZ");
    qputenv("TZ", zone);
    LinearTimeGrid grid(15, eHORIZONTAL, nullptr);
    grid.utcOffset = given;
    float const hours = grid.getLocalTimeOffsetHours(1278542283000.0);
    qputenv("TZ", kept);
    QTEST(hours, "hours");
    QCOMPARE(grid.utcOffset, given);
}

void tst_LinearTimeGrid::endOfListIsAnAssertion()
{
    MessageRecorder messages;
    LinearTimeGrid grid(15, eHORIZONTAL, nullptr);
    grid.timeType = eSHOW_EOL;
    QCOMPARE(grid.getLabel(0.0, 0), QString());
    QStringList const taken = messages.take();
    QCOMPARE(taken.size(), 1);
    QVERIFY(taken.first().startsWith(QLatin1String("getLabel at src/timeplot/lineartimegrid:")));
    QVERIFY(taken.first().endsWith(QLatin1String("eSHOW_EOL should not occur")));
}

void tst_LinearTimeGrid::drawnLabelsAreTimes()
{
    LinearTimeGrid grid(15, eHORIZONTAL, nullptr);
    TestImage image(QSize(500, 300));
    grid.drawLabels(image.getPainter(), 0.0, 0.0, 1500.0, 1.0);
    QCOMPARE(grid.getLabels().mid(0, 3), QStringList({"0:00:00", "0:00:00.2", "0:00:00.4"}));
}

QTEST_MAIN(tst_LinearTimeGrid)
#include "tst_lineartimegrid.moc"
