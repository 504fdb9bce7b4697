#include "measure.h"

#include <QByteArray>
#include <QFile>
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
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QFile::ReadOnly))
        qFatal("/proc/self/status cannot be read");
    constexpr char label[] = "VmData:";
    QByteArray const lines = status.readAll();
    QByteArray const kilobytes = lines.mid(lines.indexOf(label) + int(sizeof(label)), 16).trimmed();
    qint64 const mapped = kilobytes.left(kilobytes.indexOf(' ')).toLongLong() * 1024;
    auto const heap = mallinfo2();
    return qint64(heap.uordblks) + mapped - qint64(heap.arena);
}
