#include "cellmemory.h"

#include "largepages.h"

#include <QtGlobal>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>
#ifdef __SSE2__
#include <emmintrin.h>
#endif
#ifdef Q_OS_LINUX
#include <malloc.h>
#endif

namespace {

/// Beyond what a core has to itself, on most processors.
constexpr std::size_t largerThanCaches = std::size_t(1) << 20;
constexpr std::size_t cacheLine = 64;
constexpr std::size_t linesAhead = 8; // as far as it paid

/// Bytes of a block that is worth keeping. The C library keeps smaller ones by itself; most larger
/// ones are in large pages. Beyond 1 MB is what that library adds.
constexpr std::size_t fewestKept = std::size_t(1) << 15;
constexpr std::size_t mostKept = std::size_t(5) << 18;

bool isWorthKeeping(std::size_t bytes)
{
    return bytes >= fewestKept && bytes <= mostKept;
}

/// That a block of the heap has.
std::size_t usableBytes([[maybe_unused]] void* memory, std::size_t bytes)
{
#ifdef Q_OS_LINUX
    return std::max(bytes, malloc_usable_size(memory));
#else
    return bytes;
#endif
}

/**
 * Blocks of columns that are gone, for the next ones to grow in. The C library would hand the pages
 * of most back to the kernel, which clears each anew.
 */
class SpareBlocks
{
public:
    /// One with so many bytes, but not too many more; nullptr if there is none.
    void* find(std::size_t bytes)
    {
        std::lock_guard const lock(mutex);
        auto const fits = [=](Block const& block) {
            return block.bytes >= bytes && block.bytes / mostTimesTooLarge <= bytes;
        };
        auto const found = std::find_if(blocks.begin(), blocks.end(), fits);
        return found == blocks.end() ? nullptr : std::exchange(*found, {}).memory;
    }
    /// In place of the one kept longest.
    void take(void* memory, std::size_t bytes)
    {
        std::lock_guard const lock(mutex);
        std::free(std::exchange(blocks[oldest], {memory, bytes}).memory);
        oldest = (oldest + 1) % blocks.size();
    }
    void release()
    {
        std::lock_guard const lock(mutex);
        for (Block& block : blocks)
            std::free(std::exchange(block, {}).memory);
    }

private:
    static constexpr std::size_t mostTimesTooLarge = 4;

    struct Block
    {
        void* memory = nullptr;
        std::size_t bytes = 0;
    };

    std::mutex mutex;
    std::array<Block, 16> blocks;
    std::size_t oldest = 0;
};

SpareBlocks spareBlocks;

void* resizeOnHeap(void* memory, std::size_t bytesBefore, std::size_t bytes)
{
    if (isWorthKeeping(bytes) && bytes > bytesBefore) {
        if (memory && usableBytes(memory, bytesBefore) >= bytes)
            return memory; // a spare one, in which the column has grown so far
        if (void* const spare = spareBlocks.find(bytes)) {
            if (bytesBefore > 0)
                std::memcpy(spare, memory, bytesBefore);
            std::free(memory);
            return spare;
        }
    }
    void* const resized = std::realloc(memory, bytes);
    Q_CHECK_PTR(resized);
    return resized;
}

void* allocate(std::size_t bytes)
{
    return largePages::suit(bytes) ? largePages::allocate(bytes) : resizeOnHeap(nullptr, 0, bytes);
}

/// Of a column that is gone, or has moved to or from large pages.
void release(void* memory, std::size_t bytes)
{
    if (largePages::suit(bytes)) {
        largePages::free(memory, bytes);
        return;
    }
    std::size_t const usable = memory ? usableBytes(memory, bytes) : 0;
    if (isWorthKeeping(usable))
        spareBlocks.take(memory, usable);
    else
        std::free(memory);
}

#ifdef __SSE2__

void writePastCaches(char* to, char const* from, std::size_t bytes)
{
    std::size_t const beyond = reinterpret_cast<std::uintptr_t>(to) % cacheLine;
    std::size_t done = std::min((cacheLine - beyond) % cacheLine, bytes);
    std::memcpy(to, from, done);
    for (; bytes - done >= cacheLine; done += cacheLine) {
        _mm_prefetch(from + std::min(done + linesAhead * cacheLine, bytes), _MM_HINT_NTA);
        auto const* const line = reinterpret_cast<__m128i const*>(from + done);
        auto* const place = reinterpret_cast<__m128i*>(to + done);
        for (std::size_t i = 0; i < cacheLine / sizeof(__m128i); ++i)
            _mm_stream_si128(place + i, _mm_loadu_si128(line + i));
    }
    _mm_sfence(); // before another thread is told
    std::memcpy(to + done, from + done, bytes - done);
}

#endif

} // namespace

void* resizeCellMemory(void* memory, std::size_t bytesBefore, std::size_t bytes)
{
    if (bytes == 0) {
        release(memory, bytesBefore);
        return nullptr;
    }
    bool const wasLarge = largePages::suit(bytesBefore);
    bool const isLarge = largePages::suit(bytes);
    if (wasLarge && isLarge)
        return largePages::resize(memory, bytesBefore, bytes);
    if (!wasLarge && !isLarge)
        return resizeOnHeap(memory, bytesBefore, bytes);
    void* const resized = allocate(bytes);
    if (bytesBefore > 0)
        std::memcpy(resized, memory, std::min(bytesBefore, bytes));
    release(memory, bytesBefore);
    return resized;
}

void releaseSpareCellMemory()
{
    largePages::releaseSpares();
    spareBlocks.release();
}

void writeCells(void* to, void const* from, std::size_t bytes, std::size_t blockBytes)
{
#ifdef __SSE2__
    if (blockBytes > largerThanCaches) {
        writePastCaches(static_cast<char*>(to), static_cast<char const*>(from), bytes);
        return;
    }
#else
    Q_UNUSED(blockBytes)
#endif
    std::memcpy(to, from, bytes);
}
