#include "viewsynchronizer.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "viewsynchronizationorganizer.h"
#include "xycanvas.h"

namespace {
DebugTag debugTag("ViewSynchronizer", "src/xyplot/viewsynchronizer");
} // namespace

ViewSynchronizer::ViewSynchronizer(QObject* parent, Scope synchronizedScope, bool inHorizontal,
                                   bool inVertical)
    : QObject(parent)
    , scope(synchronizedScope)
    , horizontal(inHorizontal)
    , vertical(inVertical)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("ViewSynchronizer"));
    if (scope == None) {
        debugTag.assertionFailed(__func__, __LINE__, "ViewSynchronizer cannot have 'None' scope!");
    }
    ViewSynchronizationOrganizer::getInstance()->add(this);
}

ViewSynchronizer::~ViewSynchronizer()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("ViewSynchronizer"));
    ViewSynchronizationOrganizer::getInstance()->remove(this);
}

void ViewSynchronizer::addCanvas(XYCanvas* canvas)
{
    if (!canvas || canvasses.contains(canvas))
        return;
    canvasses.insert(canvas);
    connect(canvas, &XYCanvas::viewBoundsChanged, this, &ViewSynchronizer::processViewBoundsChange);
    connect(canvas, &XYCanvas::horizontalViewBoundsUpdatePolicyChanged, this,
            &ViewSynchronizer::processHorizontalViewBoundsUpdatePolicyChange);
    connect(canvas, &XYCanvas::verticalViewBoundsUpdatePolicyChanged, this,
            &ViewSynchronizer::processVerticalViewBoundsUpdatePolicyChange);
    connect(canvas, &QObject::destroyed, this, &ViewSynchronizer::reactToCanvasDestroyed);
}

void ViewSynchronizer::removeCanvas(XYCanvas* canvas)
{
    if (canvasses.remove(canvas))
        disconnect(canvas, nullptr, this, nullptr);
    if (followSource == canvas)
        followSource = nullptr;
}

void ViewSynchronizer::reactToCanvasDestroyed()
{
    // No more than an address: what is left of the canvas is a QObject, so it is not cast down.
    auto* const gone = static_cast<XYCanvas*>(static_cast<void*>(sender()));
    canvasses.remove(gone);
    if (followSource == gone)
        followSource = nullptr;
}

void ViewSynchronizer::setEnabled(bool enable)
{
    if (enable == enabled)
        return;
    enabled = enable;
    QPointer<ViewSynchronizer> const self(this);
    Q_EMIT enabledChanged(enable);
    if (self && enabled && !canvasses.isEmpty())
        (*canvasses.cbegin())->forceEmitViewTransformSignals();
}

/// A copy, since what is passed on may add and remove canvases.
QList<QPointer<XYCanvas>> ViewSynchronizer::othersThan(XYCanvas const* source) const
{
    QList<QPointer<XYCanvas>> others;
    for (XYCanvas* const canvas : canvasses) {
        if (canvas != source)
            others.append(canvas);
    }
    return others;
}

/// What moves a view by its own policy is passed on only as the result of a change to following.
bool ViewSynchronizer::isPassedOn(bool moved, XYCanvas const* source, bool sourceFollows) const
{
    if (moved && !source->viewBoundsChangeCausedByPolicy())
        return true;
    return source == followSource && sourceFollows;
}

void ViewSynchronizer::processViewBoundsChange()
{
    auto* const source = qobject_cast<XYCanvas*>(sender());
    if (!enabled || processing || !source)
        return;
    processing = true;
    Bounds const now = source->getViewBounds();
    Bounds const before = source->getPreviouslyEmittedViewBounds();
    bool const xMoved = now.minX != before.minX || now.maxX != before.maxX;
    bool const yMoved = now.minY != before.minY || now.maxY != before.maxY;
    bool const xChanged = horizontal && now.isDetermined(Bounds::Horizontal)
        && isPassedOn(xMoved, source,
                      source->getHorizontalViewBoundsUpdatePolicy() == XYCanvas::PolicyFollow);
    bool const yChanged = vertical && now.isDetermined(Bounds::Vertical)
        && isPassedOn(yMoved, source,
                      source->getVerticalViewBoundsUpdatePolicy() == XYCanvas::PolicyFollow);
    QPointer<ViewSynchronizer> const self(this); // a slot of another canvas may delete it
    if (xChanged || yChanged)
        passViewOn(source, xChanged, yChanged);
    if (!self)
        return;
    followSource = nullptr;
    processing = false;
}

void ViewSynchronizer::passViewOn(XYCanvas* source, bool xChanged, bool yChanged)
{
    Bounds const view = source->getViewBounds();
    bool const xFollows = source->getHorizontalViewBoundsUpdatePolicy() == XYCanvas::PolicyFollow;
    bool const yFollows = source->getVerticalViewBoundsUpdatePolicy() == XYCanvas::PolicyFollow;
    for (QPointer<XYCanvas> const& canvas : othersThan(source)) {
        // A change in y, alone or not, moves no other canvas: their y have nothing in common.
        if (canvas && xChanged && !yChanged)
            canvas->zoomToHorizontal(view.minX, view.maxX);
        if (canvas && xFollows)
            canvas->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, false);
        if (canvas && yFollows)
            canvas->setVerticalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, false);
    }
}

/// Spreads the policies that a user means for the whole group.
template<typename Get, typename Set>
void ViewSynchronizer::passPolicyOn(bool wanted, Get get, Set set)
{
    auto* const source = qobject_cast<XYCanvas*>(sender());
    if (!enabled || !wanted || processing || !source)
        return;
    XYCanvas::ViewBoundsUpdatePolicy const policy = (source->*get)();
    followSource = policy == XYCanvas::PolicyFollow ? source : nullptr;
    if (policy != XYCanvas::PolicyFollow && policy != XYCanvas::PolicyFull)
        return;
    QPointer<ViewSynchronizer> const self(this);
    processing = true;
    for (QPointer<XYCanvas> const& canvas : othersThan(source)) {
        if (canvas)
            (canvas->*set)(policy, true);
    }
    if (self)
        processing = false;
}

void ViewSynchronizer::processHorizontalViewBoundsUpdatePolicyChange()
{
    passPolicyOn(horizontal, &XYCanvas::getHorizontalViewBoundsUpdatePolicy,
                 &XYCanvas::setHorizontalViewBoundsUpdatePolicy);
}

void ViewSynchronizer::processVerticalViewBoundsUpdatePolicyChange()
{
    passPolicyOn(vertical, &XYCanvas::getVerticalViewBoundsUpdatePolicy,
                 &XYCanvas::setVerticalViewBoundsUpdatePolicy);
}
