#include "measure.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <malloc.h>

namespace {
bool cpuTimeCounts = false;
} // namespace

void countCpuTime()
{
    cpuTimeCounts = true;
}

double readClock()
{
    if (cpuTimeCounts)
        return double(std::clock()) / CLOCKS_PER_SEC;
    auto const now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

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
