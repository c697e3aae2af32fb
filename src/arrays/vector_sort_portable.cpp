// For processors that have no vector sort, the list of sorters is empty, so std::sort is used.
#include "arrays/vector_sort.h"

std::span<const zkt::vector_sort::KeySorter> zkt::vector_sort::KeySorters() { return {}; }
