#include "canvasstage.h"
#include "messagerecorder.h"
#include "objectcounts.h"

#include <QRandomGenerator>
#include <QScopedPointer>
#include <QTest>
#include <cmath>
#include <limits>

namespace {
using Policy = XYCanvas::ViewBoundsUpdatePolicy;
constexpr double inf = std::numeric_limits<double>::infinity();

/// Both ends of one direction.
struct Span
{
    double lower = NaN;
    double upper = NaN;

    friend bool operator==(Span a, Span b)
    {
        return same(a.lower, b.lower) && same(a.upper, b.upper);
    }
    static bool same(double a, double b)
    {
        return (a != a && b != b) || a == b || std::abs(a - b) < 1e-9;
    }
};

char* toString(Span span)
{
    return QTest::toString(QStringLiteral("%1 to %2").arg(span.lower).arg(span.upper));
}

Span spanOf(Bounds const& bounds, Bounds::Direction direction)
{
    return {bounds.get(direction, Bounds::Lower), bounds.get(direction, Bounds::Upper)};
}

/// Bounds that are @p span in one direction and 0 to 1 in the other.
Bounds boundsOf(Span span, Bounds::Direction direction)
{
    Bounds bounds{0, 1, 0, 1};
    bounds.set(direction, Bounds::Lower, span.lower);
    bounds.set(direction, Bounds::Upper, span.upper);
    return bounds;
}

/// How the buffers of both ends of y are set up for a row; the defaults are those of a new canvas.
struct Setup
{
    Span initial = {0, 1};
    double minimumUpper = 0.0;
    double limit = 0.0;
    int margin = 0;
};
} // namespace

Q_DECLARE_METATYPE(Span)
Q_DECLARE_METATYPE(Setup)

class tst_XYCanvasPolicies : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { messages.reset(new MessageRecorder); }
    void cleanup();
    void buffering_data();
    void buffering();
    void edgeOneBufferAheadStays();
    void extensionParameters();
    void policies_data();
    void policies();
    void follow_data();
    void follow();
    void signalsOfNewData();
    void owedSignals();
    void policySignalComesAfterTheView();
    void listenerSeesCauseAndFormerView();
    void fixedDataBounds();
    void zoomEnablement_data();
    void zoomEnablement();

private:
    QScopedPointer<MessageRecorder> messages;
};

void tst_XYCanvasPolicies::cleanup()
{
    QCOMPARE(messages->take(), QStringList());
    messages.reset();
    QCOMPARE(liveObjects(), QStringList());
}

void tst_XYCanvasPolicies::buffering_data()
{
    using Spans = QVector<Span>;
    QTest::addColumn<Setup>("setup");
    QTest::addColumn<Spans>("strict"); // of the data, at each update
    QTest::addColumn<Spans>("buffered"); // after it
    auto const row
        = [](char const* name, Spans const& strict, Spans const& buffered,
             Setup const& setup = {}) { QTest::newRow(name) << setup << strict << buffered; };
    Span const none;
    row("no data: initial bounds", {none}, {{0, 1}});
    row("data gone: initial bounds", {{5, 9}, none}, {{5, 9}, {0, 1}});
    row("first data shorter than initial: centred", {{5, 5.5}}, {{4.75, 5.75}});
    row("growing edge jumps, then waits", {{0, 10}, {0, 20}, {0, 21.9}},
        {{0, 10}, {0, 22}, {0, 22}});
    row("growth at both ends", {{0, 10}, {-5, 15}}, {{0, 10}, {-7, 17}});
    row("shrinking edge keeps a quarter", {{0, 10}, {0, 20}, {0, 10}},
        {{0, 10}, {0, 22}, {0, 10.25}});
    row("lower edge shrinks alike", {{0, 10}, {-10, 10}, {0, 10}},
        {{0, 10}, {-12, 10}, {-0.25, 10}});
    row("more than a buffer behind: shrinks", {{0, 10}, {0, 20}, {0, 19.9}},
        {{0, 10}, {0, 22}, {0, 20.3975}});
    row("one end grows while the other shrinks", {{0, 10}, {8, 18}}, {{0, 10}, {7.75, 19}});
    row("less than a thousandth above initial: stays", {{0, 1.0005}, {0, 0.1}},
        {{0, 1.0005}, {0, 1.0005}});
    row("more than a thousandth: shrinks", {{0, 1.002}, {0, 0.1}}, {{0, 1.002}, {0, 0.1025}});
    row("smallest buffer beats the fraction", {{0, 10}, {0, 20}}, {{0, 10}, {0, 25}},
        {{0, 1}, 5.0});
    row("constant, no initial extent: initial bounds", {{7, 7}}, {{3, 3}}, {{3, 3}});
    row("the same, raised to the limit", {{7, 7}}, {{1, 5}}, {{3, 3}, 0.0, 4.0});
    // 20 of the 200 pixels assumed are a tenth of the extent; the buffer is that of the bare data.
    row("margin widens the data, not the buffer", {{0, 10}, {0, 20}},
        {{-1.1, 11.1}, {-3.342, 23.342}}, {{0, 1}, 0.0, 0.0, 20});
    row("infinite value that has gone: shrinks all the same", {{0, 10}, {0, inf}, {0, 10}},
        {{0, 10}, {0, inf}, {0, 10.25}});
}

void tst_XYCanvasPolicies::buffering()
{
    QFETCH(Setup, setup);
    QFETCH(QVector<Span>, strict);
    QFETCH(QVector<Span>, buffered);
    CanvasStage stage;
    QVector<double> values;
    stage->addCustomVerticalDataBoundsVector(&values);
    stage->setInitialDataBounds({0, 1, setup.initial.lower, setup.initial.upper});
    stage->setExtensionBufferParameters(0, 0, 0, setup.minimumUpper, 0.1, 0.1, 0.1, 0.1);
    stage->setVerticalZoomLimit(setup.limit);
    stage->setViewportMargin(0, 0, setup.margin, setup.margin);
    for (int i = 0; i < strict.size(); ++i) {
        values = {strict[i].lower, strict[i].upper};
        stage->updateBounds();
        QCOMPARE(spanOf(stage->getDataBounds(), Bounds::Vertical), buffered[i]);
        QCOMPARE(spanOf(stage->getViewBounds(), Bounds::Vertical), buffered[i]);
        QCOMPARE(spanOf(stage->getStrictDataBounds(), Bounds::Vertical), strict[i]);
    }
}

void tst_XYCanvasPolicies::edgeOneBufferAheadStays()
{
    QRandomGenerator random(20);
    CanvasStage stage;
    QVector<double> values;
    stage->addCustomVerticalDataBoundsVector(&values);
    values = {0.0, 1.0};
    stage->updateBounds();
    for (int i = 0; i < 2000; ++i) {
        values[0] -= random.generateDouble() * values[1];
        values[1] += random.generateDouble() * values[1];
        stage->updateBounds();
        Span const grown = spanOf(stage->getDataBounds(), Bounds::Vertical);
        stage->updateBounds();
        Span const again = spanOf(stage->getDataBounds(), Bounds::Vertical);
        QVERIFY(grown.lower == again.lower && grown.upper == again.upper);
        if (values[1] > 1e12)
            values = {0.0, 1.0};
    }
}

void tst_XYCanvasPolicies::extensionParameters()
{
    CanvasStage stage;
    stage->setExtensionBufferParameters(1, 2, 3, 4, 0.1, 0.2, 0.3, 0.4);
    double minimum = -1.0;
    double fraction = -1.0;
    stage->getExtensionBufferParameters(Bounds::Direction(2), Bounds::Upper, minimum, fraction);
    stage->getExtensionBufferParameters(Bounds::Vertical, Bounds::End(2), minimum, fraction);
    QCOMPARE((Span{minimum, fraction}), (Span{-1, -1})); // left alone
    stage->getExtensionBufferParameters(Bounds::Vertical, Bounds::Lower, minimum, fraction);
    QCOMPARE((Span{minimum, fraction}), (Span{3, 0.3}));
    QCOMPARE(stage->getExtensionBuffer(Bounds::Vertical, Bounds::Upper), 4.0); // without data

    stage->adaptExtensionBufferParametersAndInitialDataBoundForOfflineTimePlots();
    QCOMPARE(stage->getExtensionBuffer(Bounds::Horizontal, Bounds::Upper), 0.0);
    QCOMPARE(stage->getExtensionBuffer(Bounds::Vertical, Bounds::Upper), 4.0);
    QCOMPARE(spanOf(stage->getInitialDataBounds(), Bounds::Horizontal), (Span{0, 1000}));
}

void tst_XYCanvasPolicies::policies_data()
{
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<Span>("data"); // 0 to 100 before
    QTest::addColumn<Span>("view");
    QTest::addColumn<Span>("newView");
    QTest::addColumn<Policy>("newPolicy");
    auto const row = [](char const* name, Policy policy, Span data, Span view, Span newView,
                        Policy newPolicy) {
        QTest::newRow(name) << policy << data << view << newView << newPolicy;
    };
    constexpr Policy none = XYCanvas::PolicyNone;
    constexpr Policy keep = XYCanvas::PolicyKeep;
    constexpr Policy follow = XYCanvas::PolicyFollow;
    constexpr Policy full = XYCanvas::PolicyFull;
    Span const view{40, 60};
    Span const unknown;
    row("none: untouched", none, {70, 80}, view, view, none);
    row("none, data unknown: unknown", none, {NaN, 80}, view, unknown, none);
    row("full: the data", full, {70, 80}, view, {70, 80}, full);
    row("full, swapped: as it stands", full, {80, 70}, view, {80, 70}, full);
    row("full, data unknown", full, {70, NaN}, view, unknown, full);
    row("follow, data unknown", follow, unknown, view, unknown, follow);
    row("keep, same data: stays, even outside", keep, {0, 100}, {90, 120}, {90, 120}, keep);
    row("keep, view unknown: stays so", keep, {0, 90}, {40, NaN}, {40, NaN}, keep);
    row("keep: cut to the data", keep, {50, 90}, view, {50, 60}, keep);
    row("keep, touching: one point", keep, {60, 90}, view, {60, 60}, keep);
    row("keep, data gone beyond the view: full", keep, {70, 90}, view, {70, 90}, full);
    row("keep, data unknown: full", keep, {0, NaN}, view, unknown, full);
}

void tst_XYCanvasPolicies::policies()
{
    QFETCH(Policy, policy);
    QFETCH(Span, data);
    QFETCH(Span, view);
    for (Bounds::Direction const direction : {Bounds::Horizontal, Bounds::Vertical}) {
        CanvasStage stage;
        stage->setBounds(boundsOf({0, 100}, direction), boundsOf(view, direction), true);
        stage->setViewBoundsUpdatePolicy(direction, policy, false);
        Bounds const moved = stage->calculateUpdatedViewBounds(boundsOf(data, direction));
        QTEST(spanOf(moved, direction), "newView");
        QTEST(stage->getViewBoundsUpdatePolicy(direction), "newPolicy");
        QCOMPARE(spanOf(stage->getViewBounds(), direction), view); // only computed
    }
}

void tst_XYCanvasPolicies::follow_data()
{
    QTest::addColumn<Span>("before"); // data bounds
    QTest::addColumn<Span>("data");
    QTest::addColumn<Span>("view"); // 40 to 60 leaves 2 ahead
    QTest::addColumn<Span>("last"); // newest points
    QTest::addColumn<Span>("newView");
    auto const row
        = [](char const* name, Span before, Span data, Span view, Span last, Span newView) {
              QTest::newRow(name) << before << data << view << last << newView;
          };
    Span const same{0, 100};
    Span const view{40, 60};
    Span const mid{50, 50};
    row("view unknown: all", same, same, {40, NaN}, mid, same);
    row("former data unknown: all", {0, NaN}, same, view, mid, same);
    row("view apart from the data: all", same, {200, 300}, view, mid, {200, 300});
    row("view only touches the data: all", same, {60, 160}, view, mid, {60, 160});
    row("view as wide as the data: all", same, {0, 110}, {-10, 100}, mid, {0, 110});
    row("data grown at both ends: all", same, {-10, 110}, view, mid, {-10, 110});
    row("nothing happened: stays", same, same, view, mid, view);
    row("newest at the edge of the view: stays", same, same, view, {60, 60}, view);
    row("grown below: down to it", same, {-10, 100}, view, {-10, -10}, {-10, 10});
    row("grown below, newest above: widened", same, {-10, 100}, view, {15, 15}, {-10, 17});
    row("grown above: up to it", same, {0, 130}, view, {120, 120}, {110, 130});
    row("grown above, view stood out: in view", same, {0, 110}, {95, 115}, {105, 105}, {90, 110});
    row("data shrunk above: back inside", same, {0, 55}, view, mid, {35, 55});
    row("newest above: a tenth ahead of it", same, same, view, {50, 70}, {52, 72});
    row("ahead of it, but not beyond the data", same, same, view, {99, 99}, {80, 100});
    row("newest all below: a tenth before them", same, same, view, {10, 30}, {8, 28});
    row("newest partly below: stays", same, same, view, {10, 45}, view);
    row("before them, but not beyond the data", same, same, view, {1, 1}, {0, 20});
    row("grown above, newest below: widened", same, {0, 130}, view, {20, 90}, {18, 130});
    row("widened beyond the data: cut twice", same, {-10, 100}, view, {99, 99}, {-10, 100});
    row("no points: stays", same, same, view, {}, view);
}

void tst_XYCanvasPolicies::follow()
{
    QFETCH(Span, before);
    QFETCH(Span, data);
    QFETCH(Span, view);
    QFETCH(Span, last);
    for (Bounds::Direction const direction : {Bounds::Horizontal, Bounds::Vertical}) {
        CanvasStage stage;
        stage.add({last.lower}, {last.lower});
        stage.add({last.upper}, {last.upper});
        stage->setBounds(boundsOf(before, direction), boundsOf(view, direction), true);
        stage->setViewBoundsUpdatePolicy(direction, XYCanvas::PolicyFollow, false);
        Bounds moved = stage->getViewBounds();
        stage->calculateUpdatedViewBounds(direction, boundsOf(data, direction), moved);
        QTEST(spanOf(moved, direction), "newView");
    }
}

void tst_XYCanvasPolicies::signalsOfNewData()
{
    CanvasStage stage;
    stage.add({0, 10}, {0, 5});
    SignalLog log(stage.operator->());
    stage->updateBounds();
    QStringList const zoom{"x in 1",   "y in 1",   "x out 0",    "y out 0",
                           "x full 0", "y full 0", "both full 0"};
    QCOMPARE(log.take(), (QStringList{"data", "view"} + zoom));
    QCOMPARE(spanOf(stage->getViewBounds(), Bounds::Horizontal), (Span{0, 30000}));
    stage->updateBounds();
    QCOMPARE(log.take(), QStringList());

    // A view that the data has left is given up first.
    stage->setBounds({-60, 0, 0, 5}, {-20, -10, 0, 5}, true);
    stage->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyKeep, false);
    stage->setInitialDataBounds({0, 1, 0, 1});
    log.take();
    stage->updateBounds();
    QCOMPARE(log.takeBounds(), (QStringList{"x policy", "data", "view"}));
    QCOMPARE(stage->getHorizontalViewBoundsUpdatePolicy(), XYCanvas::PolicyFull);
    QCOMPARE(spanOf(stage->getViewBounds(), Bounds::Horizontal), (Span{-0.25, 11}));
}

void tst_XYCanvasPolicies::owedSignals()
{
    CanvasStage stage;
    SignalLog log(stage.operator->());
    stage->setBounds({0, 10, 0, 10}, {2, 4, 0, 10}, false);
    QStringList const zoomOnly{"x in 1",   "y in 1",   "x out 1",    "y out 0",
                               "x full 1", "y full 0", "both full 1"};
    QCOMPARE(log.take(), zoomOnly);
    stage->forceEmitViewTransformSignals(); // leaves the debt
    QCOMPARE(log.take(), (QStringList{"data", "x policy", "y policy", "view"}));
    QCOMPARE(spanOf(stage->getPreviouslyEmittedViewBounds(), Bounds::Horizontal), Span());
    stage->emitPendingEmits();
    QCOMPARE(log.take(), (QStringList{"data", "view"}));
    QCOMPARE(spanOf(stage->getPreviouslyEmittedViewBounds(), Bounds::Horizontal), (Span{2, 4}));
    stage->emitPendingEmits();
    QCOMPARE(log.take(), QStringList());
}

void tst_XYCanvasPolicies::policySignalComesAfterTheView()
{
    CanvasStage stage;
    stage->setBounds({0, 10, 0, 10}, {2, 4, 2, 4}, true);
    SignalLog log(stage.operator->());
    stage->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
    QCOMPARE(log.takeBounds(), (QStringList{"view", "x policy"}));
    stage->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
    QCOMPARE(log.take(), QStringList());
    stage->setVerticalViewBoundsUpdatePolicy(XYCanvas::PolicyNone, false);
    QCOMPARE(log.take(), QStringList("y policy"));
}

void tst_XYCanvasPolicies::listenerSeesCauseAndFormerView()
{
    CanvasStage stage;
    QStringList seen;
    connect(stage.operator->(), &XYCanvas::viewBoundsChanged, this, [&] {
        seen.append(QStringLiteral("%1 before %2")
                        .arg(stage->viewBoundsChangeCausedByPolicy() ? "policy" : "user")
                        .arg(stage->getPreviouslyEmittedViewBounds().maxY));
    });
    stage.add({0, 40000}, {0, 8});
    stage->updateBounds();
    stage->setViewBounds({0, 100, 2, 4}, true);
    stage->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
    stage->setFixedDataBounds({0, 1, 0, 9});
    QCOMPARE(
        seen,
        (QStringList{"policy before nan", "user before 8", "policy before 4", "policy before 8"}));
    QVERIFY(!stage->viewBoundsChangeCausedByPolicy());
}

void tst_XYCanvasPolicies::fixedDataBounds()
{
    CanvasStage stage;
    stage.add({-10, 10}, {-20, 20});
    stage->setFixedDataBounds({0, NaN, 3, 1}); // swapped in y, taken as it stands
    SignalLog log(stage.operator->());
    stage->updateBounds();
    QCOMPARE(log.takeBounds(), (QStringList{"data", "view"})); // bounds with holes always differ
    QCOMPARE(spanOf(stage->getViewBounds(), Bounds::Horizontal), Span());
    QCOMPARE(spanOf(stage->getViewBounds(), Bounds::Vertical), (Span{3, 1}));
    QCOMPARE(spanOf(stage->getStrictDataBounds(), Bounds::Vertical), (Span{-20, 20}));
    QCOMPARE(spanOf(stage->calculateDataBounds(false), Bounds::Vertical), Span());
    stage->setFixedDataBounds({0, 5, 0, 1});
    log.take();
    stage->updateBounds();
    QCOMPARE(log.take(), QStringList());
}

void tst_XYCanvasPolicies::zoomEnablement_data()
{
    QTest::addColumn<Span>("data");
    QTest::addColumn<Span>("view");
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<QString>("enabled"); // with a limit of 10
    auto const row
        = [](char const* name, Span data, Span view, Policy policy, char const* enabled) {
              QTest::newRow(name) << data << view << policy << QString::fromLatin1(enabled);
          };
    constexpr Policy keep = XYCanvas::PolicyKeep;
    Span const data{0, 100};
    row("part of the data", data, {20, 40}, keep, "in out full");
    row("all of it", data, data, keep, "in");
    row("just above the limit: off", data, {20, 30.05}, keep, "out full");
    row("clear of the limit", data, {20, 30.2}, keep, "in out full");
    row("policy none", data, {20, 40}, XYCanvas::PolicyNone, "");
    row("data unknown", {0, NaN}, {20, 40}, keep, "");
    row("view unknown", data, {NaN, 40}, keep, "");
}

void tst_XYCanvasPolicies::zoomEnablement()
{
    QFETCH(Span, data);
    QFETCH(Span, view);
    QFETCH(Policy, policy);
    for (Bounds::Direction const direction : {Bounds::Horizontal, Bounds::Vertical}) {
        CanvasStage stage;
        stage->setHorizontalZoomLimit(direction == Bounds::Horizontal ? 10.0 : 0.0);
        stage->setVerticalZoomLimit(direction == Bounds::Vertical ? 10.0 : 0.0);
        stage->setViewBoundsUpdatePolicy(direction, policy, false);
        stage->setBounds(boundsOf(data, direction), boundsOf(view, direction), true);
        bool in = false;
        bool out = false;
        bool full = false;
        stage->determineZoomButtonsEnablement(direction, in, out, full);
        QStringList const enabled
            = QStringList{in ? "in" : "", out ? "out" : "", full ? "full" : ""};
        QTEST(enabled.join(' ').trimmed(), "enabled");
    }
}

QTEST_MAIN(tst_XYCanvasPolicies)
#include "tst_xycanvas_policies.moc"
