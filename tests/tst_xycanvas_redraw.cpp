#include "canvasstage.h"
#include "lineargrid.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "viewportmap.h"
#include "xydatasetdrawlistener.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QScopedPointer>
#include <QSet>
#include <QTest>
#include <limits>

namespace {
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr QSize size(200, 100);
Bounds const pixelView{0, 200, 0, 100}; // one unit per pixel of that size

/// Tells the order in which the canvas asks its grids.
class RecordingGrid : public XYAbstractGrid
{
public:
    RecordingGrid(E_ORIENTATION_TYPE axis, QStringList* calls)
        : XYAbstractGrid(axis, nullptr)
        , log(calls)
    {
    }
    void drawGrid(QPainter*, double, double, double, double) override { record("lines"); }
    void drawLabels(QPainter*, double, double, double, double) override { record("labels"); }
    QString getLabel(double, int) override { return {}; }

private:
    void record(char const* what)
    {
        log->append(QLatin1String(what) + QLatin1String(orientation == eVERTICAL ? " y" : " x"));
    }
    QStringList* log;
};

/// Counts the points drawn, and may take longer with the first than a drawing run may take.
class CountingListener : public XYDataSetDrawListener
{
public:
    explicit CountingListener(XYDataSet* drawn, bool isSlow = false)
        : XYDataSetDrawListener(drawn)
        , slow(isSlow)
    {
        drawn->setDrawListener(this);
    }
    void drawingDataPoint(int index, int) override
    {
        ++count;
        QElapsedTimer timer;
        timer.start();
        while (slow && index == 0 && timer.elapsed() <= 251) { }
    }
    int take() { return std::exchange(count, 0); }

private:
    int count = 0;
    bool slow;
};

/// Makes @p dataSet a bar of eight pixels around the row @p offset.
XYDataSet* asColorBar(XYDataSet* dataSet, int offset)
{
    dataSet->getLook()->setColorBar(offset);
    dataSet->getLook()->setDefaultLineThickness(8);
    return dataSet;
}

Marker_t lineMarker(E_MARKER_TYPE type, E_ORIENTATION_TYPE orientation, double value, QColor color)
{
    return {type, orientation, value, color, Qt::SolidLine, 1, QString()};
}

/// First and last device pixel of that colour in a column or row of the image.
QPoint rangeOf(QImage const& image, bool inColumn, int where, QColor color)
{
    int first = -1;
    int last = -1;
    for (int i = 0; i < (inColumn ? image.height() : image.width()); ++i) {
        if (image.pixelColor(inColumn ? QPoint(where, i) : QPoint(i, where)) != color)
            continue;
        first = first < 0 ? i : first;
        last = i;
    }
    return {first, last};
}

/// Black where the image is not white.
QImage inked(QImage image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, image.pixelColor(x, y) == Qt::white ? Qt::white : Qt::black);
    }
    return image;
}
} // namespace

class tst_XYCanvasRedraw : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { messages.reset(new MessageRecorder); }
    void cleanup();
    void gridsBeforeLabels();
    void layers();
    void newPointsAsInAFullRedraw_data();
    void newPointsAsInAFullRedraw();
    void slowRunHandsBackAndGoesOn();
    void continuationFlags_data();
    void continuationFlags();
    void redrawsOnlyWhatIsDue();
    void fullRedrawForgets();
    void stalePixmapTakesNoPoints();
    void devicePixelRatio_data();
    void devicePixelRatio();
    void widgetFillsItsScreenPixels();
    void oddSizesAndViews_data();
    void oddSizesAndViews();

private:
    QScopedPointer<MessageRecorder> messages;
};

void tst_XYCanvasRedraw::cleanup()
{
    QCOMPARE(messages->take(), QStringList());
    messages.reset();
    QCOMPARE(liveObjects(), QStringList());
}

void tst_XYCanvasRedraw::gridsBeforeLabels()
{
    QStringList calls;
    RecordingGrid xGrid(eHORIZONTAL, &calls);
    RecordingGrid yGrid(eVERTICAL, &calls);
    CanvasStage stage;
    stage.show(pixelView);
    QCOMPARE(stage.paint(size).countPainted(), 200 * 100); // without grids
    stage->setGrid(eHORIZONTAL, &xGrid, false);
    stage->setGrid(eVERTICAL, &yGrid, true);
    stage.paint(size);
    QCOMPARE(calls, (QStringList{"lines y", "lines x", "labels y", "labels x"}));
}

void tst_XYCanvasRedraw::layers()
{
    CanvasStage stage;
    stage.show(pixelView);
    XYDataSet* const bar = asColorBar(stage.add({40, 80}, {1, 1}, Qt::red), 20);
    XYDataSet* const line = stage.add({50, 50.1}, {0, 100}, Qt::blue);
    line->getLook()->setDefaultLineThickness(4);
    Marker_t background = lineMarker(eBACKGROUND_MARKER, eVERTICAL, 50, Qt::green);
    Marker_t foreground = lineMarker(eFOREGROUND_MARKER, eHORIZONTAL, 60, Qt::magenta);
    stage.markers = {&background, &foreground};
    QImage const picture = stage.paint(size).getImage();
    QCOMPARE(picture.pixelColor(30, 50), QColor(Qt::green));
    QCOMPARE(picture.pixelColor(50, 50), QColor(Qt::blue)); // data over a background marker
    QCOMPARE(picture.pixelColor(50, 20), QColor(Qt::red)); // colour bar over a line
    QCOMPARE(picture.pixelColor(60, 20), QColor(Qt::magenta)); // foreground over all
    QCOMPARE(rangeOf(picture, true, 45, Qt::red), QPoint(16, 23)); // not antialiased
    QCOMPARE(rangeOf(picture, false, 20, Qt::red), QPoint(40, 79));
    QVERIFY(picture.pixelColor(90, 20) != Qt::white); // its groove goes on

    // Also over the lines of a later run.
    bar->append(120, 1);
    line->append(100, 100);
    line->append(100, 0);
    stage->drawNewPointsOnBackGround();
    QCOMPARE(rangeOf(stage.paint(size).getImage(), false, 22, Qt::red), QPoint(40, 119));

    line->visible = false;
    bar->visible = false;
    stage->fullRepaint();
    QCOMPARE(stage.paint(size).at(50, 20), QColor(Qt::white));
}

void tst_XYCanvasRedraw::newPointsAsInAFullRedraw_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<qreal>("ratio");
    for (qreal const ratio : {1.0, 1.25, 2.0}) {
        QTest::addRow("a point in every other column, ratio %g", ratio) << 100 << ratio;
        QTest::addRow("six points to a column, ratio %g", ratio) << 1200 << ratio;
    }
}

void tst_XYCanvasRedraw::newPointsAsInAFullRedraw()
{
    QFETCH(int, points);
    QFETCH(qreal, ratio);
    QRandomGenerator random(7);
    QVector<double> xs;
    QVector<double> ys;
    for (int i = 0; i < points; ++i) {
        xs.append(i * 198.0 / (points - 1));
        ys.append(random.bounded(6) == 0 && i > 2 ? NaN : random.generateDouble() * 120 - 10);
    }
    auto const give = [](CanvasStage& to, QVector<double> const& x, QVector<double> const& y) {
        to.add(x, y)->getLook()->setDefault(Qt::blue, SYMBOL_CROSS, Qt::SolidLine, 1);
        asColorBar(to.add(x, y, Qt::red), 90);
    };
    CanvasStage whole;
    CanvasStage grown;
    whole.show(pixelView);
    grown.show({0, 200, 0, 100});
    give(whole, xs, ys);
    give(grown, xs.mid(0, 3), ys.mid(0, 3));
    grown.paint(size, ratio);
    for (int drawn = 3; drawn < points;) {
        int const next = qMin(points, drawn + 1 + random.bounded(9));
        for (; drawn < next; ++drawn) {
            for (XYDataSet* const dataSet : qAsConst(grown.dataSets))
                dataSet->append(xs[drawn], ys[drawn]);
        }
        grown->drawNewPointsOnBackGround();
    }
    // Bars lie over all lines of a full redraw, but not over lines of runs after them.
    QRect const below(0, 0, qCeil(200 * ratio), qFloor(80 * ratio));
    QImage const expected = whole.paint(size, ratio).getImage().copy(below);
    QImage const actual = grown.paint(size, ratio).getImage().copy(below);
    // The strokes of one pixel column are gathered within a run only; where two of them overlap,
    // their antialiased edges are darker. The pixels that they touch are the same.
    bool const gathered = points > 200;
    QCOMPARE(gathered ? inked(actual) : actual, gathered ? inked(expected) : expected);
}

void tst_XYCanvasRedraw::slowRunHandsBackAndGoesOn()
{
    CanvasStage stage;
    stage.show(pixelView);
    for (int i = 0; i < 4; ++i)
        stage.add({10, 20}, {10.0 * i, 10.0 * i});
    asColorBar(stage.dataSets[1], 20);
    asColorBar(stage.dataSets[2], 50);
    stage.add({10, 20}, {1, 2});
    new CountingListener(stage.dataSets[1], true);
    auto const drawn = [&] {
        QVector<int> indices;
        for (XYDataSet const* const dataSet : qAsConst(stage.dataSets))
            indices.append(stage->getLastProcessedIndex(dataSet));
        return indices;
    };
    stage.paint(size);
    // The slow bar ends the pass of the bars; of the lines, one is drawn before the clock is read.
    QCOMPARE(drawn(), (QVector<int>{1, 1, -1, -1, -1}));
    QCoreApplication::processEvents();
    QCOMPARE(drawn(), (QVector<int>{1, 1, 1, 1, 1}));
    QCOMPARE(stage.paint(size).at(15, 50), QColor(Qt::black)); // the second bar

    stage->fullRepaint();
    stage.paint(size);
    stage->setViewBounds({0, 100, 0, 100}, true); // stops the resumption
    QCoreApplication::processEvents();
    QCOMPARE(drawn(), (QVector<int>{1, 1, -1, -1, -1}));
}

void tst_XYCanvasRedraw::continuationFlags_data()
{
    QTest::addColumn<bool>("untilFinished");
    QTest::addColumn<bool>("nextFullRedraw");
    QTest::addColumn<QVector<int>>("last"); // point of the second data set after each run
    QTest::newRow("neither: interrupted") << false << false << QVector<int>{-1, -1, -1};
    QTest::newRow("for good") << true << false << QVector<int>{1, 1, 1};
    QTest::newRow("until after a full redraw") << false << true << QVector<int>{1, 1, -1};
}

void tst_XYCanvasRedraw::continuationFlags()
{
    QFETCH(bool, untilFinished);
    QFETCH(bool, nextFullRedraw);
    CanvasStage stage;
    stage.show(pixelView);
    stage.paint(size);
    stage->setContinueBackgroundDrawingUntilFinished(untilFinished);
    if (nextFullRedraw)
        stage->setContinueBackgroundDrawingUntilFinishedForNextFullRedraw();
    new CountingListener(stage.add({10, 20}, {1, 2}), true);
    XYDataSet* const second = stage.add({10, 20}, {1, 2});
    QVector<int> last;
    stage->drawNewPointsOnBackGround();
    last.append(stage->getLastProcessedIndex(second));
    for (int i = 0; i < 2; ++i) {
        stage->fullRepaint();
        stage.paint(size);
        last.append(stage->getLastProcessedIndex(second));
    }
    QTEST(last, "last");
}

void tst_XYCanvasRedraw::redrawsOnlyWhatIsDue()
{
    LinearGrid grid(eVERTICAL, nullptr);
    CanvasStage stage;
    stage.show(pixelView);
    XYDataSet* const dataSet = stage.add({10, 20, 30}, {1, 2, 3});
    CountingListener* const drawn = new CountingListener(dataSet);
    stage.paint(size);
    QCOMPARE(drawn->take(), 3);
    stage.paint(size);
    QCOMPARE(drawn->take(), 0);
    dataSet->append(40, 4);
    stage->drawNewPointsOnBackGround();
    stage->drawNewPointsOnBackGround();
    stage->setBounds({0, 300, 0, 100}, pixelView, true); // the view stays
    stage.paint(size);
    QCOMPARE(drawn->take(), 1);
    stage->setGrid(eVERTICAL, &grid, false);
    stage.paint(size);
    QCOMPARE(drawn->take(), 4);
    stage->setViewBounds({0, 100, 0, 100}, true);
    stage.paint(size);
    QCOMPARE(drawn->take(), 4);
    stage.paint({100, 100});
    QCOMPARE(drawn->take(), 4);
    QCOMPARE(stage->convertXWorldToViewport(50), 50.0); // of the new size
    stage.paint({100, 100}, 2.0);
    QCOMPARE(drawn->take(), 4);
}

void tst_XYCanvasRedraw::fullRedrawForgets()
{
    CanvasStage stage;
    stage.show(pixelView);
    XYDataSet* const dataSet = stage.add({10, 50}, {20, 30});
    dataSet->getLook()->setDrawMarkerOnYValueChange(true);
    stage->setMouseOverDataTrackingEnabled(dataSet, true);
    stage.paint(size);
    QCOMPARE(stage->getViewportMap(dataSet)->getItemVector(5, 14), QVector<int>{1});
    dataSet->visible = false;
    QVERIFY(stage.paint(size).at(50, 0) != Qt::white); // the marker of the changed value
    stage->fullRepaint();
    QCOMPARE(stage.paint(size).at(50, 0), QColor(Qt::white));
    QVERIFY(stage->getViewportMap(dataSet)->getItemVector(5, 14).isEmpty());
}

void tst_XYCanvasRedraw::stalePixmapTakesNoPoints()
{
    CanvasStage stage;
    stage.show(pixelView);
    CountingListener* const drawn = new CountingListener(stage.add({10, 20}, {1, 2}));
    stage->drawNewPointsOnBackGround(); // before the first paint
    stage.paint(size);
    drawn->take();
    stage->fullRepaint();
    stage->drawNewPointsOnBackGround();
    QCOMPARE(drawn->take(), 0);

    stage->resize(size);
    stage->QWidget::show();
    QCoreApplication::processEvents();
    QCOMPARE(drawn->take(), 2);
    stage.dataSets[0]->append(30, 3);
    stage->drawNewPointsOnBackGround();
    QCoreApplication::processEvents();
    QCOMPARE(drawn->take(), 1);
}

void tst_XYCanvasRedraw::devicePixelRatio_data()
{
    QTest::addColumn<QSize>("viewport");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QPoint>("barRows"); // 16 to 23 in logical pixels
    QTest::addColumn<QPoint>("barColumns"); // 20 to 59
    QTest::addColumn<QPoint>("lineColumns"); // a pen one pixel wide about 80
    auto const row = [](char const* name, QSize viewport, qreal ratio, QPoint barRows,
                        QPoint barColumns, QPoint lineColumns) {
        QTest::newRow(name) << viewport << ratio << barRows << barColumns << lineColumns;
    };
    row("1", size, 1.0, {16, 23}, {20, 59}, {80, 80});
    row("1.25", size, 1.25, {20, 29}, {25, 74}, {99, 100});
    row("1.5", size, 1.5, {24, 35}, {30, 89}, {119, 120});
    row("2", size, 2.0, {32, 47}, {40, 119}, {159, 160});
    // 101 pixels are 126.25 rows, the last of them not full; bars are mirrored within all 127.
    row("odd size, 1.25", {201, 101}, 1.25, {21, 30}, {25, 74}, {99, 100});
    row("odd size, 2", {201, 101}, 2.0, {32, 47}, {40, 119}, {159, 160});
}

void tst_XYCanvasRedraw::devicePixelRatio()
{
    QFETCH(QSize, viewport);
    QFETCH(qreal, ratio);
    CanvasStage stage;
    stage.show({0, double(viewport.width()), 0, double(viewport.height())});
    asColorBar(stage.add({20, 60}, {1, 1}, Qt::red), 20);
    Marker_t line = lineMarker(eBACKGROUND_MARKER, eHORIZONTAL, 80, Qt::blue);
    stage.markers = {&line};
    QImage const picture = stage.paint(viewport, ratio).getImage();
    QTEST(rangeOf(picture, true, int(40 * ratio), Qt::red), "barRows");
    QTEST(rangeOf(picture, false, int(20 * ratio), Qt::red), "barColumns");
    QTEST(rangeOf(picture, false, int(60 * ratio), Qt::blue), "lineColumns");

    // Nothing is scaled: the picture is the pixmap, in its seven colours, to the last row.
    QScopedPointer<QPixmap> const pixmap(stage->drawBackgroundPixmap());
    QCOMPARE(picture, pixmap->toImage().convertToFormat(picture.format()));
    QSet<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colors.insert(picture.pixel(x, y));
    }
    QCOMPARE(colors.size(), 7); // white, bar, line, and four of the groove
    QVERIFY(!colors.contains(QColor(Qt::yellow).rgb()));
}

/// Runs at several scale factors.
void tst_XYCanvasRedraw::widgetFillsItsScreenPixels()
{
    CanvasStage stage;
    stage.show({0, 201, 0, 101});
    asColorBar(stage.add({20, 60}, {1, 1}, Qt::red), 20);
    stage->resize(201, 101);
    QPixmap screen = stage->grab();
    qreal const ratio = stage->devicePixelRatioF();
    QCOMPARE(screen.devicePixelRatio(), ratio);
    QImage const picture = screen.toImage().convertToFormat(QImage::Format_RGB32);
    QScopedPointer<QPixmap> const pixmap(stage->drawBackgroundPixmap());
    QCOMPARE(pixmap->size(), QSize(qCeil(201 * ratio), qCeil(101 * ratio)));
    QImage const expected = pixmap->toImage().convertToFormat(picture.format());
    QCOMPARE(picture.copy(0, 0, int(201 * ratio), int(101 * ratio)),
             expected.copy(0, 0, int(201 * ratio), int(101 * ratio)));
}

void tst_XYCanvasRedraw::oddSizesAndViews_data()
{
    QTest::addColumn<QSize>("viewport");
    QTest::addColumn<Bounds>("view");
    auto const row = [](char const* name, QSize viewport, Bounds const& view) {
        QTest::newRow(name) << viewport << view;
    };
    row("no pixel", {0, 0}, {0, 1, 0, 1});
    row("no column", {0, 5}, {0, 1, 0, 1});
    row("one pixel", {1, 1}, {0, 1, 0, 1});
    row("large", {8000, 4000}, {0, 1, 0, 1});
    row("large, huge view", {8000, 4000}, {0, 1e300, 0, 1e-300});
    row("tiny view", size, {0, 1e-300, 0, 1e-300});
    row("huge view", size, {0, 1e300, 0, 1e300});
    row("extent beyond a double", size, {-1e308, 1e308, -1e308, 1e308});
    row("denormal", size, {0, 5e-324, 0, 5e-324});
    row("infinite", size, {-inf, inf, 0, inf});
    row("no extent", size, {5, 5, 5, 5});
    row("inverted", size, {10, 0, 10, 0});
    row("half unknown", size, {NaN, 1, 0, 1});
    row("tiny by huge", size, {0, 1e-300, 0, 1e300});
    row("far from zero", size, {1e300, 1.0000001e300, 0, 1});
}

void tst_XYCanvasRedraw::oddSizesAndViews()
{
    QFETCH(QSize, viewport);
    QFETCH(Bounds, view);
    LinearGrid xGrid(eHORIZONTAL, nullptr);
    LinearGrid yGrid(eVERTICAL, nullptr);
    CanvasStage stage;
    stage->setGrid(eHORIZONTAL, &xGrid, false);
    stage->setGrid(eVERTICAL, &yGrid, false);
    QVector<double> const values{0, 1, 0.5, 1e300, -1e300, 5e-324, inf, -inf, NaN, 50};
    QVector<double> xs;
    QVector<double> ys;
    QList<Marker_t> lines;
    QList<EllipseMarker_t> ellipses;
    QList<CrossMarker_t> crosses;
    for (double const a : values) {
        for (E_ORIENTATION_TYPE const axis : {eHORIZONTAL, eVERTICAL, E_ORIENTATION_TYPE(2)})
            lines.append({E_MARKER_TYPE(axis & 1), axis, a, Qt::blue, Qt::DashLine, 3, "label"});
        for (double const b : values) {
            xs.append(a);
            ys.append(b);
            crosses.append({a, b, b, Qt::red, Qt::DashDotLine, int(crosses.size()) % 3 - 1});
            ellipses.append({a, 0.5, b, 1.0, 30.0, Qt::red, Qt::DashLine, 2});
            ellipses.append({-b, a, 2 * b, 2 * b, b, Qt::red, Qt::SolidLine, -1});
        }
    }
    asColorBar(stage.add(xs, ys), 20);
    stage.add(xs, ys);
    for (Marker_t& line : lines)
        stage.markers.append(&line);
    for (EllipseMarker_t& ellipse : ellipses)
        stage.ellipses.append(&ellipse);
    for (CrossMarker_t& cross : crosses)
        stage.crosses.append(&cross);
    stage.show(view);

    TestImage picture(viewport.expandedTo({1, 1}));
    picture.getPainter()->setWindow(QRect(QPoint(0, 0), viewport));
    picture.getPainter()->setViewport(QRect(QPoint(0, 0), viewport));
    stage->drawCanvas(picture.getPainter());
    stage->drawNewPointsOnBackGround();
    QCOMPARE(picture.countPainted(QRect(0, 0, 9, 9)),
             qMin(9, viewport.width()) * qMin(9, viewport.height()));
}

QTEST_MAIN(tst_XYCanvasRedraw)
#include "tst_xycanvas_redraw.moc"
