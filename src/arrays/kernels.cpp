#include "arrays/kernels.h"

#include <algorithm>
#include <cstring>

// Loops are compiled only once under sanitizers, because the resolver that selects a version runs before the sanitizer
// runtime is initialized.
#if defined(__x86_64__) && defined(__linux__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && \
    !defined(__SANITIZE_THREAD__)
#define FOR_EVERY_PROCESSOR __attribute__((target_clones("default", "avx2", "arch=x86-64-v4")))
// Excludes 64-byte vectors. Measurements showed that they slow down some kernels on some processors or with short
// arrays, and barely speed up the other cases.
#define UP_TO_AVX2 __attribute__((target_clones("default", "avx2")))
#else
#define FOR_EVERY_PROCESSOR
#define UP_TO_AVX2
#endif

// Shared function bodies must be inlined, so that they are compiled for the same processors as the functions that call
// them.
#define INLINED inline __attribute__((always_inline))

namespace zkt::kernels {

namespace {

// Bytes are summed in the narrowest possible lanes, for as many rounds as a lane can hold without overflow.
constexpr std::int64_t kLanes = 64;
constexpr std::int64_t kRounds = 255;

template <class Lane, class Byte, class Add>
INLINED std::int64_t GatherBytes(const Byte* values, std::int64_t count, Add add) {
  std::int64_t total = 0;
  while (count >= kLanes) {
    const std::int64_t rounds = std::min(count / kLanes, kRounds);
    Lane lanes[kLanes] = {};
    for (std::int64_t round = 0; round < rounds; ++round, values += kLanes)
      for (std::int64_t lane = 0; lane < kLanes; ++lane)
        lanes[lane] = static_cast<Lane>(lanes[lane] + add(values[lane]));
    for (const Lane lane : lanes) total += lane;
    count -= rounds * kLanes;
  }
  for (std::int64_t i = 0; i < count; ++i) total += add(values[i]);
  return total;
}

template <class Total, class Element>
INLINED Total SumInOrder(const Element* values, std::int64_t count) {
  Total total = 0;
  for (std::int64_t i = 0; i < count; ++i) total += static_cast<Total>(values[i]);
  return total;
}

// The counters are as wide as the elements, so no vector lane needs to be widened. A chunk is short enough that no
// counter overflows.
template <class Counter, class Element>
INLINED std::int64_t CountInChunks(const Element* values, Element value, std::int64_t count) {
  constexpr std::int64_t kChunk = std::int64_t{1} << 30;
  std::int64_t total = 0;
  while (count > 0) {
    const std::int64_t chunk = std::min(count, kChunk);
    Counter found = 0;
    for (std::int64_t i = 0; i < chunk; ++i) found += values[i] == value ? Counter{1} : Counter{0};
    total += static_cast<std::int64_t>(found);
    values += chunk;
    count -= chunk;
  }
  return total;
}

template <class Element>
INLINED std::int64_t FindFirst(const Element* a, const Element* b, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i)
    if (!(a[i] == b[i])) return i;
  return count;
}

// Equal arrays are the common case, so a plain memory comparison comes before the search for a difference. For a few
// elements, the search alone is faster.
template <class Element>
INLINED std::int64_t FindInMemory(const Element* a, const Element* b, std::int64_t count) {
  constexpr std::int64_t kFew = 4;
  if (count > kFew && std::memcmp(a, b, static_cast<std::size_t>(count) * sizeof(Element)) == 0) return count;
  return FindFirst(a, b, count);
}

// `Mask` must be as wide as the elements. A narrower mask would prevent vectorization.
template <class Mask, class Element>
INLINED std::int64_t FindInBlocks(const Element* a, const Element* b, std::int64_t count) {
  constexpr std::int64_t kBlock = 32;
  std::int64_t done = 0;
  for (; count - done >= kBlock; done += kBlock) {
    Mask differs = 0;
    for (std::int64_t i = 0; i < kBlock; ++i) differs |= !(a[done + i] == b[done + i]) ? Mask{1} : Mask{0};
    if (differs != 0) break;
  }
  return done + FindFirst(a + done, b + done, count - done);
}

}  // namespace

FOR_EVERY_PROCESSOR std::int64_t Sum(const std::int8_t* values, std::int64_t count) {
  return GatherBytes<std::int16_t>(values, count, [](std::int8_t value) { return value; });
}
FOR_EVERY_PROCESSOR std::int64_t Sum(const std::int32_t* values, std::int64_t count) {
  return SumInOrder<std::int64_t>(values, count);
}
FOR_EVERY_PROCESSOR std::uint64_t Sum(const std::uint32_t* values, std::int64_t count) {
  return SumInOrder<std::uint64_t>(values, count);
}
FOR_EVERY_PROCESSOR std::uint64_t Sum(const std::uint64_t* values, std::int64_t count) {
  return SumInOrder<std::uint64_t>(values, count);
}
double Sum(const double* values, std::int64_t count) { return SumInOrder<double>(values, count); }
double Sum(const float* values, std::int64_t count) { return SumInOrder<double>(values, count); }

FOR_EVERY_PROCESSOR std::int64_t Count(const std::uint8_t* values, std::uint8_t value, std::int64_t count) {
  return GatherBytes<std::uint8_t>(values, count, [=](std::uint8_t element) { return element == value ? 1 : 0; });
}
FOR_EVERY_PROCESSOR std::int64_t Count(const std::uint32_t* values, std::uint32_t value, std::int64_t count) {
  return CountInChunks<std::uint32_t>(values, value, count);
}
FOR_EVERY_PROCESSOR std::int64_t Count(const std::uint64_t* values, std::uint64_t value, std::int64_t count) {
  return CountInChunks<std::uint64_t>(values, value, count);
}
FOR_EVERY_PROCESSOR std::int64_t Count(const double* values, double value, std::int64_t count) {
  return CountInChunks<std::uint64_t>(values, value, count);
}
FOR_EVERY_PROCESSOR std::int64_t Count(const float* values, float value, std::int64_t count) {
  return CountInChunks<std::uint32_t>(values, value, count);
}

std::int64_t FindDifference(const std::uint8_t* a, const std::uint8_t* b, std::int64_t count) {
  return FindInMemory(a, b, count);
}
std::int64_t FindDifference(const std::uint32_t* a, const std::uint32_t* b, std::int64_t count) {
  return FindInMemory(a, b, count);
}
std::int64_t FindDifference(const std::uint64_t* a, const std::uint64_t* b, std::int64_t count) {
  return FindInMemory(a, b, count);
}
UP_TO_AVX2 std::int64_t FindDifference(const double* a, const double* b, std::int64_t count) {
  return FindInBlocks<std::uint64_t>(a, b, count);
}
UP_TO_AVX2 std::int64_t FindDifference(const float* a, const float* b, std::int64_t count) {
  return FindInBlocks<std::uint32_t>(a, b, count);
}

UP_TO_AVX2 void Reverse(std::uint8_t* values, std::int64_t count) { std::reverse(values, values + count); }
UP_TO_AVX2 void Reverse(std::uint32_t* values, std::int64_t count) { std::reverse(values, values + count); }
UP_TO_AVX2 void Reverse(std::uint64_t* values, std::int64_t count) { std::reverse(values, values + count); }

}  // namespace zkt::kernels
