#pragma once

#include <cstddef>

/**
 * Blocks of memory in large pages, of which the kernel has fewer to hand out and to move.
 *
 * A block that grows takes its pages along instead of a copy of its contents. Pages given up, of up
 * to 32 MB, are kept for the next blocks, since the kernel takes longer to clear a page than a
 * column to fill it. Safe to use from several threads.
 */
namespace largePages {

/// Whether a block of so many bytes should lie in large pages; false where there are none.
bool suit(std::size_t bytes);

// All sizes must suit. Without memory, these end as a failing allocation of Qt does.

void* allocate(std::size_t bytes);
/// Keeps the contents, as far as they fit.
void* resize(void* block, std::size_t bytesBefore, std::size_t bytes);
void free(void* block, std::size_t bytes);

/// Gives the pages kept back to the system.
void releaseSpares();

} // namespace largePages
