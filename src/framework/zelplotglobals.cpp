#include "zelplotglobals.h"

#include <cmath>

double const NaN = std::sqrt(-1.0);
bool zelplotUserInteractionDisabled = false;
bool refDialogOpen = false;
int tHistoryIndex = 2;
