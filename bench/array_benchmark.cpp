// Compares each array function, called as a host calls it, with a plain loop or a standard algorithm on the same
// memory.
#include <benchmark/benchmark.h>

#include <cstring>

#include "array_pairs.h"
#include "arrays/add.h"
#include "arrays/copy.h"
#include "arrays/count_value.h"
#include "arrays/equals.h"
#include "arrays/reverse.h"
#include "arrays/sum.h"
#include "frame/contract/host_services.h"
#include "reference_loops.h"

namespace {

using bench::ArrayRef;
using bench::AsPlugin;
using bench::DataOf;
using bench::kSizes;
using bench::MakeRandom;
using bench::RegisterPair;
using bench::TypeKind;

// Registers the benchmarks of one sum function. The reference reads the elements as `Addend`.
#define REGISTER_SUM(T, Addend, Result, ...)                                                       \
  for (const std::int64_t n : kSizes) {                                                            \
    const ArrayRef a = MakeRandom<Addend>(TypeKind::k##T, n);                                      \
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
    const ArrayRef a = MakeRandom<Element>(TypeKind::k##T, n);                                                    \
    RegisterPair(                                                                                                 \
        "count " #T, n, static_cast<std::size_t>(n) * sizeof(Element),                                            \
        [=] { benchmark::DoNotOptimize(zkt::CountValueZKT_##T(AsPlugin<_REALarray##T>(a), Element{1}, 0, -2)); }, \
        [=] { benchmark::DoNotOptimize(reference::Count(DataOf<Element>(a), Element{1}, n)); });                  \
  }

#define REGISTER_EQUALS(T, Element)                                                                       \
  for (const std::int64_t n : kSizes) {                                                                   \
    const ArrayRef a = MakeRandom<Element>(TypeKind::k##T, n);                                            \
    const ArrayRef b = MakeRandom<Element>(TypeKind::k##T, n);                                            \
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
    const ArrayRef a = MakeRandom<Element>(TypeKind::k##T, n);                                                         \
    RegisterPair(                                                                                                      \
        "reverse " #T, n, 2 * static_cast<std::size_t>(n) * sizeof(Element),                                           \
        [=] { zkt::ReverseZKT_##T(AsPlugin<_REALarray##T>(a)); }, [=] { reference::Reverse(DataOf<Element>(a), n); }); \
  }

void RegisterCopyAndAdd() {
  for (const std::int64_t n : kSizes) {
    const std::size_t size = static_cast<std::size_t>(n) * sizeof(std::int64_t);
    const ArrayRef a = MakeRandom<std::int64_t>(TypeKind::kInt64, n);
    const ArrayRef b = MakeRandom<std::int64_t>(TypeKind::kInt64, n);
    RegisterPair(
        "copy Int64", n, size,
        [=] { zkt::CopyArrayZKT_Int64(AsPlugin<_REALarrayInt64>(a), AsPlugin<_REALarrayInt64>(b), 0, -2, 0); },
        [=] { std::memcpy(DataOf<std::int64_t>(b), DataOf<std::int64_t>(a), size); });
    RegisterPair(
        "add Int64", n, size,
        [=] {
          const ArrayRef grown(host::MakeArray({TypeKind::kInt64, false, {}}, -1));
          zkt::AddArrayZKT_Int64(AsPlugin<_REALarrayInt64>(grown), AsPlugin<_REALarrayInt64>(a));
        },
        [=] {
          const ArrayRef grown(host::MakeArray({TypeKind::kInt64, false, {}}, -1));
          auto* const array = AsPlugin<_REALarrayInt64>(grown);
          for (std::int64_t i = 0; i < n; ++i)
            zkt::REALInsertArrayValueInt64(array, zkt::REALGetArrayUBound(array) + 1, DataOf<std::int64_t>(a)[i]);
        });
  }
}

// Compares a sum function with a loop that calls the host for each element. A loop in Xojo code is at least as slow.
void RegisterHostCalls() {
  for (const std::int64_t n : kSizes) {
    const ArrayRef a = MakeRandom<std::int64_t>(TypeKind::kInt64, n);
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

// Measures the fixed cost of a call with one-element arrays. The reference makes an empty call and the host calls that
// return each array's upper bound.
void RegisterFixedCost() {
  const ArrayRef a = MakeRandom<std::int64_t>(TypeKind::kInt64, 1);
  const ArrayRef b = MakeRandom<std::int64_t>(TypeKind::kInt64, 1);
  RegisterPair(
      "fixed cost, one array", 1, sizeof(std::int64_t),
      [=] { benchmark::DoNotOptimize(zkt::SumArrayZKT_Int64(AsPlugin<_REALarrayInt64>(a), 0, -2, 0)); },
      [=] {
        reference::Nothing(a.Get(), nullptr);
        benchmark::DoNotOptimize(zkt::REALGetArrayUBound(a.Get()));
      });
  RegisterPair(
      "fixed cost, two arrays", 1, 2 * sizeof(std::int64_t),
      [=] {
        benchmark::DoNotOptimize(
            zkt::EqualsArrayZKT_Int64(AsPlugin<_REALarrayInt64>(a), AsPlugin<_REALarrayInt64>(b), 0, -2, 0));
      },
      [=] {
        reference::Nothing(a.Get(), b.Get());
        benchmark::DoNotOptimize(zkt::REALGetArrayUBound(a.Get()));
        benchmark::DoNotOptimize(zkt::REALGetArrayUBound(b.Get()));
      });
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
  RegisterCopyAndAdd();
  RegisterHostCalls();
  RegisterFixedCost();
  return true;
}();

}  // namespace
