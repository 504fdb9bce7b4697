#include "bitdataarray.h"

#include "debugtag.h"
#include "memleaktracer.h"

namespace {
DebugTag debugTag("BitDataArray", "src/xyplot/bitdataarray");

constexpr qsizetype bitsPerByte = 8;
} // namespace

BitDataArray::BitDataArray()
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("BitDataArray"));
}

BitDataArray::~BitDataArray()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("BitDataArray"));
}

void BitDataArray::appendBool(bool value)
{
    appendBoolData(value);
    afterRawAppend(value ? 1.0 : 0.0);
}

void BitDataArray::appendBoolData(bool value)
{
    if (bitCount == bits.size())
        bits.resize(qMax(qsizetype(bitCount) * 2, qsizetype(1)));
    bits.setBit(bitCount++, value);
}

void BitDataArray::clearData()
{
    bits = QBitArray();
    bitCount = 0;
}

void BitDataArray::replaceData(int index, double value)
{
    if (index >= 0 && index < bitCount)
        bits.setBit(index, value != 0.0);
}

void BitDataArray::removeData(int startIndex, int count)
{
    qint64 end = qint64(startIndex) + count;
    if (startIndex < 0 || end > bitCount) {
        debugTag.assertionFailed(__func__, __LINE__, "startIndex and/or count out of range");
        startIndex = qMax(startIndex, 0);
        end = qMin<qint64>(end, bitCount);
    }
    if (end <= startIndex)
        return;
    int to = startIndex;
    for (auto from = int(end); from < bitCount; ++from)
        bits.setBit(to++, bits.testBit(from));
    bitCount = to;
}

void BitDataArray::removeOddIndexedData()
{
    int to = 0;
    for (int from = 0; from < bitCount; from += 2)
        bits.setBit(to++, bits.testBit(from));
    bitCount = to;
}

int BitDataArray::linearSearchIndexOf(double value) const
{
    if (value != 0.0 && value != 1.0)
        return -1;
    for (int i = 0; i < bitCount; ++i) {
        if (getBoolValue(i) == (value == 1.0))
            return i;
    }
    return -1;
}

int BitDataArray::getMemoryConsumption() const
{
    return saturatedToInt(bits.size() / bitsPerByte);
}
