#include "canvasstage.h"
#include "librarytest.h"
#include "viewsynchronizationoptionswidget.h"
#include "viewsynchronizationorganizer.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {
using Sync = ViewSynchronizer;

/// Canvases over data from 0 to 100 in both directions.
struct Group
{
    explicit Group(int count)
    {
        for (int i = 0; i < count; ++i) {
            canvases.push_back(std::make_unique<CanvasStage>(Bounds{0, 100, 0, 100}));
            canvas(i)->setFixedDataBounds({0, 100, 0, 100});
            canvas(i)->zoomFull();
        }
    }
    void joinAll(Sync& synchronizer)
    {
        for (auto& stage : canvases)
            synchronizer.addCanvas(stage->operator->());
    }
    XYCanvas* canvas(int index) { return canvases[size_t(index)]->operator->(); }
    /// The view of a canvas as "10-20 0-100".
    QString view(int index)
    {
        Bounds const b = canvas(index)->getViewBounds();
        return QString("%1-%2 %3-%4").arg(b.minX).arg(b.maxX).arg(b.minY).arg(b.maxY);
    }
    std::vector<std::unique_ptr<CanvasStage>> canvases;
};

ViewSynchronizationOrganizer* organizer()
{
    return ViewSynchronizationOrganizer::getInstance();
}
} // namespace

class tst_ViewSynchronizer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        organizer()->enableScope(Sync::None);
        messages.emplace();
    }
    void cleanup() { QCOMPARE(messages->take(), QStringList()); }
    void zoomInXReachesTheOthersOnce();
    void whatStaysWithItsCanvas();
    void policiesSpread();
    void followingTakesTheGroupAlong();
    void partnersMayGo();
    void organizerEnablesOneScope();
    void scopeIsKept();
    void optionsDialog();

private:
    std::optional<MessageRecorder> messages;
};

void tst_ViewSynchronizer::zoomInXReachesTheOthersOnce()
{
    Group group(40);
    Sync synchronizer(nullptr, Sync::WindowScope, true, false);
    group.joinAll(synchronizer);
    group.joinAll(synchronizer); // connects nothing twice
    organizer()->enableScope(Sync::WindowScope);
    int moved = 0;
    for (int i = 0; i < 40; ++i)
        connect(group.canvas(i), &XYCanvas::viewBoundsChanged, this, [&] { ++moved; });
    group.canvas(7)->zoomToHorizontal(10.0, 20.0);
    QCOMPARE(group.view(0), QString("10-20 0-100"));
    QCOMPARE(group.view(39), QString("10-20 0-100"));
    QCOMPARE(moved, 40);
}

void tst_ViewSynchronizer::whatStaysWithItsCanvas()
{
    Group group(3);
    Sync synchronizer(nullptr, Sync::WindowScope, true, true);
    group.joinAll(synchronizer);
    group.canvas(0)->zoomToHorizontal(30.0, 40.0);
    QCOMPARE(group.view(1), QString("0-100 0-100")); // not enabled
    organizer()->enableScope(Sync::WindowScope);
    QString const before = group.view(1);
    group.canvas(0)->zoomTo(Bounds{5, 15, 5, 15});
    group.canvas(0)->zoomToVertical(7.0, 9.0);
    QCOMPARE(group.view(1), before);
    // What the policy makes of new data.
    group.canvas(0)->setBounds({0, 100, 0, 100}, {NaN, NaN, 0, 100}, true);
    QCOMPARE(group.view(1), before);
    synchronizer.removeCanvas(group.canvas(0));
    group.canvas(0)->zoomToHorizontal(50.0, 60.0);
    QCOMPARE(group.view(1), before);
}

void tst_ViewSynchronizer::policiesSpread()
{
    Group group(2);
    Sync synchronizer(nullptr, Sync::WindowScope, true, false);
    group.joinAll(synchronizer);
    organizer()->enableScope(Sync::WindowScope);
    XYCanvas const* const other = group.canvas(1);
    group.canvas(0)->zoomToHorizontal(10.0, 20.0);
    QCOMPARE(other->getHorizontalViewBoundsUpdatePolicy(), XYCanvas::PolicyKeep);
    group.canvas(0)->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
    QCOMPARE(other->getHorizontalViewBoundsUpdatePolicy(), XYCanvas::PolicyFull);
    QCOMPARE(group.view(1), QString("0-100 0-100"));
    group.canvas(0)->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyNone, true);
    group.canvas(0)->setVerticalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, true);
    QCOMPARE(other->getHorizontalViewBoundsUpdatePolicy(), XYCanvas::PolicyFull);
    QCOMPARE(other->getVerticalViewBoundsUpdatePolicy(), XYCanvas::PolicyFull);
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
    organizer()->enableScope(Sync::WindowScope);
    source->zoomToHorizontal(100.0, 300.0);
    source->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, true);
    QCOMPARE(other->getHorizontalViewBoundsUpdatePolicy(), XYCanvas::PolicyFollow);
    // The view that following has given is passed on. From then on, data that moves a view is each
    // canvas's own affair.
    data->append(1500.0, 0.0);
    source->updateBounds();
    double const passedOn = source->getViewBounds().maxX;
    QVERIFY(passedOn >= 1500.0);
    QCOMPARE(other->getViewBounds().maxX, passedOn);
    data->append(1900.0, 0.0);
    source->updateBounds();
    QVERIFY(source->getViewBounds().maxX > passedOn);
    QCOMPARE(other->getViewBounds().maxX, passedOn);
}

void tst_ViewSynchronizer::partnersMayGo()
{
    Group group(3);
    Sync synchronizer(nullptr, Sync::WindowScope, true, false);
    group.joinAll(synchronizer);
    organizer()->enableScope(Sync::WindowScope);
    group.canvas(0)->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFollow, true);
    group.canvases.erase(group.canvases.begin());
    QCOMPARE(synchronizer.getCanvasses().size(), 2);
    // A slot may take canvases out while a view is passed on.
    connect(group.canvas(1), &XYCanvas::viewBoundsChanged, this, [&] {
        for (XYCanvas* const canvas : synchronizer.getCanvasses())
            synchronizer.removeCanvas(canvas);
    });
    group.canvas(0)->zoomToHorizontal(10.0, 20.0);
    QVERIFY(synchronizer.getCanvasses().isEmpty());
    // And the synchronizer at work.
    QPointer<Sync> working = new Sync(nullptr, Sync::WindowScope, true, false);
    group.joinAll(*working);
    connect(group.canvas(1), &XYCanvas::viewBoundsChanged, this, [&] { delete working; });
    group.canvas(0)->zoomToHorizontal(30.0, 40.0);
    working = new Sync(nullptr, Sync::FileScope, true, false);
    connect(working, &Sync::enabledChanged, this, [&] { delete working; });
    organizer()->enableScope(Sync::FileScope);
    QVERIFY(!working && organizer()->getSynchronizers(Sync::WindowScope).size() == 1);
    Sync const none(nullptr, Sync::None, true, false);
    QVERIFY(messages->tookOnly("ViewSynchronizer cannot have 'None' scope!"));
}

void tst_ViewSynchronizer::organizerEnablesOneScope()
{
    Sync const window(nullptr, Sync::WindowScope, true, false);
    Sync* const ofFile = organizer()->getCurrentFileViewSynchronizer();
    organizer()->newCurrentFile();
    organizer()->getEnablementAction(Sync::FileScope)->trigger();
    QVERIFY(ofFile->isEnabled() && !window.isEnabled());
    QVERIFY(organizer()->getCurrentFileViewSynchronizer()->isEnabled());
    QCOMPARE(organizer()->getSynchronizers(Sync::FileScope).size(), 2);
    QVERIFY(!organizer()->getApplicationViewSynchronizer()->isEnabled());
    organizer()->enableScope(Sync::Scope(9));
    QVERIFY(organizer()->getEnablementAction(Sync::FileScope)->isChecked());
    QVERIFY(!ofFile->isEnabled() && !organizer()->getEnablementAction(Sync::Scope(9)));
    organizer()->enableScope(Sync::WindowScope);
    Sync const late(nullptr, Sync::WindowScope, true, false);
    QVERIFY(late.isEnabled() && window.isEnabled());
    delete ofFile;
    QCOMPARE(organizer()->getSynchronizers(Sync::FileScope).size(), 1);
    // Those left at the end of the program are the organizer's to delete, each once.
    new Sync(new Sync(nullptr, Sync::FileScope, true, false), Sync::FileScope, true, false);
}

void tst_ViewSynchronizer::scopeIsKept()
{
    QTemporaryDir const dir;
    QString const file = dir.filePath("some.ini");
    organizer()->readSettings(file);
    QCOMPARE(organizer()->getCurrentEnabledScope(), Sync::WindowScope);
    organizer()->enableScope(Sync::ApplicationScope);
    organizer()->writeSettings(file);
    organizer()->enableScope(Sync::None);
    organizer()->readSettings(file);
    QCOMPARE(organizer()->getCurrentEnabledScope(), Sync::ApplicationScope);
    QFile ini(file);
    QVERIFY(ini.open(QIODevice::ReadOnly));
    QVERIFY(ini.readAll().contains("[ViewSynchronization]\nscope=0"));
}

void tst_ViewSynchronizer::optionsDialog()
{
    for (auto const which : {QDialogButtonBox::Cancel, QDialogButtonBox::Ok}) {
        organizer()->enableScope(Sync::FileScope);
        auto* const page = new ViewSynchronizationOptionsWidget(nullptr, false);
        std::unique_ptr<QDialog> const dialog(page->turnIntoDialog(nullptr));
        auto const buttons = page->findChildren<QRadioButton*>();
        QVERIFY(buttons.at(2)->isChecked() && buttons.at(2)->isHidden());
        page->accept(); // keeps the scope of the hidden one
        QCOMPARE(organizer()->getCurrentEnabledScope(), Sync::FileScope);
        buttons.at(3)->click();
        QSignalSpy const finished(dialog.get(), &QDialog::finished);
        dialog->findChild<QDialogButtonBox*>()->button(which)->click();
        QCOMPARE(finished.size(), 1);
        QCOMPARE(organizer()->getCurrentEnabledScope() == Sync::ApplicationScope,
                 which == QDialogButtonBox::Ok);
    }
}

QTEST_MAIN(tst_ViewSynchronizer)
#include "tst_viewsynchronizer.moc"
