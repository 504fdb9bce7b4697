#pragma once

#include "bounds.h"
#include "look.h"
#include "xydatasetdrawlistener.h"
#include "xydatasetfilter.h"
#include "zelplot_export.h"
#include <QColor>
#include <QObject>
#include <QPointer>
#include <QString>

class DataArray;

/**
 * One drawable series: a column for x and one for y, with a name and a look.
 *
 * It holds a reference on each column, which it may share with others, and owns its look, its
 * filter and its draw listener. The application owns the data set.
 */
class ZELPLOT_EXPORT XYDataSet : public QObject
{
    Q_OBJECT
public:
    /**
     * The last four of the appearance are the default entry of a plain Look.
     *
     * A column that is not reference counted becomes the data set's own.
     */
    XYDataSet(DataArray* xColumn, DataArray* yColumn, QString dataSetName, QColor color,
              E_SYMBOL symbol, Qt::PenStyle penStyle, int lineThickness, QObject* parent = nullptr);
    ~XYDataSet() override;

    DataArray* xData;
    DataArray* yData; ///< of equal length; code that fills a column itself sees to that
    bool visible = true; ///< takes part in drawing
    QString name;

    /// One more point. The x column changes first.
    void append(double x, double y);
    /// @p count more points, the signals of each column coming once.
    void append(double const* xs, double const* ys, int count);

    /// The extent of both columns; not determined in y for a colour bar, nor where no value is
    /// valid.
    Bounds getBounds() const;
    /// Widens @p bounds to hold all points; an end that is not determined takes that of the points.
    void includeInBounds(Bounds& bounds) const;
    /// Widens @p bounds to hold the last point; a direction not determined shrinks to that point.
    void includeLastInBounds(Bounds& bounds) const;
    /// True for a colour bar, whose y values are no coordinates.
    bool hasFixedYPixelPosition() const;

    /// Never null: a plain black look is made if there is none.
    Look* getLook();
    /// Takes over @p newLook, which may be null, and deletes the present one.
    void setLook(Look* newLook);
    /// For the destructor of a look. Deletes nothing.
    void unsetLook(Look* formerLook);

    /// Takes over @p newFilter, which may be null. The present one is not deleted.
    void setFilter(XYDataSetFilter* newFilter) { filter = newFilter; }
    XYDataSetFilter* getFilter() const { return filter; }
    /// Takes over @p newListener, which may be null. The present one is not deleted.
    void setDrawListener(XYDataSetDrawListener* newListener) { drawListener = newListener; }
    XYDataSetDrawListener* getDrawListener() const { return drawListener; }

    /// Tells the canvas that no more points will arrive, so that the last one has its final form.
    void setComplete(bool isFinal) { complete = isFinal; }
    bool isComplete() const { return complete; }
    void setShowInLegendEvenIfEmpty(bool show) { showInLegendEvenIfEmpty = show; }
    bool getShowInLegendEvenIfEmpty() const { return showInLegendEvenIfEmpty; }
    void setShowLegendEvenIfOnlyDataSet(bool show) { showLegendEvenIfOnlyDataSet = show; }
    bool getShowLegendEvenIfOnlyDataSet() const { return showLegendEvenIfOnlyDataSet; }

    /// Gives up the reference on @p column, or deletes it if it is not counted; null is no column.
    void disposeDataArray(DataArray* column);

Q_SIGNALS:
    /// The first valid y value has come.
    void yDataNoLongerEmpty();
    void lastAppearanceChanged();
    /// getLook() is another one, which may still be under construction.
    void lookChanged();

private Q_SLOTS:
    void leftShiftLook(int places2shift);

private:
    Look* look = nullptr;
    bool showInLegendEvenIfEmpty = false;
    bool showLegendEvenIfOnlyDataSet = false;
    bool complete = false;
    QPointer<XYDataSetFilter> filter;
    QPointer<XYDataSetDrawListener> drawListener;
};
