#include "measure.h"

#include <algorithm>
#include <malloc.h>

double median(std::vector<double> values)
{
    auto const middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

qint64 bytesInUse()
{
    auto const heap = mallinfo2();
    return qint64(heap.uordblks) + qint64(heap.hblkhd);
}
