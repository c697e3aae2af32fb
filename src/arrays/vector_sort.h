// Sorting signed keys with the vector instructions of the running processor. vector_sort_keys.h is compiled once for
// each instruction set; which of them runs is decided at the first use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zkt::vector_sort {

// Sorts keys ascending and in place. Takes no heap memory and at most about 30 KB of stack, for any number of keys; the
// time is O(n log n) for all input.
template <class Key>
using SortKeysFunction = void (*)(Key* keys, std::size_t count);

struct KeySorter {
  const char* name;
  bool (*isSupported)();
  SortKeysFunction<std::int32_t> sort32;
  SortKeysFunction<std::int64_t> sort64;
  // Whether it is faster than std::sort on nearly sorted input too, where std::sort is at its best.
  bool isBestOnOrdered32;
  bool isBestOnOrdered64;

  void Sort(std::int32_t* keys, std::size_t count) const { sort32(keys, count); }
  void Sort(std::int64_t* keys, std::size_t count) const { sort64(keys, count); }
  bool IsBestOnOrdered(std::int32_t) const { return isBestOnOrdered32; }
  bool IsBestOnOrdered(std::int64_t) const { return isBestOnOrdered64; }
};

// Those that are compiled for this kind of processor, the fastest first; the running one may not support them.
std::span<const KeySorter> KeySorters();

// The first that the running processor and its system support, or null.
const KeySorter* FindKeySorter();

}  // namespace zkt::vector_sort
