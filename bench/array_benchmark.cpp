// The array functions as a host calls them, each beside a plain loop or a standard algorithm on the same memory.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include "arrays/add.h"
#include "arrays/copy.h"
#include "arrays/count_value.h"
#include "arrays/equals.h"
#include "arrays/reverse.h"
#include "arrays/sort.h"
#include "arrays/sort_delegate.h"
#include "arrays/sum.h"
#include "core/arrays.h"
#include "core/objects.h"
#include "frame/host_services.h"
#include "reference_loops.h"

namespace {

using host::ArrayRef;
using host::Basic;
using Run = std::function<void()>;

constexpr std::int64_t kSizes[] = {1000, 100000, 10000000};

// A host array of random elements; Booleans are 0 or 1, real numbers whole, so that values repeat.
template <class Element>
ArrayRef MakeRandom(Basic basic, std::int64_t count) {
  ArrayRef array(host::MakeArray({basic, false, {}}, count - 1));
  std::mt19937_64 random(static_cast<std::uint64_t>(count));
  for (std::int64_t i = 0; i < count; ++i) {
    const std::uint64_t number = random();
    host::ElementAt<Element>(array.Get(), i) = static_cast<Element>(
        basic == Basic::kBoolean ? number & 1 : static_cast<std::uint64_t>(static_cast<Element>(number >> 34)));
  }
  return array;
}

template <class PluginArray>
PluginArray* AsPlugin(const ArrayRef& array) {
  return reinterpret_cast<PluginArray*>(array.Get());
}

template <class Element>
Element* DataOf(const ArrayRef& array) {
  return &host::ElementAt<Element>(array.Get(), 0);
}

void Register(const std::string& subject, std::int64_t count, std::size_t bytes, const char* variant, Run run) {
  benchmark::RegisterBenchmark((subject + " " + std::to_string(count) + variant).c_str(), [=](benchmark::State& state) {
    for (auto _ : state) run();
    state.SetItemsProcessed(count * static_cast<std::int64_t>(state.iterations()));
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
  })->Unit(benchmark::kMillisecond);
}

void RegisterPair(const std::string& subject, std::int64_t count, std::size_t bytes, Run ours, Run theirs) {
  Register("array " + subject, count, bytes, "/ours", std::move(ours));
  Register("array " + subject, count, bytes, "/reference", std::move(theirs));
}

// Sum, with `Addend` as the signed or unsigned form of the element.
#define REGISTER_SUM(T, Addend, Result, ...)                                                       \
  for (const std::int64_t n : kSizes) {                                                            \
    const ArrayRef a = MakeRandom<Addend>(Basic::k##T, n);                                         \
    RegisterPair(                                                                                  \
        "sum " #T, n, static_cast<std::size_t>(n) * sizeof(Addend),                                \
        [=] {                                                                                      \
          benchmark::DoNotOptimize(                                                                \
              zkt::SumArrayZKT_##T(AsPlugin<_REALarray##T>(a), 0, -2 __VA_OPT__(, ) __VA_ARGS__)); \
        },                                                                                         \
        [=] { benchmark::DoNotOptimize(reference::Sum<Result>(DataOf<Addend>(a), n)); });          \
  }

#define REGISTER_COUNT(T, Element)                                                                                \
  for (const std::int64_t n : kSizes) {                                                                           \
    const ArrayRef a = MakeRandom<Element>(Basic::k##T, n);                                                       \
    RegisterPair(                                                                                                 \
        "count " #T, n, static_cast<std::size_t>(n) * sizeof(Element),                                            \
        [=] { benchmark::DoNotOptimize(zkt::CountValueZKT_##T(AsPlugin<_REALarray##T>(a), Element{1}, 0, -2)); }, \
        [=] { benchmark::DoNotOptimize(reference::Count(DataOf<Element>(a), Element{1}, n)); });                  \
  }

#define REGISTER_EQUALS(T, Element)                                                                       \
  for (const std::int64_t n : kSizes) {                                                                   \
    const ArrayRef a = MakeRandom<Element>(Basic::k##T, n);                                               \
    const ArrayRef b = MakeRandom<Element>(Basic::k##T, n);                                               \
    RegisterPair(                                                                                         \
        "equals " #T, n, 2 * static_cast<std::size_t>(n) * sizeof(Element),                               \
        [=] {                                                                                             \
          benchmark::DoNotOptimize(                                                                       \
              zkt::EqualsArrayZKT_##T(AsPlugin<_REALarray##T>(a), AsPlugin<_REALarray##T>(b), 0, -2, 0)); \
        },                                                                                                \
        [=] { benchmark::DoNotOptimize(reference::Equals(DataOf<Element>(a), DataOf<Element>(b), n)); }); \
  }

#define REGISTER_REVERSE(T, Element)                                                                                   \
  for (const std::int64_t n : kSizes) {                                                                                \
    const ArrayRef a = MakeRandom<Element>(Basic::k##T, n);                                                            \
    RegisterPair(                                                                                                      \
        "reverse " #T, n, 2 * static_cast<std::size_t>(n) * sizeof(Element),                                           \
        [=] { zkt::ReverseZKT_##T(AsPlugin<_REALarray##T>(a)); }, [=] { reference::Reverse(DataOf<Element>(a), n); }); \
  }

// Hands out ever other random elements: a processor learns what a short array that is sorted again and again asks of
// its branches, which no real array lets it do.
template <class Element>
class FreshElements {
 public:
  using Arrange = void (*)(Element* begin, Element* end);

  // Random, or as they are then arranged.
  FreshElements(Basic basic, std::int64_t count, Arrange arrange = nullptr)
      : count_(count), array_(MakeRandom<Element>(basic, count)), pool_(MakeRandom<Element>(basic, PoolSize(count))) {
    Element* const begin = DataOf<Element>(pool_);
    for (std::int64_t i = 0; arrange != nullptr && i + count <= PoolSize(count); i += count)
      arrange(begin + i, begin + i + count);
  }

  // The array with the next elements.
  const ArrayRef& Next() {
    if (next_ + count_ > PoolSize(count_)) next_ = 0;
    std::memcpy(DataOf<Element>(array_), DataOf<Element>(pool_) + next_,
                static_cast<std::size_t>(count_) * sizeof(Element));
    next_ += count_;
    return array_;
  }

 private:
  static std::int64_t PoolSize(std::int64_t count) { return std::max(count, std::int64_t{1'000'000}); }

  std::int64_t count_;
  ArrayRef array_;
  ArrayRef pool_;
  std::int64_t next_ = 0;
};

// Beside std::sort, and beside the quickest sort of Boost for elements that are compared.
#define REGISTER_SORT(T, Element, Compared)                                                                   \
  for (const std::int64_t n : kSizes) {                                                                       \
    const auto elements = std::make_shared<FreshElements<Element>>(Basic::k##T, n);                           \
    const std::size_t size = static_cast<std::size_t>(n) * sizeof(Element);                                   \
    const auto ours = [=] { zkt::SortArrayZKT_##T(AsPlugin<_REALarray##T>(elements->Next()), 0); };           \
    RegisterPair("sort " #T, n, size, ours, [=] { reference::Sort(DataOf<Compared>(elements->Next()), n); }); \
    RegisterPair("sort beside pdqsort " #T, n, size, ours,                                                    \
                 [=] { reference::PatternDefeatingSort(DataOf<Compared>(elements->Next()), n); });            \
  }

// What is easy for some sorts is hard for others.
void RegisterSortOfArranged() {
  using Elements = FreshElements<std::int64_t>;
  constexpr std::pair<const char*, Elements::Arrange> kArranged[] = {
      {"sorted", [](std::int64_t* begin, std::int64_t* end) { std::sort(begin, end); }},
      {"reversed", [](std::int64_t* begin, std::int64_t* end) { std::sort(begin, end, std::greater<>()); }},
      {"of 100 values",
       [](std::int64_t* begin, std::int64_t* end) { std::for_each(begin, end, [](std::int64_t& i) { i %= 100; }); }},
  };
  for (const auto& [name, arrange] : kArranged) {
    for (const std::int64_t n : kSizes) {
      const auto elements = std::make_shared<Elements>(Basic::kInt64, n, arrange);
      RegisterPair(
          std::string("sort Int64 ") + name, n, static_cast<std::size_t>(n) * sizeof(std::int64_t),
          [=] { zkt::SortArrayZKT_Int64(AsPlugin<_REALarrayInt64>(elements->Next()), 0); },
          [=] { reference::Sort(DataOf<std::int64_t>(elements->Next()), n); });
    }
  }
}

std::int64_t CompareInt64(REALobject, std::int64_t a, std::int64_t b) { return a < b ? -1 : a > b ? 1 : 0; }

void RegisterDelegateSort() {
  const host::ObjectRef theDelegate(host::MakeObject(host::FindClass("Delegate")));
  theDelegate->invoker = reinterpret_cast<void*>(&CompareInt64);
  for (const std::int64_t n : {std::int64_t{1000}, std::int64_t{100000}, std::int64_t{1000000}}) {
    const auto elements = std::make_shared<FreshElements<std::int64_t>>(Basic::kInt64, n);
    RegisterPair(
        "delegate sort Int64", n, static_cast<std::size_t>(n) * sizeof(std::int64_t),
        [=] { zkt::SortArrayZKT_Int64Del(AsPlugin<_REALarrayInt64>(elements->Next()), theDelegate.Get(), 0); },
        [=] { reference::SortByInvoker(DataOf<std::int64_t>(elements->Next()), n, theDelegate.Get(), CompareInt64); });
  }
}

void RegisterCopyAndAdd() {
  for (const std::int64_t n : kSizes) {
    const std::size_t size = static_cast<std::size_t>(n) * sizeof(std::int64_t);
    const ArrayRef a = MakeRandom<std::int64_t>(Basic::kInt64, n);
    const ArrayRef b = MakeRandom<std::int64_t>(Basic::kInt64, n);
    RegisterPair(
        "copy Int64", n, size,
        [=] { zkt::CopyArrayZKT_Int64(AsPlugin<_REALarrayInt64>(a), AsPlugin<_REALarrayInt64>(b), 0, -2, 0); },
        [=] { std::memcpy(DataOf<std::int64_t>(b), DataOf<std::int64_t>(a), size); });
    RegisterPair(
        "add Int64", n, size,
        [=] {
          const ArrayRef grown(host::MakeArray({Basic::kInt64, false, {}}, -1));
          zkt::AddArrayZKT_Int64(AsPlugin<_REALarrayInt64>(grown), AsPlugin<_REALarrayInt64>(a));
        },
        [=] {
          const ArrayRef grown(host::MakeArray({Basic::kInt64, false, {}}, -1));
          auto* const array = AsPlugin<_REALarrayInt64>(grown);
          for (std::int64_t i = 0; i < n; ++i)
            zkt::REALInsertArrayValueInt64(array, zkt::REALGetArrayUBound(array) + 1, DataOf<std::int64_t>(a)[i]);
        });
  }
}

// What a loop in Xojo code costs at the least: a host call for each element.
void RegisterHostCalls() {
  for (const std::int64_t n : kSizes) {
    const ArrayRef a = MakeRandom<std::int64_t>(Basic::kInt64, n);
    RegisterPair(
        "sum against host calls", n, static_cast<std::size_t>(n) * sizeof(std::int64_t),
        [=] { benchmark::DoNotOptimize(zkt::SumArrayZKT_Int64(AsPlugin<_REALarrayInt64>(a), 0, -2, 0)); },
        [=] {
          std::int64_t sum = 0;
          for (std::int64_t i = 0; i < n; ++i) sum += zkt::REALGetArrayValueInteger(AsPlugin<_REALarrayInteger>(a), i);
          benchmark::DoNotOptimize(sum);
        });
  }
}

[[maybe_unused]] const bool gRegistered = [] {
  REGISTER_SUM(Boolean, std::int8_t, std::int64_t)
  REGISTER_SUM(Int32, std::int32_t, std::int64_t)
  REGISTER_SUM(UInt32, std::uint32_t, std::uint64_t, 0)
  REGISTER_SUM(Int64, std::int64_t, std::int64_t, 0)
  REGISTER_SUM(Double, double, double)
  REGISTER_SUM(Single, float, double)
  REGISTER_COUNT(Boolean, std::uint8_t)
  REGISTER_COUNT(Int32, std::int32_t)
  REGISTER_COUNT(Int64, std::int64_t)
  REGISTER_COUNT(Double, double)
  REGISTER_COUNT(Single, float)
  REGISTER_EQUALS(Boolean, std::uint8_t)
  REGISTER_EQUALS(Int32, std::int32_t)
  REGISTER_EQUALS(Int64, std::int64_t)
  REGISTER_EQUALS(Double, double)
  REGISTER_EQUALS(Single, float)
  REGISTER_REVERSE(Boolean, std::uint8_t)
  REGISTER_REVERSE(Int32, std::int32_t)
  REGISTER_REVERSE(Int64, std::int64_t)
  REGISTER_SORT(Boolean, std::uint8_t, std::int8_t)
  REGISTER_SORT(Int32, std::int32_t, std::int32_t)
  REGISTER_SORT(Int64, std::int64_t, std::int64_t)
  REGISTER_SORT(Double, double, double)
  REGISTER_SORT(Single, float, float)
  RegisterSortOfArranged();
  RegisterDelegateSort();
  RegisterCopyAndAdd();
  RegisterHostCalls();
  return true;
}();

}  // namespace
