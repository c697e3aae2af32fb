#include "arrays/vector_sort_keys.h"
#include "arrays/vector_sort_sets.h"

static_assert(HWY_TARGET == HWY_SSE4, "compile this file with the options for SSE4.2");

void zkt::vector_sort::SortSse4(std::int32_t* keys, std::size_t count) { SortKeys(keys, count); }
void zkt::vector_sort::SortSse4(std::int64_t* keys, std::size_t count) { SortKeys(keys, count); }
