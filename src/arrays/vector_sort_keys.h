// Highway's vectorized quicksort for the instruction set that the including file is compiled for. Everything here has
// internal linkage, and all inline functions of the including files must have it too. The linker keeps only one copy of
// an inline function that several files define, and the rest of the library must not use a copy that was compiled for a
// newer processor.
#pragma once

#define HWY_COMPILE_ONLY_STATIC 1
// Without this macro, the headers require two instruction sets that sorting does not use.
#define HWY_DISABLE_PCLMUL_AES 1
// Without this macro, sanitizers change the sizes of the sorting networks.
#define HWY_IS_DEBUG_BUILD 0

#include <cstddef>
#include <cstdint>

#include <hwy/highway.h>
// The order matters: the second header needs the first but does not include it.
#include <hwy/contrib/sort/traits-inl.h>
#include <hwy/contrib/sort/vqsort-inl.h>

namespace {

namespace hn = hwy::HWY_NAMESPACE;

// This type is local to the including file, so template instances that use it are local as well.
template <class Key>
struct Ascending : hn::detail::SharedTraits<hn::detail::TraitsLane<hn::detail::OrderAscending<Key>>> {};

// Does not use hwy::Sorter, because that class allocates heap memory.
template <class Key>
void SortKeys(Key* keys, std::size_t count) {
  const hn::SortTag<Key> tag;
  HWY_ALIGN Key buffer[hwy::SortConstants::BufBytes<Key>(HWY_MAX_BYTES) / sizeof(Key)];
  hn::Sort(tag, Ascending<Key>(), keys, count, buffer);
}

}  // namespace
