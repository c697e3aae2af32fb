// Tests every vector sort that this processor supports, not only the one that the plug-in would select. Also tests the
// conversion of numbers to keys and back.
#include "arrays/vector_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "arrays/number_sort.h"

namespace {

template <class Key>
class VectorSort : public testing::Test {};
using Keys = testing::Types<std::int32_t, std::int64_t>;
TYPED_TEST_SUITE(VectorSort, Keys);

TYPED_TEST(VectorSort, OrdersKeysWithEveryInstructionSet) {
  constexpr std::size_t kAfterEnd = 8;
  std::mt19937_64 random(11);
  int supported = 0;
  for (const auto& sorter : zkt::vector_sort::KeySorters()) {
    if (!sorter.isSupported()) continue;
    ++supported;
    std::vector<std::size_t> counts = {500, 1000, 4095, 4096, 4097, 100'003};
    for (std::size_t count = 0; count < 300; ++count) counts.push_back(count);
    for (const std::size_t count : counts) {
      for (const std::uint64_t values :
           {UINT64_MAX, std::uint64_t{1}, std::uint64_t{2}, std::uint64_t{3}, std::uint64_t{17}}) {
        // The keys include the smallest and the largest possible key. The keys after the end must not be overwritten.
        std::vector<TypeParam> keys(count + kAfterEnd, std::numeric_limits<TypeParam>::min());
        for (std::size_t i = 0; i < count; ++i) {
          keys[i] = static_cast<TypeParam>(random() % values);
          if (random() % 64 == 0)
            keys[i] = random() % 2 == 0 ? std::numeric_limits<TypeParam>::min() : std::numeric_limits<TypeParam>::max();
        }
        auto wanted = keys;
        std::sort(wanted.begin(), wanted.begin() + static_cast<std::ptrdiff_t>(count));
        sorter.Sort(keys.data(), count);
        ASSERT_EQ(keys, wanted) << sorter.name << ", " << count << " keys of " << values << " values";
      }
    }
  }
  EXPECT_GT(supported, 0) << "no vector sort can be tested on this processor";
}

TEST(ChosenVectorSort, IsTheFirstThatTheProcessorSupports) {
  const auto sorters = zkt::vector_sort::KeySorters();
  const auto first = std::ranges::find_if(sorters, [](const auto& sorter) { return sorter.isSupported(); });
  EXPECT_EQ(zkt::vector_sort::FindKeySorter(), first != sorters.end() ? &*first : nullptr);
}

// Keys have the same order as the numbers, and converting a key back restores every bit of the number.
template <class Number>
class NumberKeys : public testing::Test {};
using Numbers = testing::Types<std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, float, double>;
TYPED_TEST_SUITE(NumberKeys, Numbers);

TYPED_TEST(NumberKeys, AreOrderedLikeTheirNumbers) {
  using Limits = std::numeric_limits<TypeParam>;
  std::vector<TypeParam> numbers = {Limits::lowest(), Limits::max(), 0, 1, 2, Limits::max() / 2, Limits::lowest() / 2};
  if constexpr (std::is_signed_v<TypeParam>) numbers.push_back(-1);
  if constexpr (Limits::has_infinity)
    for (const TypeParam number : {Limits::infinity(), Limits::denorm_min(), Limits::min()})
      numbers.insert(numbers.end(), {number, -number});
  for (const TypeParam a : numbers) {
    for (const TypeParam b : numbers) EXPECT_EQ(zkt::number_sort::KeyFor(a) < zkt::number_sort::KeyFor(b), a < b);
  }
  if constexpr (Limits::has_infinity) {
    EXPECT_LT(zkt::number_sort::KeyFor(-TypeParam{0}), zkt::number_sort::KeyFor(TypeParam{0}));
  }
  for (const bool descending : {false, true}) {
    auto converted = numbers;
    zkt::number_sort::TurnIntoKeys(std::span(converted), descending);
    zkt::number_sort::TurnIntoNumbers(std::span(converted), descending);
    EXPECT_EQ(std::memcmp(converted.data(), numbers.data(), numbers.size() * sizeof(TypeParam)), 0);
  }
}

}  // namespace
