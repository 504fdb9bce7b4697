#include "largepages.h"

#include <QtGlobal>
#ifdef Q_OS_LINUX

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <sys/mman.h>

namespace {

/// Of most processors, and a multiple of every size of ordinary pages.
constexpr std::size_t largePage = std::size_t(2) << 20;
/// The share of a block that whole large pages may take in addition.
constexpr std::size_t sharesOfWaste = 16;

std::size_t lengthOf(std::size_t bytes)
{
    return (bytes + largePage - 1) / largePage * largePage;
}

void unmap(char* begin, std::size_t length)
{
    if (length > 0)
        munmap(begin, length);
}

/// Aligned to large pages, since the kernel uses none elsewhere.
char* map(std::size_t length)
{
    void* const found = mmap(nullptr, length + largePage, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (found == MAP_FAILED)
        qBadAlloc();
    auto* const begin = static_cast<char*>(found);
    std::size_t const beyond = reinterpret_cast<std::uintptr_t>(begin) % largePage;
    std::size_t const ahead = (largePage - beyond) % largePage;
    unmap(begin, ahead);
    unmap(begin + ahead + length, largePage - ahead);
    madvise(begin + ahead, length, MADV_HUGEPAGE); // where it is refused, this is but slower
    return begin + ahead;
}

/// To a place that is mapped already.
void movePage(char* from, char* to)
{
    if (mremap(from, largePage, largePage, MREMAP_MAYMOVE | MREMAP_FIXED, to) == to)
        return;
    // It may have failed behind unmapping that place.
    if (mmap(to, largePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0)
        != to)
        qFatal("No memory for a growing column");
    std::memcpy(to, from, largePage);
    unmap(from, largePage);
}

/// One by one, since kernels before 6.17 refuse a range that was mapped in parts.
void movePages(char* from, std::size_t length, char* to)
{
    for (std::size_t i = 0; i < length; i += largePage)
        movePage(from + i, to + i);
}

/// Pages of blocks given up, for the next ones.
class SparePages
{
public:
    /// Keeps what there is room for, and unmaps the rest.
    void take(char* begin, std::size_t length)
    {
        std::lock_guard const lock(mutex);
        std::size_t const keeping = std::min(length, most - kept);
        unmap(begin + keeping, length - keeping);
        if (keeping == 0)
            return;
        ranges.at(count++) = {begin, keeping};
        kept += keeping;
    }
    /// Lets as many as there are take the place of those mapped at @p to.
    void supply(char* to, std::size_t length)
    {
        std::lock_guard const lock(mutex);
        while (length > 0 && count > 0) {
            Range& range = ranges.at(count - 1);
            std::size_t const moving = std::min(length, range.length);
            range.length -= moving;
            kept -= moving;
            movePages(range.begin + range.length, moving, to);
            if (range.length == 0)
                --count;
            to += moving;
            length -= moving;
        }
    }
    void release()
    {
        std::lock_guard const lock(mutex);
        for (; count > 0; --count)
            unmap(ranges.at(count - 1).begin, ranges.at(count - 1).length);
        kept = 0;
    }

private:
    /// The C library keeps blocks of up to that size, too.
    static constexpr std::size_t most = std::size_t(32) << 20;

    struct Range
    {
        char* begin;
        std::size_t length;
    };

    std::mutex mutex;
    std::array<Range, most / largePage> ranges = {};
    std::size_t count = 0;
    std::size_t kept = 0;
};

SparePages sparePages;

} // namespace

bool largePages::suit(std::size_t bytes)
{
    return bytes > 0 && lengthOf(bytes) - bytes <= bytes / sharesOfWaste;
}

void* largePages::allocate(std::size_t bytes)
{
    std::size_t const length = lengthOf(bytes);
    char* const block = map(length);
    sparePages.supply(block, length);
    return block;
}

void* largePages::resize(void* block, std::size_t bytesBefore, std::size_t bytes)
{
    auto* const before = static_cast<char*>(block);
    std::size_t const lengthBefore = lengthOf(bytesBefore);
    std::size_t const length = lengthOf(bytes);
    if (length <= lengthBefore) {
        sparePages.take(before + length, lengthBefore - length);
        return block;
    }
    char* const resized = map(length);
    movePages(before, lengthBefore, resized);
    sparePages.supply(resized + lengthBefore, length - lengthBefore);
    return resized;
}

void largePages::free(void* block, std::size_t bytes)
{
    sparePages.take(static_cast<char*>(block), lengthOf(bytes));
}

void largePages::releaseSpares()
{
    sparePages.release();
}

#else

// Nothing suits, so that none of these is called.

bool largePages::suit(std::size_t)
{
    return false;
}

void* largePages::allocate(std::size_t)
{
    return nullptr;
}

void* largePages::resize(void*, std::size_t, std::size_t)
{
    return nullptr;
}

void largePages::free(void*, std::size_t)
{
}

void largePages::releaseSpares()
{
}

#endif
