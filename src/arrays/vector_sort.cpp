#include "arrays/vector_sort.h"

#include <hwy/contrib/sort/vqsort.h>

#include <array>
#include <atomic>
#include <cstring>

// This is the only function of Highway's compiled library that Highway's headers call. It writes 24 bytes that seed the
// choice of pivots. Any seed works, because the sort falls back to heap sort after bad pivots. Constant seeds make
// every sort repeatable.
void hwy::Sorter::Fill24Bytes(const void*, std::size_t, void* bytes) {
  constexpr std::array<std::uint64_t, 3> kSeeds = {0x9E3779B97F4A7C15, 0xD1B54A32D192ED03, 0x8CB92BA72F3D8DD7};
  std::memcpy(bytes, kSeeds.data(), sizeof kSeeds);
}

namespace zkt::vector_sort {

namespace {

// Records that no instruction set is supported, so that the search is not repeated on every call.
constexpr KeySorter kNone{};

const KeySorter* Choose() {
  for (const KeySorter& sorter : KeySorters())
    if (sorter.isSupported()) return &sorter;
  return &kNone;
}

}  // namespace

const KeySorter* FindKeySorter() {
  // Threads that arrive here at the same time choose the same sorter.
  static constinit std::atomic<const KeySorter*> gChosen{nullptr};
  const KeySorter* chosen = gChosen.load(std::memory_order_relaxed);
  if (chosen == nullptr) [[unlikely]] {
    chosen = Choose();
    gChosen.store(chosen, std::memory_order_relaxed);
  }
  return chosen != &kNone ? chosen : nullptr;
}

}  // namespace zkt::vector_sort
