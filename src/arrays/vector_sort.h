// Sorts signed keys with the processor's vector instructions. vector_sort_keys.h is compiled once for each instruction
// set, and the first use selects an instruction set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zkt::vector_sort {

// Sorts keys in place in ascending order. Uses no heap memory and at most about 30 KB of stack for any number of keys.
// Takes O(n log n) time for any input.
template <class Key>
using SortKeysFunction = void (*)(Key* keys, std::size_t count);

struct KeySorter {
  const char* name;
  bool (*isSupported)();
  SortKeysFunction<std::int32_t> sort32;
  SortKeysFunction<std::int64_t> sort64;
  // Whether the sorter is faster than std::sort even on nearly sorted input, where std::sort is fastest.
  bool isBestOnOrdered32;
  bool isBestOnOrdered64;

  void Sort(std::int32_t* keys, std::size_t count) const { sort32(keys, count); }
  void Sort(std::int64_t* keys, std::size_t count) const { sort64(keys, count); }
  bool IsBestOnOrdered(std::int32_t) const { return isBestOnOrdered32; }
  bool IsBestOnOrdered(std::int64_t) const { return isBestOnOrdered64; }
};

// Returns the sorters compiled for this architecture, fastest first. The processor may support only some of them.
std::span<const KeySorter> KeySorters();

// Returns the first sorter that the processor and the operating system support, or null.
const KeySorter* FindKeySorter();

}  // namespace zkt::vector_sort
