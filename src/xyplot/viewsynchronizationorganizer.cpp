#include "viewsynchronizationorganizer.h"

#include "debugtag.h"
#include "memleaktracer.h"

#include <QAction>
#include <QActionGroup>
#include <QIcon>
#include <QPointer>
#include <QSettings>

namespace {

DebugTag debugTag("ViewSynchronizationOrganizer");

constexpr QLatin1String settingsGroup("ViewSynchronization");
constexpr QLatin1String scopeKey("scope");

} // namespace

ViewSynchronizationOrganizer* ViewSynchronizationOrganizer::getInstance()
{
    static ViewSynchronizationOrganizer instance;
    return &instance;
}

ViewSynchronizationOrganizer::ViewSynchronizationOrganizer()
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("ViewSynchronizationOrganizer"));
    createActions();
}

ViewSynchronizationOrganizer::~ViewSynchronizationOrganizer()
{
    MemLeakTracer::getInstance()->doDeallocateObject(
        QStringLiteral("ViewSynchronizationOrganizer"));
    // Gathered first: each takes itself out of the map, and its child synchronizers with it.
    QList<QPointer<ViewSynchronizer>> all;
    for (QSet<ViewSynchronizer*> const& ofScope : qAsConst(synchronizers))
        all.append(QList<QPointer<ViewSynchronizer>>(ofScope.cbegin(), ofScope.cend()));
    for (QPointer<ViewSynchronizer> const& synchronizer : qAsConst(all))
        delete synchronizer;
}

void ViewSynchronizationOrganizer::createActions()
{
    struct Choice
    {
        ViewSynchronizer::Scope scope;
        char const* icon;
        QString text;
        void (ViewSynchronizationOrganizer::*slot)();
    };
    using This = ViewSynchronizationOrganizer;
    Choice const choices[] = {
        {ViewSynchronizer::ApplicationScope, ":/pic/tp_sync_all.png", tr("Synchronize &all plots"),
         &This::enableApplicationScope},
        {ViewSynchronizer::FileScope, ":/pic/tp_sync_file.png", tr("Synchronize plots per &file"),
         &This::enableFileScope},
        {ViewSynchronizer::WindowScope, ":/pic/tp_sync_view.png", tr("Synchronize plots per &view"),
         &This::enableWindowScope},
        {ViewSynchronizer::None, ":/pic/tp_sync_no.png", tr("&No synchronization over the plots"),
         &This::enableNone},
    };
    auto* const group = new QActionGroup(this);
    for (Choice const& choice : choices) {
        auto* const action = new QAction(QIcon(QLatin1String(choice.icon)), choice.text, this);
        action->setCheckable(true);
        action->setChecked(choice.scope == currentEnabledScope);
        group->addAction(action);
        connect(action, &QAction::triggered, this, choice.slot);
        actions.insert(choice.scope, action);
    }
}

QAction* ViewSynchronizationOrganizer::getEnablementAction(ViewSynchronizer::Scope scope) const
{
    return actions.value(scope, nullptr);
}

void ViewSynchronizationOrganizer::enableScope(ViewSynchronizer::Scope scope)
{
    if (scope != currentEnabledScope) {
        currentEnabledScope = scope;
        auto const all = synchronizers; // slots may add and remove some
        for (auto ofScope = all.cbegin(); ofScope != all.cend(); ++ofScope) {
            for (ViewSynchronizer* const synchronizer : ofScope.value()) {
                if (synchronizers.value(ofScope.key()).contains(synchronizer))
                    synchronizer->setEnabled(ofScope.key() == currentEnabledScope);
            }
        }
    }
    setActionStates();
}

void ViewSynchronizationOrganizer::setActionStates()
{
    if (QAction* const action = getEnablementAction(currentEnabledScope))
        action->setChecked(true);
}

ViewSynchronizer* ViewSynchronizationOrganizer::getApplicationViewSynchronizer()
{
    if (!applicationViewSynchronizer) {
        applicationViewSynchronizer
            = new ViewSynchronizer(this, ViewSynchronizer::ApplicationScope, true, false);
    }
    return applicationViewSynchronizer;
}

ViewSynchronizer* ViewSynchronizationOrganizer::getCurrentFileViewSynchronizer()
{
    if (!currentFileViewSynchronizer)
        newCurrentFile();
    return currentFileViewSynchronizer;
}

void ViewSynchronizationOrganizer::newCurrentFile()
{
    currentFileViewSynchronizer
        = new ViewSynchronizer(this, ViewSynchronizer::FileScope, true, false);
}

QSet<ViewSynchronizer*>
ViewSynchronizationOrganizer::getSynchronizers(ViewSynchronizer::Scope scope) const
{
    return synchronizers.value(scope);
}

void ViewSynchronizationOrganizer::add(ViewSynchronizer* synchronizer)
{
    synchronizers[synchronizer->getScope()].insert(synchronizer);
    synchronizer->setEnabled(synchronizer->getScope() == currentEnabledScope);
}

void ViewSynchronizationOrganizer::remove(ViewSynchronizer* synchronizer)
{
    synchronizers[synchronizer->getScope()].remove(synchronizer);
    if (applicationViewSynchronizer == synchronizer)
        applicationViewSynchronizer = nullptr;
    if (currentFileViewSynchronizer == synchronizer)
        currentFileViewSynchronizer = nullptr;
}

void ViewSynchronizationOrganizer::readSettings(QString const& fileName)
{
    QSettings settings(fileName, QSettings::IniFormat);
    settings.beginGroup(settingsGroup);
    int const scope = settings.value(scopeKey, int(ViewSynchronizer::WindowScope)).toInt();
    enableScope(static_cast<ViewSynchronizer::Scope>(scope));
}

void ViewSynchronizationOrganizer::writeSettings(QString const& fileName) const
{
    QSettings settings(fileName, QSettings::IniFormat);
    settings.beginGroup(settingsGroup);
    settings.setValue(scopeKey, int(currentEnabledScope));
}
