// Sorting plain numbers: std::sort behind a partition without branches, since a processor guesses every second branch
// of a sort of random numbers wrong. In place, without allocation, and the order of std::sort. The order must be sound.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace zkt {

namespace number_sort_detail {

// What std::sort does by insertion alone, more or less.
constexpr std::ptrdiff_t kSmall = 24;

template <class Number, class GoesBefore>
Number MedianOf(Number a, Number b, Number c, GoesBefore goesBefore) {
  if (goesBefore(b, a)) std::swap(a, b);
  if (goesBefore(c, b)) b = goesBefore(c, a) ? a : c;
  return b;
}

template <class Number, class GoesBefore>
Number ChoosePivot(const Number* first, std::ptrdiff_t count, GoesBefore goesBefore) {
  constexpr std::ptrdiff_t kManyEnough = 128;
  const auto medianAround = [&](std::ptrdiff_t at, std::ptrdiff_t distance) {
    return MedianOf(first[at - distance], first[at], first[at + distance], goesBefore);
  };
  if (count < kManyEnough) return medianAround(count / 2, count * 3 / 8);
  const std::ptrdiff_t eighth = count / 8;
  return MedianOf(medianAround(eighth, eighth / 2), medianAround(4 * eighth, eighth / 2),
                  medianAround(7 * eighth, eighth / 2), goesBefore);
}

// Brings the numbers that belong to the front there, and answers where they end. Every number is written twice: where
// it goes is computed, not branched to.
template <class Number, class BelongsToFront>
Number* Partition(Number* first, Number* last, BelongsToFront belongsToFront) {
  Number* end = first;
  for (Number* next = first; next != last; ++next) {
    const Number number = *next;
    *next = *end;
    *end = number;
    end += belongsToFront(number) ? 1 : 0;
  }
  return end;
}

// Twice as deep as good pivots go.
inline int DeepestPartitions(std::ptrdiff_t count) {
  return 2 * static_cast<int>(std::bit_width(static_cast<std::size_t>(count)));
}

// `depth` bounds the partitions of unlucky pivots; what is left then is for std::sort, which bounds its own.
template <class Number, class GoesBefore>
void SortByPartitions(Number* first, Number* last, int depth, GoesBefore goesBefore) {
  for (; last - first > kSmall && depth > 0; --depth) {
    const Number pivot = ChoosePivot(first, last - first, goesBefore);
    Number* const middle = Partition(first, last, [=](Number number) { return goesBefore(number, pivot); });
    if (middle == first) {
      // Nothing goes before the pivot: all that equal it are in place at once, however many they are.
      first = Partition(first, last, [=](Number number) { return !goesBefore(pivot, number); });
    } else if (middle - first < last - middle) {
      SortByPartitions(first, middle, depth - 1, goesBefore);
      first = middle;
    } else {
      SortByPartitions(middle, last, depth - 1, goesBefore);
      last = middle;
    }
  }
  std::sort(first, last, goesBefore);
}

// Whether few neighbours are out of order, as far as a sample tells: then branches are guessed right, and std::sort is
// at its best.
template <class Number, class GoesBefore>
bool IsNearlySorted(const Number* first, std::ptrdiff_t count, GoesBefore goesBefore) {
  constexpr std::ptrdiff_t kPairs = 64;
  if (count < 2 * kPairs) return false;
  std::ptrdiff_t outOfOrder = 0;
  for (std::ptrdiff_t i = 0; i < kPairs; ++i) {
    const Number* const pair = first + count / kPairs * i;
    outOfOrder += goesBefore(pair[1], pair[0]) ? 1 : 0;
  }
  return outOfOrder < kPairs / 8;
}

}  // namespace number_sort_detail

template <class Number, class GoesBefore>
void SortNumbers(Number* first, Number* last, GoesBefore goesBefore) {
  const auto goesBehind = [=](Number a, Number b) { return goesBefore(b, a); };
  if (std::is_sorted(first, last, goesBefore)) return;
  if (std::is_sorted(first, last, goesBehind)) return std::reverse(first, last);
  const std::ptrdiff_t count = last - first;
  if (number_sort_detail::IsNearlySorted(first, count, goesBefore)) return std::sort(first, last, goesBefore);
  number_sort_detail::SortByPartitions(first, last, number_sort_detail::DeepestPartitions(count), goesBefore);
}

// Bytes are counted: there are only 256 of them.
template <class GoesBefore>
void SortNumbers(std::int8_t* first, std::int8_t* last, GoesBefore goesBefore) {
  constexpr std::ptrdiff_t kManyEnough = 64;
  if (last - first < kManyEnough) return std::sort(first, last, goesBefore);
  // Two tables in turn: a count that has just been written cannot be read again at once.
  std::array<std::array<std::ptrdiff_t, 256>, 2> counts{};
  const auto indexOf = [](std::int8_t byte) { return static_cast<std::size_t>(byte + 128); };
  const std::int8_t* next = first;
  for (; last - next >= 2; next += 2) {
    ++counts[0][indexOf(next[0])];
    ++counts[1][indexOf(next[1])];
  }
  if (next != last) ++counts[0][indexOf(*next)];
  const auto write = [&](int byte) {
    const std::size_t index = indexOf(static_cast<std::int8_t>(byte));
    first = std::fill_n(first, counts[0][index] + counts[1][index], static_cast<std::int8_t>(byte));
  };
  if (goesBefore(std::int8_t{0}, std::int8_t{1}))
    for (int byte = -128; byte <= 127; ++byte) write(byte);
  else
    for (int byte = 127; byte >= -128; --byte) write(byte);
}

}  // namespace zkt
