// Processors without a compiled vector sort get an empty list of sorters, so std::sort is used.
#include "arrays/vector_sort.h"

std::span<const zkt::vector_sort::KeySorter> zkt::vector_sort::KeySorters() { return {}; }
