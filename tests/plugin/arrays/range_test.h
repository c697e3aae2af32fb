// Tests a function that reads a range of one array: compares it with a plain loop, and passes it invalid arguments.
#pragma once

#include <cmath>
#include <span>

#include "plugin/arrays/array_fixture.h"
#include "plugin/arrays/range_arguments.h"

namespace tests {

// `function` takes an array, an index, and a count. `plain` takes the elements of a range that is not empty, and
// returns the expected result. Without elements, the expected result is 0.
template <class T>
class RangeTest : public ArrayTest<T> {
 protected:
  using Elements = typename ArrayTest<T>::Elements;

  // Compares the results for arrays of many sizes, and expects the function to check its arguments. `family` is the
  // name in the log.
  template <class Function, class Plain>
  void ExpectPlainLoop(const std::string& family, Function function, Plain plain) {
    const TestArray<T> three(this->Make(3));
    EXPECT_EQ(TraceOf([&] { function(three.Get(), 1, 1); }), family + " 1, 1|ubound 2|sourceCount 1|");
    for (const std::size_t size : kSizes)
      for (const Choice choice : {Choice::kFew, Choice::kOrdinary, Choice::kAll})
        ExpectPlainLoopOver(this->Make(size, choice), function, plain);
    ExpectArgumentChecks(function, plain);
  }

  // Compares the results for some ranges of an array with these elements.
  template <class Function, class Plain>
  void ExpectPlainLoopOver(const Elements& elements, Function function, Plain plain) {
    const TestArray<T> array(elements, 3);
    for (int round = 0; round < 4; ++round) {
      const auto part = round == 0 ? typename ArrayTest<T>::Part{0, elements.size()} : this->AnyPart(elements.size());
      const bool isToTheEnd = part.first + part.count == elements.size() && round % 2 == 0;
      EXPECT_TRUE(IsSame(function(array.Get(), part.Index(), isToTheEnd ? -2 : part.Count()), plain,
                         std::span(elements).subspan(part.first, part.count)))
          << elements.size() << " elements, " << part.count << " from " << part.first;
    }
    this->ExpectNothingRaised();
  }

  // Passes ranges near the limits of short arrays, nil, and arrays that the plug-in cannot access.
  template <class Function, class Plain>
  void ExpectArgumentChecks(Function function, Plain plain) {
    for (const std::int64_t size : {0, 1, 3}) {
      const auto elements = this->Make(static_cast<std::size_t>(size), Choice::kFew);
      const TestArray<T> array(elements);
      for (const std::int64_t index : Arguments(size))
        for (const std::int64_t count : Arguments(size)) {
          const Range range = Resolve(size, index, count, std::nullopt, 0);
          const auto result = function(array.Get(), index, count);
          const std::string note = std::to_string(size) + ' ' + std::to_string(index) + ' ' + std::to_string(count);
          this->ExpectRaised("OutOfBoundsException", range.message, note);
          const std::size_t first = range.count > 0 ? static_cast<std::size_t>(index) : 0;
          EXPECT_TRUE(IsSame(result, plain, std::span(elements).subspan(first, static_cast<std::size_t>(range.count))))
              << note;
        }
    }
    ExpectAccessChecks(function, plain);
  }

 private:
  // All NaNs count as equal. All other results must agree in every bit, including the sign of zero.
  template <class Result, class Plain>
  static bool IsSame(Result result, Plain plain, std::span<const typename T::Stored> range) {
    const Result want = range.empty() ? Result{} : static_cast<Result>(plain(range));
    if constexpr (std::is_floating_point_v<Result>)
      if (std::isnan(result) && std::isnan(want)) return true;
    return std::memcmp(&result, &want, sizeof want) == 0;
  }

  template <class Function, class Plain>
  void ExpectAccessChecks(Function function, Plain plain) {
    const auto elements = this->Make(3, Choice::kFew);
    const TestArray<T> array(elements), none({});
    for (const std::int64_t count : {-2, 0, 5}) EXPECT_TRUE(IsSame(function(nullptr, -1, count), plain, {}));
    {
      const ServiceWithheld absent(zkt::REALGetArrayUBound);
      EXPECT_TRUE(IsSame(function(array.Get(), 0, -2), plain, std::span(elements).first(1)))
          << "a missing upper bound counts as 0";
      this->ExpectNothingRaised();
      EXPECT_TRUE(IsSame(function(array.Get(), 1, 1), plain, {}));
      this->ExpectRaised("OutOfBoundsException", "sourceIndex > ubound source");
    }
    zkt::gArrayAccess = zkt::ArrayAccess::kFailed;
    EXPECT_TRUE(IsSame(function(none.Get(), -1, -2), plain, {}));
    EXPECT_TRUE(IsSame(function(array.Get(), -1, 0), plain, {}));
    this->ExpectNothingRaised();
    for (const auto* const each : {&none, &array}) {
      EXPECT_TRUE(IsSame(function(each->Get(), -1, 1), plain, {}));
      this->ExpectNoAccess();
    }
    zkt::gArrayAccess = zkt::ArrayAccess::kProven;
  }
};

}  // namespace tests
