#include "viewsynchronizer.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "viewsynchronizationorganizer.h"
#include "xycanvas.h"

#include <QScopedValueRollback>

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
    connect(canvas, &QObject::destroyed, this, [this, canvas] {
        canvasses.remove(canvas);
        if (followSource == canvas)
            followSource = nullptr;
    });
}

void ViewSynchronizer::removeCanvas(XYCanvas* canvas)
{
    if (canvasses.remove(canvas))
        disconnect(canvas, nullptr, this, nullptr);
    if (followSource == canvas)
        followSource = nullptr;
}

void ViewSynchronizer::setEnabled(bool enable)
{
    if (enable == enabled)
        return;
    enabled = enable;
    Q_EMIT enabledChanged(enable);
    if (enabled && !canvasses.isEmpty())
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
    QScopedValueRollback<bool> const guard(processing, true);
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
    if (xChanged || yChanged)
        passViewOn(source, xChanged, yChanged);
    followSource = nullptr;
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
    QScopedValueRollback<bool> const guard(processing, true);
    for (QPointer<XYCanvas> const& canvas : othersThan(source)) {
        if (canvas)
            (canvas->*set)(policy, true);
    }
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
