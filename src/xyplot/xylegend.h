#pragma once

#include "zelplot_export.h"
#include <QColor>
#include <QHash>
#include <QList>
#include <QPixmap>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <memory>

class LookLegend;
class QAction;
class QBoxLayout;
class QCheckBox;
class QFrame;
class QGridLayout;
class QLabel;
class QMenu;
class QPainter;
class QSignalMapper;
class QVBoxLayout;
class RetiredWidgets;
class XYDataSet;

/// Where the legend of a plot stands. Any other value builds one as for the bottom and places it
/// nowhere.
enum E_LEGEND_POSITION : int {
    eLEGEND_BOTTOM = 0, ///< under the plot, colour bars to its right
    eLEGEND_RIGHT = 1, ///< beside the plot, colour bars below
    eLEGEND_IN_MENU = 2, ///< no widget: each data set is an action of a menu
};

/**
 * The legend of a plot: a row for each data set with a sample of its last appearance and its name,
 * and a LookLegend for each visible colour bar.
 *
 * If checkable, each row has a check box that shows and hides its data set, and four rows or more
 * get boxes for all and none. The rows hold no state: each update() makes them anew from the data
 * sets. The list of data sets stays the caller's, as do the data sets, and must outlive the legend.
 * A slot of one of its signals must not delete it, but may retire() it.
 */
class ZELPLOT_EXPORT XYLegend : public QWidget
{
    Q_OBJECT
public:
    /**
     * @param plotDataSets  read anew at each update
     * @param targetMenu    filled with eLEGEND_IN_MENU, else not used; stays the caller's
     * @param columnHeight  pixels that a column of rows may take
     */
    XYLegend(QList<XYDataSet*>* plotDataSets, bool withCheckBoxes, E_LEGEND_POSITION place,
             QMenu* targetMenu, int columnHeight, QWidget* parent);
    ~XYLegend() override;

    /// Heading of the rows, empty for none; shows with the next update().
    void setTitle(QString const& text) { title = text; }

    /// Makes the legends of the visible colour bars anew.
    void updateColorBarLegends();
    /// The legend of the appearances of @p dataSet; null if there is none.
    LookLegend* getColorBarLegend(XYDataSet* dataSet);

    /**
     * A sample of the last appearance of data set @p index of the list, or of its default one if it
     * has no points; one line of the legend's font high, in logical pixels of that ratio. Null if
     * the render settings leave it no width or more than 32767 pixels.
     */
    QPixmap createPixmap(int index, QColor background, bool withText, qreal pixelRatio = 1.0);

    /**
     * A picture of the legend: the names of all visible data sets that have values, and a block for
     * each colour bar.
     *
     * The fonts of the render settings shrink until it fits @p maximum; if none is small enough, it
     * is cut to that size, after a dialog that warns of it, at most once a minute and never with
     * zelplotUserInteractionDisabled set.
     *
     * @return no larger than need be; null (isNull) without anything to show
     */
    QPixmap drawLegendToPixmap(QSize maximum);

    /**
     * Deletes the legend at once or, while a signal of it or of a box is under way, when that is
     * over. It leaves its parent, tells nothing more, and lets go of the data sets and of the menu.
     */
    void retire();

Q_SIGNALS:
    /// The user has shown or hidden a data set or an appearance; also after a rebuild of a legend
    /// with boxes for all and none.
    void dataSetVisibilityChanged();

public Q_SLOTS:
    /// Makes all rows anew.
    void update();
    /// The same once in 200 ms, and no sooner than that after the last call.
    void updateLater();

private Q_SLOTS:
    void toggled(int i);
    void allOrNoneCBToggled();

private:
    struct Picture;

    Picture collectPicture() const;
    void warnThatLegendIsCropped();
    static void paintHeading(QPainter& painter, Picture const& picture, QString const& heading,
                             int baseline);
    static void paintLine(QPainter& painter, Picture const& picture, QPixmap const& sample,
                          QString const& text, int baseline);
    void paintColorBar(QPainter& painter, Picture const& picture, XYDataSet* dataSet,
                       int& baseline);

    /// Indices of the data sets that get a row.
    QList<int> listedDataSets() const;
    void fillMenu();
    void rebuildFrame();
    void removeFrame();
    void addHeading(int& row);
    void addAllAndNone(int& row);
    QCheckBox* addSpecialBox(QString const& text, int row);
    int rowsPerColumn(int headerRows) const;
    void addRows(QList<int> const& listed, int headerRows);
    void addCheckBox(int dataSetIndex, int row, int column);
    void addSampleAndName(int dataSetIndex, int row, int base);
    void setAllBoxes(QCheckBox* other, bool checked);
    void updateAllAndNone();
    void removeWidget(QWidget* widget);
    bool isInMenu() const { return position == eLEGEND_IN_MENU; }

    QBoxLayout* mainLayout = nullptr;
    QPointer<QMenu> menu;
    QList<XYDataSet*>* dataSets;
    QList<XYDataSet*> noDataSets; // takes the place of `dataSets` in a retired legend
    bool checkable;
    QList<QCheckBox*> checkBoxes; // in row order
    QList<QPointer<QAction>> actions; // of all updates so far
    QSignalMapper* signalMapper; // box or action to index of its data set
    E_LEGEND_POSITION position;
    QGridLayout* gridLayout = nullptr; // of `frame`
    QPointer<QFrame> frame; // holds all rows
    QVBoxLayout* frameLayout;
    QBoxLayout* colorBarLayout = nullptr;
    int maxHeight;
    bool allNoneSyncEnabled = true;
    QPointer<QCheckBox> allCheckBox;
    QPointer<QCheckBox> noneCheckBox;
    QString title;
    QHash<int, int> rowOfDataSet; // index of a data set to that of its check box
    QTimer updateTimer;
    std::shared_ptr<RetiredWidgets> retiredWidgets; // also of the colour bars' legends
};
