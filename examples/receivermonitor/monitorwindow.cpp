#include "monitorwindow.h"

#include "exampleresources.h"
#include "options.h"
#include "picturedialog.h"
#include "plotcolumn.h"
#include "viewsynchronizationoptionswidget.h"
#include "viewsynchronizationorganizer.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>
#include <memory>

namespace {

constexpr int tickMs = 40;
constexpr QSize smallIcon(16, 16);

QAction* addCheckable(QToolBar* bar, QString const& text, QString const& toolTip)
{
    QAction* const action = bar->addAction(text);
    action->setToolTip(toolTip);
    action->setCheckable(true);
    return action;
}

constexpr ViewSynchronizer::Scope scopes[]
    = {ViewSynchronizer::ApplicationScope, ViewSynchronizer::FileScope,
       ViewSynchronizer::WindowScope, ViewSynchronizer::None};

/// Keeps the scope from run to run.
QString settingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)
        + QStringLiteral("/receivermonitor.ini");
}

void writeScope()
{
    ViewSynchronizationOrganizer::getInstance()->writeSettings(settingsFile());
}

} // namespace

MonitorWindow::MonitorWindow(ReceiverLog const& log, int leapSeconds, ETimeType timeType,
                             double speed)
    : m_log(log)
    , m_data(log)
    , m_speed(speed)
{
    initExampleResources();
    setWindowTitle(tr("Receiver monitor"));
    setWindowIcon(QIcon(QStringLiteral(":/pic/timeplot_big.png")));
    double const start = log.epochs.isEmpty() ? 0.0 : double(log.epochs.first().time);
    m_plots = new PlotColumn(m_data, start, leapSeconds, this);
    setCentralWidget(m_plots);

    QToolBar* const bar = addToolBar(tr("Replay and view"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize(smallIcon);
    setContextMenuPolicy(Qt::PreventContextMenu); // it would hide the bar and never bring it back
    m_progress = new QLabel(this);
    m_memory = new QLabel(this);
    m_mousePosition = new QLabel(this);
    statusBar()->addWidget(m_progress);
    statusBar()->addWidget(m_memory);
    statusBar()->addPermanentWidget(m_mousePosition);
    synchronizeViews();
    fillFileMenu(menuBar()->addMenu(tr("&File")));
    fillViewMenu(menuBar()->addMenu(tr("&View")));
    addReplayTools(bar);
    addViewTools(bar, timeType);

    m_tick.setInterval(tickMs);
    connect(&m_tick, &QTimer::timeout, this, &MonitorWindow::feedDueEpochs);
}

MonitorWindow::~MonitorWindow()
{
    // They show data sets of this window.
    delete m_plots;
}

void MonitorWindow::fillFileMenu(QMenu* menu)
{
    menu->addAction(tr("Save &picture..."), this, &MonitorWindow::savePicture)
        ->setShortcut(QKeySequence::Save);
    menu->addSeparator();
    menu->addAction(tr("&Quit"), this, &QWidget::close)->setShortcut(QKeySequence::Quit);
}

void MonitorWindow::fillViewMenu(QMenu* menu)
{
    QStringList const names = m_plots->names();
    for (int i = 0; i < names.size(); ++i) {
        QAction* const action = menu->addAction(names.at(i));
        action->setCheckable(true);
        action->setChecked(true);
        connect(action, &QAction::toggled, m_plots,
                [this, i](bool show) { m_plots->showPlot(i, show); });
    }
    menu->addSeparator();
    QAction* const crosshair = menu->addAction(tr("&Crosshair"));
    crosshair->setCheckable(true);
    connect(crosshair, &QAction::toggled, m_plots, &PlotColumn::showCrosshair);
    crosshair->setChecked(true);
    menu->addSeparator();
    for (ViewSynchronizer::Scope const scope : scopes)
        menu->addAction(ViewSynchronizationOrganizer::getInstance()->getEnablementAction(scope));
    menu->addAction(tr("Synchronization &options..."), this,
                    &MonitorWindow::showSynchronizationOptions);
}

/// In every scope; the organizer decides which of them counts.
void MonitorWindow::synchronizeViews()
{
    auto* const organizer = ViewSynchronizationOrganizer::getInstance();
    auto* const ofWindow = new ViewSynchronizer(this, ViewSynchronizer::WindowScope, true, false);
    for (XYCanvas* const canvas : m_plots->canvases()) {
        for (ViewSynchronizer* const synchronizer :
             {ofWindow, organizer->getCurrentFileViewSynchronizer(),
              organizer->getApplicationViewSynchronizer()})
            synchronizer->addCanvas(canvas);
    }
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): a child of the window

void MonitorWindow::keepScope()
{
    auto* const organizer = ViewSynchronizationOrganizer::getInstance();
    m_keepsScope = true;
    organizer->readSettings(settingsFile());
    for (ViewSynchronizer::Scope const scope : scopes)
        connect(organizer->getEnablementAction(scope), &QAction::triggered, this, &writeScope);
}

void MonitorWindow::showSynchronizationOptions()
{
    auto* const page = new ViewSynchronizationOptionsWidget(nullptr, true);
    std::unique_ptr<QDialog> const dialog(page->turnIntoDialog(this));
    if (dialog->exec() == QDialog::Accepted && m_keepsScope)
        writeScope();
}

void MonitorWindow::savePicture()
{
    PictureDialog dialog(m_plots->names(), m_pictureOptions, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_pictureOptions = dialog.options();
    QFileDialog fileDialog(this, tr("Save Picture"), QString(), tr("PNG pictures (*.png)"));
    fileDialog.setAcceptMode(QFileDialog::AcceptSave);
    fileDialog.setDefaultSuffix(QStringLiteral("png"));
    if (fileDialog.exec() != QDialog::Accepted)
        return;
    QString const path = fileDialog.selectedFiles().constFirst();
    if (!renderPicture(*m_plots->plot(m_pictureOptions.plot), m_pictureOptions).save(path, "PNG"))
        QMessageBox::warning(this, windowTitle(),
                             tr("%1: the picture cannot be written").arg(path));
}

void MonitorWindow::addReplayTools(QToolBar* bar)
{
    m_pauseAction = bar->addAction(tr("Pause"), this, &MonitorWindow::pauseOrGoOn);
    bar->addAction(tr("Restart"), this, &MonitorWindow::replay);
    auto* const speedBox = new QDoubleSpinBox(bar);
    speedBox->setDecimals(1);
    speedBox->setRange(Options::slowestReplay, Options::fastestReplay);
    speedBox->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    speedBox->setPrefix(tr("Speed "));
    speedBox->setSuffix(tr(" x"));
    speedBox->setValue(m_speed);
    connect(speedBox, &QDoubleSpinBox::valueChanged, this, &MonitorWindow::setSpeed);
    bar->addWidget(speedBox);
}

void MonitorWindow::addViewTools(QToolBar* bar, ETimeType timeType)
{
    bar->addSeparator();
    auto* const timeBox = new QComboBox(bar);
    timeBox->addItems(
        {tr("GNSS time"), tr("UTC"), tr("Local time"), tr("Time of week"), tr("GNSS seconds")});
    connect(timeBox, &QComboBox::currentIndexChanged, m_plots,
            [this](int index) { m_plots->setTimeType(static_cast<ETimeType>(index)); });
    timeBox->setCurrentIndex(timeType);
    m_plots->setTimeType(timeType);
    bar->addWidget(timeBox);

    bar->addSeparator();
    addCursorModes(bar);
    QAction* const showAll = bar->addAction(QIcon(QStringLiteral(":/pic/tp_showall_small.png")),
                                            tr("Show all"), m_plots, &PlotColumn::showFullPlot);
    showAll->setToolTip(tr("Show all data in all plots"));

    bar->addSeparator();
    addMouseTracking(bar);
    QAction* const means
        = addCheckable(bar, tr("Mean"), tr("Mark the means of altitude and satellites in use"));
    connect(means, &QAction::toggled, m_plots, &PlotColumn::showMeans);
    means->setChecked(true);
}

void MonitorWindow::addCursorModes(QToolBar* bar)
{
    struct Mode
    {
        QString text;
        QString toolTip;
        Qt::CursorShape shape; // tells a plot what the mouse does
    };
    auto* const group = new QActionGroup(this);
    for (Mode const& mode :
         {Mode{tr("Zoom"), tr("The mouse draws a box to zoom to"), Qt::CrossCursor},
          Mode{tr("Drag"), tr("The mouse moves what is in view"), Qt::OpenHandCursor}}) {
        QAction* const action = group->addAction(addCheckable(bar, mode.text, mode.toolTip));
        connect(action, &QAction::triggered, m_plots,
                [this, shape = mode.shape] { Q_EMIT m_plots->changeCursor(shape); });
    }
    group->actions().first()->trigger();
}

void MonitorWindow::addMouseTracking(QToolBar* bar)
{
    QAction* const tracking
        = addCheckable(bar, tr("Coordinates"), tr("Tell where the mouse stands in the data"));
    connect(tracking, &QAction::toggled, m_plots, &PlotColumn::mouseTrackingOn);
    connect(tracking, &QAction::toggled, m_mousePosition, &QLabel::clear);
    connect(m_plots, &PlotColumn::mouseMoved, m_mousePosition, &QLabel::setText);
    tracking->setChecked(true);
}

void MonitorWindow::setSpeed(double speed)
{
    m_speed = speed;
}

QPixmap MonitorWindow::picture(QSize size)
{
    takeCentralWidget();
    for (Epoch const& epoch : m_log.epochs)
        m_data.append(epoch);
    m_fed = m_log.epochs.size();
    return m_plots->picture(size);
}

void MonitorWindow::replay()
{
    m_data.clear();
    m_plots->startAnew();
    m_fed = 0;
    if (!m_log.epochs.isEmpty())
        m_replayTime = double(m_log.epochs.first().time);
    m_pauseAction->setEnabled(true);
    m_pauseAction->setText(tr("Pause"));
    m_sinceLastTick.start();
    m_tick.start();
}

void MonitorWindow::pauseOrGoOn()
{
    if (m_tick.isActive()) {
        m_tick.stop();
        m_pauseAction->setText(tr("Go on"));
    } else {
        m_sinceLastTick.start();
        m_tick.start();
        m_pauseAction->setText(tr("Pause"));
    }
}

void MonitorWindow::feedDueEpochs()
{
    m_replayTime += double(m_sinceLastTick.restart()) * m_speed;
    qsizetype const fedBefore = m_fed;
    while (m_fed < m_log.epochs.size() && double(m_log.epochs.at(m_fed).time) <= m_replayTime)
        m_data.append(m_log.epochs.at(m_fed++));
    if (m_fed != fedBefore) {
        m_plots->showNewData();
        tellProgress();
    }
    if (m_fed == m_log.epochs.size()) {
        m_tick.stop();
        m_pauseAction->setEnabled(false);
    }
}

void MonitorWindow::tellProgress()
{
    m_progress->setText(tr("Epoch %1 of %2").arg(m_fed).arg(m_log.epochs.size()));
    m_memory->setText(
        tr("Columns: %1")
            .arg(locale().formattedDataSize(DataArray::getTotalVectorMemoryConsumption(), 1,
                                            QLocale::DataSizeSIFormat)));
}
