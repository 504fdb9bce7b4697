#include "options.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr QRgb autonomous = 0xfff9a825;
char const* const oneEpoch = "$GPGGA,120000.00,4717.11,N,00833.91,E,1,08,1.0,500.0,M,48.0,M,,*6A\n";

int countInColumn(QImage const& picture, int x, QRgb color)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        count += picture.pixel(x, y) == color ? 1 : 0;
    return count;
}

} // namespace

/// Runs the receiver monitor as a user does.
class tst_ReceiverMonitor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void unusableLogGivesOneLineAndStatus1_data();
    void unusableLogGivesOneLineAndStatus1();
    void wrongCommandLine_data();
    void wrongCommandLine();
    void snapshotShowsTheLog();
    void snapshotKeepsSizeMarginAndTime();
    void reportNamesWhatWasLeftOut();

private:
    struct Outcome
    {
        int status;
        QString out;
        QString err;
    };
    static Outcome run(QStringList const& arguments);
    QString write(QString const& name, QByteArray const& content);

    QTemporaryDir m_dir;
};

tst_ReceiverMonitor::Outcome tst_ReceiverMonitor::run(QStringList const& arguments)
{
    QProcess process;
    process.start(QStringLiteral(MONITOR), arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, process.errorString()};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString tst_ReceiverMonitor::write(QString const& name, QByteArray const& content)
{
    QFile file(m_dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return QString();
    return file.fileName();
}

void tst_ReceiverMonitor::unusableLogGivesOneLineAndStatus1_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    QTest::newRow("missing") << m_dir.filePath("missing.nmea") << "no such file";
    QTest::newRow("a folder") << m_dir.path() << "folder";
    QTest::newRow("empty") << write("empty.nmea", "") << "file is empty";
    QTest::newRow("no sound sentence")
        << write("noise.nmea", "hello\n$GPGGA,1*00\n") << "not one sound";
    QTest::newRow("bytes") << write("bytes.nmea", QByteArray("\0\xff$*\r\n$GP\0,*4", 13))
                           << "not one sound";
}

void tst_ReceiverMonitor::unusableLogGivesOneLineAndStatus1()
{
    QFETCH(QString, path);
    QFETCH(QString, reason);
    Outcome const outcome = run({"--snapshot", m_dir.filePath("none.png"), path});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.err.count('\n'), 1);
    QVERIFY2(outcome.err.contains(path + ": ") && outcome.err.contains(reason),
             qPrintable(outcome.err));
    QVERIFY(!QFile::exists(m_dir.filePath("none.png")));
}

void tst_ReceiverMonitor::wrongCommandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    QTest::newRow("no log") << QStringList() << "log";
    QTest::newRow("two logs") << QStringList{"a", "b"} << "log";
    QTest::newRow("unknown option") << QStringList{"--zoom", "a"} << "zoom";
    QTest::newRow("speed of 0") << QStringList{"--speed", "0", "a"} << "--speed";
    QTest::newRow("speed that is no number") << QStringList{"--speed", "nan", "a"} << "--speed";
    QTest::newRow("size without extent") << QStringList{"--size", "0x5", "a"} << "--size";
    QTest::newRow("size beyond reason") << QStringList{"--size", "99999x5", "a"} << "--size";
    QTest::newRow("leap seconds unknown to the axis")
        << QStringList{"--leap-seconds", "-128", "a"} << "--leap-seconds";
    QTest::newRow("date before GNSS time") << QStringList{"--date", "1980-01-05", "a"} << "--date";
    QTest::newRow("form of time") << QStringList{"--time", "cet", "a"} << "--time";
}

void tst_ReceiverMonitor::wrongCommandLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    Options options;
    QString const reason = Options::parse(QStringList("receivermonitor") + arguments, options);
    QVERIFY2(reason.contains(named), qPrintable(reason));
    QVERIFY(!reason.contains('\n'));
}

void tst_ReceiverMonitor::snapshotShowsTheLog()
{
    QString const path = m_dir.filePath("cold.png");
    Outcome const outcome = run({"--snapshot", path, "--size", "900x700",
                                 QStringLiteral(EXAMPLE_DATA_DIR "/cold-start-4min.nmea")});
    QCOMPARE(outcome.status, 0);
    QImage const picture(path);
    QCOMPARE(picture.size(), QSize(900, 700));

    // The log has an autonomous fix throughout and one gap of whole epochs near its start: in the
    // row of the bar its colour comes in exactly two runs.
    int count = 0;
    int runs = 0;
    for (int y = 0; y < picture.height() && count <= 600; ++y) {
        count = 0;
        runs = 0;
        QRgb previous = 0;
        for (int x = 0; x < picture.width(); ++x) {
            QRgb const color = picture.pixel(x, y);
            count += color == autonomous ? 1 : 0;
            runs += color == autonomous && previous != autonomous ? 1 : 0;
            previous = color;
        }
    }
    QVERIFY(count > 600);
    QCOMPARE(runs, 2);
}

void tst_ReceiverMonitor::snapshotKeepsSizeMarginAndTime()
{
    QString const log = write("one.nmea", oneEpoch);
    auto const picture = [&](QString const& timeType) {
        QString const path = m_dir.filePath(timeType + ".png");
        run({"--snapshot", path, "--size", "300x250", "--time", timeType, log});
        return QImage(path);
    };
    QImage const utc = picture("utc");

    // The controls, which are not in the picture, would need more.
    QCOMPARE(utc.size(), QSize(300, 250));
    // One epoch gives the margins no extent to measure, yet its bar, which is thicker than the
    // square in the text, stands right of the value labels.
    int start = 0;
    while (start < utc.width() && countInColumn(utc, start, autonomous) < 12)
        ++start;
    QVERIFY2(start > 50 && start < utc.width(), qPrintable(QString::number(start)));
    // Tests run in the time zone UTC.
    QCOMPARE(picture("local"), utc);
    QVERIFY(picture("gnss") != utc);
}

void tst_ReceiverMonitor::reportNamesWhatWasLeftOut()
{
    QByteArray log = "$GPGGA,1*00\nhello\n# a comment\n";
    log += "$GPZDA,120000.00,01,01,2020,00,00*65\n"; // sound, of another kind
    log += oneEpoch;
    Outcome const outcome
        = run({"--snapshot", m_dir.filePath("some.png"), write("some.nmea", log)});
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.out.contains("epochs shown: 1\nsound sentences: 2\n"),
             qPrintable(outcome.out));
    QVERIFY(outcome.out.contains("never tells its date"));
    QVERIFY(outcome.out.contains("left out, failed checksums: 1\n"));
    QVERIFY(outcome.out.contains("left out, lines that are no sentence: 1\n"));
    QVERIFY(outcome.out.contains("left out, epochs that step back in time: 0\n"));
}

QTEST_GUILESS_MAIN(tst_ReceiverMonitor)
#include "tst_receivermonitor.moc"
