#include "arrays/vector_sort_keys.h"
#include "arrays/vector_sort_sets.h"

static_assert(HWY_TARGET == HWY_NEON, "compile this file with the options for NEON");

void zkt::vector_sort::SortNeon(std::int32_t* keys, std::size_t count) { SortKeys(keys, count); }
void zkt::vector_sort::SortNeon(std::int64_t* keys, std::size_t count) { SortKeys(keys, count); }
