// Tests how the delegate is checked before sorting, and how arrays are sorted with inconsistent comparisons. Whatever a
// comparison returns, the sort must end, stay inside the array, and keep every element.
#include <cmath>
#include <functional>

#include "arrays/sorting.h"
#include "plugin/arrays/array_fixture.h"

namespace {

using namespace tests;

// The ways in which ComparatorStub compares elements.
// clang-format off
enum class Behavior { kLess, kEqual, kMore, kRandom, kMostlyMore, kCyclic, kLessOrEqual, kAlternating, kBreaksLater, kNoisy, kOrder };
// clang-format on
constexpr int kBehaviors = 11;

// Compares elements. Counts all calls and, separately, the calls that receive an element that is not in the array.
struct ComparatorStub {
  Behavior behavior = Behavior::kOrder;
  Random random{1};
  std::int64_t calls = 0;
  std::int64_t outside = 0;
  std::int64_t breaksAfter = 0;

  template <class Stored, class Less>
  std::int64_t Compare(const Stored& a, const Stored& b, Less less) {
    const Stored guard = tests::GuardOf<Stored>();
    outside += std::memcmp(&a, &guard, sizeof guard) == 0 || std::memcmp(&b, &guard, sizeof guard) == 0;
    ++calls;
    const auto order = [&]() -> std::int64_t { return less(a, b) ? INT64_MIN : less(b, a) ? INT64_MAX : 0; };
    const auto hand = [](const Stored& value) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, &value, sizeof value);
      return static_cast<std::int64_t>((bits >> 4 ^ bits >> 55 ^ bits) % 3);
    };
    // clang-format off
    switch (behavior) {
      case Behavior::kLess:        return -1;
      case Behavior::kEqual:       return 0;
      case Behavior::kMore:        return 1;
      case Behavior::kRandom:      return static_cast<std::int64_t>(random() % 3) - 1;
      case Behavior::kMostlyMore:  return random() % 100 == 0 ? -1 : 1;
      case Behavior::kCyclic:      return (hand(a) - hand(b) + 4) % 3 - 1;
      case Behavior::kLessOrEqual: return less(b, a) ? 1 : -1;
      case Behavior::kAlternating: return calls % 2 == 0 ? -1 : 1;
      case Behavior::kBreaksLater: return calls < breaksAfter ? order() : -1;
      case Behavior::kNoisy:       return random() % 20 == 0 ? random() % 2 == 0 ? 1 : -1 : order();
      case Behavior::kOrder:       break;
    }
    // clang-format on
    return order();
  }
} gComparator;

template <class T>
std::int64_t CallStub(REALobject delegate, typename T::Stored a, typename T::Stored b) {
  EXPECT_EQ(delegate->invoker, reinterpret_cast<void*>(&CallStub<T>)) << "the delegate is the first argument";
  return gComparator.Compare(a, b, T::Less);
}

double CallLimit(std::size_t size) {
  return size > 1 ? 8.0 * static_cast<double>(size) * (std::log2(static_cast<double>(size)) + 3) : 0;
}

// Sorts one random array with gComparator, and checks the properties that hold for any comparison.
template <class Test, class Sort>
void SortWithBehavior(Test& test, Behavior behavior, std::size_t size, const Sort& sort, double callLimit) {
  using T = typename Test::Type;
  gComparator.behavior = behavior;
  gComparator.calls = gComparator.outside = 0;
  gComparator.breaksAfter = static_cast<std::int64_t>(test.random_() % (4 * size + 1));
  const auto elements = test.Make(size, test.random_() % 3 == 0 ? Choice::kFew : Choice::kOrdinary);
  const bool guarded = test.random_() % 2 == 0;  // without guards, the sanitizer detects reads outside the block
  const bool descending = test.random_() % 2 == 0;
  const TestArray<T> array(elements, guarded ? 3 : 0);
  sort(array.Get(), REALboolean{descending});
  const auto note = [&] {
    return std::to_string(size) + " elements, behavior " + std::to_string(static_cast<int>(behavior));
  };
  ASSERT_TRUE(tests::IsPermutation(array.Elements(), elements)) << note();
  ASSERT_EQ(gComparator.outside, 0) << note();
  ASSERT_LE(static_cast<double>(gComparator.calls), callLimit) << note();
}

template <class T>
class ArraySortByDelegate : public tests::ArrayTest<T> {
 protected:
  const host::ObjectRef delegate_ = host::MakeNativeDelegate(reinterpret_cast<void*>(&CallStub<T>));
};
TYPED_TEST_SUITE(ArraySortByDelegate, tests::element::EveryDelegate, tests::element::Name);

TYPED_TEST(ArraySortByDelegate, ChecksTheDelegateFirst) {
  const auto elements = this->Make(5, Choice::kOrdinary);
  const TestArray<TypeParam> array(elements), one({elements[0]}), none({});
  const auto sort = [](const auto* anArray, REALobject delegate) {
    return tests::TraceOf(
        [&] { TypeParam::kSortDelegate(anArray != nullptr ? anArray->Get() : nullptr, delegate, 0); });
  };
  const TestArray<TypeParam>* const nil = nullptr;
  const host::ObjectRef bad = host::MakeNativeDelegate(nullptr);
  EXPECT_EQ(sort(nil, nullptr), "");
  EXPECT_EQ(sort(nil, bad.Get()), "");
  this->ExpectNothingRaised("nil array");
  for (const auto* const each : {&none, &array}) {
    EXPECT_EQ(sort(each, nullptr), "delegate is nil|");
    this->ExpectRaised("NilObjectException", "Delegate is nil");
    EXPECT_EQ(sort(each, bad.Get()), "d is nil|");
    this->ExpectRaised("NilObjectException", "Delegate is bad?");
    const ServiceWithheld absent(zkt::REALGetDelegateInvoker);
    EXPECT_EQ(sort(each, this->delegate_.Get()), "d is nil|");
    this->ExpectRaised("NilObjectException", "Delegate is bad?");
  }
  gComparator.calls = 0;
  {
    const ServiceWithheld absent(zkt::REALGetArrayUBound);
    EXPECT_EQ(sort(&array, this->delegate_.Get()), "");
  }
  zkt::gArrayAccess = zkt::ArrayAccess::kFailed;
  EXPECT_EQ(sort(&one, this->delegate_.Get()), "");
  EXPECT_EQ(sort(&none, this->delegate_.Get()), "");
  this->ExpectNothingRaised("before access");
  EXPECT_EQ(sort(&array, this->delegate_.Get()), "");
  this->ExpectNoAccess();
  EXPECT_EQ(gComparator.calls, 0);
  EXPECT_TRUE(tests::SameBits(array.Elements(), elements));
}

// The other tests in this file cover only the standard library that they are built with. This test covers every
// standard library: each scan must stop at the ends of the array, and an exception must abort a scan that starts past
// the end.
TEST(SafeOrder, StopsEveryScanAtTheEnds) {
  int memory[] = {7, 3, 1, 2, 7, 7};  // the array is in the middle
  auto& [before, first, middle, last, end, beyond] = memory;
  using Order = zkt::SafeOrder<int, std::less<>>;
  Order::State state{&before, &end, 3, {}};
  const Order order(&state);
  for (const int& element : {std::cref(first), std::cref(middle), std::cref(last)}) {
    EXPECT_TRUE(order(before, element) && order(element, end));
    EXPECT_FALSE(order(element, before) || order(end, element));
  }
  EXPECT_THROW(order(end, end), Order::OutOfRangeScan);
  EXPECT_THROW(order(beyond, end), Order::OutOfRangeScan);
  EXPECT_EQ(state.comparisonsLeft, 3) << "elements outside the array are not compared";
  EXPECT_TRUE(order(middle, first) && order(last, first) && order(middle, last));
  EXPECT_FALSE(order(middle, first)) << "no comparisons left";
}

// The host also compares strings and provides the total seconds of dates, and either may give inconsistent results.
template <class T>
class ArraySortByHost : public tests::ArrayTest<T> {
 public:
  using Type = T;
  using tests::ArrayTest<T>::Make;
  using tests::ArrayTest<T>::random_;
};
using HostCompared = testing::Types<tests::element::String, tests::element::Date, tests::element::DateTime>;
TYPED_TEST_SUITE(ArraySortByHost, HostCompared, tests::element::Name);

TYPED_TEST(ArraySortByHost, TerminatesWithoutHostServices) {
  const ServiceWithheld noComparison(zkt::REALCompareStrings);
  const ServiceWithheld noSeconds(zkt::REALGetPropValueDouble);
  const auto elements = this->Make(300, Choice::kOrdinary);
  const TestArray<TypeParam> array(elements, 3);
  TypeParam::kSort(array.Get(), 1);
  EXPECT_TRUE(tests::IsPermutation(array.Elements(), elements));
}

TYPED_TEST(ArraySortByHost, SurvivesInconsistentComparisons) {
  const tests::ServiceReplaced strings(zkt::REALCompareStrings, [](host::RefCounted* a, host::RefCounted* b) {
    return static_cast<std::int32_t>(gComparator.Compare(a, b, std::less<>()) >> 32);
  });
  // Each comparison of two dates calls this service twice.
  const tests::ServiceReplaced seconds(zkt::REALGetPropValueDouble,
                                       [](host::RefCounted* a, const char*, double* value) {
                                         gComparator.Compare(a, a, std::less<>());
                                         *value = static_cast<double>(gComparator.random() % 5);
                                         return REALboolean{1};
                                       });
  constexpr bool kIsString = std::is_same_v<TypeParam, tests::element::String>;
  for (int round = 0; round < 4000 && !this->HasFatalFailure(); ++round) {
    const std::size_t size = round % 20 == 0 ? this->random_() % 1001 : this->random_() % 70;
    SortWithBehavior(
        *this, kIsString ? static_cast<Behavior>(round % kBehaviors) : Behavior::kOrder, size,
        [&](auto* array, REALboolean down) {
          TypeParam::kSort(array, down);
          if (!kIsString) gComparator.calls /= 2;
        },
        CallLimit(size));
  }
}

}  // namespace
