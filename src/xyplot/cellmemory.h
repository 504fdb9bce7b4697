#pragma once

#include "zelplot_export.h"
#include <cstddef>

/** @file
 * Memory for the cells of columns: small blocks on the heap, large ones in large pages where there
 * are some. To hand out ordinary pages takes the kernel several times as long as to fill them.
 */

/**
 * A block of @p bytes with the contents of @p memory, which is given up, as far as they fit.
 *
 * @param memory       nullptr for none
 * @param bytesBefore  its size; 0 for none
 * @return nullptr for 0 bytes; if there is no memory, this ends as a failing allocation of Qt does
 */
ZELPLOT_EXPORT void* resizeCellMemory(void* memory, std::size_t bytesBefore, std::size_t bytes);

/// Gives the memory that is kept for later columns, 52 MB at most, back to the system.
ZELPLOT_EXPORT void releaseSpareCellMemory();

/// Copies cells into a block of @p blockBytes. Those of a large one are written past the caches of
/// the processor, which they would only empty, twice as fast.
ZELPLOT_EXPORT void writeCells(void* to, void const* from, std::size_t bytes,
                               std::size_t blockBytes);
