#pragma once

#include "zelplot_export.h"
#include <QObject>
#include <QPointer>

class XYDataSet;

/**
 * Is told of each point of a data set that the canvas draws. The data set owns the listener set on
 * it; making one does not set it.
 */
class ZELPLOT_EXPORT XYDataSetDrawListener : public QObject
{
    Q_OBJECT
public:
    explicit XYDataSetDrawListener(XYDataSet* drawnDataSet, QObject* parent = nullptr);
    ~XYDataSetDrawListener() override;

    /// Point @p index is drawn at pixel column @p viewportX (0 = left edge), maybe out of view.
    virtual void drawingDataPoint(int index, int viewportX) = 0;

    /// The data set given at construction; null once it has gone.
    XYDataSet* getDataSet() const;

protected:
    QPointer<XYDataSet> dataSet; // null once it has gone
};
