#include "compresseddataarraytemplate.h"

// The instance that every program shares; the header declares it extern.
template<typename T> int CompressedDataArrayTemplate<T>::Chunk::numberOfChunks = 0;
template class CompressedDataArrayTemplate<int>;
