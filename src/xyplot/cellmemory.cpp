#include "cellmemory.h"

#include "largepages.h"

#include <QtGlobal>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

/// Beyond what a core has to itself, on most processors.
constexpr std::size_t largerThanCaches = std::size_t(1) << 20;
constexpr std::size_t cacheLine = 64;
constexpr std::size_t linesAhead = 8; // as far as it paid

void* resizeOnHeap(void* memory, std::size_t bytes)
{
    void* const resized = std::realloc(memory, bytes);
    Q_CHECK_PTR(resized);
    return resized;
}

void release(void* memory, std::size_t bytes)
{
    if (largePages::suit(bytes))
        largePages::free(memory, bytes);
    else
        std::free(memory);
}

#ifdef __SSE2__

void writePastCaches(char* to, char const* from, std::size_t bytes)
{
    std::size_t const beyond = reinterpret_cast<std::uintptr_t>(to) % cacheLine;
    std::size_t done = std::min((cacheLine - beyond) % cacheLine, bytes);
    std::memcpy(to, from, done);
    // A number, since a pointer must not leave the run.
    auto const ahead = reinterpret_cast<std::uintptr_t>(from) + linesAhead * cacheLine;
    for (; bytes - done >= cacheLine; done += cacheLine) {
        _mm_prefetch(reinterpret_cast<char const*>(ahead + done), _MM_HINT_NTA);
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
        return resizeOnHeap(memory, bytes);
    void* const resized = isLarge ? largePages::allocate(bytes) : resizeOnHeap(nullptr, bytes);
    if (bytesBefore > 0)
        std::memcpy(resized, memory, std::min(bytesBefore, bytes));
    release(memory, bytesBefore);
    return resized;
}

void releaseSpareCellMemory()
{
    largePages::releaseSpares();
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
