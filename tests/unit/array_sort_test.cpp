// Sorting in the natural order, NaN and dates included.
#include <cmath>
#include <functional>

#include "dates/date_objects.h"
#include "unit/array_fixture.h"

namespace {

using tests::Choice;
using tests::TestArray;
using tests::Without;

template <class T>
using ArraySort = tests::ArraySortTest<T>;
TYPED_TEST_SUITE(ArraySort, tests::element::EverySort, tests::element::Name);

TYPED_TEST(ArraySort, OrdersEveryPattern) {
  for (const std::size_t size : tests::kSortSizes)
    for (const auto& elements : this->Patterns(size))
      for (const bool descending : {false, true}) this->ExpectSorted(elements, descending, TypeParam::kSort);
  this->ExpectNothingRaised();
}

template <class T>
using ArraySortOfFloats = ArraySort<T>;
using Floats = testing::Types<tests::element::Double, tests::element::Single>;
TYPED_TEST_SUITE(ArraySortOfFloats, Floats, tests::element::Name);

TYPED_TEST(ArraySortOfFloats, OrdersNumbersBeforeNaNs) {
  const auto isNumber = [](auto element) { return element == element; };
  for (int round = 0; round < 3000; ++round) {
    auto elements = this->Make(this->random_() % (round % 10 == 0 ? 1000 : 60), Choice::kAll);
    const unsigned share = static_cast<unsigned>(round) % 100;
    for (auto& element : elements)
      if (this->random_() % 100 < share) element = this->random_() % 2 == 0 ? NAN : -NAN;
    const TestArray<TypeParam> array(elements, round % 2 == 0 ? 3 : 0);
    const bool descending = round % 3 == 0;
    TypeParam::kSort(array.Get(), descending);
    const auto sorted = array.Elements();
    ASSERT_TRUE(tests::IsPermutation(sorted, elements)) << round;
    ASSERT_TRUE(std::is_partitioned(sorted.begin(), sorted.end(), isNumber)) << round;
    const auto end = std::partition_point(sorted.begin(), sorted.end(), isNumber);
    ASSERT_TRUE(descending ? std::is_sorted(sorted.begin(), end, std::greater<>())
                           : std::is_sorted(sorted.begin(), end))
        << round;
  }
}

using DateSeconds = tests::ArrayTest<tests::element::Date>;

TEST_F(DateSeconds, AreReadByName) {
  const host::ObjectRef dateTime(host::MakeObject(host::FindClass("DateTime")));
  host::FindProperty(dateTime.Get(), "SecondsFrom1970")->payload = -2.5;
  const auto expect = [&](host::Counted* date, double wantOfDate, host::Counted* time, double wantOfTime, bool fails) {
    const tests::Debugging debugging;
    tests::CapturedLog log;
    EXPECT_EQ(zkt::GetTotalSeconds(reinterpret_cast<REALdate>(date)), wantOfDate);
    EXPECT_EQ(zkt::GetDateTimeSecondsFrom1970(reinterpret_cast<REALdateTime>(time)), wantOfTime);
    EXPECT_EQ(log.Take(), fails ? "ZKT Debug: Failed to read SecondsFrom1970 property.\n" : "");
  };
  expect(pool_[1].Get(), 1.5, dateTime.Get(), -2.5, false);
  expect(nullptr, 0.0, nullptr, 0.0, true);
  {
    const tests::Replaced fails(zkt::REALGetPropValueDouble, "REALGetPropValueDouble",
                                [](void*, const char*, double* value) { return *value += 7.0, REALboolean{0}; });
    expect(pool_[1].Get(), 7.0, dateTime.Get(), 7.0, true);
  }
  const Without absent(zkt::REALGetPropValueDouble, "REALGetPropValueDouble");
  expect(pool_[1].Get(), 0.0, dateTime.Get(), 0.0, true);
}

// Both standard libraries put two elements in order by asking once whether the second goes before the first. What is
// asked about first is read first, whatever the compiler.
TEST_F(DateSeconds, AreTracedAtEveryComparison) {
  const TestArray<tests::element::Date> array({pool_[9].Get(), pool_[1].Get()});
  const tests::Debugging debugging;
  tests::CapturedLog log;
  zkt::SortArrayZKT_Date(array.Get(), 0);
  EXPECT_EQ(log.Take(), "ZKT Debug: GetDateTotalSeconds 1.500000\nZKT Debug: GetDateTotalSeconds 2.000000\n");
}

}  // namespace
