#include "correlationplotwidget.h"
#include "librarytest.h"
#include "options.h"
#include "viewerwindow.h"
#include "xycanvas.h"
#include "xyplot.h"

#include <QAction>
#include <QLabel>
#include <QMouseEvent>
#include <QProcess>
#include <QRegularExpression>
#include <QTableWidget>

/// Faults: a peak drawn elsewhere than where the signal was put, a tool bar out of work.
class tst_SignalViewer : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void showsThePeakWhereTheSignalWasPut();
    void toolBarReachesThePlots();
    void wrongCommandLine();
};

void tst_SignalViewer::showsThePeakWhereTheSignalWasPut()
{
    SignalSession session(1);
    ViewerWindow window(session);
    auto* const plot = window.findChild<CorrelationPlotWidget*>()->getXYPlot();
    window.findChild<QTableWidget*>()->selectRow(3);

    QImage const picture = window.picture({1500, 800}).toImage();

    QCOMPARE(picture.size(), QSize(1500, 800));
    QCOMPARE(session.satelliteCount(), 5);
    QCOMPARE(session.tracker(session.selected()).prn(), 19);
    // The highest pixels of the measured curve, near the marker that hides some of it.
    XYCanvas const* const canvas = plot->getCanvas();
    QRect const area(canvas->mapTo(&window, QPoint(0, 0)), canvas->size());
    QRgb const color = session.measuredCorrelation()->getLook()->getDefaultColor().rgb();
    QList<int> columns;
    for (int y = area.top(); y < area.bottom() && columns.isEmpty(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (picture.pixel(x, y) == color)
                columns.append(x - area.left());
        }
    }
    QVERIFY(!columns.isEmpty());
    double const middle = 0.5 * (columns.first() + columns.last());
    double const halfSample = 0.5 * chipRateHz / sampleRateHz;
    QVERIFY(std::abs(canvas->convertXViewportToWorld(middle)) < halfSample);
}

void tst_SignalViewer::toolBarReachesThePlots()
{
    SignalSession session(2);
    ViewerWindow window(session);
    XYCanvas* const canvas = window.findChild<CorrelationPlotWidget*>()->getXYPlot()->getCanvas();
    auto const trigger = [&window](QString const& text) {
        for (QAction* const action : window.findChildren<QAction*>()) {
            if (action->text() == text)
                action->trigger();
        }
    };
    window.grab(); // gives the canvas its size
    canvas->zoomInBoth();
    QVERIFY(canvas->getViewBounds().maxX < 1.5);

    trigger("Show all");
    trigger("Drag");
    QPointF const middle = QRectF(canvas->rect()).center();
    QMouseEvent move(QEvent::MouseMove, middle, middle, Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(canvas, &move);

    QCOMPARE(canvas->getViewBounds().maxX, 1.5);
    QCOMPARE(canvas->cursor().shape(), Qt::OpenHandCursor);
    QStringList texts;
    for (QLabel const* const label : window.findChildren<QLabel*>())
        texts.append(label->text());
    static QRegularExpression const position("^lag -?0\\.0\\d* chips, amplitude -?0 %$");
    QCOMPARE(texts.filter(position).size(), 1);
    QCOMPARE(texts.filter("m from the prompt").size(), 1);
}

void tst_SignalViewer::wrongCommandLine()
{
    for (QString const line : {"a log", "--zoom", "--size 600x400", "--prn 33", "--seed -1"}) {
        Options options;
        QStringList const words = line.split(' ');
        QString const reason = Options::parse(QStringList("signalviewer") + words, options);
        QString const named = line.startsWith("--") ? words.first().mid(2) : QString("options");
        QVERIFY2(reason.contains(named) && !reason.contains('\n'), qPrintable(line + reason));
    }
    QProcess process;
    process.start(QStringLiteral(VIEWER), {"--size", "1x1"});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError().count('\n'), 1);
}

QTEST_MAIN(tst_SignalViewer)
#include "tst_signalviewer.moc"
