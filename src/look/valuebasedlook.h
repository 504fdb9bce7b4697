#pragma once

#include "look.h"
#include "zelplot_export.h"
#include "zelplotglobals.h"
#include <QVector>

/**
 * A look that reads the appearance of a point off its y value, by a table: for a status whose
 * values mean something or, with interpolation, a quantity on a scale of colours.
 *
 * Values that the table does not cover have the default entry, as holes have. What
 * Look::changeFromLast() records is not read. The appearances present are those that the last point
 * has had at each change of the y column; they are never found anew from older points.
 */
class ZELPLOT_EXPORT ValueBasedLook : public Look
{
    Q_OBJECT
public:
    /// A row of the table.
    struct ValuedEntry
    {
        double value;
        Entry entry;
    };

    /// Becomes the look of @p owner in place of the present one. The rest is the default entry.
    ValueBasedLook(XYDataSet* owner, QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle,
                   int lineThickness);
    ~ValueBasedLook() override;

    /**
     * Enters a row, in place of one with that value. A value of NaN is not entered.
     *
     * @param legendText  a rule for the colour alone, unless it is empty
     */
    void addTableEntry(double value, QColor color, E_SYMBOL symbol, Qt::PenStyle penStyle,
                       int lineThickness, QString legendText);
    /// The same with the symbol, pen style and line thickness of the default entry.
    void addTableEntry(double value, QColor color, QString legendText);
    /// Blends neighbouring rows instead of taking those whose value lies less than 1 away.
    void setUseInterpolation(bool on) { useInterpolation = on; }
    bool getUseInterpolation() const { return useInterpolation; }

    /**
     * The row nearest to @p value, distances truncated to whole numbers; of two equally near, the
     * lower.
     *
     * @return -1 below the first row, for NaN and for an empty table
     */
    int searchNearestIndex(double value) const;

    /// True if y at @p index differs from the y before; always for 0.
    bool isChanged(int index) override;
    Entry getApplicableLookEntry(int index) override;
    /// Nothing: the appearances present are gathered as the points come.
    void fillPresentLookEntries() override { }

protected Q_SLOTS:
    void registerLastLookEntryPresence();
    void registerRunPresence(int first, int count);

private:
    int searchRowAtOrBelow(double value) const;
    int nearerRow(int row, double value) const;
    Entry interpolatedEntry(int row, double value) const;

    QVector<ValuedEntry> table; // ascending by value
    bool useInterpolation = false;
    mutable double lastSearchValue = NaN; // columns repeat a value for long stretches
    mutable int lastSearchIndex = -1;
};
