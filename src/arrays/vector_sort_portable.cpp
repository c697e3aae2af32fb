// The list of sorters is empty for processors without a compiled vector sort. They use std::sort instead.
#include "arrays/vector_sort.h"

std::span<const zkt::vector_sort::KeySorter> zkt::vector_sort::KeySorters() { return {}; }
