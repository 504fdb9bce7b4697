#pragma once

#include "zelplot_export.h"

/** @file
 * ZELPLOT_TEST_EXPORT marks units that are no part of the interface but have tests of their own.
 * They leave the library only where the tests are built along with it.
 */

#ifdef ZELPLOT_BUILD_TESTS
#define ZELPLOT_TEST_EXPORT ZELPLOT_EXPORT
#else
#define ZELPLOT_TEST_EXPORT
#endif
