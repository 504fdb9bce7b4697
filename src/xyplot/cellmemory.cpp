#include "cellmemory.h"

#include <QtGlobal>
#include <cstdlib>
#ifdef Q_OS_LINUX
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <sys/mman.h>
#endif

namespace {

void* resizeOnHeap(void* memory, std::size_t bytes)
{
    if (bytes == 0) {
        std::free(memory);
        return nullptr;
    }
    void* const resized = std::realloc(memory, bytes);
    Q_CHECK_PTR(resized);
    return resized;
}

#ifdef Q_OS_LINUX

/// Of most processors, and a multiple of every size of ordinary pages.
constexpr std::size_t largePage = std::size_t(2) << 20;
/// The share of a block that whole large pages may take in addition.
constexpr std::size_t sharesOfWaste = 16;

std::size_t mappedLength(std::size_t bytes)
{
    return (bytes + largePage - 1) / largePage * largePage;
}

bool isMapped(std::size_t bytes)
{
    return mappedLength(bytes) - bytes <= bytes / sharesOfWaste && bytes > 0;
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
    std::size_t const ahead
        = (largePage - reinterpret_cast<std::uintptr_t>(begin) % largePage) % largePage;
    unmap(begin, ahead);
    unmap(begin + ahead + length, largePage - ahead);
    madvise(begin + ahead, length, MADV_HUGEPAGE); // where it is refused, this is but slower
    return begin + ahead;
}

char* resizeMapped(char* memory, std::size_t lengthBefore, std::size_t length)
{
    if (length <= lengthBefore) {
        unmap(memory + length, lengthBefore - length);
        return memory;
    }
    char* const resized = map(length);
    // The pages themselves move, to the place of the first ones just mapped.
    if (mremap(memory, lengthBefore, lengthBefore, MREMAP_MAYMOVE | MREMAP_FIXED, resized)
        == MAP_FAILED) {
        std::memcpy(resized, memory, lengthBefore);
        unmap(memory, lengthBefore);
    }
    return resized;
}

#endif

} // namespace

#ifdef Q_OS_LINUX

void* resizeCellMemory(void* memory, std::size_t bytesBefore, std::size_t bytes)
{
    auto* const before = static_cast<char*>(memory);
    if (isMapped(bytesBefore) && isMapped(bytes))
        return resizeMapped(before, mappedLength(bytesBefore), mappedLength(bytes));
    if (!isMapped(bytesBefore) && !isMapped(bytes))
        return resizeOnHeap(memory, bytes);
    void* const resized = isMapped(bytes) ? map(mappedLength(bytes)) : resizeOnHeap(nullptr, bytes);
    if (bytesBefore > 0 && bytes > 0)
        std::memcpy(resized, memory, std::min(bytesBefore, bytes));
    if (isMapped(bytesBefore))
        unmap(before, mappedLength(bytesBefore));
    else
        std::free(memory);
    return resized;
}

#else

void* resizeCellMemory(void* memory, std::size_t, std::size_t bytes)
{
    return resizeOnHeap(memory, bytes);
}

#endif
