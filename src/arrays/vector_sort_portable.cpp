// For processors without a compiled vector sort, which use std::sort instead.
#include "arrays/vector_sort.h"

std::span<const zkt::vector_sort::KeySorter> zkt::vector_sort::KeySorters() { return {}; }
