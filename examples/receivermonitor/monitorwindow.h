#pragma once

#include "receiverdata.h"

#include "lineartimegrid.h"
#include <QElapsedTimer>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

class PlotPanel;
class QLabel;
class QPushButton;

/// Shows a receiver log: as a whole, or replayed live, epoch by epoch.
class MonitorWindow : public QWidget
{
    Q_OBJECT
public:
    /// @param log  stays the caller's, for as long as the window lives
    MonitorWindow(ReceiverLog const& log, int leapSeconds, ETimeType timeType, double speed);
    ~MonitorWindow() override;

    /// The whole log fed at once, in @p size logical pixels, without the controls of a replay.
    QPixmap picture(QSize size);
    /// Starts the replay from the first epoch.
    void replay();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addControls(ETimeType timeType);
    void addPanels(int leapSeconds);
    void setTimeType(ETimeType timeType);
    void setSpeed(double speed);
    void pauseOrGoOn();
    void feedDueEpochs();
    void showNewData();
    void tellProgress();

    ReceiverLog const& m_log;
    ReceiverData m_data;
    QVector<PlotPanel*> m_panels;
    QWidget* m_controls = nullptr;
    QPushButton* m_pauseButton = nullptr;
    QLabel* m_progress = nullptr;

    QTimer m_tick;
    QTimer m_resizeSettled;
    QElapsedTimer m_sinceLastTick;
    double m_speed;
    double m_replayTime = 0.0; // GNSS time up to which the log has been replayed, milliseconds
    qsizetype m_fed = 0; // epochs
};
