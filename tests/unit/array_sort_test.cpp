// Sorting in the natural order and by a delegate, with orders that contradict themselves too: whatever the answers are,
// the sort ends, stays inside the array, and keeps every element.
#include <bit>
#include <cmath>
#include <functional>
#include <stdexcept>

#include "dates/date_objects.h"
#include "unit/array_fixture.h"

namespace {

using tests::Choice;
using tests::Random;
using tests::TestArray;
using tests::Without;

template <class T>
class ArraySort : public tests::ArrayTest<T> {
 public:
  using Type = T;
  using tests::ArrayTest<T>::Make;
  using tests::ArrayTest<T>::random_;

 protected:
  using Elements = std::vector<typename T::Stored>;

  // Random, few values, all the same, ascending, descending, up and down, nearly sorted; nil, but no NaN.
  std::vector<Elements> Patterns(std::size_t size) {
    Elements random = this->Make(size, Choice::kAll);
    if constexpr (!T::kIsReference)
      for (auto& element : random) element = element == element ? element : 0;
    Elements ascending = random;
    std::sort(ascending.begin(), ascending.end(), T::Less);
    const Elements descending(ascending.rbegin(), ascending.rend());
    Elements pipe = ascending, nearly = ascending;
    std::reverse(pipe.begin() + static_cast<std::ptrdiff_t>(size / 2), pipe.end());
    if (size > 1) std::swap(nearly[size / 2], nearly[this->random_() % size]);
    const Elements few = this->Make(size, Choice::kFew), same(size, this->Any(Choice::kOrdinary));
    return {random, few, same, ascending, descending, pipe, nearly};
  }

  template <class Sort>
  void ExpectSorted(const Elements& elements, bool descending, const Sort& sort) {
    const TestArray<T> array(elements, 3);
    sort(array.Get(), REALboolean{descending});
    const Elements sorted = array.Elements();
    EXPECT_TRUE(tests::IsPermutation(sorted, elements)) << elements.size();
    EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end(),
                               [&](auto a, auto b) { return descending ? T::Less(b, a) : T::Less(a, b); }))
        << elements.size() << (descending ? " descending" : " ascending");
    this->ExpectReferencesIn(array);
  }
};
TYPED_TEST_SUITE(ArraySort, tests::element::EverySort, tests::element::Name);

constexpr std::size_t kSortSizes[] = {0, 1, 2, 3, 7, 15, 16, 17, 18, 33, 100, 257, 1000, 4097};

TYPED_TEST(ArraySort, OrdersEveryPattern) {
  for (const std::size_t size : kSortSizes)
    for (const auto& elements : this->Patterns(size))
      for (const bool descending : {false, true}) this->ExpectSorted(elements, descending, TypeParam::kSort);
  this->ExpectNothingRaised();
}

TYPED_TEST(ArraySort, EndsWithoutTheHostsHelp) {
  const Without noComparison(zkt::REALCompareStrings, "RuntimeStringCompare");
  const Without noSeconds(zkt::REALGetPropValueDouble, "REALGetPropValueDouble");
  const auto elements = this->Make(300, Choice::kOrdinary);
  const TestArray<TypeParam> array(elements, 3);
  TypeParam::kSort(array.Get(), 1);
  EXPECT_TRUE(tests::IsPermutation(array.Elements(), elements));
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

// Answers comparisons, and notes how often it was asked and whether one of the elements lay outside the array.
// clang-format off
enum class Answers { kLess, kEqual, kMore, kRandom, kMostlyMore, kCyclic, kLessOrEqual, kAlternating, kBreaksLater, kNoisy, kOrder };
// clang-format on
constexpr int kAnswers = 11;

struct Judge {
  Answers answers = Answers::kOrder;
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
    switch (answers) {
      case Answers::kLess:        return -1;
      case Answers::kEqual:       return 0;
      case Answers::kMore:        return 1;
      case Answers::kRandom:      return static_cast<std::int64_t>(random() % 3) - 1;
      case Answers::kMostlyMore:  return random() % 100 == 0 ? -1 : 1;
      case Answers::kCyclic:      return (hand(a) - hand(b) + 4) % 3 - 1;
      case Answers::kLessOrEqual: return less(b, a) ? 1 : -1;
      case Answers::kAlternating: return calls % 2 == 0 ? -1 : 1;
      case Answers::kBreaksLater: return calls < breaksAfter ? order() : -1;
      case Answers::kNoisy:       return random() % 20 == 0 ? random() % 2 == 0 ? 1 : -1 : order();
      case Answers::kOrder:       break;
    }
    // clang-format on
    return order();
  }
} gJudge;

template <class T>
std::int64_t Ask(REALobject delegate, typename T::Stored a, typename T::Stored b) {
  EXPECT_EQ(delegate->invoker, reinterpret_cast<void*>(&Ask<T>)) << "the delegate comes first";
  return gJudge.Compare(a, b, T::Less);
}

template <class Function>
host::ObjectRef MakeDelegate(Function function) {
  return host::MakeNativeDelegate(reinterpret_cast<void*>(+function));
}

double CallLimit(std::size_t size) {
  return size > 1 ? 8.0 * static_cast<double>(size) * (std::log2(static_cast<double>(size)) + 3) : 0;
}

// Sorts one random array with gJudge's answers, and checks all that can be promised.
template <class Test, class Sort>
void SortWithAnswers(Test& test, Answers answers, std::size_t size, const Sort& sort) {
  using T = typename Test::Type;
  gJudge.answers = answers;
  gJudge.calls = gJudge.outside = 0;
  gJudge.breaksAfter = static_cast<std::int64_t>(test.random_() % (4 * size + 1));
  const auto elements = test.Make(size, test.random_() % 3 == 0 ? Choice::kFew : Choice::kOrdinary);
  const bool guarded = test.random_() % 2 == 0;  // else the sanitizer sees what is read at either end of the block
  const bool descending = test.random_() % 2 == 0;
  const TestArray<T> array(elements, guarded ? 3 : 0);
  sort(array.Get(), REALboolean{descending});
  const auto note = [&] {
    return std::to_string(size) + " elements, answers " + std::to_string(static_cast<int>(answers));
  };
  ASSERT_TRUE(tests::IsPermutation(array.Elements(), elements)) << note();
  ASSERT_EQ(gJudge.outside, 0) << note();
  ASSERT_LE(static_cast<double>(gJudge.calls), CallLimit(size)) << note();
}

template <class T>
class ArraySortByDelegate : public ArraySort<T> {
 protected:
  const host::ObjectRef delegate_ = MakeDelegate(&Ask<T>);
  const std::function<void(typename T::Array*, REALboolean)> sort_ = [this](auto* array, REALboolean descending) {
    T::kSortDelegate(array, delegate_.Get(), descending);
  };
};
TYPED_TEST_SUITE(ArraySortByDelegate, tests::element::EveryDelegate, tests::element::Name);

TYPED_TEST(ArraySortByDelegate, FollowsConsistentAnswers) {
  gJudge.answers = Answers::kOrder;
  gJudge.outside = 0;
  for (const std::size_t size : kSortSizes)
    for (const auto& elements : this->Patterns(size))
      for (const bool descending : {false, true}) {
        gJudge.calls = 0;
        this->ExpectSorted(elements, descending, this->sort_);
        EXPECT_LE(static_cast<double>(gJudge.calls), CallLimit(size)) << size;
      }
  EXPECT_EQ(gJudge.outside, 0);
}

TYPED_TEST(ArraySortByDelegate, SurvivesAnyAnswers) {
  constexpr int kRounds = 100'000 / 13 + 1;  // of the thirteen element types
  for (int round = 0; round < kRounds && !this->HasFatalFailure(); ++round) {
    const std::size_t size = round % 20 == 0 ? this->random_() % 1001 : this->random_() % 70;
    SortWithAnswers(*this, static_cast<Answers>(round % kAnswers), size, this->sort_);
  }
  this->ExpectNothingRaised();
}

TYPED_TEST(ArraySortByDelegate, ChecksTheDelegateFirst) {
  const tests::Debugging debugging;
  const auto elements = this->Make(5, Choice::kOrdinary);
  const TestArray<TypeParam> array(elements), one({elements[0]}), none({});
  const auto sort = [](const auto* anArray, REALobject delegate) {
    tests::CapturedLog log;
    TypeParam::kSortDelegate(anArray != nullptr ? anArray->Get() : nullptr, delegate, 0);
    return log.Take();
  };
  const TestArray<TypeParam>* const nil = nullptr;
  const host::ObjectRef bad = host::MakeNativeDelegate(nullptr);
  EXPECT_EQ(sort(nil, nullptr), "");
  EXPECT_EQ(sort(nil, bad.Get()), "");
  this->ExpectNothingRaised("nil array");
  for (const auto* const each : {&none, &array}) {
    EXPECT_EQ(sort(each, nullptr), "ZKT Debug: delegate is nil\n");
    this->ExpectRaised("NilObjectException", "Delegate is nil");
    EXPECT_EQ(sort(each, bad.Get()), "ZKT Debug: d is nil\n");
    this->ExpectRaised("NilObjectException", "Delegate is bad?");
    const Without absent(zkt::REALGetDelegateInvoker, "PluginGetDelegateInvoker");
    EXPECT_EQ(sort(each, this->delegate_.Get()), "ZKT Debug: d is nil\n");
    this->ExpectRaised("NilObjectException", "Delegate is bad?");
  }
  gJudge.calls = 0;
  {
    const Without absent(zkt::REALGetArrayUBound, "RuntimeUBound");
    EXPECT_EQ(sort(&array, this->delegate_.Get()), "");
  }
  zkt::gArrayAccess = zkt::ArrayAccess::kFailed;
  EXPECT_EQ(sort(&one, this->delegate_.Get()), "");
  EXPECT_EQ(sort(&none, this->delegate_.Get()), "");
  this->ExpectNothingRaised("before access");
  EXPECT_EQ(sort(&array, this->delegate_.Get()), "");
  this->ExpectNoAccess();
  EXPECT_EQ(gJudge.calls, 0);
  EXPECT_TRUE(tests::SameBits(array.Elements(), elements));
}

using ArraySortOfInt32 = ArraySortByDelegate<tests::element::Int32>;

TEST_F(ArraySortOfInt32, LetsExceptionsOfTheDelegatePass) {
  const host::ObjectRef throws = MakeDelegate(
      [](REALobject, std::int32_t, std::int32_t) -> std::int64_t { throw std::runtime_error("from the delegate"); });
  const TestArray<tests::element::Int32> array({3, 1, 2});
  EXPECT_THROW(zkt::SortArrayZKT_Int32Del(array.Get(), throws.Get(), 0), std::runtime_error);
  ExpectNothingRaised();
}

// The host's own comparison of strings and the seconds of dates may contradict themselves too.
template <class T>
using ArraySortByHost = ArraySort<T>;
using Hosted = testing::Types<tests::element::String, tests::element::Date, tests::element::DateTime>;
TYPED_TEST_SUITE(ArraySortByHost, Hosted, tests::element::Name);

TYPED_TEST(ArraySortByHost, SurvivesAnyAnswers) {
  const tests::Replaced strings(zkt::REALCompareStrings, "RuntimeStringCompare",
                                [](host::Counted* a, host::Counted* b) {
                                  return static_cast<std::int32_t>(gJudge.Compare(a, b, std::less<>()) >> 32);
                                });
  // One comparison asks for two dates.
  const tests::Replaced seconds(zkt::REALGetPropValueDouble, "REALGetPropValueDouble",
                                [](host::Counted* a, const char*, double* value) {
                                  gJudge.Compare(a, a, std::less<>());
                                  *value = static_cast<double>(gJudge.random() % 5);
                                  return REALboolean{1};
                                });
  constexpr bool kIsString = std::is_same_v<TypeParam, tests::element::String>;
  for (int round = 0; round < 4000 && !this->HasFatalFailure(); ++round) {
    const std::size_t size = round % 20 == 0 ? this->random_() % 1001 : this->random_() % 70;
    SortWithAnswers(*this, kIsString ? static_cast<Answers>(round % kAnswers) : Answers::kOrder, size,
                    [&](auto* array, REALboolean down) {
                      TypeParam::kSort(array, down);
                      if (!kIsString) gJudge.calls /= 2;
                    });
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
