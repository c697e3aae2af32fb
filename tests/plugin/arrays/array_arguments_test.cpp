// Tests how the array functions handle out-of-range arguments, nil arrays, and missing services, and what each family
// traces. Functions of one range are tested by range_test.h.
#include <functional>

#include "plugin/arrays/array_fixture.h"
#include "plugin/arrays/range_arguments.h"

namespace {

using tests::Arguments;
using tests::ServiceWithheld;
using tests::TestArray;

template <class T>
class ArrayArguments : public tests::ArrayTest<T> {
 protected:
  using Array = typename T::Array;
  using Index = std::int64_t;

  // A function that takes a range of each of two arrays. The tests fill the first array with one_ and the second with
  // `others`. Then `call` returns the number of elements processed or, for Equals, whether any element was processed.
  struct RangeFunction {
    std::string name;
    const char* nilMessage;  // raised for a nil first array
    typename T::Stored others;
    std::function<Index(Array*, Array*, Index index, Index count, Index otherIndex)> call;
  };

  std::vector<RangeFunction> RangeFunctions() {
    std::vector<RangeFunction> all;
    if constexpr (requires { T::kEquals; }) all.push_back({"Equals", "source array is nil", one_, T::kEquals});
    all.push_back({"Copy", nullptr, other_, [this](Array* a, Array* b, Index index, Index count, Index otherIndex) {
                     T::kCopy(a, b, index, count, otherIndex);
                     const auto* const elements = reinterpret_cast<const host::Array*>(b);
                     Index copied = 0;
                     for (Index i = 0; a != nullptr && b != nullptr && i < elements->count; ++i)
                       copied += host::ElementAt<typename T::Stored>(elements, i) == one_;
                     return copied;
                   }});
    return all;
  }

  static TestArray<T> Make(Index count, typename T::Stored value) {
    return TestArray<T>(std::vector(static_cast<std::size_t>(count), value));
  }

  typename T::Stored Element(int number) {
    if constexpr (T::kIsReference)
      return this->pool_[static_cast<std::size_t>(number)].Get();
    else
      return static_cast<typename T::Stored>(number);
  }
  const typename T::Stored one_ = Element(1), other_ = Element(0);
};
TYPED_TEST_SUITE(ArrayArguments, tests::element::Every, tests::element::Name);

TYPED_TEST(ArrayArguments, SelectAValidRangeOrRaise) {
  constexpr std::pair<std::int64_t, std::int64_t> kSizes[] = {{0, 0}, {0, 2}, {1, 1}, {2, 0}, {3, 2}, {2, 4}};
  for (const auto& function : this->RangeFunctions())
    for (const auto& [size, otherSize] : kSizes)
      for (const std::int64_t index : Arguments(size))
        for (const std::int64_t count : Arguments(std::max(size, otherSize)))
          for (const std::int64_t otherIndex : Arguments(otherSize)) {
            const auto array = this->Make(size, this->one_), other = this->Make(otherSize, function.others);
            const tests::Range range = tests::Resolve(size, index, count, otherSize, otherIndex);
            const std::int64_t worked = function.call(array.Get(), other.Get(), index, count, otherIndex);
            this->ExpectRaised("OutOfBoundsException", range.message);
            EXPECT_EQ(worked, function.name == "Equals" ? range.count > 0 : range.count);
            ASSERT_FALSE(this->HasFailure()) << function.name << ' ' << size << ' ' << otherSize << ' ' << index << ' '
                                             << count << ' ' << otherIndex;
          }
}

TYPED_TEST(ArrayArguments, MayBeNilOrWithoutAccess) {
  const auto array = this->Make(3, this->one_), none = this->Make(0, this->one_);
  for (const auto& function : this->RangeFunctions()) {
    for (const std::int64_t count : {-2, 0, 5}) {
      EXPECT_EQ(function.call(nullptr, array.Get(), -1, count, -1), 0);
      this->ExpectRaised("NilObjectException", function.nilMessage, function.name);
      EXPECT_EQ(function.call(nullptr, nullptr, -1, count, -1), 0);
      this->ExpectRaised("NilObjectException", function.nilMessage, function.name);
      EXPECT_EQ(function.call(array.Get(), nullptr, -1, count, -1), 0);
      this->ExpectRaised("NilObjectException", "dest array is nil", function.name);
    }
    {
      const ServiceWithheld absent(zkt::REALGetArrayUBound);
      const auto other = this->Make(3, function.others);
      EXPECT_EQ(function.call(array.Get(), other.Get(), 0, -2, 0), 1) << "a missing upper bound counts as 0";
      function.call(array.Get(), other.Get(), 1, 1, 0);
      this->ExpectRaised("OutOfBoundsException", "sourceIndex > ubound source", function.name);
    }
    const auto other = this->Make(3, function.others);
    zkt::gArrayAccess = zkt::ArrayAccess::kFailed;
    EXPECT_EQ(function.call(none.Get(), other.Get(), -1, -2, -1), 0);
    EXPECT_EQ(function.call(array.Get(), other.Get(), -1, 0, -1), 0);
    this->ExpectNothingRaised(function.name);
    for (const auto* const each : {&none, &array}) {
      EXPECT_EQ(function.call(each->Get(), other.Get(), -1, 1, -1), 0);
      this->ExpectNoAccess(function.name);
    }
    zkt::gArrayAccess = zkt::ArrayAccess::kProven;
  }
}

TYPED_TEST(ArrayArguments, OfWholeArraysMayBeNilOrWithoutAccess) {
  std::vector<std::function<void(typename TypeParam::Array*)>> functions = {TypeParam::kReverse};
  if constexpr (requires { TypeParam::kSort; }) functions.push_back([](auto* array) { TypeParam::kSort(array, 1); });
  const typename TestFixture::Elements elements = {this->one_, this->one_, this->other_, this->other_};
  const TestArray<TypeParam> array(elements);
  const auto one = this->Make(1, this->one_), none = this->Make(0, this->one_);
  for (const auto& function : functions) {
    function(nullptr);
    {
      const ServiceWithheld absent(zkt::REALGetArrayUBound);
      function(array.Get());
    }
    zkt::gArrayAccess = zkt::ArrayAccess::kFailed;
    function(one.Get());
    function(none.Get());
    this->ExpectNothingRaised();
    function(array.Get());
    this->ExpectNoAccess();
    EXPECT_EQ(array.Elements(), elements);
    zkt::gArrayAccess = zkt::ArrayAccess::kProven;
  }
}

TYPED_TEST(ArrayArguments, OfAddMayBeNilOrWithoutAccess) {
  const auto array = this->Make(2, this->one_), none = this->Make(0, this->one_), one = this->Make(1, this->one_);
  TypeParam::kAdd(nullptr, nullptr);
  TypeParam::kAdd(array.Get(), nullptr);
  this->ExpectNothingRaised("nil to add");
  TypeParam::kAdd(nullptr, array.Get());
  this->ExpectRaised("NilObjectException", "dest array is nil");
  {
    const ServiceWithheld absent(TypeParam::kInserter);
    TypeParam::kAdd(array.Get(), array.Get());
    TypeParam::kAdd(none.Get(), array.Get());
  }
  this->ExpectNothingRaised("no inserter");
  zkt::gArrayAccess = zkt::ArrayAccess::kFailed;
  for (const auto* const each : {&none, &array}) {
    TypeParam::kAdd(array.Get(), each->Get());
    this->ExpectNoAccess();
  }
  EXPECT_EQ(array.Elements().size(), 2u);
  EXPECT_EQ(none.Elements().size(), 0u);
  zkt::gArrayAccess = zkt::ArrayAccess::kProven;
  const ServiceWithheld absent(zkt::REALGetArrayUBound);
  TypeParam::kAdd(one.Get(), array.Get());
  EXPECT_EQ(one.Elements().size(), 2u) << "missing upper bounds count as 0";
}

// Covers the first trace line of each family, and each shared trace line once.
using ArrayTraces = tests::ArrayTest<tests::element::String>;

TEST_F(ArrayTraces, ListTheSteps) {
  using namespace tests::element;  // NOLINT
  const TestArray<Int32> a({1, -2, 3}), b({1, -2, 4, 5}), no({});
  const TestArray<Double> half({0.5}), quarter({-0.25});
  const TestArray<UInt64> big({UINT64_MAX}), zero({0});
  const TestArray<String> s({pool_[0].Get()}), t({pool_[1].Get(), pool_[0].Get()});
  char strings[64];
  std::snprintf(strings, sizeof strings, "%p, %p|", static_cast<void*>(pool_[0].Get()),
                static_cast<void*>(pool_[1].Get()));
  _REALarrayInt32* const nil = nullptr;
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[&] { zkt::SumArrayZKT_Int32(a.Get(), 1, -2); }, "SumArrayZKT 1, -2|ubound 2|sourceCount 2|"},
      {[&] { zkt::SumArrayZKT_Int32(a.Get(), 2, -1); }, "SumArrayZKT 2, -1|ubound 2|sourceCount -1|nothing to do|"},
      {[&] { zkt::SumArrayZKT_Double(half.Get(), 9, 0); }, "SumArrayZKT 9, 0|"},
      {[&] { zkt::SumArrayZKT_Int32(no.Get(), 0, -2); }, "SumArrayZKT 0, -2|ubound -1|empty array in source|"},
      {[&] { zkt::CountValueZKT_Int32(a.Get(), 3, 0, 2); }, "CountValueZKT 0, 2|ubound 2|sourceCount 2|"},
      {[&] { zkt::CountValueZKT_String(s.Get(), nullptr, 0, -2); },
       "CountValueZKT_String 0, -2|ubound 0|sourceCount 1|"},
      {[&] { zkt::EqualsArrayZKT_Int32(a.Get(), b.Get(), 1, -2, 1); },
       "EqualsArrayZKT 1, -2, 1|ubound 2, 3|sourceCount 2|different values at 1|values 3, 4|"},
      {[&] { zkt::EqualsArrayZKT_Int32(a.Get(), b.Get(), 0, 2, 0); },
       "EqualsArrayZKT 0, 2, 0|ubound 2, 3|sourceCount 2|all values the same.|"},
      {[&] { zkt::EqualsArrayZKT_Int32(no.Get(), b.Get(), 0, -2, 0); },
       "EqualsArrayZKT 0, -2, 0|ubound -1, 3|empty array in source|"},
      {[&] { zkt::EqualsArrayZKT_Int32(a.Get(), b.Get(), 0, -7, 0); },
       "EqualsArrayZKT 0, -7, 0|ubound 2, 3|sourceCount -7|nothing to do|"},
      {[&] { zkt::EqualsArrayZKT_Int32(nil, b.Get(), 0, 0, 0); }, "EqualsArrayZKT 0, 0, 0|source is nil|"},
      {[&] { zkt::EqualsArrayZKT_Int32(a.Get(), nil, 0, 0, 0); }, "EqualsArrayZKT 0, 0, 0|dest is nil|"},
      {[&] { zkt::EqualsArrayZKT_Double(half.Get(), quarter.Get(), 0, 1, 0); },
       "EqualsArrayZKT 0, 1, 0|ubound 0, 0|sourceCount 1|different values at 0|values 0.500000, -0.250000|"},
      {[&] { zkt::EqualsArrayZKT_UInt64(big.Get(), zero.Get(), 0, 1, 0); },
       "EqualsArrayZKT 0, 1, 0|ubound 0, 0|sourceCount 1|different values at 0|values 18446744073709551615, 0|"},
      {[&] { zkt::EqualsArrayZKT_String(s.Get(), t.Get(), 0, -2, 0); },
       "EqualsArrayZKT_strings 0, -2, 0|ubound 0, 1|sourceCount 1|different strings at 0|values " +
           std::string(strings)},
      {[&] { zkt::CopyArrayZKT_Int32(a.Get(), nil, 0, 0, 0); }, "CopyArrayZKT 0, 0, 0|"},
      {[&] { zkt::CopyArrayZKT_String(s.Get(), t.Get(), 0, -2, 0); },
       "CopyArrayZKT 0, -2, 0|ubound 0, 1|sourceCount 1|lock strings 1|unlock strings 1|"},
      {[&] { zkt::AddArrayZKT_Int32(a.Get(), b.Get()); }, "AddArrayZKT|"},
      {[&] { zkt::AddArrayZKT_Int32(nil, b.Get()); }, "AddArrayZKT|dest is nil|"},
      {[&] { zkt::SortArrayZKT_Int32(b.Get(), 0); }, ""},
      {[&] { zkt::ReverseZKT_Int32(b.Get()); }, "h 2|"},
  };
  for (const auto& [call, want] : cases) EXPECT_EQ(tests::TraceOf(call), want);
  TakeRaised();
}

}  // namespace
