#include "valuebasedlook.h"

#include "columnnotices.h"
#include "dataarray.h"
#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"
#include "xydataset.h"

#include <algorithm>
#include <utility>

namespace {
DebugTag debugTag("ValueBasedLook");

/// Distance of two values in whole numbers: codes are whole, and less than 1 is no difference.
qint64 wholeDistance(double a, double b)
{
    return qAbs(qint64(truncateToInt(a - b)));
}
} // namespace

ValueBasedLook::ValueBasedLook(XYDataSet* owner, QColor color, E_SYMBOL symbol,
                               Qt::PenStyle penStyle, int lineThickness)
    : Look(owner, color, symbol, penStyle, lineThickness)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("ValueBasedLook"));
    connect(&owner->yData->getNotices(), &ColumnNotices::runAppended, this,
            &ValueBasedLook::registerRunPresence);
    connect(owner->yData, &DataArray::dataChanged, this,
            &ValueBasedLook::checkAndEmitLastAppearanceChanged);
    connect(this, &Look::lastAppearanceChanged, this,
            &ValueBasedLook::registerLastLookEntryPresence);
}

ValueBasedLook::~ValueBasedLook()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("ValueBasedLook"));
}

void ValueBasedLook::registerLastLookEntryPresence()
{
    if (lastEntryValid)
        registerLookEntryPresence(lastEntry, true);
}

/// Each point of a run has been the last one, and counts if it looks otherwise than the one before.
void ValueBasedLook::registerRunPresence(int first, int count)
{
    Entry before = lastEntry;
    bool beforeValid = lastEntryValid;
    // The size anew each time: a slot that hears of an appearance may shrink the column.
    for (int i = 0; i < count && dataSet && first + i < dataSet->yData->dataSize(); ++i) {
        if (i > 0 && !isChanged(first + i))
            continue;
        Entry const entry = getApplicableLookEntry(first + i);
        if (!beforeValid || entry != before)
            registerLookEntryPresence(entry, true);
        before = entry;
        beforeValid = true;
    }
}

void ValueBasedLook::addTableEntry(double value, QColor color, E_SYMBOL symbol,
                                   Qt::PenStyle penStyle, int lineThickness, QString legendText)
{
    if (value != value)
        return;
    auto const isBelow = [](ValuedEntry const& row, double key) { return row.value < key; };
    auto row = std::lower_bound(table.begin(), table.end(), value, isBelow);
    if (row != table.end() && row->value == value)
        row = table.erase(row);
    table.insert(row, {value, {color, symbol, penStyle, lineThickness}});
    if (!legendText.isEmpty())
        setLegendText(color, std::move(legendText));
    lastSearchValue = NaN;
}

void ValueBasedLook::addTableEntry(double value, QColor color, QString legendText)
{
    addTableEntry(value, color, getDefaultSymbol(), getDefaultPenStyle(), getDefaultLineThickness(),
                  std::move(legendText));
}

int ValueBasedLook::searchNearestIndex(double value) const
{
    if (value == lastSearchValue)
        return lastSearchIndex;
    int const row = searchRowAtOrBelow(value);
    lastSearchValue = value;
    lastSearchIndex = row < 0 ? -1 : nearerRow(row, value);
    return lastSearchIndex;
}

int ValueBasedLook::searchRowAtOrBelow(double value) const
{
    if (value != value)
        return -1;
    auto const isBelow = [](double key, ValuedEntry const& row) { return key < row.value; };
    auto const above = std::upper_bound(table.cbegin(), table.cend(), value, isBelow);
    return int(above - table.cbegin()) - 1;
}

int ValueBasedLook::nearerRow(int row, double value) const
{
    if (row == table.size() - 1)
        return row;
    bool const lowerIsNearer = wholeDistance(table.at(row).value, value)
        <= wholeDistance(table.at(row + 1).value, value);
    return lowerIsNearer ? row : row + 1;
}

Look::Entry ValueBasedLook::getApplicableLookEntry(int index)
{
    if (!dataSet || index < 0 || index >= dataSet->yData->dataSize())
        return defaultEntry;
    double const value = dataSet->yData->getValue(index);
    int const row = searchNearestIndex(value);
    if (row < 0)
        return defaultEntry;
    if (useInterpolation)
        return interpolatedEntry(row, value);
    return wholeDistance(value, table.at(row).value) == 0 ? table.at(row).entry : defaultEntry;
}

Look::Entry ValueBasedLook::interpolatedEntry(int row, double value) const
{
    double const key = table.at(row).value;
    bool const beforeFirst = row == 0 && key >= value;
    bool const behindLast = row == table.size() - 1 && value >= key;
    if (value == key || beforeFirst || behindLast)
        return table.at(row).entry;
    int const lowerRow = key > value ? row - 1 : row;
    ValuedEntry const& lower = table.at(lowerRow);
    ValuedEntry const& upper = table.at(lowerRow + 1);
    return interpolateLookEntry(lower.entry, upper.entry,
                                (value - lower.value) / (upper.value - lower.value));
}

bool ValueBasedLook::isChanged(int index)
{
    if (index <= 0 || !dataSet)
        return true;
    DataArray const* const ys = dataSet->yData;
    return ys->getValue(index) != ys->getValue(index - 1);
}
