// Tests the merge sort by itself: it is stable, makes few comparisons, and stays inside its two buffers, whatever the
// comparisons return. Each buffer is next to an inaccessible page.
#include "arrays/merge_sort.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <functional>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace {

using Random = std::mt19937_64;

// Memory for elements, with an inaccessible page directly before or after it.
template <class Element>
class GuardedMemory {
 public:
  GuardedMemory(std::size_t count, bool endsAtGuard) {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t inner = (count * sizeof(Element) + page - 1) / page * page;
    size_ = inner + 2 * page;
    mapped_ = static_cast<std::byte*>(::mmap(nullptr, size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    EXPECT_NE(static_cast<void*>(mapped_), MAP_FAILED);
    EXPECT_TRUE(inner == 0 || ::mprotect(mapped_ + page, inner, PROT_READ | PROT_WRITE) == 0);
    first_ = reinterpret_cast<Element*>(mapped_ + page + (endsAtGuard ? inner - count * sizeof(Element) : 0));
  }
  GuardedMemory(const GuardedMemory&) = delete;
  GuardedMemory& operator=(const GuardedMemory&) = delete;
  ~GuardedMemory() { ::munmap(mapped_, size_); }

  Element* First() const { return first_; }

 private:
  std::size_t size_ = 0;
  std::byte* mapped_ = nullptr;
  Element* first_ = nullptr;
};

struct Sorted {
  std::vector<std::int64_t> elements;
  std::int64_t calls = 0;
};

template <class GoesBefore>
Sorted SortBetweenGuards(const std::vector<std::int64_t>& elements, bool endsAtGuard, GoesBefore goesBefore) {
  Sorted sorted;
  const auto counting = [&](std::int64_t a, std::int64_t b) {
    ++sorted.calls;
    return goesBefore(a, b);
  };
  using Sorting = zkt::MergeSort<std::int64_t, decltype(counting)>;
  const GuardedMemory<std::int64_t> room(elements.size(), endsAtGuard);
  const GuardedMemory<std::int64_t> spare(Sorting::SpareFor(elements.size()), endsAtGuard);
  std::copy(elements.begin(), elements.end(), room.First());
  Sorting({room.First(), elements.size()}, spare.First(), counting).Run();
  sorted.elements.assign(room.First(), room.First() + elements.size());
  return sorted;
}

double MostCalls(std::size_t count) {
  return count < 2 ? 0 : static_cast<double>(count) * (std::log2(static_cast<double>(count)) + 1);
}

// Compares only the upper half of each element. The lower half distinguishes equal elements.
bool UpperGoesBefore(std::int64_t a, std::int64_t b) { return a >> 32 < b >> 32; }

std::vector<std::int64_t> Numbered(std::size_t count, const std::function<std::int64_t(std::int64_t)>& upper) {
  std::vector<std::int64_t> elements(count);
  for (std::size_t i = 0; i < count; ++i)
    elements[i] = upper(static_cast<std::int64_t>(i)) * (std::int64_t{1} << 32) + static_cast<std::int64_t>(i);
  return elements;
}

constexpr std::size_t kCounts[] = {0,  1,  2,  3,  4,  5,   7,   15,  16,  17,   31,   32,   33,   34,
                                   47, 63, 64, 65, 66, 127, 128, 129, 500, 1000, 1023, 1025, 4097, 20'000};

TEST(MergeSort, IsStableWithFewComparisons) {
  Random random(7);
  for (const std::size_t count : kCounts) {
    const auto n = static_cast<std::int64_t>(count);
    const auto any = [&](std::int64_t most) {
      return static_cast<std::int64_t>(random() % static_cast<unsigned>(most));
    };
    const struct {
      const char* note;
      std::function<std::int64_t(std::int64_t)> upper;
      double mostCallsEach;  // per element; 0 if the input is not a single run
    } shapes[] = {
        {"random", [&](std::int64_t) { return any(1 << 30); }, 0},
        {"few values", [&](std::int64_t) { return any(3); }, 0},
        {"equal", [](std::int64_t) { return 1; }, 1},
        {"ascending", [](std::int64_t i) { return i; }, 1},
        {"ascending in pairs", [](std::int64_t i) { return i / 2; }, 1},
        {"strictly descending", [](std::int64_t i) { return -i; }, 1},
        {"descending in pairs", [](std::int64_t i) { return -(i / 2); }, 2},
        {"descending in groups of three", [](std::int64_t i) { return -((i + 1) / 3); }, 2},
        {"organ pipe", [=](std::int64_t i) { return std::min(i, n - i); }, 0},
        {"runs of 50", [](std::int64_t i) { return i % 50; }, 0},
        {"growing runs",
         [](std::int64_t i) { return -static_cast<std::int64_t>(std::bit_width(static_cast<std::uint64_t>(i))); }, 0},
        {"descending sawtooth", [](std::int64_t i) { return -(i % 37); }, 0},
        {"one element out of place", [=](std::int64_t i) { return i == n / 3 ? n : i; }, 0},
    };
    for (const auto& [note, upper, mostCallsEach] : shapes) {
      const auto elements = Numbered(count, upper);
      auto wanted = elements;
      std::stable_sort(wanted.begin(), wanted.end(), UpperGoesBefore);
      const Sorted sorted = SortBetweenGuards(elements, count % 2 == 0, UpperGoesBefore);
      EXPECT_EQ(sorted.elements, wanted) << note << ", " << count;
      const double mostCalls =
          mostCallsEach > 0 ? mostCallsEach * std::max(static_cast<double>(count) - 1, 0.0) : MostCalls(count);
      EXPECT_LE(static_cast<double>(sorted.calls), mostCalls) << note << ", " << count;
    }
  }
}

// A comparison sort needs at least log2(n!) calls on average if all elements differ. Detecting runs adds 1 call per 20
// elements. Skipping groups of equal elements saves calls.
TEST(MergeSort, NeedsNearlyTheMinimumOfComparisons) {
  Random random(8);
  constexpr std::size_t kCount = 10'000;
  const double minimum = std::lgamma(kCount + 1.0) / std::log(2.0);
  const struct {
    std::uint64_t differentValues;
    double mostCalls;  // as a multiple of the minimum
  } rows[] = {{1 << 30, 1.025}, {100, 0.96}, {3, 0.51}};
  for (const auto& [differentValues, mostCalls] : rows) {
    const auto elements =
        Numbered(kCount, [&](std::int64_t) { return static_cast<std::int64_t>(random() % differentValues); });
    const Sorted sorted = SortBetweenGuards(elements, true, UpperGoesBefore);
    EXPECT_LE(static_cast<double>(sorted.calls), mostCalls * minimum) << differentValues;
  }
}

// The inconsistent comparisons take two elements and the call number.
TEST(MergeSort, KeepsEveryElementForInconsistentComparisons) {
  Random random(9);
  using Answer = std::function<bool(std::int64_t a, std::int64_t b, std::int64_t call)>;
  const auto chance = [&](unsigned percent) {
    return [&random, percent](std::int64_t, std::int64_t, std::int64_t) { return random() % 100 < percent; };
  };
  const auto after = [](std::int64_t calls, bool then) {
    return [=](std::int64_t a, std::int64_t b, std::int64_t call) { return call > calls ? then : a < b; };
  };
  const Answer answers[] = {
      [](auto, auto, auto) { return true; },
      [](auto, auto, auto) { return false; },
      chance(1),
      chance(10),
      chance(50),
      chance(90),
      chance(99),
      [](auto a, auto b, auto) { return a <= b; },
      [](auto a, auto b, auto) { return a >= b; },
      [](auto a, auto b, auto) { return a != b; },
      [](auto a, auto b, auto) { return (a - b + 3) % 3 == 1; },
      [](auto a, auto b, auto) { return (a ^ b) % 2 == 0; },
      [](auto a, auto b, auto) { return static_cast<std::int8_t>(a - b) < 0; },
      [](auto, auto, auto call) { return call % 2 == 0; },
      [](auto, auto, auto call) { return call % 7 == 0; },
      [](auto a, auto b, auto call) { return call % 20 == 0 ? a > b : a < b; },
      [](auto a, auto b, auto call) { return call / 100 % 2 == 0 ? a < b : a > b; },
      after(30, true),
      after(30, false),
      after(1000, true),
      after(1000, false),
      [&](auto a, auto b, auto) { return random() % 20 == 0 ? random() % 2 == 0 : a < b; },
  };
  for (std::size_t which = 0; which < std::size(answers); ++which) {
    for (const std::size_t count : kCounts) {
      for (const bool endsAtGuard : {false, true}) {
        std::vector<std::int64_t> elements(count);
        for (auto& element : elements) element = static_cast<std::int64_t>(random() % (endsAtGuard ? 5 : 1'000'000));
        std::int64_t call = 0;
        Sorted sorted = SortBetweenGuards(elements, endsAtGuard,
                                          [&](std::int64_t a, std::int64_t b) { return answers[which](a, b, ++call); });
        std::sort(elements.begin(), elements.end());
        std::sort(sorted.elements.begin(), sorted.elements.end());
        ASSERT_EQ(sorted.elements, elements) << "comparison " << which << ", " << count << " elements";
        ASSERT_LE(static_cast<double>(sorted.calls), MostCalls(count)) << "comparison " << which << ", " << count;
      }
    }
  }
}

}  // namespace
