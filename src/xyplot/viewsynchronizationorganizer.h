#pragma once

#include "viewsynchronizer.h"
#include "zelplot_export.h"
#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>

class QAction;

/**
 * Knows all synchronizers and decides which of them work: those of the scope that the user has
 * chosen, by one of four menu actions. The choice lasts in a settings file of the application.
 *
 * The pictures of the actions are the application's, in its resources: ":/pic/tp_sync_all.png",
 * "tp_sync_file.png", "tp_sync_view.png" and "tp_sync_no.png".
 */
class ZELPLOT_EXPORT ViewSynchronizationOrganizer : public QObject
{
    Q_OBJECT
public:
    /// The only one; made on first use, which needs a QApplication. At program exit it goes and
    /// deletes the synchronizers that are left.
    static ViewSynchronizationOrganizer* getInstance();
    ~ViewSynchronizationOrganizer() override;

    /// The action that chooses a scope, for a menu; the organizer's. Null for any other value.
    QAction* getEnablementAction(ViewSynchronizer::Scope scope) const;
    /// ViewSynchronizer::None until another is chosen or read.
    ViewSynchronizer::Scope getCurrentEnabledScope() const { return currentEnabledScope; }
    /// Enables the synchronizers of that scope and disables all others. A value that is no scope
    /// leaves none enabled and the actions as they are.
    void enableScope(ViewSynchronizer::Scope scope);

    /// The one for all plots, in x only; made on first use.
    ViewSynchronizer* getApplicationViewSynchronizer();
    /// The one for the plots of the file at hand, in x only; made on first use.
    ViewSynchronizer* getCurrentFileViewSynchronizer();
    /// From now on another file is at hand; the plots of the former one keep theirs.
    void newCurrentFile();
    QSet<ViewSynchronizer*> getSynchronizers(ViewSynchronizer::Scope scope) const;

    /// For the synchronizers themselves.
    void add(ViewSynchronizer* synchronizer);
    void remove(ViewSynchronizer* synchronizer);

    /// Enables the scope whose number an INI file holds, that of windows if it holds none; the
    /// number goes to enableScope() unchecked, and text reads as 0.
    void readSettings(QString const& fileName);
    void writeSettings(QString const& fileName) const;

private Q_SLOTS:
    void enableApplicationScope() { enableScope(ViewSynchronizer::ApplicationScope); }
    void enableFileScope() { enableScope(ViewSynchronizer::FileScope); }
    void enableWindowScope() { enableScope(ViewSynchronizer::WindowScope); }
    void enableNone() { enableScope(ViewSynchronizer::None); }

private:
    ViewSynchronizationOrganizer();
    void createActions();
    void setActionStates();

    QMap<ViewSynchronizer::Scope, QSet<ViewSynchronizer*>> synchronizers;
    ViewSynchronizer* applicationViewSynchronizer = nullptr;
    ViewSynchronizer* currentFileViewSynchronizer = nullptr;
    ViewSynchronizer::Scope currentEnabledScope = ViewSynchronizer::None;
    QMap<ViewSynchronizer::Scope, QAction*> actions;
};
