#pragma once

#include "testexport.h"
#include <QObject>

/// What the library itself hears of a column, besides the signals that applications connect to.
class ZELPLOT_TEST_EXPORT ColumnNotices : public QObject
{
    Q_OBJECT
Q_SIGNALS:
    /// Cells are about to change or to go, otherwise than by appending, or the column, if dense,
    /// is about to be deleted; the cells are still there. Comes also while signals are blocked.
    void aboutToChangeCells();
    /// Comes before the dataChanged() of a run, whose cells begin at @p first.
    void runAppended(int first, int count);
};
