// Every 64-bit ARM processor has NEON.
#include "arrays/vector_sort.h"
#include "arrays/vector_sort_sets.h"

namespace zkt::vector_sort {

namespace {

constexpr KeySorter kSorters[] = {
    {"NEON", [] { return true; }, SortNeon, SortNeon, false, false},
};

}  // namespace

std::span<const KeySorter> KeySorters() { return kSorters; }

}  // namespace zkt::vector_sort
