#include "librarytest.h"
#include "looklegend.h"
#include "monitorwindow.h"
#include "options.h"
#include "plotpicture.h"
#include "viewsynchronizationorganizer.h"
#include "xycanvas.h"
#include "xydataset.h"
#include "xyplot.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolTip>
#include <algorithm>

namespace {
constexpr QRgb autonomous = 0xfff9a825;
/// What the platform without a screen says of a tool tip.
constexpr char toolTipWarning[] = "does not support raise()";

/// Pixels of the colour of an autonomous fix.
int count(QImage const& picture, QRect const& area)
{
    QImage const part = picture.copy(area).convertToFormat(QImage::Format_ARGB32);
    auto const* const pixels = reinterpret_cast<QRgb const*>(part.constBits());
    return int(std::count(pixels, pixels + area.width() * area.height(), autonomous));
}

ViewSynchronizationOrganizer* organizer()
{
    return ViewSynchronizationOrganizer::getInstance();
}

void sendMove(XYCanvas* canvas, QPoint pixel)
{
    QMouseEvent move(QEvent::MouseMove, pixel, QPointF(), Qt::NoButton, {}, {});
    QCoreApplication::sendEvent(canvas, &move);
}

/// The window after a replay of the cold start.
struct Replayed
{
    Replayed()
    {
        LogReader::readFile(EXAMPLE_DATA_DIR "/cold-start-4min.nmea", {}, log);
        window = std::make_unique<MonitorWindow>(log, 18, eSHOW_UTC, Options::fastestReplay);
        window->replay();
        bool const isFed = QTest::qWaitFor([this] { return tells("Epoch 186 of 186"); });
        window->grab();
        plots = window->findChildren<XYPlot*>();
        isReady = isFed && plots.size() == 4;
    }
    bool tells(QString const& text) const
    {
        auto const labels = window->statusBar()->findChildren<QLabel*>();
        return std::any_of(labels.cbegin(), labels.cend(),
                           [&](QLabel const* label) { return label->text().contains(text); });
    }

    ReceiverLog log;
    std::unique_ptr<MonitorWindow> window;
    QList<XYPlot*> plots;
    bool isReady = false;
};
} // namespace

/// Runs the receiver monitor as a user does.
class tst_ReceiverMonitor : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void unusableLogGivesOneLineAndStatus1();
    void wrongCommandLine();
    void snapshotShowsTheLog();
    void snapshotOfOneEpochAndItsReport();
    void toolBarReachesAllPlotsAndLegendItsOwn();
    void plotsKeepStepInTheScopeOfTheLastRun();
    void pictureHasItsSizeAndLeavesTheScreenAlone();
    void pointUnderTheMouseTellsItsState();

protected:
    void deleteObjects() override
    {
        organizer()->enableScope(ViewSynchronizer::None);
        for (auto const scope : {ViewSynchronizer::FileScope, ViewSynchronizer::ApplicationScope})
            qDeleteAll(organizer()->getSynchronizers(scope));
    }

private:
    /// The exit status; -1 if it did not end by itself.
    int run(QStringList const& arguments)
    {
        QProcess process;
        process.start(QStringLiteral(MONITOR), QStringList{"--snapshot", m_png} + arguments);
        bool const ended = process.waitForFinished(60000);
        m_out = QString::fromUtf8(process.readAllStandardOutput());
        m_err = QString::fromUtf8(process.readAllStandardError());
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QString write(QString const& name, QByteArray const& content)
    {
        QFile file(m_dir.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) >= 0 ? file.fileName() : "";
    }

    QTemporaryDir m_dir;
    QString m_png = m_dir.filePath("some.png");
    QString m_out;
    QString m_err;
};

void tst_ReceiverMonitor::unusableLogGivesOneLineAndStatus1()
{
    for (auto const& [path, reason] : {std::pair(m_dir.filePath("missing"), "no such file"),
                                       {write("empty", ""), "empty"},
                                       {write("noise", "\xff$*\n$GPGGA,1*00\n"), "one sound"}}) {
        QCOMPARE(run({path}), 1);
        bool const named = m_err.contains(path) && m_err.contains(reason);
        QVERIFY2(named && m_err.count('\n') == 1 && !QFile::exists(m_png), qPrintable(m_err));
    }
}

void tst_ReceiverMonitor::wrongCommandLine()
{
    for (QString const line : {"", "a log", "--zoom a", "--speed nan a", "--size 0x5 a",
                               "--leap-seconds -128 a", "--date 1980-01-05 a", "--time cet a"}) {
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
    // The log has an autonomous fix throughout and one gap of whole epochs near its start: in the
    // first rows of three bars, left of the legends, its colour comes in exactly two runs.
    int bars = 0;
    for (int y = 1; y < 700; ++y) {
        if (count(picture, {300, y - 1, 1, 2}) != 1 || count(picture, {300, y, 1, 1}) != 1)
            continue;
        int runs = 0;
        for (int x = 1; x < 550; ++x)
            runs += count(picture, {x - 1, y, 2, 1}) == 1 && count(picture, {x, y, 1, 1}) == 1;
        QCOMPARE(runs, 2);
        ++bars;
    }
    QCOMPARE(bars, 3);
}

void tst_ReceiverMonitor::snapshotOfOneEpochAndItsReport()
{
    QString const log = write("some.nmea",
                              "$GPGGA,1*00\nhello\n# comment\n$GPGGA,120000.00,4717.11,N,00833.91,"
                              "E,1,08,1.0,500.0,M,48.0,M,,*6A\n");
    QStringList const arguments{"--size", "300x250", log, "--time"};
    QCOMPARE(run(arguments + QStringList("utc")), 0);
    QImage const utc(m_png);
    // The controls, which are not in the picture, would need more.
    QCOMPARE(utc.size(), QSize(300, 250));
    // One epoch gives the margins no extent to measure, yet its bar stands right of the labels.
    int start = 0;
    while (start < 300 && count(utc, {start, 0, 1, 250}) < 12)
        ++start;
    QVERIFY(start > 50 && start < 300);
    QCOMPARE(run(arguments + QStringList("gnss")), 0);
    QVERIFY(QImage(m_png) != utc);
    for (QString const line :
         {"epochs shown: 1\nsound sentences: 1\n", "never tells its date",
          "left out, failed checksums: 1\n", "left out, lines that are no sentence: 1\n"})
        QVERIFY2(m_out.contains(line), qPrintable(m_out));
}

void tst_ReceiverMonitor::toolBarReachesAllPlotsAndLegendItsOwn()
{
    Replayed replayed;
    QVERIFY(replayed.isReady);
    MonitorWindow& window = *replayed.window;
    QList<XYPlot*> const plots = replayed.plots;
    for (XYPlot const* const plot : plots)
        plot->getCanvas()->zoomInHorizontal();

    QMap<QString, QAction*> tools;
    for (QAction* const action : window.findChildren<QAction*>())
        tools.insert(action->text(), action);
    window.findChild<QComboBox*>()->setCurrentIndex(eSHOW_TOW);
    tools["Drag"]->trigger();
    tools["Show all"]->trigger();
    tools["&Crosshair"]->setChecked(false);
    QVector<QImage> before;
    for (XYPlot const* const plot : plots) {
        XYCanvas* const canvas = plot->getCanvas();
        before.append(canvas->grab().toImage());
        QCOMPARE(canvas->cursor().shape(), Qt::OpenHandCursor);
        QCOMPARE(canvas->getViewBounds().minX, canvas->getDataBounds().minX);
        QCOMPARE(plot->getAxisTitle(eVERTICAL), "GNSS Time (TOW)");
        for (bool const tells : {true, false}) { // the log begins on a Tuesday at 10:52
            tools["Coordinates"]->setChecked(tells);
            sendMove(canvas, {40, 40});
            QCOMPARE(replayed.tells("211,9"), tells);
        }
    }
    LookLegend* const legend = window.findChildren<LookLegend*>().at(1);
    legend->findChild<QCheckBox*>()->click();
    for (int i = 0; i < 4; ++i)
        QCOMPARE(plots.at(i)->getCanvas()->grab().toImage() == before.at(i), i != 1);

    tools["Restart"]->trigger();
    QTRY_COMPARE(legend->getLook()->getPresentLookEntries().size(), 1);
    QVERIFY(messages->takeCount(toolTipWarning) > 0);
}

void tst_ReceiverMonitor::plotsKeepStepInTheScopeOfTheLastRun()
{
    qputenv("XDG_CONFIG_HOME", m_dir.path().toLocal8Bit());
    {
        Replayed const former;
        former.window->keepScope();
        organizer()->getEnablementAction(ViewSynchronizer::FileScope)->trigger();
    }
    organizer()->enableScope(ViewSynchronizer::None);
    Replayed const replayed;
    replayed.window->keepScope();
    QCOMPARE(organizer()->getCurrentEnabledScope(), ViewSynchronizer::FileScope);
    Bounds const all = replayed.plots.at(0)->getCanvas()->getViewBounds();
    replayed.plots.at(1)->getCanvas()->zoomInHorizontal();
    for (XYPlot const* const plot : replayed.plots) {
        Bounds const view = plot->getCanvas()->getViewBounds();
        QCOMPARE(view.size(Bounds::Horizontal), all.size(Bounds::Horizontal) / 2);
    }
}

void tst_ReceiverMonitor::pictureHasItsSizeAndLeavesTheScreenAlone()
{
    Replayed replayed;
    QVERIFY(replayed.isReady);
    replayed.window->grab();
    QImage const before = replayed.window->grab().toImage();
    for (XYPlot* const plot : replayed.plots) {
        PictureOptions const options{0, QSize(1234, 567), 30, 4, false, "A title"};
        QCOMPARE(renderPicture(*plot, options).size(), QSize(1234, 567));
    }
    QCOMPARE(replayed.window->grab().toImage(), before);
}

void tst_ReceiverMonitor::pointUnderTheMouseTellsItsState()
{
    Replayed replayed;
    QVERIFY(replayed.isReady);
    // The receiver tracks G28 throughout and uses it from 10:52:29 on.
    XYPlot* const tracking = replayed.plots.at(3);
    for (auto const& [index, told] : {std::pair(10, "G28: tracked, not used\n10:52:0"),
                                      std::pair(100, "G28: used in the fix\n10:53:3")}) {
        bool isValid = false;
        sendMove(tracking->getCanvas(),
                 tracking->getCanvas()->convertDataPointToViewport(tracking->getDataSets().last(),
                                                                   index, isValid, false));
        QVERIFY2(isValid && QToolTip::text().startsWith(told), qPrintable(QToolTip::text()));
    }
    QVERIFY(messages->takeCount(toolTipWarning) > 0);
}

QTEST_MAIN(tst_ReceiverMonitor)
#include "tst_receivermonitor.moc"
