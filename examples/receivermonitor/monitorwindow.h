#pragma once

#include "plotpicture.h"
#include "receiverdata.h"

#include "lineartimegrid.h"
#include <QElapsedTimer>
#include <QMainWindow>
#include <QPixmap>
#include <QTimer>

class PlotColumn;
class QAction;
class QLabel;
class QMenu;
class QToolBar;

/// Shows a receiver log: as a whole, or replayed live, epoch by epoch.
class MonitorWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// @param log  stays the caller's, for as long as the window lives
    MonitorWindow(ReceiverLog const& log, int leapSeconds, ETimeType timeType, double speed);
    ~MonitorWindow() override;

    /// The plots alone with the whole log, in @p size logical pixels. The window is of no use then.
    QPixmap picture(QSize size);
    /// Starts the replay from the first epoch.
    void replay();
    /// Keeps the plots in step in the scope that the user chose last, in this run or a former one.
    /// Without it nothing is read or written.
    void keepScope();

private:
    void fillFileMenu(QMenu* menu);
    void fillViewMenu(QMenu* menu);
    void synchronizeViews();
    void showSynchronizationOptions();
    void savePicture();
    void addReplayTools(QToolBar* bar);
    void addViewTools(QToolBar* bar, ETimeType timeType);
    void addCursorModes(QToolBar* bar);
    void addMouseTracking(QToolBar* bar);
    void setSpeed(double speed);
    void pauseOrGoOn();
    void feedDueEpochs();
    void tellProgress();

    ReceiverLog const& m_log;
    ReceiverData m_data;
    PlotColumn* m_plots;
    QAction* m_pauseAction = nullptr;
    QLabel* m_progress = nullptr;
    QLabel* m_memory = nullptr;
    QLabel* m_mousePosition = nullptr;
    PictureOptions m_pictureOptions; // as last asked for
    bool m_keepsScope = false;

    QTimer m_tick;
    QElapsedTimer m_sinceLastTick;
    double m_speed;
    double m_replayTime = 0.0; // GNSS time up to which the log has been replayed, milliseconds
    qsizetype m_fed = 0; // epochs
};
