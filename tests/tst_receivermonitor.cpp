#include "librarytest.h"
#include "looklegend.h"
#include "monitorwindow.h"
#include "options.h"
#include "plotpicture.h"
#include "testimage.h"
#include "viewsynchronizationorganizer.h"
#include "xycanvas.h"
#include "xydataset.h"
#include "xyplot.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QMouseEvent>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolTip>
#include <algorithm>

namespace {
constexpr QRgb autonomous = 0xfff9a825; // the colour of such a fix

void sendMove(XYCanvas* canvas, QPoint pixel)
{
    QMouseEvent move(QEvent::MouseMove, pixel, QPointF(), Qt::NoButton, {}, {});
    QCoreApplication::sendEvent(canvas, &move);
}
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
    void windowAfterAReplay();

protected:
    void deleteObjects() override
    {
        for (auto const scope : {ViewSynchronizer::FileScope, ViewSynchronizer::ApplicationScope})
            qDeleteAll(ViewSynchronizationOrganizer::getInstance()->getSynchronizers(scope));
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
        if (picture.pixel(300, y) != autonomous || picture.pixel(300, y - 1) == autonomous)
            continue;
        int runs = 0;
        for (int x = 1; x < 550; ++x)
            runs += picture.pixel(x, y) == autonomous && picture.pixel(x - 1, y) != autonomous;
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
    QCOMPARE(run({"--size", "300x250", log}), 0);
    QImage const picture(m_png);
    // The controls, which are not in the picture, would need more.
    QCOMPARE(picture.size(), QSize(300, 250));
    // One epoch gives the margins no extent to measure, yet its bar stands right of the labels.
    QVERIFY(extentOf(picture, autonomous).left() > 50);
    for (QString const line :
         {"epochs shown: 1\nsound sentences: 1\n", "never tells its date",
          "left out, failed checksums: 1\n", "left out, lines that are no sentence: 1\n"})
        QVERIFY2(m_out.contains(line), qPrintable(m_out));
}

void tst_ReceiverMonitor::windowAfterAReplay()
{
    ReceiverLog log;
    LogReader::readFile(EXAMPLE_DATA_DIR "/cold-start-4min.nmea", {}, log);
    qputenv("XDG_CONFIG_HOME", m_dir.path().toLocal8Bit());
    auto* const organizer = ViewSynchronizationOrganizer::getInstance();
    {
        MonitorWindow former(log, 18, eSHOW_UTC, Options::fastestReplay);
        former.keepScope();
        organizer->getEnablementAction(ViewSynchronizer::FileScope)->trigger();
    }
    organizer->enableScope(ViewSynchronizer::None);
    MonitorWindow window(log, 18, eSHOW_UTC, Options::fastestReplay);
    auto const statusTells = [&](QString const& text) {
        auto const labels = window.statusBar()->findChildren<QLabel*>();
        return std::any_of(labels.cbegin(), labels.cend(),
                           [&](QLabel const* label) { return label->text().contains(text); });
    };
    window.replay();
    QTRY_VERIFY(statusTells("Epoch 186 of 186"));
    QList<XYPlot*> const plots = window.findChildren<XYPlot*>();
    QCOMPARE(plots.size(), 4);

    // A picture leaves the screen alone.
    window.grab();
    QImage const screen = window.grab().toImage();
    PictureOptions const options{0, QSize(1234, 567), 30, 4, false, "A title"};
    QCOMPARE(renderPicture(*plots.at(3), options).size(), QSize(1234, 567));
    QCOMPARE(window.grab().toImage(), screen);

    // The receiver tracks G28 throughout and uses it from 10:52:29 on.
    XYCanvas* const tracking = plots.at(3)->getCanvas();
    for (auto const& [index, told] : {std::pair(10, "G28: tracked, not used\n10:52:0"),
                                      std::pair(100, "G28: used in the fix\n10:53:3")}) {
        bool isValid = false;
        sendMove(tracking,
                 tracking->convertDataPointToViewport(plots.at(3)->getDataSets().last(), index,
                                                      isValid, false));
        QVERIFY2(isValid && QToolTip::text().startsWith(told), qPrintable(QToolTip::text()));
    }

    // The plots keep step in the scope of the last run.
    window.keepScope();
    QCOMPARE(organizer->getCurrentEnabledScope(), ViewSynchronizer::FileScope);
    double const all = plots.at(0)->getCanvas()->getViewBounds().size(Bounds::Horizontal);
    plots.at(1)->getCanvas()->zoomInHorizontal();
    for (XYPlot const* const plot : plots)
        QCOMPARE(plot->getCanvas()->getViewBounds().size(Bounds::Horizontal), all / 2);
    organizer->enableScope(ViewSynchronizer::None);

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
            QCOMPARE(statusTells("211,9"), tells);
        }
    }
    LookLegend* const legend = window.findChildren<LookLegend*>().at(1);
    legend->findChild<QCheckBox*>()->click();
    for (int i = 0; i < 4; ++i)
        QCOMPARE(plots.at(i)->getCanvas()->grab().toImage() == before.at(i), i != 1);

    tools["Restart"]->trigger();
    QTRY_COMPARE(legend->getLook()->getPresentLookEntries().size(), 1);
    QVERIFY(messages->takeCount("does not support raise()") > 0); // a tool tip without a screen
}

QTEST_MAIN(tst_ReceiverMonitor)
#include "tst_receivermonitor.moc"
