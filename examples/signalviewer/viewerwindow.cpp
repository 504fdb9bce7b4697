#include "viewerwindow.h"

#include "correlationplotwidget.h"
#include "exampleresources.h"
#include "plotframe.h"
#include "spectrumplotwidget.h"
#include "xyplot.h"

#include <QAction>
#include <QActionGroup>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>
#include <cmath>

namespace {

constexpr int tickMs = 100;
constexpr int pictureBlocks = 50; // a second: the loops have settled
constexpr double metresPerChip = 299792458.0 / chipRateHz;
constexpr double hzPerMHz = 1e6;

/// The axes of the spectra, which cannot go below 0.
constexpr unsigned lastMHz = 4;
constexpr unsigned highestDb = 60;

enum Column { Prn, Cn0, SimulatedCn0, CodePhase, CodeError, Doppler, DopplerError, Columns };

QString number(double value, int decimals)
{
    if (!std::isfinite(value))
        return QStringLiteral("-");
    QString const text = QString::number(value, 'f', decimals);
    return text.toDouble() == 0.0 ? QString::number(0.0, 'f', decimals) : text; // no "-0.0"
}

} // namespace

ViewerWindow::ViewerWindow(SignalSession& session)
    : m_session(session)
    , m_toolBar(new QToolBar(this))
    , m_correlationFrame(new PlotFrame(tr("Correlation"), tr("lag %1 chips, amplitude %2 %"), this))
    , m_spectrumFrame(new PlotFrame(tr("Spectrum"), tr("%1 MHz, %2 dB"), this))
    , m_correlation(new CorrelationPlotWidget(session.measuredCorrelation(),
                                              session.expectedCorrelation(), m_correlationFrame))
    , m_spectrum(new SpectrumPlotWidget(m_spectrumFrame))
{
    initExampleResources();
    setWindowTitle(tr("Signal viewer - simulated signal"));
    setWindowIcon(QIcon(QStringLiteral(":/pic/timeplot_big.png")));
    new QVBoxLayout(this);
    addToolBar();
    addSatellites();
    addPlots();
    m_tick.setInterval(tickMs);
    connect(&m_tick, &QTimer::timeout, this, &ViewerWindow::advance);
    showSatellites();
}

ViewerWindow::~ViewerWindow() = default;

void ViewerWindow::addToolBar()
{
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    layout()->addWidget(m_toolBar);
    m_pause = m_toolBar->addAction(tr("Start"), this, &ViewerWindow::pauseOrGoOn);
    m_toolBar->addSeparator();

    QAction* const showAll
        = m_toolBar->addAction(QIcon(QStringLiteral(":/pic/tp_showall_small.png")), tr("Show all"));
    addCursorActions();
    m_toolBar->addSeparator();
    QAction* const mouse = addSwitch(tr("Mouse position"), tr("Tell where in a plot the mouse is"));
    connect(mouse, &QAction::toggled, this, &ViewerWindow::showMouse);
    QAction* const closed
        = addSwitch(tr("Join ends"), tr("Join the ends of the correlation curves by a line"));
    m_mouseDistance = new QLabel(m_toolBar);
    m_mouseDistance->setContentsMargins(12, 0, 0, 0);
    m_toolBar->addWidget(m_mouseDistance);

    connect(showAll, &QAction::triggered, m_correlationFrame, &PlotFrame::showFullPlot);
    connect(showAll, &QAction::triggered, m_spectrumFrame, &PlotFrame::showFullPlot);
    connect(closed, &QAction::toggled, m_correlationFrame, &PlotFrame::connectFirstLast);
    connect(closed, &QAction::toggled, m_correlation, &CorrelationPlotWidget::redrawCanvas);
    connect(m_correlation->getXYPlot(), &XYPlot::mouseCoords, this, [this](double lag) {
        m_mouseDistance->setText(
            tr("%1 m from the prompt replica").arg(number(lag * metresPerChip, 1)));
    });
    mouse->setChecked(true);
}

void ViewerWindow::addCursorActions()
{
    struct Row
    {
        QString text;
        QString toolTip;
        Qt::CursorShape cursor;
    };
    Row const rows[] = {
        {tr("Zoom"), tr("The mouse draws the rectangle to show"), Qt::CrossCursor},
        {tr("Drag"), tr("The mouse moves what is shown"), Qt::OpenHandCursor},
    };
    auto* const group = new QActionGroup(this);
    for (Row const& row : rows) {
        QAction* const action = addSwitch(row.text, row.toolTip);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, cursor = row.cursor] {
            Q_EMIT m_correlationFrame->changeCursor(cursor);
            Q_EMIT m_spectrumFrame->changeCursor(cursor);
        });
    }
    group->actions().first()->trigger();
}

QAction* ViewerWindow::addSwitch(QString const& text, QString const& toolTip)
{
    QAction* const action = m_toolBar->addAction(text);
    action->setToolTip(toolTip);
    action->setCheckable(true);
    return action;
}

void ViewerWindow::addSatellites()
{
    m_notice = new QLabel(this);
    m_notice->setWordWrap(true);
    layout()->addWidget(m_notice);

    m_table = new QTableWidget(int(m_session.satelliteCount()), Columns, this);
    m_table->setHorizontalHeaderLabels({tr("PRN"), tr("C/N0 (dB-Hz)"), tr("as simulated"),
                                        tr("Code phase (chips)"), tr("less the simulated"),
                                        tr("Doppler (Hz)"), tr("less the simulated")});
    m_table->setEditTriggers(QTableWidget::NoEditTriggers);
    m_table->setSelectionBehavior(QTableWidget::SelectRows);
    m_table->setSelectionMode(QTableWidget::SingleSelection);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        for (int column = 0; column < Columns; ++column) {
            auto* const item = new QTableWidgetItem;
            item->setTextAlignment(Qt::AlignCenter);
            m_table->setItem(row, column, item);
        }
    }
    m_table->horizontalHeaderItem(Cn0)->setToolTip(
        tr("The other satellites count as noise, so that it is a little less than simulated."));
    m_table->verticalHeader()->setDefaultSectionSize(
        m_table->verticalHeader()->minimumSectionSize());
    m_table->selectRow(int(m_session.selected()));
    connect(m_table, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (row < 0)
            return;
        m_session.select(row);
        showSatellites();
    });
    // As high as its rows: more would be empty, and the plots need the room.
    m_table->setFixedHeight(m_table->horizontalHeader()->sizeHint().height()
                            + m_table->verticalHeader()->length() + 2 * m_table->frameWidth());
    layout()->addWidget(m_table);
}

void ViewerWindow::addPlots()
{
    m_spectrum->addDataSet(m_session.receivedSpectrum(), 0, 0, lastMHz, highestDb);
    m_spectrum->addDataSet(m_session.satelliteSpectrum(), 0, 0, lastMHz, highestDb);
    m_spectrum->setAxisTitle(
        eHORIZONTAL, tr("Power Density (dB), %1 for the Noise").arg(SignalSession::noiseDb));
    m_spectrum->setAxisTitle(
        eVERTICAL,
        tr("Intermediate Frequency (MHz), L1 at %1").arg(SignalSession::intermediateFrequencyMHz));
    // Value scales of one width: plots of one size.
    QList<XYPlot*> const plots = {m_correlation->getXYPlot(), m_spectrum->getXYPlot()};
    for (XYPlot* const plot : plots)
        plot->setGroupOfPlots(plots);
    updateLegends();
    m_correlationFrame->addPlot(m_correlation);
    m_spectrumFrame->addPlot(m_spectrum);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_correlationFrame, 1);
    row->addWidget(m_spectrumFrame, 1);
    static_cast<QVBoxLayout*>(layout())->addLayout(row, 1);
}

/// At once, for what the legends do by themselves a little later.
void ViewerWindow::updateLegends()
{
    for (ToolBarPlotWidget const* const widget :
         std::initializer_list<ToolBarPlotWidget*>{m_correlation, m_spectrum})
        widget->getXYPlot()->addLegend(true, eLEGEND_RIGHT, nullptr);
}

QPixmap ViewerWindow::picture(QSize size)
{
    m_toolBar->hide();
    resize(size);
    for (int i = 0; i < pictureBlocks; ++i)
        m_session.advance();
    updateLegends();
    showSatellites();
    return grab();
}

void ViewerWindow::start()
{
    m_tick.start();
    m_pause->setText(tr("Pause"));
}

void ViewerWindow::pauseOrGoOn()
{
    if (!m_tick.isActive()) {
        start();
        return;
    }
    m_tick.stop();
    m_pause->setText(tr("Go on"));
}

void ViewerWindow::advance()
{
    m_session.advance();
    showSatellites();
}

void ViewerWindow::showSatellites()
{
    m_notice->setText(tr("<b>Simulated signal</b>, %1 s so far: no receiver is involved. Choose "
                         "a satellite in the table. The orange triangle stands where the simulator "
                         "has put it, the red line where early and late weigh the same.")
                          .arg(m_session.seconds(), 0, 'f', 2));
    for (int row = 0; row < m_table->rowCount(); ++row) {
        SignalTracker const& tracker = m_session.tracker(row);
        SimulatedSatellite const* const truth = m_session.simulated(row);
        SignalPhase const& phase = tracker.phase();
        auto const set = [this, row](Column column, QString const& text) {
            m_table->item(row, column)->setText(text);
        };
        set(Prn, QString::number(tracker.prn()));
        set(Cn0, number(tracker.cn0(), 1));
        set(SimulatedCn0, truth ? number(truth->cn0, 1) : QStringLiteral("-"));
        set(CodePhase, number(phase.codeChips, 2));
        set(Doppler, number(phase.dopplerHz, 1));
        set(CodeError,
            truth ? number(chipsBetween(truth->phase.codeChips, phase.codeChips), 3)
                  : QStringLiteral("-"));
        set(DopplerError,
            truth ? number(phase.dopplerHz - truth->phase.dopplerHz, 1) : QStringLiteral("-"));
    }
    if (m_session.selected() < m_session.satelliteCount()) {
        SignalTracker const& shown = m_session.tracker(m_session.selected());
        m_correlation->updatePlot(shown.promptLag());
        m_spectrum->updatePlot(SignalSession::intermediateFrequencyMHz
                               + shown.phase().dopplerHz / hzPerMHz);
    }
}

void ViewerWindow::showMouse(bool on)
{
    for (PlotFrame* const frame : {m_correlationFrame, m_spectrumFrame}) {
        Q_EMIT frame->mouseTrackingOn(on);
        Q_EMIT frame->sendMouseCoords(on);
        frame->forgetMouse();
    }
    m_mouseDistance->clear();
}
