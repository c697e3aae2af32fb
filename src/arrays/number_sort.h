// Sorts plain numbers in place without heap memory, using vector instructions if the processor supports them. Numbers
// are always sorted in numeric order, so there is no comparison parameter.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <span>
#include <type_traits>

#include "arrays/nearly_sorted.h"
#include "arrays/vector_sort.h"

namespace zkt {

namespace number_sort {

// Below this size, checking for existing order takes longer than sorting.
inline constexpr std::size_t kTiny = 4;

// Below this size, preparing the vector sort takes longer than an insertion sort.
inline constexpr std::size_t kShort = 20;

// Below this size, std::sort is faster than any vector sort if the branches of std::sort are predictable.
inline constexpr std::size_t kFewVectors = 64;

// Numbers are sorted by signed keys of the same width. Keys have the same order as their numbers, and numbers with
// different bits have different keys.
template <class Number>
using KeyOf = std::conditional_t<sizeof(Number) == 4, std::int32_t, std::int64_t>;

// Converts the bits of a number to a key with the same order, or a key back to bits. Negative zero sorts before
// positive zero.
template <class Number>
KeyOf<Number> FlipToOrder(KeyOf<Number> bits) {
  using Key = KeyOf<Number>;
  if constexpr (std::is_floating_point_v<Number>)
    return bits ^ ((bits >> (8 * sizeof(Key) - 1)) & std::numeric_limits<Key>::max());
  else if constexpr (std::is_unsigned_v<Number>)
    return bits ^ std::numeric_limits<Key>::min();
  else
    return bits;
}

template <class Number>
KeyOf<Number> KeyFor(Number number) {
  KeyOf<Number> bits;
  std::memcpy(&bits, &number, sizeof bits);
  return FlipToOrder<Number>(bits);
}

// Replaces numbers with keys. Complementing the keys reverses their order. memcpy is necessary because the same memory
// is accessed as two types.
template <class Number>
KeyOf<Number>* TurnIntoKeys(std::span<Number> numbers, bool descending) {
  using Key = KeyOf<Number>;
  auto* const keys = reinterpret_cast<Key*>(numbers.data());
  const Key complement = descending ? Key{-1} : Key{0};
  if (std::is_same_v<Number, Key> && !descending) return keys;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    Key key;
    std::memcpy(&key, keys + i, sizeof key);
    key = FlipToOrder<Number>(key) ^ complement;
    std::memcpy(keys + i, &key, sizeof key);
  }
  return keys;
}

template <class Number>
void TurnIntoNumbers(std::span<Number> numbers, bool descending) {
  using Key = KeyOf<Number>;
  auto* const keys = reinterpret_cast<Key*>(numbers.data());
  const Key complement = descending ? Key{-1} : Key{0};
  if (std::is_same_v<Number, Key> && !descending) return;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    Key key;
    std::memcpy(&key, keys + i, sizeof key);
    key = FlipToOrder<Number>(key ^ complement);
    std::memcpy(keys + i, &key, sizeof key);
  }
}

// Branchless insertion sort. With random numbers, half of the branches would be mispredicted, which would cost more
// than all the comparisons for a short array.
template <class Number, class GoesBefore>
void InsertWithoutBranches(std::span<Number> numbers, GoesBefore goesBefore) {
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    Number inserted = numbers[i];
    for (std::size_t j = 0; j < i; ++j) {
      const Number number = numbers[j];
      const bool isBefore = goesBefore(inserted, number);
      numbers[j] = isBefore ? inserted : number;
      inserted = isBefore ? number : inserted;
    }
    numbers[i] = inserted;
  }
}

// Floating-point numbers are inserted as keys, because compilers turn a choice between two floating-point numbers into
// a branch.
template <class Number, class GoesBefore>
void SortShort(std::span<Number> numbers, bool descending, GoesBefore goesBefore) {
  if constexpr (std::is_floating_point_v<Number>) {
    InsertWithoutBranches(std::span(TurnIntoKeys(numbers, descending), numbers.size()), std::less<>());
    TurnIntoNumbers(numbers, descending);
  } else {
    InsertWithoutBranches(numbers, goesBefore);
  }
}

// Returns whether the branches of std::sort are probably predictable. Samples pairs of neighbors to find out whether
// the numbers are nearly sorted in either direction, or whether a short array changes direction at most twice.
template <class Number>
bool IsEasyToSort(std::span<const Number> numbers) {
  constexpr std::size_t kPairs = 32;
  const std::size_t step = std::max(numbers.size() / kPairs, std::size_t{1});
  std::size_t pairs = 0, descents = 0, turns = 0;
  bool wasDescent = false;
  for (std::size_t i = 0; i + 1 < numbers.size(); i += step) {
    const bool isDescent = numbers[i + 1] < numbers[i];
    ++pairs;
    descents += isDescent ? 1 : 0;
    turns += isDescent != wasDescent ? 1 : 0;
    wasDescent = isDescent;
  }
  return descents < pairs / 8 || descents > pairs - pairs / 8 || (turns <= 2 && numbers.size() < kFewVectors);
}

template <class Number, class GoesBefore>
void Sort(std::span<Number> numbers, bool descending, GoesBefore goesBefore) {
  if (numbers.size() < kTiny) return SortShort(numbers, descending, goesBefore);
  const auto keyGoesBehind = [=](Number a, Number b) {
    return descending ? KeyFor(a) < KeyFor(b) : KeyFor(b) < KeyFor(a);
  };
  if (std::is_sorted(numbers.begin(), numbers.end(), goesBefore)) return;
  if (numbers.size() < kShort) return SortShort(numbers, descending, goesBefore);
  // Equal keys mean identical bits, so reversing gives the same result as sorting by key.
  if (std::is_sorted(numbers.begin(), numbers.end(), keyGoesBehind))
    return std::reverse(numbers.begin(), numbers.end());
  const vector_sort::KeySorter* const sorter = vector_sort::FindKeySorter();
  const auto isBestOnOrdered = [&] {
    return sorter->IsBestOnOrdered(KeyOf<Number>{}) && numbers.size() >= kFewVectors;
  };
  if (sorter == nullptr || (!isBestOnOrdered() && IsEasyToSort<Number>(numbers))) {
    if (!SortNearlySorted(numbers, goesBefore)) std::sort(numbers.begin(), numbers.end(), goesBefore);
    return;
  }
  sorter->Sort(TurnIntoKeys(numbers, descending), numbers.size());
  TurnIntoNumbers(numbers, descending);
}

}  // namespace number_sort

// Sorts numbers of 4 or 8 bytes. No number may be NaN.
template <class Number>
void SortNumbers(std::span<Number> numbers, bool descending) {
  if (descending)
    number_sort::Sort(numbers, true, std::greater<Number>());
  else
    number_sort::Sort(numbers, false, std::less<Number>());
}

}  // namespace zkt
