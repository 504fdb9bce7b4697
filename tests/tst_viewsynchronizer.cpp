#include "canvasstage.h"
#include "librarytest.h"
#include "viewsynchronizationoptionswidget.h"
#include "viewsynchronizationorganizer.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTemporaryDir>

namespace {
using Sync = ViewSynchronizer;

/// Canvases over data from 0 to 100 in both directions, and what keeps them in step.
struct Group
{
    explicit Group(int count, bool alsoVertical = false)
        : synchronizer(nullptr, Sync::WindowScope, true, alsoVertical)
    {
        for (int i = 0; i < count; ++i) {
            canvases.push_back(std::make_unique<CanvasStage>(Bounds{0, 100, 0, 100}));
            canvas(i)->setFixedDataBounds({0, 100, 0, 100});
            canvas(i)->zoomFull();
        }
        joinAll(synchronizer);
    }
    void joinAll(Sync& joined)
    {
        for (auto& stage : canvases)
            joined.addCanvas(stage->operator->());
    }
    XYCanvas* canvas(int index) { return canvases[size_t(index)]->operator->(); }
    /// The view of a canvas as "10-20 0-100".
    QString view(int index)
    {
        Bounds const b = canvas(index)->getViewBounds();
        return QString("%1-%2 %3-%4").arg(b.minX).arg(b.maxX).arg(b.minY).arg(b.maxY);
    }
    std::vector<std::unique_ptr<CanvasStage>> canvases;
    Sync synchronizer;
};
} // namespace

class tst_ViewSynchronizer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        organizer->enableScope(Sync::WindowScope);
        messages.emplace();
    }
    void cleanup() { QCOMPARE(messages->take(), QStringList()); }
    void xReachesTheOthersOnce();
    void whatStaysWithItsCanvas();
    void followingTakesTheGroupAlong();
    void partnersMayGo();
    void organizerEnablesOneScopeAndKeepsIt();
    void optionsDialog();

private:
    ViewSynchronizationOrganizer* const organizer = ViewSynchronizationOrganizer::getInstance();
    std::optional<MessageRecorder> messages;
};

void tst_ViewSynchronizer::xReachesTheOthersOnce()
{
    Group group(40);
    group.joinAll(group.synchronizer); // connects nothing twice
    int moved = 0;
    for (int i = 0; i < 40; ++i)
        connect(group.canvas(i), &XYCanvas::viewBoundsChanged, this, [&] { ++moved; });
    group.canvas(7)->zoomToHorizontal(10.0, 20.0);
    QCOMPARE(group.view(39), QString("10-20 0-100"));
    QCOMPARE(moved, 40);
    XYCanvas const* const other = group.canvas(39);
    group.canvas(0)->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
    QCOMPARE(group.view(39), QString("0-100 0-100"));
    group.canvas(0)->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyNone, true);
    group.canvas(0)->setVerticalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, true);
    QCOMPARE(other->getVerticalViewBoundsUpdatePolicy(), XYCanvas::PolicyFull);
}

void tst_ViewSynchronizer::whatStaysWithItsCanvas()
{
    Group group(3, true);
    organizer->enableScope(Sync::None);
    group.canvas(0)->zoomToHorizontal(30.0, 40.0);
    QCOMPARE(group.view(1), QString("0-100 0-100"));
    organizer->enableScope(Sync::WindowScope);
    QString const before = group.view(1);
    group.canvas(0)->zoomTo(Bounds{5, 15, 5, 15});
    QCOMPARE(group.view(1), before);
    // What the policy makes of new data.
    group.canvas(0)->setBounds({0, 100, 0, 100}, {NaN, NaN, 0, 100}, true);
    QCOMPARE(group.view(1), before);
    group.synchronizer.removeCanvas(group.canvas(0));
    group.canvas(0)->zoomToHorizontal(50.0, 60.0);
    QCOMPARE(group.view(1), before);
}

void tst_ViewSynchronizer::followingTakesTheGroupAlong()
{
    CanvasStage source;
    CanvasStage other;
    XYDataSet* const data = source.add({0.0, 1000.0}, {0.0, 1.0});
    other.add({0.0, 2000.0}, {0.0, 1.0});
    Sync synchronizer(nullptr, Sync::WindowScope, true, false);
    for (CanvasStage* const stage : {&source, &other}) {
        (*stage)->setExtensionBufferParameters(0, 0, 0, 0, 0, 0, 0, 0);
        (*stage)->updateBounds();
        synchronizer.addCanvas(stage->operator->());
    }
    source->zoomToHorizontal(100.0, 300.0);
    source->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, true);
    // The view that following has given is passed on.
    data->append(1500.0, 0.0);
    source->updateBounds();
    QVERIFY(source->getViewBounds().maxX >= 1500.0);
    QCOMPARE(other->getViewBounds().maxX, source->getViewBounds().maxX);
}

void tst_ViewSynchronizer::partnersMayGo()
{
    Group group(3);
    group.canvas(0)->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, true);
    group.canvases.erase(group.canvases.begin());
    QCOMPARE(group.synchronizer.getCanvasses().size(), 2);
    // A slot may take canvases out while a view is passed on.
    connect(group.canvas(1), &XYCanvas::viewBoundsChanged, this, [&] {
        for (XYCanvas* const canvas : group.synchronizer.getCanvasses())
            group.synchronizer.removeCanvas(canvas);
    });
    group.canvas(0)->zoomToHorizontal(10.0, 20.0);
    QVERIFY(group.synchronizer.getCanvasses().isEmpty());
    // And the synchronizer at work.
    QPointer<Sync> working = new Sync(nullptr, Sync::WindowScope, true, false);
    group.joinAll(*working);
    connect(group.canvas(1), &XYCanvas::viewBoundsChanged, this, [&] { delete working; });
    group.canvas(0)->zoomToHorizontal(30.0, 40.0);
    working = new Sync(nullptr, Sync::FileScope, true, false);
    connect(working, &Sync::enabledChanged, this, [&] { delete working; });
    organizer->enableScope(Sync::FileScope);
    QVERIFY(!working && organizer->getSynchronizers(Sync::WindowScope).size() == 1);
    Sync const none(nullptr, Sync::None, true, false);
    QVERIFY(messages->tookOnly("ViewSynchronizer cannot have 'None' scope!"));
}

void tst_ViewSynchronizer::organizerEnablesOneScopeAndKeepsIt()
{
    Sync const window(nullptr, Sync::WindowScope, true, false);
    Sync* const ofFile = organizer->getCurrentFileViewSynchronizer();
    organizer->newCurrentFile();
    organizer->getEnablementAction(Sync::FileScope)->trigger();
    QVERIFY(ofFile->isEnabled() && !window.isEnabled());
    QVERIFY(organizer->getCurrentFileViewSynchronizer()->isEnabled());
    organizer->enableScope(Sync::Scope(9));
    QVERIFY(!ofFile->isEnabled() && !organizer->getEnablementAction(Sync::Scope(9)));
    // A later run of the program.
    QTemporaryDir const dir;
    QString const file = dir.filePath("some.ini");
    organizer->enableScope(Sync::ApplicationScope);
    organizer->writeSettings(file);
    QCOMPARE(QSettings(file, QSettings::IniFormat).value("ViewSynchronization/scope"), "0");
    organizer->enableScope(Sync::None);
    organizer->readSettings(file);
    QCOMPARE(organizer->getCurrentEnabledScope(), Sync::ApplicationScope);
    organizer->readSettings(dir.filePath("missing.ini"));
    QCOMPARE(organizer->getCurrentEnabledScope(), Sync::WindowScope);
    Sync const late(nullptr, Sync::WindowScope, true, false);
    QVERIFY(late.isEnabled() && window.isEnabled());
    delete ofFile;
    QCOMPARE(organizer->getSynchronizers(Sync::FileScope).size(), 1);
    // Those left at the end of the program are the organizer's to delete, each once.
    new Sync(new Sync(nullptr, Sync::FileScope, true, false), Sync::FileScope, true, false);
}

void tst_ViewSynchronizer::optionsDialog()
{
    for (auto const which : {QDialogButtonBox::Cancel, QDialogButtonBox::Ok}) {
        organizer->enableScope(Sync::FileScope);
        auto* const page = new ViewSynchronizationOptionsWidget(nullptr, false);
        std::unique_ptr<QDialog> const dialog(page->turnIntoDialog(nullptr));
        auto const buttons = page->findChildren<QRadioButton*>();
        QVERIFY(buttons.at(2)->isChecked() && buttons.at(2)->isHidden());
        page->accept(); // keeps the scope of the hidden one
        QCOMPARE(organizer->getCurrentEnabledScope(), Sync::FileScope);
        buttons.at(3)->click();
        dialog->findChild<QDialogButtonBox*>()->button(which)->click();
        QCOMPARE(dialog->result() == QDialog::Accepted, which == QDialogButtonBox::Ok);
        QCOMPARE(organizer->getCurrentEnabledScope() == Sync::ApplicationScope,
                 which == QDialogButtonBox::Ok);
    }
}

QTEST_MAIN(tst_ViewSynchronizer)
#include "tst_viewsynchronizer.moc"
