#include "monitorwindow.h"

#include "options.h"
#include "plotpanel.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int tickMs = 40;
/// The labels keep their room once a resize has come to rest; at each step it would cost a redraw.
constexpr int resizeSettleMs = 150;

} // namespace

MonitorWindow::MonitorWindow(ReceiverLog const& log, int leapSeconds, ETimeType timeType,
                             double speed)
    : m_log(log)
    , m_data(log)
    , m_speed(speed)
{
    setWindowTitle(tr("Receiver monitor"));
    new QVBoxLayout(this);
    addControls(timeType);
    addPanels(leapSeconds);
    setTimeType(timeType);
    m_tick.setInterval(tickMs);
    connect(&m_tick, &QTimer::timeout, this, &MonitorWindow::feedDueEpochs);
    m_resizeSettled.setSingleShot(true);
    m_resizeSettled.setInterval(resizeSettleMs);
    connect(&m_resizeSettled, &QTimer::timeout, this, &MonitorWindow::showNewData);
}

MonitorWindow::~MonitorWindow()
{
    // The panels show data sets of this window.
    qDeleteAll(m_panels);
}

void MonitorWindow::addControls(ETimeType timeType)
{
    m_controls = new QWidget(this);
    auto* const row = new QHBoxLayout(m_controls);
    row->setContentsMargins(0, 0, 0, 0);

    m_pauseButton = new QPushButton(tr("Pause"), m_controls);
    connect(m_pauseButton, &QPushButton::clicked, this, &MonitorWindow::pauseOrGoOn);
    auto* const restartButton = new QPushButton(tr("Restart"), m_controls);
    connect(restartButton, &QPushButton::clicked, this, &MonitorWindow::replay);

    auto* const speedBox = new QDoubleSpinBox(m_controls);
    speedBox->setDecimals(1);
    speedBox->setRange(Options::slowestReplay, Options::fastestReplay);
    speedBox->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    speedBox->setPrefix(tr("Speed "));
    speedBox->setSuffix(tr(" x"));
    speedBox->setValue(m_speed);
    connect(speedBox, &QDoubleSpinBox::valueChanged, this, &MonitorWindow::setSpeed);

    auto* const timeBox = new QComboBox(m_controls);
    timeBox->addItems(
        {tr("GNSS time"), tr("UTC"), tr("Local time"), tr("Time of week"), tr("GNSS seconds")});
    timeBox->setCurrentIndex(timeType);
    connect(timeBox, &QComboBox::currentIndexChanged, this,
            [this](int index) { setTimeType(static_cast<ETimeType>(index)); });

    m_progress = new QLabel(m_controls);
    row->addWidget(m_pauseButton);
    row->addWidget(restartButton);
    row->addWidget(speedBox);
    row->addWidget(timeBox);
    row->addWidget(m_progress, 1);
    layout()->addWidget(m_controls);
}

void MonitorWindow::addPanels(int leapSeconds)
{
    constexpr int barPanelHeight = 130; // the bar, and below it the labels of the time axis
    PlotPanel::TimeAxis const axis
        = {leapSeconds, m_log.epochs.isEmpty() ? 0.0 : double(m_log.epochs.first().time),
           m_data.timeExtent()};
    struct Row
    {
        PlotPanel::Content content;
        int stretch; // 0 for the height of a bar
    };
    Row const rows[] = {
        {{tr("C/N0 in dB-Hz"), m_data.systemColors(), m_data.strengths(), 20.0, true}, 5},
        {{tr("Altitude in metres above mean sea level"), {}, m_data.altitude(), 10.0, true}, 3},
        {{tr("Satellites in use"), {}, m_data.satellitesInUse(), 8.0, true}, 3},
        {{tr("Fix quality"), ReceiverData::qualityColors(), m_data.quality(), 1.0, false}, 0},
    };
    auto* const column = static_cast<QVBoxLayout*>(layout());
    for (Row const& row : rows) {
        auto* const panel = new PlotPanel(row.content, axis, this);
        if (row.stretch == 0)
            panel->setFixedHeight(barPanelHeight);
        column->addWidget(panel, row.stretch);
        m_panels.append(panel);
    }
}

void MonitorWindow::setTimeType(ETimeType timeType)
{
    for (PlotPanel* const panel : qAsConst(m_panels))
        panel->setTimeType(timeType);
}

void MonitorWindow::setSpeed(double speed)
{
    m_speed = speed;
}

QPixmap MonitorWindow::picture(QSize size)
{
    m_controls->hide();
    // The size is what was asked for, be it less than the layout would like.
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    resize(size);
    grab(); // margins in data units follow from the size, which the first paint tells
    for (Epoch const& epoch : m_log.epochs)
        m_data.append(epoch);
    m_fed = m_log.epochs.size();
    for (PlotPanel* const panel : qAsConst(m_panels)) {
        panel->useForFinishedData();
        panel->showNewData();
    }
    return grab();
}

void MonitorWindow::replay()
{
    m_data.clear();
    for (PlotPanel* const panel : qAsConst(m_panels))
        panel->startAnew();
    m_fed = 0;
    if (!m_log.epochs.isEmpty())
        m_replayTime = double(m_log.epochs.first().time);
    m_pauseButton->setEnabled(true);
    m_pauseButton->setText(tr("Pause"));
    m_sinceLastTick.start();
    m_tick.start();
}

void MonitorWindow::pauseOrGoOn()
{
    if (m_tick.isActive()) {
        m_tick.stop();
        m_pauseButton->setText(tr("Go on"));
    } else {
        m_sinceLastTick.start();
        m_tick.start();
        m_pauseButton->setText(tr("Pause"));
    }
}

void MonitorWindow::feedDueEpochs()
{
    m_replayTime += double(m_sinceLastTick.restart()) * m_speed;
    qsizetype const fedBefore = m_fed;
    while (m_fed < m_log.epochs.size() && double(m_log.epochs.at(m_fed).time) <= m_replayTime)
        m_data.append(m_log.epochs.at(m_fed++));
    if (m_fed != fedBefore) {
        showNewData();
        tellProgress();
    }
    if (m_fed == m_log.epochs.size()) {
        m_tick.stop();
        m_pauseButton->setEnabled(false);
    }
}

void MonitorWindow::showNewData()
{
    for (PlotPanel* const panel : qAsConst(m_panels))
        panel->showNewData();
}

void MonitorWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_resizeSettled.start();
}

void MonitorWindow::tellProgress()
{
    m_progress->setText(tr("Epoch %1 of %2").arg(m_fed).arg(m_log.epochs.size()));
}
