#include "librarytest.h"
#include "lineartimegrid.h"
#include "zelplotglobals.h"

namespace {
constexpr float noOffset = LinearTimeGrid::unknownUtcOffset;

struct TestGrid : LinearTimeGrid
{
    explicit TestGrid(ETimeType type, int leapSeconds = 15, float offset = noOffset)
        : LinearTimeGrid(short(leapSeconds), eHORIZONTAL, nullptr)
    {
        changeTimeFormat(type);
        utcOffset = offset;
    }
};
} // namespace

class tst_LinearTimeGrid : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    void label_data();
    void label();
    void localOffset();
    void endOfListIsAnAssertion();
};

void tst_LinearTimeGrid::label_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("text");
    auto const row = [](char const* name, double value, TestGrid&& grid, QString const& text) {
        QTest::newRow(name) << grid.getLabel(value, 7) << text;
    };
    row("next day", 86400250.0, TestGrid(eSHOW_GNSS), "0:00:00.25");
    row("one decimal", 1500.0, TestGrid(eSHOW_GNSS), "0:00:01.5");
    row("three decimals, leading zeros", 1005.0, TestGrid(eSHOW_GNSS), "0:00:01.005");
    row("rounded to the millisecond", 999.5, TestGrid(eSHOW_GNSS), "0:00:01");
    row("leap seconds", 20000.0, TestGrid(eSHOW_UTC), "0:00:05");
    row("too early for leap seconds", 10000.0, TestGrid(eSHOW_UTC), "0:00:10");
    row("leap seconds on the spot", 15000.0, TestGrid(eSHOW_UTC), "0:00:00");
    row("negative leap seconds are added", 0.0, TestGrid(eSHOW_UTC, -2), "0:00:02");
    row("UTC not known", 20000.0, TestGrid(eSHOW_UTC, -128), "UTC N/A");
    row("half hour behind, leap seconds", 15250.0, TestGrid(eSHOW_LOCAL, 15, -3.5F), "20:30:00.25");
    row("offset not a number", 1000.0, TestGrid(eSHOW_LOCAL, 0, float(NaN)), "0:00:01");
    row("local time not known", 20000.0, TestGrid(eSHOW_LOCAL, -128, 1.0F), "Local N/A");
    row("seconds never wrap", 604800000.0, TestGrid(eSHOW_SECONDS), "604.800");
    row("week boundary wraps", 604800250.0, TestGrid(eSHOW_TOW), "0,25");
    row("negative counts as huge", -1.0, TestGrid(eSHOW_TOW), "570.351,615");
    row("not a number is the start", double(NaN), TestGrid(eSHOW_GNSS), "0:00:00");
    row("huge saturates", 1e300, TestGrid(eSHOW_GNSS), "6:17:31.904");
    // The second 2^32 of 1970 falls on its start; unwrapped it would read 6:28:16.
    row("32 bits of seconds", 3979002496000.0, TestGrid(eSHOW_GNSS), "0:00:00");
}

void tst_LinearTimeGrid::label()
{
    QFETCH(QString, actual);
    QTEST(actual, "text");
}

void tst_LinearTimeGrid::localOffset()
{
    auto const offsetIn = [kept = qgetenv("TZ")](char const* zone, float given) {
        qputenv("TZ", zone);
        float const hours = TestGrid(eSHOW_LOCAL, 15, given).getLocalTimeOffsetHours(1.278e12);
        qputenv("TZ", kept);
        return hours;
    };
    QCOMPARE(offsetIn("XXX-2", 5.5F), 5.5F);
    // The host's loses its half hour, towards zero.
    QCOMPARE(offsetIn("XXX-5:30", noOffset), 5.0F);
    QCOMPARE(offsetIn("XXX3:30", noOffset), -3.0F);
}

void tst_LinearTimeGrid::endOfListIsAnAssertion()
{
    QCOMPARE(TestGrid(eSHOW_EOL).getLabel(0.0, 0), QString());
    QVERIFY(messages->tookOnly(QStringLiteral("getLabel at src/timeplot/lineartimegrid:")));
}

QTEST_MAIN(tst_LinearTimeGrid)
#include "tst_lineartimegrid.moc"
