#pragma once

#include "look.h"
#include "zelplot_export.h"
#include <QFrame>
#include <QHash>
#include <QPixmap>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <memory>

class ColorBarDrawListener;
class QCheckBox;
class QGridLayout;
class RetiredWidgets;
class XYDataSet;

/**
 * The legend of one data set whose points have many appearances, such as a colour bar: a row for
 * each appearance that is present, with a sample and its legend text.
 *
 * If the data set has a ColorBarDrawListener, each row has a check box that turns the epochs of its
 * appearance on and off. The rows hold no state: they are made anew from look and listener, at once
 * when the appearances present change. Look, data set and listener stay their owners'; the legend
 * gets along without them when they go, and follows its data set to another look. A slot of one of
 * its signals must not delete it.
 */
class ZELPLOT_EXPORT LookLegend : public QFrame
{
    Q_OBJECT
public:
    /// Takes the name and the listener that @p legendDataSet has now.
    LookLegend(XYDataSet* legendDataSet, QWidget* parent);
    ~LookLegend() override;

    /// Null once it has gone.
    Look* getLook() const { return look; }

    /// A sample of @p entry, one line of the legend's font high, in logical pixels of that ratio;
    /// null if the render settings leave it no width or more than 32767 pixels.
    QPixmap createPixmap(Look::Entry const& entry, QColor background, qreal pixelRatio = 1.0);

    /// A rich text with the colour and the legend text of each entry, for a tool tip; @p title may
    /// be empty.
    static QString generateTooltipText(Look* look, QString const& title);

Q_SIGNALS:
    /// The user has turned an appearance on or off.
    void filterChanged();

public Q_SLOTS:
    /// Makes all rows anew.
    void update();
    /// The same once in 200 ms, and no sooner than that after the last call.
    void updateLater();

private Q_SLOTS:
    void toggled(bool checked);

private:
    friend class XYLegend; // shares its retired widgets with the legends in it

    void followLook();
    void removeRows();
    QCheckBox* addRow(QGridLayout* grid, int row, Look::Entry const& entry);
    void connectToFilter(QCheckBox* box, Look::Entry const& entry);

    QPointer<XYDataSet> dataSet;
    QPointer<Look> look;
    QString name;
    QTimer updateTimer;
    QHash<QCheckBox*, Look::Entry> entryByCheckBox;
    QPointer<ColorBarDrawListener> colorBarListener;
    std::shared_ptr<RetiredWidgets> retiredWidgets;
};
