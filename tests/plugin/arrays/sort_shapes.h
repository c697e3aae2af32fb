// Inputs that are easy, hard, or hostile for sorting algorithms, as ranks: element i of an input is the ranks[i]-th
// smallest of `size` elements. Not every rank occurs in every input.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace tests {

using Ranks = std::vector<std::size_t>;

// Compares numbers so that every pivot is the worst possible (McIlroy, "A Killer Adversary for Quicksort", 1999).
// All numbers start undecided. When two undecided numbers are compared, one of them gets its value.
class Adversary {
 public:
  explicit Adversary(std::size_t count) : values_(count, kUndecided) {}

  bool GoesBefore(int a, int b) {
    ++comparisons;
    std::size_t& valueOfA = values_[static_cast<std::size_t>(a)];
    std::size_t& valueOfB = values_[static_cast<std::size_t>(b)];
    if (valueOfA == kUndecided && valueOfB == kUndecided) (a == candidate_ ? valueOfA : valueOfB) = decided_++;
    if (valueOfA == kUndecided)
      candidate_ = a;
    else if (valueOfB == kUndecided)
      candidate_ = b;
    return valueOfA < valueOfB;
  }

  // Returns an input that is consistent with all comparisons so far.
  Ranks Input() {
    for (std::size_t& value : values_)
      if (value == kUndecided) value = decided_++;
    return values_;
  }

  std::int64_t comparisons = 0;

 private:
  static constexpr std::size_t kUndecided = std::numeric_limits<std::size_t>::max();
  Ranks values_;
  std::size_t decided_ = 0;
  int candidate_ = 0;
};

// Returns the worst input for std::sort. Finding it takes a long time for large sizes, so each input is cached.
inline const Ranks& WorstForStdSort(std::size_t size) {
  static std::map<std::size_t, Ranks> known;
  const auto [place, isNew] = known.try_emplace(size);
  if (isNew) {
    std::vector<int> numbers(size);
    std::iota(numbers.begin(), numbers.end(), 0);
    Adversary adversary(size);
    std::sort(numbers.begin(), numbers.end(), [&](int a, int b) { return adversary.GoesBefore(a, b); });
    place->second = adversary.Input();
  }
  return place->second;
}

struct SortShape {
  const char* name;
  // Returns ranks below `size`, which must not be 0.
  Ranks (*make)(std::size_t size, std::mt19937_64& random);
};

// Computes each rank from its index.
template <class RankAt>
Ranks EachRank(std::size_t size, RankAt rankAt) {
  Ranks ranks(size);
  for (std::size_t i = 0; i < size; ++i) ranks[i] = rankAt(i);
  return ranks;
}

// clang-format off
inline const SortShape kSortShapes[] = {
    {"random",           [](std::size_t n, auto& random) { auto ranks = EachRank(n, [](auto i) { return i; }); std::shuffle(ranks.begin(), ranks.end(), random); return ranks; }},
    {"few values",       [](std::size_t n, auto& random) { return EachRank(n, [&](auto) { return random() % 5 * n / 5; }); }},
    {"all equal",        [](std::size_t n, auto& random) { return Ranks(n, random() % n); }},
    {"sorted",           [](std::size_t n, auto&) { return EachRank(n, [](auto i) { return i; }); }},
    {"reversed",         [](std::size_t n, auto&) { return EachRank(n, [n](auto i) { return n - 1 - i; }); }},
    {"reversed, equals", [](std::size_t n, auto&) { return EachRank(n, [n](auto i) { return (n - 1 - i) / 3 * 3; }); }},
    {"organ pipe",       [](std::size_t n, auto&) { return EachRank(n, [n](auto i) { return 2 * std::min(i, n - 1 - i); }); }},
    {"sawtooth",         [](std::size_t n, auto&) { return EachRank(n, [n](auto i) { return i * (static_cast<std::size_t>(std::sqrt(n)) + 1) % n; }); }},
    {"1 % swapped",      [](std::size_t n, auto& random) { auto ranks = EachRank(n, [](auto i) { return i; }); for (std::size_t i = 0; i <= n / 100; ++i) std::swap(ranks[random() % n], ranks[random() % n]); return ranks; }},
    {"bursts",           [](std::size_t n, auto& random) { const auto period = 64 + random() % 128; return EachRank(n, [=](auto i) { return i % period < 10 ? (i + n / 2) % n : i; }); }},
    // Two elements that are too great, and one that is too small where the row of elements between them becomes long.
    {"mixed outliers",   [](std::size_t n, auto&) { return EachRank(n, [n](auto i) { return i % 128 < 2 ? (i + n / 2) % n : i % 128 == 9 ? i / 2 : i; }); }},
    {"two runs",         [](std::size_t n, auto&) { return EachRank(n, [n](auto i) { return i % 2 == 0 ? i / 2 : (n + i) / 2; }); }},
    // The median of the first, middle, and last elements is always nearly the smallest element (Musser, 1997).
    {"median of 3",      [](std::size_t n, auto&) { const auto half = n / 2; return EachRank(n, [=](auto i) { return i >= 2 * half ? i : i >= half ? 2 * (i - half) + 1 : i % 2 == 0 ? i : half + i - 1; }); }},
    {"worst",            [](std::size_t n, auto&) { return WorstForStdSort(n); }},
};
// clang-format on

}  // namespace tests
