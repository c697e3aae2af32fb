// Tests the sort for numbers that are nearly all in order: which inputs it sorts, and that it loses no number of the
// inputs that it does not sort.
#include "arrays/nearly_sorted.h"

#include <gtest/gtest.h>

#include <functional>
#include <string_view>

#include "plugin/arrays/sort_shapes.h"

namespace {

template <class GoesBefore>
void ExpectSortedOrComplete(const tests::SortShape& shape, const tests::Ranks& input, GoesBefore goesBefore) {
  tests::Ranks numbers = input;
  const bool isSorted = zkt::SortNearlySorted(std::span(numbers), goesBefore);
  EXPECT_TRUE(!isSorted || std::is_sorted(numbers.begin(), numbers.end(), goesBefore));
  tests::Ranks wanted = input;
  std::sort(wanted.begin(), wanted.end(), goesBefore);
  std::sort(numbers.begin(), numbers.end(), goesBefore);
  EXPECT_EQ(numbers, wanted);
  const std::string_view name = shape.name;
  if (name == "random" || name == "1 % swapped" || (name == "mixed outliers" && input.size() > 128)) {
    EXPECT_EQ(isSorted, name != "random");
  }
}

TEST(NearlySorted, IsSortedInEitherDirectionOrKeptComplete) {
  std::mt19937_64 random(1);
  for (const std::size_t size : {20u, 64u, 100u, 3000u, 20'000u})
    for (const tests::SortShape& shape : tests::kSortShapes) {
      SCOPED_TRACE(std::string(shape.name) + " " + std::to_string(size));
      tests::Ranks ranks = shape.make(size, random);
      ExpectSortedOrComplete(shape, ranks, std::less<>());
      std::reverse(ranks.begin(), ranks.end());
      ExpectSortedOrComplete(shape, ranks, std::greater<>());
    }
}

}  // namespace
