#include "viewportmap.h"

template class ViewportMap<int>;
