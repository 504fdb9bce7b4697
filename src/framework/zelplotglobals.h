#pragma once

#include "zelplot_export.h"

/// Not determined, no value. Test for it by comparing a value with itself, never with this.
ZELPLOT_EXPORT extern double const NaN;

/// Set by the application to keep the library from opening any dialog.
ZELPLOT_EXPORT extern bool zelplotUserInteractionDisabled;

/// For the application: a dialog of its own is open. The library does not read it.
ZELPLOT_EXPORT extern bool refDialogOpen;

/// For the application. The library does not read it.
ZELPLOT_EXPORT extern int tHistoryIndex;
