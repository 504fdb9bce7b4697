#pragma once

#include "dataarray.h"
#include "zelplot_export.h"
#include <QBitArray>

/**
 * A column of booleans, one bit a cell, which read as 0.0 and 1.0.
 *
 * It has no holes: whatever is not 0.0, NaN included, is stored as true. append() counts a NaN in
 * the statistics all the same, which are of no use then.
 */
class ZELPLOT_EXPORT BitDataArray : public DataArray
{
    Q_OBJECT
public:
    BitDataArray();
    ~BitDataArray() override;

    void appendBool(bool value);
    /// Stores a cell, without bookkeeping.
    void appendBoolData(bool value);
    bool getBoolValue(int index) const { return bits.testBit(index); }

    double getValue(int index) const override { return getBoolValue(index) ? 1.0 : 0.0; }
    int dataSize() const override { return bitCount; }
    bool holdsDoNotUseValue(int) const override { return false; }
    bool equalsDoNotUseValue(double) const override { return false; }
    void clearData() override;
    void appendData(double value) override { appendBoolData(value != 0.0); }
    /// Ignores an index outside the column.
    void replaceData(int index, double value) override;
    /// Reports a range that reaches outside the column, and removes what lies inside.
    void removeData(int startIndex, int count) override;
    void removeOddIndexedData() override;
    /// Finds 0.0 and 1.0 only.
    int linearSearchIndexOf(double value) const override;
    void squeezeData() override { bits.resize(bitCount); }
    /// Whole bytes of what is allocated.
    int getMemoryConsumption() const override;

private:
    QBitArray bits; // as long as there is room, not as there are cells
    int bitCount = 0;
};
