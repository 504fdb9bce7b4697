#pragma once

#include "zelplot_export.h"
#include <cstddef>

/** @file
 * Memory for the cells of columns. Where large pages (2 MB) can be had and fit, they are mapped,
 * and a block that grows moves page by page: the kernel needs less time for one of them than for
 * 100 of the 512 ordinary pages in its place, which else is most of what it costs to fill a column.
 */

/**
 * A block of @p bytes with the contents of @p memory, which is given up, as far as they fit.
 *
 * @param memory       nullptr for none
 * @param bytesBefore  its size; 0 for none
 * @return nullptr for 0 bytes; if there is no memory, this ends as a failing allocation of Qt does
 */
ZELPLOT_EXPORT void* resizeCellMemory(void* memory, std::size_t bytesBefore, std::size_t bytes);
