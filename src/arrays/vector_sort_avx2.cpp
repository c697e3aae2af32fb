#include "arrays/vector_sort_keys.h"
#include "arrays/vector_sort_sets.h"

static_assert(HWY_TARGET == HWY_AVX2, "the compiler options are those of another instruction set");

void zkt::vector_sort::SortAvx2(std::int32_t* keys, std::size_t count) { SortKeys(keys, count); }
void zkt::vector_sort::SortAvx2(std::int64_t* keys, std::size_t count) { SortKeys(keys, count); }
