#pragma once

#include "zelplot_export.h"

/**
 * Whether debug output of a part of the library is wanted.
 *
 * @return 1 if the logging category `<module>.<subModule>` is enabled for debug output, as
 *         QT_LOGGING_RULES or QLoggingCategory::setFilterRules() tell, else 0
 */
ZELPLOT_EXPORT int dbg_SubModActive(char const* module, char const* subModule);

/**
 * Reports a failed assertion as one critical message of the category `<module>.<subModule>`, which
 * holds the function, `file:line` and the message, and returns: the caller goes on.
 */
ZELPLOT_EXPORT void dbg_Assert(char const* module, char const* subModule, int reserved,
                               char const* function, char const* file, int line,
                               char const* message);
