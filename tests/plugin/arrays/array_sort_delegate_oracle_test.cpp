// Tests properties that sorting by a delegate must have with any algorithm: the sort is stable, needs few calls, and
// discards its result if the delegate changes the array or throws. The delegate compares elements by their index in a
// palette that is not in natural order.
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <unordered_map>

#include "plugin/arrays/sort_oracle.h"

namespace {

using namespace tests;

// A function that compares two palette indices.
using Order = std::function<std::int64_t(std::int64_t, std::int64_t)>;

std::int64_t Answer(const Order& order, std::size_t a, std::size_t b) {
  return order(static_cast<std::int64_t>(a), static_cast<std::int64_t>(b));
}

// Returns results of different magnitudes, because only the sign may matter.
std::int64_t Compare(std::int64_t a, std::int64_t b) {
  if (a == b) return 0;
  return a < b ? (b % 2 == 0 ? INT64_MIN : -1) : (a % 2 == 0 ? INT64_MAX : 1);
}

Ranks StableSorted(Ranks ranks, bool descending, const Order& order) {
  std::stable_sort(ranks.begin(), ranks.end(), [&](std::size_t a, std::size_t b) {
    return descending ? Answer(order, a, b) > 0 : Answer(order, a, b) < 0;
  });
  return ranks;
}

// Returns the maximum number of calls that a merge sort may need, whatever the delegate returns.
std::int64_t CallLimit(std::size_t size) {
  const auto n = static_cast<double>(size);
  return size < 2 ? 0 : static_cast<std::int64_t>(n * std::log2(n) + 4 * n);
}

// Allows only 64 more calls than there are elements if the elements are already sorted or in strictly reverse order.
std::int64_t CallLimit(const Ranks& ranks, bool descending, const Order& order) {
  bool isSorted = true, isReversed = true;
  for (std::size_t i = 1; i < ranks.size(); ++i) {
    const std::int64_t answer = Answer(order, ranks[i - 1], ranks[i]);
    (descending ? answer < 0 : answer > 0) ? isSorted = false : isReversed = false;
  }
  const std::int64_t limit = CallLimit(ranks.size());
  return isSorted || isReversed ? std::min<std::int64_t>(limit, std::ssize(ranks) + 64) : limit;
}

template <class T>
class DelegateSort : public tests::SortOracleTest<T> {
 protected:
  using typename tests::SortOracleTest<T>::Stored;
  using typename tests::SortOracleTest<T>::Elements;

  DelegateSort() {
    current_ = this;
    const std::size_t size = sizeof(Stored) == 1 ? 200 : T::kIsReference ? this->pool_.size() + 1 : 5000;
    while (palette_.size() < size) {
      const Stored element = this->Pick();
      if (indices_.try_emplace(tests::BitsOf(element), palette_.size()).second) palette_.push_back(element);
    }
  }

  Ranks MakeRanks(const tests::SortShape& shape, std::size_t size) {
    Ranks ranks = size > 0 ? shape.make(size, this->random_) : Ranks();
    if (size > palette_.size())
      for (std::size_t& rank : ranks) rank = rank * palette_.size() / size;
    return ranks;
  }

  // Sorts the array, which must contain the elements with these ranks.
  void Sort(const TestArray<T>& array, const Ranks& ranks, bool descending, const Order& order) {
    order_ = &order;
    calls_ = unexpected_ = 0;
    occurrences_.assign(palette_.size(), 0);
    for (const std::size_t rank : ranks) ++occurrences_[rank];
    T::kSortDelegate(array.Get(), delegate_.Get(), REALboolean{descending});
  }

  static std::int64_t Invoke(REALobject delegate, Stored a, Stored b) {
    ++current_->calls_;
    current_->unexpected_ += delegate != current_->delegate_.Get();
    const std::size_t first = current_->IndexOf(a), second = current_->IndexOf(b);
    return Answer(*current_->order_, first, second);
  }

  // Returns the element's palette index. Counts the element as unexpected if it is not in the array, or if references
  // other than those of the array and the pool exist.
  std::size_t IndexOf(Stored element) {
    const auto found = indices_.find(tests::BitsOf(element));
    const std::size_t index = found != indices_.end() ? found->second : 0;
    unexpected_ += found == indices_.end() || occurrences_[index] == 0;
    if constexpr (T::kIsReference)
      if (element != nullptr) unexpected_ += element->referenceCount != occurrences_[index] + 1;
    return index;
  }

  Elements palette_;
  std::unordered_map<std::uint64_t, std::size_t> indices_;
  std::vector<std::int64_t> occurrences_;
  const Order* order_ = nullptr;
  std::int64_t calls_ = 0;
  std::int64_t unexpected_ = 0;
  const host::ObjectRef delegate_ = host::MakeNativeDelegate(reinterpret_cast<void*>(&Invoke));
  static inline DelegateSort* current_;
};
TYPED_TEST_SUITE(DelegateSort, tests::element::EveryDelegate, tests::element::Name);

const struct {
  const char* note;
  Order order;
} kOrders[] = {
    {"all different", Compare},
    {"groups of eight", [](std::int64_t a, std::int64_t b) { return Compare(a / 8, b / 8); }},
    {"odd and even", [](std::int64_t a, std::int64_t b) { return Compare(a % 2, b % 2); }},
};

// Elements that the delegate considers equal keep their order, even in a descending sort.
TYPED_TEST(DelegateSort, IsStableForEveryShape) {
  for (const std::size_t size : tests::SortSizes(4097))
    for (const tests::SortShape& shape : tests::kSortShapes) {
      const Ranks ranks = this->MakeRanks(shape, size);
      const auto& [what, order] = kOrders[this->random_() % std::size(kOrders)];
      for (const bool descending : {false, true}) {
        const std::string note = this->Note(shape.name, size, descending) + ", " + what;
        const TestArray<TypeParam> array(this->PickBy(ranks, this->palette_), 3);
        const auto want = this->PickBy(StableSorted(ranks, descending, order), this->palette_);
        this->Sort(array, ranks, descending, order);
        ASSERT_TRUE(tests::SameBits(array.Elements(), want)) << note;
        ASSERT_LE(this->calls_, CallLimit(ranks, descending, order)) << note;
        ASSERT_EQ(this->unexpected_, 0) << note;
        if (size < 100) this->ExpectReferencesIn(array);
      }
    }
  this->ExpectNothingRaised();
}

// The initial size of an array that a delegate changes.
constexpr std::size_t kSize = 40;

template <class T>
class DelegateChangingTheArray : public DelegateSort<T> {
 public:
  using typename DelegateSort<T>::Stored;
  using typename DelegateSort<T>::Elements;
  using DelegateSort<T>::palette_;

  static Stored& At(host::Array* array, std::int64_t index) { return host::ElementAt<Stored>(array, index); }
  static void Assign(host::Array* array, std::int64_t index, Stored element) {
    if constexpr (T::kIsReference) {
      host::Retain(element);
      host::Release(At(array, index));
    }
    At(array, index) = element;
  }

  void AssignSame(host::Array* array) { Assign(array, 3, Stored{At(array, 3)}); }
  void AssignOther(host::Array* array) { Assign(array, 3, palette_[kSize + 5]); }
  void AssignFirst(host::Array* array) { Assign(array, 0, palette_[kSize]); }
  void AssignLast(host::Array* array) { Assign(array, kSize - 1, palette_[kSize]); }
  void Swap(host::Array* array) { std::swap(At(array, 2), At(array, 9)); }
  void Reverse(host::Array* array) { std::reverse(&At(array, 0), &At(array, kSize)); }
  void SortOddAndEven(host::Array* array) {
    const Order* const outer = std::exchange(this->order_, &kOrders[2].order);
    T::kSortDelegate(reinterpret_cast<typename T::Array*>(array), this->delegate_.Get(), 0);
    this->order_ = outer;
  }
  // Does not move the elements if the capacity suffices.
  void Grow(host::Array* array) { host::InsertElement(array, array->count); }
  void Truncate(host::Array* array, std::int64_t count) {
    for (; array->count > count; --array->count) Assign(array, array->count - 1, Stored{});
  }
  void Shrink(host::Array* array) { Truncate(array, kSize - 1); }
  void Empty(host::Array* array) { Truncate(array, 0); }
  void Move(host::Array* array) {
    auto* const moved = static_cast<char*>(std::malloc(kSize * sizeof(Stored)));
    std::memcpy(moved, array->elements, kSize * sizeof(Stored));
    formerMemory_.reset(std::exchange(array->elements, moved));
    array->data = moved;
  }

  // Returns the first kSize elements in memory, including elements that were removed.
  static Elements Memory(host::Array* array) { return {&At(array, 0), &At(array, 0) + kSize}; }

  std::unique_ptr<char, decltype(&std::free)> formerMemory_{nullptr, &std::free};
};
TYPED_TEST_SUITE(DelegateChangingTheArray, tests::element::EveryDelegate, tests::element::Name);

TYPED_TEST(DelegateChangingTheArray, OverridesTheSort) {
  using Fixture = DelegateChangingTheArray<TypeParam>;
  const struct {
    const char* note;
    std::int64_t times;  // the number of consecutive calls that make the change
    bool isChange;       // whether the array keeps the change; otherwise, it is sorted
    void (Fixture::*change)(host::Array*);
  } kRows[] = {
      {"assigns the same element", 1, false, &Fixture::AssignSame},
      {"swaps two elements and back", 2, false, &Fixture::Swap},
      {"assigns another element", 1, true, &Fixture::AssignOther},
      {"assigns the first element", 1, true, &Fixture::AssignFirst},
      {"assigns the last element", 1, true, &Fixture::AssignLast},
      {"swaps two elements", 1, true, &Fixture::Swap},
      {"reverses the array", 1, true, &Fixture::Reverse},
      {"sorts the array", 1, true, &Fixture::SortOddAndEven},
      {"grows the array", 1, true, &Fixture::Grow},
      {"shrinks the array", 1, true, &Fixture::Shrink},
      {"empties the array", 1, true, &Fixture::Empty},
      {"moves the elements", 1, true, &Fixture::Move},
  };
  const Ranks ranks = this->MakeRanks(tests::kSortShapes[0], kSize);
  const auto elements = this->PickBy(ranks, this->palette_);
  std::int64_t calls = 0;
  const Order counting = [&calls](std::int64_t a, std::int64_t b) { return ++calls, Compare(a, b); };
  this->Sort(TestArray<TypeParam>(elements), ranks, false, counting);
  ASSERT_GE(calls, std::int64_t{kSize} - 1);
  for (const auto& row : kRows)
    for (const std::int64_t first : {std::int64_t{1}, calls / 2, calls + 1 - row.times}) {
      const TestArray<TypeParam> array(elements);
      auto* const hostArray = reinterpret_cast<host::Array*>(array.Get());
      this->Grow(hostArray);
      this->Truncate(hostArray, kSize);
      auto want = this->PickBy(StableSorted(ranks, false, Compare), this->palette_), wantMemory = want;
      this->Sort(array, ranks, false, [&, call = std::int64_t{0}](std::int64_t a, std::int64_t b) mutable {
        ++call;
        if (call >= first && call < first + row.times) {
          (this->*row.change)(hostArray);
          if (row.isChange) want = array.Elements(), wantMemory = this->Memory(hostArray);
        }
        return Compare(a, b);
      });
      const std::string note = this->Note(row.note, kSize, false) + ", call " + std::to_string(first);
      EXPECT_TRUE(tests::SameBits(array.Elements(), want)) << note;
      EXPECT_TRUE(tests::SameBits(this->Memory(hostArray), wantMemory)) << note;
      if (const auto former = std::move(this->formerMemory_)) {
        EXPECT_EQ(std::memcmp(former.get(), elements.data(), kSize * sizeof elements[0]), 0) << note;
      }
      this->ExpectReferencesIn(array);
    }
  this->ExpectNothingRaised();
}

TYPED_TEST(DelegateSort, LeavesTheArrayUnchangedWhenTheDelegateThrows) {
  struct Thrown {};
  for (const std::size_t size : {2U, 12U, 300U})
    for (const bool descending : {false, true}) {
      const Ranks ranks = this->MakeRanks(tests::kSortShapes[0], size);
      const auto elements = this->PickBy(ranks, this->palette_);
      std::int64_t left = 0;
      const Order order = [&left](std::int64_t a, std::int64_t b) {
        if (--left == 0) throw Thrown();
        return Compare(a, b);
      };
      this->Sort(TestArray<TypeParam>(elements), ranks, descending, order);
      const std::int64_t calls = this->calls_;
      ASSERT_GE(calls, std::int64_t{1});
      const TestArray<TypeParam> array(elements, 3);
      for (std::int64_t last = 1; last <= calls; last += size < 100 ? 1 : 97) {
        const std::string note = this->Note("random", size, descending) + ", call " + std::to_string(last);
        left = last;
        ASSERT_THROW(this->Sort(array, ranks, descending, order), Thrown) << note;
        ASSERT_TRUE(tests::SameBits(array.Elements(), elements)) << note;
        this->ExpectReferencesIn(array);
      }
    }
  this->ExpectNothingRaised();
}

}  // namespace
