// Sorting plain numbers in place and without heap memory, by vector instructions where the processor has them. The
// order must be that of the numbers: there is no comparison to pass.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <span>
#include <type_traits>

#include "arrays/vector_sort.h"

namespace zkt {

namespace number_sort {

// Below this, looking for order that is there already takes longer than sorting.
inline constexpr std::size_t kTiny = 4;

// Below this, preparing the vector sort does.
inline constexpr std::size_t kShort = 20;

// Below this, std::sort is faster than any vector sort where it can guess its branches.
inline constexpr std::size_t kFewVectors = 64;

// Numbers are sorted by signed keys of their width: in the order of the keys, and unequal where the bits are.
template <class Number>
using KeyOf = std::conditional_t<sizeof(Number) == 4, std::int32_t, std::int64_t>;

// Turns the bits of a number into a key that is ordered as the number, and back. Of the two zeros, the negative one
// comes first.
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

// Every key complemented is the reverse order of the keys. The memory changes its type here, hence memcpy.
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

// Insertion without branches: a processor guesses every second branch of a sort of random numbers wrong, which takes
// longer than all comparisons of a short array.
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

// Real numbers are inserted as keys: compilers turn a choice between two of them into a branch.
template <class Number, class GoesBefore>
void SortShort(std::span<Number> numbers, bool descending, GoesBefore goesBefore) {
  if constexpr (std::is_floating_point_v<Number>) {
    InsertWithoutBranches(std::span(TurnIntoKeys(numbers, descending), numbers.size()), std::less<>());
    TurnIntoNumbers(numbers, descending);
  } else {
    InsertWithoutBranches(numbers, goesBefore);
  }
}

// Whether the branches of std::sort can be guessed, as far as a sample of neighbors tells: nearly sorted either way, or
// a short array that goes up and then down.
template <class Number>
bool IsEasyToSort(std::span<const Number> numbers) {
  constexpr std::size_t kPairs = 32;
  constexpr std::size_t kShortEnough = 256;
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
  return descents < pairs / 8 || descents > pairs - pairs / 8 || (turns <= 2 && numbers.size() < kShortEnough);
}

template <class Number, class GoesBefore>
void Sort(std::span<Number> numbers, bool descending, GoesBefore goesBefore) {
  if (numbers.size() < kTiny) return SortShort(numbers, descending, goesBefore);
  const auto keyGoesBehind = [=](Number a, Number b) {
    return descending ? KeyFor(a) < KeyFor(b) : KeyFor(b) < KeyFor(a);
  };
  if (std::is_sorted(numbers.begin(), numbers.end(), goesBefore)) return;
  if (numbers.size() < kShort) return SortShort(numbers, descending, goesBefore);
  // By keys, which differ wherever the bits do, so that this is the order that sorting the keys would give.
  if (std::is_sorted(numbers.begin(), numbers.end(), keyGoesBehind))
    return std::reverse(numbers.begin(), numbers.end());
  const vector_sort::KeySorter* const sorter = vector_sort::FindKeySorter();
  const auto isBestOnOrdered = [&] {
    return sorter->IsBestOnOrdered(KeyOf<Number>{}) && numbers.size() >= kFewVectors;
  };
  if (sorter == nullptr || (!isBestOnOrdered() && IsEasyToSort<Number>(numbers)))
    return std::sort(numbers.begin(), numbers.end(), goesBefore);
  sorter->Sort(TurnIntoKeys(numbers, descending), numbers.size());
  TurnIntoNumbers(numbers, descending);
}

}  // namespace number_sort

// Numbers of 4 or 8 bytes, without NaN.
template <class Number>
void SortNumbers(std::span<Number> numbers, bool descending) {
  if (descending)
    number_sort::Sort(numbers, true, std::greater<Number>());
  else
    number_sort::Sort(numbers, false, std::less<Number>());
}

}  // namespace zkt
