// Compares the plug-in's sort functions, called as a host calls them, with other sorts. Each run sorts different
// elements: if a short array were sorted repeatedly, the processor would learn to predict the branches, and the
// measured time would be too short.
#include <algorithm>
#include <cstring>
#include <memory>

#include "array_pairs.h"
#include "arrays/sort.h"
#include "arrays/sort_delegate.h"
#include "core/classes.h"
#include "reference_loops.h"

namespace {

using bench::ArrayRef;
using bench::AsPlugin;
using bench::DataOf;
using bench::MakeRandom;
using bench::RegisterPair;
using bench::TypeKind;

constexpr std::int64_t kSortSizes[] = {2, 10, 24, 100, 1000, 100000, 10000000};

// Provides different elements for each run.
template <class Element>
class FreshElements {
 public:
  using Arrange = void (*)(Element* begin, Element* end);

  // Makes random elements. If `arrange` is not null, it is called for each set of `count` elements.
  FreshElements(TypeKind kind, std::int64_t count, Arrange arrange = nullptr)
      : count_(count), array_(MakeRandom<Element>(kind, count)), pool_(MakeRandom<Element>(kind, PoolSize(count))) {
    Element* const begin = DataOf<Element>(pool_);
    for (std::int64_t i = 0; arrange != nullptr && i + count <= PoolSize(count); i += count)
      arrange(begin + i, begin + i + count);
  }

  // Copies the next elements into the array and returns it.
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

// Compares the plug-in's sort with std::sort, with Boost's fastest comparison sort, and with the vector sort alone,
// which sorts keys of the same width.
#define REGISTER_SORT(T, Element, Compared)                                                                   \
  for (const std::int64_t n : kSortSizes) {                                                                   \
    const auto elements = std::make_shared<FreshElements<Element>>(TypeKind::k##T, n);                        \
    const std::size_t size = static_cast<std::size_t>(n) * sizeof(Element);                                   \
    const auto ours = [=] { zkt::SortArrayZKT_##T(AsPlugin<_REALarray##T>(elements->Next()), 0); };           \
    RegisterPair("sort " #T, n, size, ours, [=] { reference::Sort(DataOf<Compared>(elements->Next()), n); }); \
    RegisterPair("sort beside pdqsort " #T, n, size, ours,                                                    \
                 [=] { reference::PatternDefeatingSort(DataOf<Compared>(elements->Next()), n); });            \
    if (sizeof(Element) > 1)                                                                                  \
      RegisterPair("sort beside vqsort " #T, n, size, ours,                                                   \
                   [=] { reference::VectorSort(elements->Next()->data, n, sizeof(Element)); });               \
  }

// Compares the plug-in's sort with std::sort on inputs that are easy for some sorts and hard for others.
#define REGISTER_ARRANGED(T, Element)                                                             \
  for (const auto& [name, arrange] : Arrangements<Element>()) {                                   \
    for (const std::int64_t n : {100, 1000, 100000, 10000000}) {                                  \
      const auto elements = std::make_shared<FreshElements<Element>>(TypeKind::k##T, n, arrange); \
      RegisterPair(                                                                               \
          std::string("sort " #T " ") + name, n, static_cast<std::size_t>(n) * sizeof(Element),   \
          [=] { zkt::SortArrayZKT_##T(AsPlugin<_REALarray##T>(elements->Next()), 0); },           \
          [=] { reference::Sort(DataOf<Element>(elements->Next()), n); });                        \
    }                                                                                             \
  }

template <class Element>
struct Arrangement {
  const char* name;
  typename FreshElements<Element>::Arrange arrange;
};

template <class Element>
std::vector<Arrangement<Element>> Arrangements() {
  return {
      {"sorted", [](Element* begin, Element* end) { std::sort(begin, end); }},
      {"reversed", [](Element* begin, Element* end) { std::sort(begin, end, std::greater<>()); }},
      {"equal", [](Element* begin, Element* end) { std::fill(begin, end, *begin); }},
      {"of 100 values",
       [](Element* begin, Element* end) {
         for (Element* i = begin; i != end; ++i) *i = static_cast<Element>(static_cast<std::int64_t>(*i) % 100);
       }},
      {"1% swapped",
       [](Element* begin, Element* end) {
         std::mt19937_64 random(static_cast<std::uint64_t>(*begin));
         const auto any = [&] { return begin + random() % static_cast<std::uint64_t>(end - begin); };
         std::sort(begin, end);
         for (std::ptrdiff_t i = 0; i < (end - begin) / 100; ++i) std::swap(*any(), *any());
       }},
      {"organ pipe",
       [](Element* begin, Element* end) {
         std::sort(begin, end);
         std::reverse(begin + (end - begin) / 2, end);
       }},
  };
}

std::int64_t gCalls = 0;

std::int64_t CompareInt64(REALobject, std::int64_t a, std::int64_t b) {
  ++gCalls;
  return a < b ? -1 : a > b ? 1 : 0;
}

// Does about as much work as a call to a compiled Xojo method.
std::int64_t CompareExpensively(REALobject theDelegate, std::int64_t a, std::int64_t b) {
  static volatile std::uint32_t gMemory[40];
  for (volatile std::uint32_t& word : gMemory) word = word + 1;
  return CompareInt64(theDelegate, a, b);
}

// Registers a benchmark that also reports the average number of delegate calls per element.
void RegisterCounted(const std::string& subject, std::int64_t count, const char* variant, const bench::Run& run) {
  benchmark::RegisterBenchmark((subject + " " + std::to_string(count) + variant).c_str(), [=](benchmark::State& state) {
    gCalls = 0;
    for (auto _ : state) run();
    const auto items = count * static_cast<std::int64_t>(state.iterations());
    state.SetItemsProcessed(items);
    state.counters["calls"] = static_cast<double>(gCalls) / static_cast<double>(items);
  })->Unit(benchmark::kMillisecond);
}

void RegisterDelegateSort() {
  using Invoker = std::int64_t (*)(REALobject, std::int64_t, std::int64_t);
  constexpr std::pair<const char*, Invoker> kInvokers[] = {{"free", CompareInt64}, {"40 updates", CompareExpensively}};
  auto arrangements = Arrangements<std::int64_t>();
  arrangements.push_back({"random", nullptr});
  for (const auto& [cost, invoker] : kInvokers) {
    const host::ObjectRef theDelegate(host::MakeObject(host::FindClass("Delegate")));
    theDelegate->invoker = reinterpret_cast<void*>(invoker);
    for (const auto& [name, arrange] : arrangements) {
      for (const std::int64_t n : {1000, 100000, 1000000}) {
        const auto elements = std::make_shared<FreshElements<std::int64_t>>(TypeKind::kInt64, n, arrange);
        const std::string subject = std::string("delegate sort ") + cost + ", " + name;
        RegisterCounted(subject, n, "/ours", [=] {
          zkt::SortArrayZKT_Int64Del(AsPlugin<_REALarrayInt64>(elements->Next()), theDelegate.Get(), 0);
        });
        RegisterCounted(subject, n, "/reference", [=, invoker = invoker] {
          reference::SortByInvoker(DataOf<std::int64_t>(elements->Next()), n, theDelegate.Get(), invoker);
        });
      }
    }
  }
}

[[maybe_unused]] const bool gRegistered = [] {
  REGISTER_SORT(Boolean, std::uint8_t, std::int8_t)
  REGISTER_SORT(Int32, std::int32_t, std::int32_t)
  REGISTER_SORT(Int64, std::int64_t, std::int64_t)
  REGISTER_SORT(Double, double, double)
  REGISTER_SORT(Single, float, float)
  REGISTER_ARRANGED(Int32, std::int32_t)
  REGISTER_ARRANGED(Int64, std::int64_t)
  REGISTER_ARRANGED(Double, double)
  RegisterDelegateSort();
  return true;
}();

}  // namespace
