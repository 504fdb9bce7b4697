#pragma once

#include "zelplot_export.h"
#include <QObject>
#include <QPointer>

class XYDataSet;

/**
 * Decides which points of a data set the canvas leaves out. The data set owns the filter set on it;
 * making one does not set it.
 */
class ZELPLOT_EXPORT XYDataSetFilter : public QObject
{
    Q_OBJECT
public:
    explicit XYDataSetFilter(XYDataSet* filteredDataSet, QObject* parent = nullptr);
    ~XYDataSetFilter() override;

    /// True if point @p index, which falls on pixel column @p viewportX (0 = left edge), is not
    /// drawn.
    virtual bool excludeDataPoint(int index, int viewportX) = 0;

public Q_SLOTS:
    /// Forgets what depends on the view. Nothing here.
    virtual void clearCache();

protected:
    QPointer<XYDataSet> dataSet; // null once it has gone
};
