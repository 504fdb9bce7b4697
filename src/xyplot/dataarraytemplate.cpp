#include "dataarraytemplate.h"

// The instances that every program shares; the headers declare them extern.
template class AbstractDataArrayTemplate<double>;
template class AbstractDataArrayTemplate<int>;
template class DataArrayTemplate<double>;
