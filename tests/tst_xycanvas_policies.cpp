#include "canvasstage.h"
#include "objectcounts.h"

#include <QRandomGenerator>
#include <QTest>

namespace {
using Policy = XYCanvas::ViewBoundsUpdatePolicy;
constexpr Policy none = XYCanvas::PolicyNone;
constexpr Policy keep = XYCanvas::PolicyKeep;
constexpr Policy follow = XYCanvas::PolicyFollow;
constexpr Policy full = XYCanvas::PolicyFull;

/// Both ends of y, equal if they are so to the digits that a failure report shows.
struct Span
{
    double lower = NaN;
    double upper = NaN;

    static Span of(Bounds const& bounds) { return {bounds.minY, bounds.maxY}; }
    operator Bounds() const { return {0, 1, lower, upper}; }
    QString text() const { return QStringLiteral("%1 to %2").arg(lower).arg(upper); }
    friend bool operator==(Span a, Span b) { return a.text() == b.text(); }
    friend char* toString(Span span) { return QTest::toString(span.text()); }
};

/// Bounds of the data at each update, bounds shown after it, initial bounds, zoom limit, margin.
using BufferCase = std::tuple<QVector<Span>, QVector<Span>, Span, double, int>;

/// Data that was 0 to 100, view, newest points, view to come, policy, policy to come.
using ViewCase = std::tuple<Span, Span, Span, Span, Policy, Policy>;
} // namespace

class tst_XYCanvasPolicies : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { QCOMPARE(liveObjects(), QStringList()); }
    void buffering_data();
    void buffering();
    void edgeOneBufferAheadStays();
    void extensionParameters();
    void updatedView_data();
    void updatedView();
    void signalsOfBounds();
    void listenerSeesCauseAndFormerView();
    void zoomEnablement();
};

void tst_XYCanvasPolicies::buffering_data()
{
    QTest::addColumn<BufferCase>("given");
    auto const row = [](char const* name, QVector<Span> const& strict, QVector<Span> const& shown,
                        Span initial = {0, 1}, double limit = 0.0, int margin = 0) {
        QTest::newRow(name) << BufferCase{strict, shown, initial, limit, margin};
    };
    row("no data: initial bounds", {{}, {5, 9}, {}}, {{0, 1}, {4.9, 9.4}, {0, 1}});
    row("first data shorter than initial: centred", {{5, 5.5}}, {{4.75, 5.75}});
    row("edges jump, then wait", {{0, 10}, {-5, 15}, {-6, 16}}, {{0, 10}, {-7, 17}, {-7, 17}});
    row("too far ahead: shrinks", {{0, 10}, {0, 20}, {0, 19.9}}, {{0, 10}, {0, 22}, {0, 20.3975}});
    row("one end grows while the other shrinks", {{0, 10}, {8, 18}}, {{0, 10}, {7.75, 19}});
    row("hardly above initial: stays", {{0, 1.0005}, {0, 0.1}}, {{0, 1.0005}, {0, 1.0005}});
    row("no extent: initial bounds, raised to the limit", {{7, 7}}, {{1, 5}}, {3, 3}, 4.0);
    // 20 of the 200 pixels assumed are a tenth of the extent; the buffer is that of the bare data.
    row("margin", {{0, 10}, {0, 20}}, {{-1.1, 11.1}, {-3.342, 23.342}}, {0, 1}, 0.0, 20);
    row("infinity has gone", {{0, 10}, {0, qInf()}, {0, 10}}, {{0, 10}, {0, qInf()}, {0, 10.25}});
}

void tst_XYCanvasPolicies::buffering()
{
    QFETCH(BufferCase, given);
    auto const& [strict, shown, initial, limit, margin] = given;
    CanvasStage stage;
    QVector<double> values;
    stage->addCustomVerticalDataBoundsVector(&values);
    stage->setInitialDataBounds(initial);
    stage->setVerticalZoomLimit(limit);
    stage->setViewportMargin(0, 0, margin, margin);
    for (int i = 0; i < strict.size(); ++i) {
        values = {strict[i].lower, strict[i].upper};
        stage->updateBounds();
        QCOMPARE(Span::of(stage->getViewBounds()), shown[i]);
        QCOMPARE(Span::of(stage->getStrictDataBounds()), strict[i]);
    }
}

void tst_XYCanvasPolicies::edgeOneBufferAheadStays()
{
    QRandomGenerator random(20);
    CanvasStage stage;
    QVector<double> values{0.0, 1.0};
    stage->addCustomVerticalDataBoundsVector(&values);
    for (int i = 0; i < 900; ++i) {
        values[0] -= random.bounded(values[1]);
        values[1] += random.bounded(values[1]);
        stage->updateBounds();
        QCOMPARE(Span::of(stage->calculateDataBounds(true)), Span::of(stage->getDataBounds()));
    }
}

void tst_XYCanvasPolicies::extensionParameters()
{
    CanvasStage stage;
    stage.add({0, 100}, {0, 100});
    stage->updateBounds();
    stage->setExtensionBufferParameters(60, 2, 3, 50, 0.1, 0.2, 0.3, 0.4);
    stage->adaptExtensionBufferParametersAndInitialDataBoundForOfflineTimePlots();
    QCOMPARE(stage->getExtensionBuffer(Bounds::Horizontal, Bounds::Lower), 0.0);
    QCOMPARE(stage->getExtensionBuffer(Bounds::Vertical, Bounds::Lower), 30.0);
    QCOMPARE(stage->getExtensionBuffer(Bounds::Vertical, Bounds::Upper), 50.0);
    QCOMPARE(stage->getInitialDataBounds().maxX, 1000.0);
}

void tst_XYCanvasPolicies::updatedView_data()
{
    QTest::addColumn<ViewCase>("given");
    auto const row = [](char const* name, Span data, Span view, Span last, Span newView,
                        Policy policy = follow, Policy newPolicy = follow) {
        QTest::newRow(name) << ViewCase{data, view, last, newView, policy, newPolicy};
    };
    Span const same{0, 100};
    Span const view{40, 60}; // leaves 2 ahead when it follows
    Span const mid{50, 50};
    row("none: untouched", {70, 80}, view, mid, view, none, none);
    row("none, data unknown: unknown", {NaN, 80}, view, mid, {}, none, none);
    row("full, swapped: as it stands", {80, 70}, view, mid, {80, 70}, full, full);
    row("keep, same data: stays", same, {90, 120}, mid, {90, 120}, keep, keep);
    row("keep: cut to the data", {50, 90}, view, mid, {50, 60}, keep, keep);
    row("keep, data beyond the view: full", {70, 90}, view, mid, {70, 90}, keep, full);
    row("keep, data unknown: full", {0, NaN}, view, mid, {}, keep, full);
    row("view unknown: all", same, {40, NaN}, mid, same);
    row("view as wide as the data: all", {0, 110}, {-10, 100}, mid, {0, 110});
    row("view only touches the data: all", {60, 90}, view, mid, {60, 90});
    row("data grown at both ends: all", {-10, 110}, view, mid, {-10, 110});
    row("grown below: down to it", {-10, 100}, view, {-10, -10}, {-10, 10});
    row("grown below, newest above: widened", {-10, 100}, view, {99, 99}, {-10, 100});
    row("grown above: up to it", {0, 130}, view, {120, 120}, {110, 130});
    row("grown above, newest below: widened", {0, 130}, view, {20, 90}, {18, 130});
    row("newest above: a tenth ahead of it", same, view, {50, 70}, {52, 72});
    row("ahead of it, but not beyond the data", same, view, {99, 99}, {80, 100});
    row("newest all below: a tenth before them", same, view, {10, 30}, {8, 28});
    row("before them, but not beyond the data", same, view, {1, 1}, {0, 20});
    row("newest partly below: stays", same, view, {10, 45}, view);
    row("no points: stays", same, view, {}, view);
}

void tst_XYCanvasPolicies::updatedView()
{
    QFETCH(ViewCase, given);
    auto const& [data, view, last, newView, policy, newPolicy] = given;
    CanvasStage stage;
    stage.add({0}, {last.lower});
    stage.add({0}, {last.upper});
    stage->setBounds(Span{0, 100}, view, true);
    stage->setVerticalViewBoundsUpdatePolicy(policy, false);
    QCOMPARE(Span::of(stage->calculateUpdatedViewBounds(data)), newView);
    QCOMPARE(stage->getVerticalViewBoundsUpdatePolicy(), newPolicy);
}

void tst_XYCanvasPolicies::signalsOfBounds()
{
    CanvasStage stage;
    SignalLog log(stage.operator->());
    auto const heard = [&log] { return log.take().join(','); };
    stage->setHorizontalZoomLimit(5);
    stage->setBounds({0, 90000, 0, 10}, {2, 4, 0, 10}, false);
    QCOMPARE(heard(), QString("x in 0,y in 1,x out 1,y out 0,x full 1,y full 0,both full 1"));
    stage->forceEmitViewTransformSignals(); // leaves the debt
    QCOMPARE(heard(), QString("data,x policy,y policy,view"));
    stage->emitPendingEmits();
    stage->emitPendingEmits();
    QCOMPARE(heard(), QString("data,view"));
    stage->setHorizontalViewBoundsUpdatePolicy(keep, false);
    stage.add({60000, 90000}, {0, 10});
    stage->updateBounds(); // a view that the data has left is given up first
    QVERIFY(heard().startsWith("x policy,x policy,data,view,x in 1,y in 1,x out 0,y out 0"));
    stage->updateBounds();
    QCOMPARE(heard(), QString());
}

void tst_XYCanvasPolicies::listenerSeesCauseAndFormerView()
{
    CanvasStage stage;
    QStringList seen;
    connect(stage.operator->(), &XYCanvas::viewBoundsChanged, this, [&] {
        seen += stage->viewBoundsChangeCausedByPolicy() ? "auto" : "user";
        seen += QString::number(stage->getPreviouslyEmittedViewBounds().maxY);
    });
    connect(stage.operator->(), &XYCanvas::horizontalViewBoundsUpdatePolicyChanged, this,
            [&] { seen += "changed"; });
    stage.add({0, 10}, {0, 8});
    stage->updateBounds();
    QCOMPARE(stage->getViewBounds().maxX, 30000.0);
    stage->setViewBounds({0, 100, 2, 4}, true);
    stage->setHorizontalViewBoundsUpdatePolicy(full, true);
    stage->setHorizontalViewBoundsUpdatePolicy(full, true);
    stage->setFixedDataBounds({0, NaN, 3, 1}); // swapped in y, taken as it stands
    stage->updateBounds(); // bounds with holes always differ
    stage->setViewBounds({0, 1, 2, 4}, true);
    QCOMPARE(seen.join(' '), QString("auto nan user 8 auto 4 changed auto 8 auto 1 user 1"));
}

void tst_XYCanvasPolicies::zoomEnablement()
{
    CanvasStage stage;
    stage->setVerticalZoomLimit(10);
    SignalLog log(stage.operator->());
    auto const enabled = [&](Span data, Span view) {
        stage->setBounds(data, view, false);
        return log.take().filter("y ").join(',');
    };
    QCOMPARE(enabled({0, 100}, {0, 100}), QString("y in 1,y out 0,y full 0"));
    QCOMPARE(enabled({0, 100}, {20, 30.05}), QString("y in 0,y out 1,y full 1"));
    QCOMPARE(enabled({0, 100}, {20, 30.2}), QString("y in 1,y out 1,y full 1"));
    QCOMPARE(enabled({0, NaN}, {20, 40}), QString("y in 0,y out 0,y full 0"));
    stage->setVerticalViewBoundsUpdatePolicy(none, false);
    QCOMPARE(enabled({0, 100}, {20, 40}), QString("y policy,y in 0,y out 0,y full 0"));
}

QTEST_MAIN(tst_XYCanvasPolicies)
#include "tst_xycanvas_policies.moc"
