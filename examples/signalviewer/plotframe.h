#pragma once

#include <QString>
#include <QWidget>

class QLabel;

/**
 * The parent that a ready-made plot expects: it has the signals of a tool bar, which the plot
 * follows, and a heading that shows where in the plot the mouse is.
 */
class PlotFrame : public QWidget
{
    Q_OBJECT
public:
    /// @param mouseForm  text of the mouse position, with %1 for x and %2 for y
    PlotFrame(QString const& title, QString const& mouseForm, QWidget* parent);

    /// Puts the plot, whose parent this widget must be, under the heading.
    void addPlot(QWidget* plot);
    /// Empties the mouse position.
    void forgetMouse();

Q_SIGNALS:
    void showFullPlot();
    void changeCursor(Qt::CursorShape cursor);
    void mouseTrackingOn(bool on);
    void sendMouseCoords(bool on);
    void connectFirstLast(bool on);

public Q_SLOTS:
    void drawMouseCoords(QString const& x, QString const& y);

private:
    QString m_mouseForm;
    QLabel* m_mouse;
};
