#pragma once

#include "signalsession.h"

#include <QPixmap>
#include <QTimer>
#include <QWidget>

class CorrelationPlotWidget;
class PlotFrame;
class QAction;
class QLabel;
class QTableWidget;
class QToolBar;
class SpectrumPlotWidget;

/// Shows a session: its satellites, the correlation of one of them, and the spectrum of all.
class ViewerWindow : public QWidget
{
    Q_OBJECT
public:
    /// @param session  stays the caller's, for as long as the window lives
    explicit ViewerWindow(SignalSession& session);
    ~ViewerWindow() override;

    /// The window in @p size logical pixels, without its tool bar, after a second of signal.
    QPixmap picture(QSize size);
    /// Lets the signal come, block by block.
    void start();

private:
    void addToolBar();
    void addCursorActions();
    QAction* addSwitch(QString const& text, QString const& toolTip);
    void addSatellites();
    void addPlots();
    void updateLegends();
    void pauseOrGoOn();
    void advance();
    void showSatellites();
    void showMouse(bool on);

    SignalSession& m_session;
    QToolBar* m_toolBar;
    QAction* m_pause = nullptr;
    QLabel* m_mouseDistance = nullptr;
    QTableWidget* m_table = nullptr;
    QLabel* m_notice = nullptr;
    PlotFrame* m_correlationFrame;
    PlotFrame* m_spectrumFrame;
    CorrelationPlotWidget* m_correlation;
    SpectrumPlotWidget* m_spectrum;
    QTimer m_tick;
};
