// Sorts numbers that are nearly all in order, in linear time.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace zkt {

// Moves the outliers, the numbers that are out of order, to a buffer on the stack, sorts them, and merges them with the
// other numbers. Returns false if more than an eighth of the numbers are outliers, or more than the buffer can hold. In
// this case, the numbers have been rearranged, but are not sorted. The function is never inlined, so that other sorts do
// not reserve the memory for the buffer.
template <class Number, class GoesBefore>
[[gnu::noinline]] bool SortNearlySorted(std::span<Number> numbers, GoesBefore goesBefore) {
  constexpr std::size_t kCapacity = 4096;
  // If this many numbers in a row go before the last ordered number, the last ordered number is probably the outlier.
  constexpr std::size_t kLongRow = 8;

  const std::size_t limit = std::min(kCapacity, numbers.size() / 8);
  std::array<Number, kCapacity> outliers;
  std::size_t outlierCount = 0;
  std::size_t orderedCount = 0;  // the ordered numbers are at the beginning of `numbers`
  std::size_t row = 0;
  const auto remove = [&](Number number) {
    if (outlierCount == limit) return false;
    outliers[outlierCount++] = number;
    return true;
  };
  const auto putBack = [&] {
    std::copy_n(outliers.data(), outlierCount, numbers.data() + orderedCount);
    return false;
  };
  const auto goesBeforeLast = [&](Number number) {
    return orderedCount > 0 && goesBefore(number, numbers[orderedCount - 1]);
  };
  for (const Number number : numbers) {
    if (goesBeforeLast(number)) {
      // If the number fits behind the last ordered number but one, the last is the outlier.
      const bool fitsBehindLastButOne = orderedCount == 1 || !goesBefore(number, numbers[orderedCount - 2]);
      if (!fitsBehindLastButOne && ++row < kLongRow) {
        if (!remove(number)) return putBack();
        continue;
      }
      for (; goesBeforeLast(number); --orderedCount)
        if (!remove(numbers[orderedCount - 1])) return putBack();
    }
    numbers[orderedCount++] = number;
    row = 0;
  }
  std::sort(outliers.data(), outliers.data() + outlierCount, goesBefore);
  for (std::size_t end = numbers.size(); outlierCount > 0;) {
    const bool isOrderedLast = orderedCount > 0 && goesBefore(outliers[outlierCount - 1], numbers[orderedCount - 1]);
    numbers[--end] = isOrderedLast ? numbers[--orderedCount] : outliers[--outlierCount];
  }
  return true;
}

}  // namespace zkt
