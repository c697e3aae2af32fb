// Highway's vectorized quicksort for the instruction set that the including file is compiled for. Everything here has
// internal linkage, and so must all code of the including files: the linker keeps only one copy of an inline function
// that several files define, and a copy for a newer processor must not be used by the rest of the library.
#pragma once

#define HWY_COMPILE_ONLY_STATIC 1
// Otherwise the headers require two instruction sets that sorting does not use.
#define HWY_DISABLE_PCLMUL_AES 1
// Otherwise sanitizers change the sizes of the sorting networks.
#define HWY_IS_DEBUG_BUILD 0

#include <cstddef>
#include <cstdint>

#include <hwy/highway.h>
// The order matters: the second header needs the first but does not include it.
#include <hwy/contrib/sort/traits-inl.h>
#include <hwy/contrib/sort/vqsort-inl.h>

namespace {

namespace hn = hwy::HWY_NAMESPACE;

// A type local to this file, so its template instances are local to this file too.
template <class Key>
struct Ascending : hn::detail::SharedTraits<hn::detail::TraitsLane<hn::detail::OrderAscending<Key>>> {};

// Not hwy::Sorter, which allocates heap memory.
template <class Key>
void SortKeys(Key* keys, std::size_t count) {
  const hn::SortTag<Key> tag;
  HWY_ALIGN Key buffer[hwy::SortConstants::BufBytes<Key>(HWY_MAX_BYTES) / sizeof(Key)];
  hn::Sort(tag, Ascending<Key>(), keys, count, buffer);
}

}  // namespace
