#pragma once

#include "xydatasetfilter.h"
#include "zelplot_export.h"
#include <QVector>
#include <optional>

class ColorBarDrawListener;

/**
 * Leaves out the points of a data set at times at which a colour bar of the same plot shows an
 * appearance that the user has turned off.
 *
 * The listeners of the colour bars stand in a vector of the plot, which may grow and must outlive
 * the use of the filter. The plot takes out a listener that goes; one that it left there is dropped
 * unread, unless a new listener, maybe of another plot, has come to lie at the same address.
 */
class ZELPLOT_EXPORT ViewportMaskFilter : public XYDataSetFilter
{
    Q_OBJECT
public:
    ViewportMaskFilter(XYDataSet* filteredDataSet,
                       QVector<ColorBarDrawListener*>* colorBarListeners,
                       QObject* parent = nullptr);
    ~ViewportMaskFilter() override;

    /**
     * True if any colour bar excludes the point. O(1) for each bar, but for pixel columns at which
     * a bar shows both kinds, whose nearest sample in x then decides.
     */
    bool excludeDataPoint(int index, int viewportX) override;
    /// True if all points of that pixel column fare alike.
    bool decidesAlikeAt(int viewportX);

public Q_SLOTS:
    /// Clears that of each listener.
    void clearCache() override;

private:
    void dropDeletedListeners();

    QVector<ColorBarDrawListener*>* listeners; // not owned
    /// Deletions before this are out of the vector; none yet, as it may hold dead ones from the
    /// start.
    std::optional<quint32> deletedCountSeen;
};
