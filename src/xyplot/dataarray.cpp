#include "dataarray.h"

#include "columnnotices.h"
#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"

#include <QMetaMethod>
#include <algorithm>
#include <cmath>
#include <limits>

quint32 DataArray::sTotalVectorMemoryConsumption = 0;

namespace {
DebugTag debugTag("DataArray", "src/xyplot/dataarray");

/// The largest power of two in an int; thinning further leaves the factor there.
constexpr int largestDecimationFactor = 1 << 30;

bool isNaN(double value)
{
    return value != value;
}
} // namespace

DataArray::DataArray()
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("DataArray"));
    resetStatistics();
}

DataArray::~DataArray()
{
    if (referenceCounted && referenceCount != 0)
        debugTag.assertionFailed(__func__, __LINE__, "Deleting referenced DataArray!");
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("DataArray"));
    // By the figure remembered: the storage of the subclass has gone already.
    excludeFromTotalMemoryConsumption();
}

bool DataArray::holdsDoNotUseValue(int index) const
{
    return equalsDoNotUseValue(getValue(index));
}

bool DataArray::equalsDoNotUseValue(double value) const
{
    return isNaN(value);
}

void DataArray::removeReference()
{
    if (referenceCount == 0) {
        debugTag.assertionFailed(__func__, __LINE__,
                                 "DataArray::removeReference is removing uncounted reference");
    }
    --referenceCount;
    if (referenceCount == 0 && referenceCounted)
        delete this;
}

void DataArray::connectNotify(QMetaMethod const& signal)
{
    static QMetaMethod const change = QMetaMethod::fromSignal(&DataArray::dataChanged);
    changeHeard = changeHeard || signal == change;
}

ColumnNotices& DataArray::getNotices() const
{
    if (!notices)
        notices = std::make_unique<ColumnNotices>();
    return *notices;
}

void DataArray::announceChangeOfCells() const
{
    if (notices)
        Q_EMIT notices->aboutToChangeCells();
}

void DataArray::announceRun(int first, int count) const
{
    if (notices && !signalsBlocked())
        Q_EMIT notices->runAppended(first, count);
}

void DataArray::appendOne(double value)
{
    appendData(value);
    afterRawAppend(value);
}

void DataArray::afterRawAppend(double value)
{
    bool const hadValidValues = hasValidValues();
    decimationCounter = 0;
    updateTotalMemoryConsumption();
    includeInStatistics(value);
    nondecreasing = nondecreasing && isRunOrdered(dataSize() - 1, 1);
    announceAppended(hadValidValues);
}

void DataArray::append(double const* values, int count)
{
    if (count > 0)
        appendRun(values, count);
}

void DataArray::appendRun(double const* values, int count)
{
    bool const hadValidValues = hasValidValues();
    int const first = dataSize();
    for (int i = 0; i < count; ++i)
        appendData(values[i]);
    decimationCounter = 0;
    updateTotalMemoryConsumption();
    for (int i = 0; i < count; ++i)
        includeInStatistics(values[i]);
    nondecreasing = nondecreasing && isRunOrdered(first, count);
    announceRun(first, count);
    announceAppended(hadValidValues);
}

void DataArray::countCells(double const* cells, int count, double hole, double before) const
{
    // In registers. The sum depends on the order of its terms, so that this takes as long as their
    // additions one behind the other.
    Statistics running = statistics;
    bool ordered = nondecreasing;
    for (int i = 0; i < count; ++i) {
        double const value = cells[i];
        ordered &= before <= value;
        before = value;
        if (isNaN(value) || value == hole)
            ordered = false;
        else
            running.include(value);
    }
    statistics = running;
    nondecreasing = ordered;
}

/// The cells are read back, since the storage may have rounded the values.
bool DataArray::isRunOrdered(int first, int count) const
{
    for (int index = first; index < first + count; ++index) {
        if (!isOrderedAt(index, index))
            return false;
    }
    return true;
}

void DataArray::replace(int index, double value)
{
    announceChangeOfCells();
    double const oldValue = getValue(index);
    replaceData(index, value);
    replaceValueInStatistics(oldValue, value);
    updateIsNondecreasing(index);
    Q_EMIT dataChanged();
}

void DataArray::leftshift(int count)
{
    int const dropped = qMax(0, qMin(dataSize(), count));
    if (dropped > 0)
        announceChangeOfCells();
    // Neither extremes nor monotony are looked for anew here, which would cost a walk each time.
    for (int i = 0; i < dropped; ++i)
        removeFromStatistics(getValue(i));
    removeData(0, dropped);
    updateTotalMemoryConsumption();
    totalPositionsLeftShifted = saturatedToInt(qint64(totalPositionsLeftShifted) + dropped);
    Q_EMIT leftShifted(dropped);
    Q_EMIT dataChanged();
}

void DataArray::decimateKeepEven()
{
    announceChangeOfCells();
    int const sizeBefore = dataSize();
    removeOddIndexedData();
    // Rebuilding the sum also clears it of rounding errors. What ascended still does.
    resetStatistics();
    for (int i = dataSize() - 1; i >= 0; --i)
        includeInStatistics(getValue(i));
    if (decimationFactor < largestDecimationFactor)
        decimationFactor *= 2;
    // A last cell that went counts as one more value offered; the empty column gives -1.
    decimationCounter = saturatedToInt(qint64(decimationCounter) * 2 + (sizeBefore - 1) % 2);
    updateTotalMemoryConsumption();
    Q_EMIT dataChanged();
}

void DataArray::reinit()
{
    announceChangeOfCells();
    pending = 0;
    clearData();
    updateTotalMemoryConsumption();
    resetStatistics();
    nondecreasing = true;
    decimationFactor = 1;
    decimationCounter = 0;
    totalPositionsLeftShifted = 0;
    Q_EMIT dataChanged();
}

void DataArray::squeeze()
{
    squeezeData();
    updateTotalMemoryConsumption();
}

double DataArray::getLastValue() const
{
    int const size = dataSize();
    return size < 1 ? NaN : getValue(size - 1);
}

double DataArray::getSecondLastValue() const
{
    int const size = dataSize();
    return size < 2 ? NaN : getValue(size - 2);
}

double DataArray::getMean() const
{
    return getNrOfValidValues() == 0 ? NaN : statistics.sum / statistics.validCount;
}

double DataArray::getMinimum() const
{
    countPending();
    if (!statistics.minMaxValid)
        determineMinimumMaximum();
    return statistics.minimum;
}

double DataArray::getMaximum() const
{
    countPending();
    if (!statistics.minMaxValid)
        determineMinimumMaximum();
    return statistics.maximum;
}

int DataArray::posOf(double value) const
{
    if (!isNondecreasing())
        return linearSearchIndexOf(value);
    int const nearest = getIndexOfNearestValue(value);
    return nearest >= 0 && getValue(nearest) == value ? nearest : -1;
}

int DataArray::getLargestIndexOfValueSmallerThanOrEqual(double value) const
{
    int const size = dataSize();
    if (size == 0 || equalsDoNotUseValue(value) || !isNondecreasing())
        return -1;
    // Looking at the cell behind lets most searches end before the range has shrunk to nothing.
    int low = 0;
    int high = size;
    while (low < high) {
        int const middle = low + (high - low) / 2;
        if (getValue(middle) <= value) {
            if (middle == size - 1)
                return middle;
            low = middle + 1;
            if (getValue(low) > value)
                return middle;
        } else {
            high = middle;
        }
    }
    return -1;
}

double DataArray::getInterpolatedIndexOfValue(double value) const
{
    int const index = getLargestIndexOfValueSmallerThanOrEqual(value);
    if (index < 0)
        return -1.0;
    double const lower = getValue(index);
    if (lower == value)
        return index;
    if (index + 1 >= dataSize())
        return -1.0;
    double const upper = getValue(index + 1);
    double const distance = upper - lower;
    if (isNaN(upper) || distance == 0.0)
        return -1.0;
    return index + (value - lower) / distance;
}

int DataArray::getIndexOfNearestValue(double value) const
{
    int const size = dataSize();
    if (size == 0 || equalsDoNotUseValue(value))
        return -1;
    if (!isNondecreasing())
        return indexOfNearestValueUnsorted(value);
    int const lower = truncateToInt(getInterpolatedIndexOfValue(value));
    if (lower < 0)
        return 0; // also beyond the last cell: what has no place gets the first
    if (lower == size - 1)
        return lower;
    double const distanceBelow = std::abs(getValue(lower) - value);
    double const distanceAbove = std::abs(getValue(lower + 1) - value);
    return distanceAbove < distanceBelow ? lower + 1 : lower;
}

/// From the end to the front, so that of equally near cells the last one wins.
int DataArray::indexOfNearestValueUnsorted(double value) const
{
    int nearest = -1;
    double smallestDistance = NaN;
    for (int i = dataSize() - 1; i >= 0; --i) {
        double const cell = getValue(i);
        if (isNaN(cell))
            continue;
        double const distance = std::abs(cell - value);
        if (nearest < 0 || distance < smallestDistance) {
            nearest = i;
            smallestDistance = distance;
        }
    }
    return nearest;
}

double DataArray::getInterpolatedValue(double fractionalIndex) const
{
    double const below = std::floor(fractionalIndex);
    double const above = std::ceil(fractionalIndex);
    // Written so that NaN fails, too: past this line both fit an int.
    if (!(below >= 0.0 && above <= dataSize() - 1))
        return NaN;
    double const lower = getValue(static_cast<int>(below));
    if (below == above)
        return lower;
    double const fraction = fractionalIndex - below;
    return (1.0 - fraction) * lower + fraction * getValue(static_cast<int>(above));
}

int DataArray::getIndexOfFirstValueLargerThanOrEqual(double value) const
{
    int const size = dataSize();
    if (size == 0)
        return -1;
    if (!isNondecreasing()) {
        for (int i = 0; i < size; ++i) {
            if (value <= getValue(i))
                return i;
        }
        return size;
    }
    int const index = getLargestIndexOfValueSmallerThanOrEqual(value);
    if (index != -1) {
        if (getValue(index) == value)
            return firstOfRun(index);
        if (index + 1 < size)
            return index + 1;
    }
    // No cell at or below, or only the last: the value belongs before all cells or behind them.
    if (getFirstValue() >= value)
        return 0;
    if (value > getValue(size - 1))
        return size;
    debugTag.assertionFailed(__func__, __LINE__,
                             "DataArray::getIndexOfFirstValueLargerThanOrEqual inconsistent state");
    return -1;
}

/// Index of the first cell equal to cell @p index of a sorted column, however long the run.
int DataArray::firstOfRun(int index) const
{
    double const value = getValue(index);
    int low = 0;
    int high = index;
    while (low < high) {
        int const middle = low + (high - low) / 2;
        if (getValue(middle) == value)
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

void DataArray::includeInStatistics(double value)
{
    countPending();
    if (!equalsDoNotUseValue(value))
        statistics.include(value);
}

void DataArray::removeFromStatistics(double value)
{
    countPending();
    if (equalsDoNotUseValue(value))
        return;
    --statistics.validCount;
    statistics.sum -= value;
    // Another cell may hold the same value, but finding out would cost the walk that waits.
    if (value == statistics.minimum || value == statistics.maximum)
        statistics.minMaxValid = false;
}

void DataArray::replaceValueInStatistics(double oldValue, double newValue)
{
    removeFromStatistics(oldValue);
    includeInStatistics(newValue);
}

void DataArray::resetStatistics()
{
    countPending();
    statistics = Statistics();
}

void DataArray::determineMinimumMaximum() const
{
    countPending();
    bool found = false;
    statistics.minimum = NaN;
    statistics.maximum = NaN;
    for (int i = dataSize() - 1; i >= 0; --i) {
        double const value = getValue(i);
        if (equalsDoNotUseValue(value))
            continue;
        if (!found || value > statistics.maximum)
            statistics.maximum = value;
        if (!found || value < statistics.minimum)
            statistics.minimum = value;
        found = true;
    }
    statistics.minMaxValid = true;
}

void DataArray::determineIsNonDecreasing()
{
    countPending();
    int const size = dataSize();
    nondecreasing = statistics.validCount >= size;
    for (int i = 1; nondecreasing && i < size; ++i)
        nondecreasing = !(getValue(i) < getValue(i - 1));
}

void DataArray::updateIsNondecreasing(int index)
{
    if (nondecreasing)
        nondecreasing = isOrderedAt(index, dataSize() - 1);
}

/// True if a cell is a number and stands in order with its neighbours; equal ones are in order.
bool DataArray::isOrderedAt(int index, int lastIndex) const
{
    double const value = getValue(index);
    if (isNaN(value))
        return false;
    if (index != 0 && !(getValue(index - 1) <= value))
        return false;
    return index == lastIndex || value <= getValue(index + 1);
}

bool DataArray::needsToAddValueAccordingDecimation()
{
    if (decimationCounter < std::numeric_limits<int>::max())
        ++decimationCounter;
    return decimationCounter >= decimationFactor;
}

void DataArray::updateTotalMemoryConsumption()
{
    accountMemory(getMemoryConsumption());
}

void DataArray::excludeFromTotalMemoryConsumption()
{
    sTotalVectorMemoryConsumption -= accountedMemory;
    accountedMemory = 0;
}
