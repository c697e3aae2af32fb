#include "arrays/vector_sort_keys.h"
#include "arrays/vector_sort_sets.h"

static_assert(HWY_TARGET == HWY_AVX3, "compile this file with the options for AVX-512");

void zkt::vector_sort::SortAvx512(std::int32_t* keys, std::size_t count) { SortKeys(keys, count); }
void zkt::vector_sort::SortAvx512(std::int64_t* keys, std::size_t count) { SortKeys(keys, count); }
