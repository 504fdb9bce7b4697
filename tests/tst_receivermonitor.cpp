#include "options.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
constexpr QRgb autonomous = 0xfff9a825;
char const* const oneEpoch = "$GPGGA,120000.00,4717.11,N,00833.91,E,1,08,1.0,500.0,M,48.0,M,,*6A\n";

/// Pixels of the colour of an autonomous fix.
int count(QImage const& picture, QRect const& area)
{
    int pixels = 0;
    for (int i = 0; i < area.width() * area.height(); ++i)
        pixels += picture.pixel(area.x() + i % area.width(), area.y() + i / area.width())
            == autonomous;
    return pixels;
}
} // namespace

/// Runs the receiver monitor as a user does.
class tst_ReceiverMonitor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void unusableLogGivesOneLineAndStatus1();
    void wrongCommandLine();
    void snapshotShowsTheLog();
    void snapshotKeepsSizeMarginAndTime();
    void reportNamesWhatWasLeftOut();

private:
    int run(QStringList const& arguments);
    QString write(QString const& name, QByteArray const& content);

    QTemporaryDir m_dir;
    QString m_png = m_dir.filePath("some.png");
    QString m_out;
    QString m_err;
};

/// The exit status; -1 if it did not end by itself.
int tst_ReceiverMonitor::run(QStringList const& arguments)
{
    QProcess process;
    process.start(QStringLiteral(MONITOR), QStringList{"--snapshot", m_png} + arguments);
    bool const ended = process.waitForFinished(60000);
    m_out = QString::fromUtf8(process.readAllStandardOutput());
    m_err = QString::fromUtf8(process.readAllStandardError());
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QString tst_ReceiverMonitor::write(QString const& name, QByteArray const& content)
{
    QFile file(m_dir.filePath(name));
    bool const done = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    return done ? file.fileName() : QString();
}

void tst_ReceiverMonitor::unusableLogGivesOneLineAndStatus1()
{
    QByteArray const bytes("\0\xff$*\r\n$GP\0,*4", 13);
    for (auto const& [path, reason] : {std::pair(m_dir.filePath("missing"), "no such file"),
                                       {m_dir.path(), "folder"},
                                       {write("empty", ""), "empty"},
                                       {write("noise", "a\n$GPGGA,1*00\n"), "not one sound"},
                                       {write("bytes", bytes), "not one sound"}}) {
        QCOMPARE(run({path}), 1);
        QCOMPARE(m_err.count('\n'), 1);
        QVERIFY2(m_err.contains(path) && m_err.contains(reason), qPrintable(m_err));
        QVERIFY(!QFile::exists(m_png));
    }
}

void tst_ReceiverMonitor::wrongCommandLine()
{
    for (QString const line :
         {"", "a log", "--zoom a", "--speed 0 a", "--speed nan a", "--size 0x5 a",
          "--size 99999x5 a", "--leap-seconds -128 a", "--date 1980-01-05 a", "--time cet a"}) {
        Options options;
        QStringList const words = line.split(' ', Qt::SkipEmptyParts);
        QString const reason = Options::parse(QStringList("receivermonitor") + words, options);
        QString const named = line.startsWith("--") ? words.first().mid(2) : QString("log");
        QVERIFY2(reason.contains(named) && !reason.contains('\n'), qPrintable(line + reason));
    }
}

void tst_ReceiverMonitor::snapshotShowsTheLog()
{
    QCOMPARE(run({"--size", "900x700", EXAMPLE_DATA_DIR "/cold-start-4min.nmea"}), 0);
    QImage const picture(m_png);
    QCOMPARE(picture.size(), QSize(900, 700));
    // The log has an autonomous fix throughout and one gap of whole epochs near its start: in the
    // row of the bar its colour comes in exactly two runs.
    int row = 0;
    for (int y = 0; y < 700; ++y)
        row = count(picture, {0, y, 900, 1}) > count(picture, {0, row, 900, 1}) ? y : row;
    QVERIFY(count(picture, {0, row, 900, 1}) > 600);
    int runs = 0;
    for (int x = 1; x < 900; ++x)
        runs += count(picture, {x - 1, row, 2, 1}) == 1 && count(picture, {x, row, 1, 1}) == 1;
    QCOMPARE(runs, 2);
}

void tst_ReceiverMonitor::snapshotKeepsSizeMarginAndTime()
{
    QString const log = write("one.nmea", oneEpoch);
    auto const picture = [&](QString const& timeType) {
        run({"--size", "300x250", "--time", timeType, log});
        return QImage(m_png);
    };
    QImage const utc = picture("utc");
    // The controls, which are not in the picture, would need more.
    QCOMPARE(utc.size(), QSize(300, 250));
    // One epoch gives the margins no extent to measure, yet its bar, which is thicker than the
    // square in the text, stands right of the value labels.
    int start = 0;
    while (start < 300 && count(utc, {start, 0, 1, 250}) < 12)
        ++start;
    QVERIFY2(start > 50 && start < 300, qPrintable(QString::number(start)));
    // Tests run in the time zone UTC.
    QCOMPARE(picture("local"), utc);
    QVERIFY(picture("gnss") != utc);
}

void tst_ReceiverMonitor::reportNamesWhatWasLeftOut()
{
    QByteArray const zda = "$GPZDA,120000.00,01,01,2020,00,00*65\n"; // sound, of another kind
    QCOMPARE(run({write("some.nmea", "$GPGGA,1*00\nhello\n# a comment\n" + zda + oneEpoch)}), 0);
    for (QString const line :
         {"epochs shown: 1\nsound sentences: 2\n", "never tells its date",
          "left out, failed checksums: 1\n", "left out, lines that are no sentence: 1\n",
          "left out, epochs that step back in time: 0\n"})
        QVERIFY2(m_out.contains(line), qPrintable(m_out));
}

QTEST_GUILESS_MAIN(tst_ReceiverMonitor)
#include "tst_receivermonitor.moc"
