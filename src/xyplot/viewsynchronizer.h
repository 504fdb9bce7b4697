#pragma once

#include "zelplot_export.h"
#include <QObject>
#include <QPointer>
#include <QSet>

class XYCanvas;

/**
 * Keeps the views of a group of canvases in step: where the user zooms or drags one of them in x,
 * or has it follow its data or show all, the others do the same.
 *
 * It works while its scope is the one chosen in the ViewSynchronizationOrganizer, which it joins by
 * itself. The canvases stay their owners'.
 */
class ZELPLOT_EXPORT ViewSynchronizer : public QObject
{
    Q_OBJECT
public:
    /// Which plots go together.
    enum Scope : int {
        ApplicationScope = 0, ///< all plots of the application
        FileScope = 1, ///< those of one file
        WindowScope = 2, ///< those of one window
        None = 3, ///< none; a choice of the user, never the scope of a synchronizer
    };
    Q_ENUM(Scope)

    /**
     * @param inHorizontal  views in x and their policy spread
     * @param inVertical    the policy in y spreads; views in y never do, and a view that changes
     *                      in y moves no other one, not even in x
     */
    ViewSynchronizer(QObject* parent, Scope synchronizedScope, bool inHorizontal, bool inVertical);
    ~ViewSynchronizer() override;

    void addCanvas(XYCanvas* canvas);
    void removeCanvas(XYCanvas* canvas);
    QSet<XYCanvas*> getCanvasses() const { return canvasses; }

    bool isEnabled() const { return enabled; }
    bool isHorizontal() const { return horizontal; }
    bool isVertical() const { return vertical; }
    Scope getScope() const { return scope; }

Q_SIGNALS:
    void enabledChanged(bool enable);

public Q_SLOTS:
    /// For the organizer. Once enabled, one canvas of the group, whichever comes first, passes its
    /// policy on, and with following its view; with any other policy the views stay as they are.
    void setEnabled(bool enable);

private Q_SLOTS:
    void reactToCanvasDestroyed();
    void processViewBoundsChange();
    void processHorizontalViewBoundsUpdatePolicyChange();
    void processVerticalViewBoundsUpdatePolicyChange();

private:
    QList<QPointer<XYCanvas>> othersThan(XYCanvas const* source) const;
    bool isPassedOn(bool moved, XYCanvas const* source, bool sourceFollows) const;
    void passViewOn(XYCanvas* source, bool xChanged, bool yChanged);
    template<typename Get, typename Set> void passPolicyOn(bool wanted, Get get, Set set);

    QSet<XYCanvas*> canvasses;
    Scope const scope;
    bool enabled = false;
    bool const horizontal;
    bool const vertical;
    bool processing = false; // a change is being passed on, so what comes back is none
    /// Turned to PolicyFollow last, so that the view that this gives it is passed on.
    XYCanvas const* followSource = nullptr;
};
