#pragma once

#include "look.h"
#include "xydatasetdrawlistener.h"
#include "zelplot_export.h"
#include <QSet>
#include <QVector>

/**
 * Records where a colour bar shows an appearance that the user has turned off, so that the points
 * of other data sets at these times can be left out (see ViewportMaskFilter).
 *
 * Belongs to the data set of the colour bar. It keeps one mark per pixel column as the bar is
 * drawn; a change of the view or of what is turned off makes them wrong, hence clearCache().
 */
class ZELPLOT_EXPORT ColorBarDrawListener : public XYDataSetDrawListener
{
    Q_OBJECT
public:
    /// What the colour bar shows at a pixel column.
    enum MaskValue : int {
        Uninitialized = 0, ///< nothing was drawn here yet
        Show = 1, ///< nothing that is turned off
        Hide = 2, ///< only what is turned off
        Partial = 3, ///< both
    };
    Q_ENUM(MaskValue)

    explicit ColorBarDrawListener(XYDataSet* colorBarDataSet, QObject* parent = nullptr);
    ~ColorBarDrawListener() override;

    /// Marks pixel column @p viewportX; columns other than 1 to 9999 are not recorded.
    void drawingDataPoint(int index, int viewportX) override;

    /// True if the appearance is turned off.
    bool isFiltered(Look::Entry lookEntry) const { return filteredEntries.contains(lookEntry); }
    /// What was recorded of a pixel column; Uninitialized outside of what was.
    MaskValue excludeDataPointsAtViewportX(int x) const;
    /// True if the appearance of point @p index of the colour bar is turned off.
    bool decideToExcludeDataPoint(int index) const;
    /// True if that of the colour bar's point nearest to @p x, in its x units, is turned off.
    bool excludeDataPointAtWorldX(double x) const;

    /// True if @p listener, which may have been deleted since, is one that lives.
    static bool isAlive(ColorBarDrawListener const* listener);
    /// Number of listeners deleted in this process, to notice that one may have gone.
    static quint32 getDeletedCount() { return sDeletedCount; }

public Q_SLOTS:
    /// Turns an appearance off if @p enabled, that is, if its filter is on.
    void filterEntry(Look::Entry lookEntry, bool enabled);
    /// Forgets all marks.
    void clearCache();

private:
    static quint32 sDeletedCount;

    QSet<Look::Entry> filteredEntries;
    QVector<MaskValue> mask; // by pixel column
};
