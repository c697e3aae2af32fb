// The vectorized quicksort of Highway for the instruction set that the including file is compiled for. Everything here
// has internal linkage, and so must all code of the including files: the linker keeps only one copy of an inline
// function that several files have, and a copy for a newer processor must not get into the rest of the library.
#pragma once

#define HWY_COMPILE_ONLY_STATIC 1
// Otherwise the headers ask for two instruction sets that sorting does not use.
#define HWY_DISABLE_PCLMUL_AES 1
// Otherwise sanitizers change the sizes of the sorting networks.
#define HWY_IS_DEBUG_BUILD 0

#include <cstddef>
#include <cstdint>

#include <hwy/highway.h>
// This order: the second does not include the first, which it needs.
#include <hwy/contrib/sort/traits-inl.h>
#include <hwy/contrib/sort/vqsort-inl.h>

namespace {

namespace hn = hwy::HWY_NAMESPACE;

// A type of this file alone, so that what is instantiated for it belongs to this file alone.
template <class Key>
struct Ascending : hn::detail::SharedTraits<hn::detail::TraitsLane<hn::detail::OrderAscending<Key>>> {};

// Not hwy::Sorter, which takes heap memory.
template <class Key>
void SortKeys(Key* keys, std::size_t count) {
  const hn::SortTag<Key> tag;
  HWY_ALIGN Key buffer[hwy::SortConstants::BufBytes<Key>(HWY_MAX_BYTES) / sizeof(Key)];
  hn::Sort(tag, Ascending<Key>(), keys, count, buffer);
}

}  // namespace
