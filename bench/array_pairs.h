// Pairs of benchmarks on host arrays: a plug-in function, called as a host calls it, and a reference on the same
// memory.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <utility>

#include "core/arrays.h"

namespace bench {

using host::ArrayRef;
using host::TypeKind;
using Run = std::function<void()>;

inline constexpr std::int64_t kSizes[] = {1000, 100000, 10000000};

// Makes a host array of random elements. Booleans are 0 or 1. Other elements are whole numbers below 2^30, so values
// repeat in large arrays.
template <class Element>
ArrayRef MakeRandom(TypeKind kind, std::int64_t count) {
  ArrayRef array(host::MakeArray({kind, false, {}}, count - 1));
  std::mt19937_64 random(static_cast<std::uint64_t>(count));
  for (std::int64_t i = 0; i < count; ++i) {
    const std::uint64_t number = random();
    host::ElementAt<Element>(array.Get(), i) = static_cast<Element>(
        kind == TypeKind::kBoolean ? number & 1 : static_cast<std::uint64_t>(static_cast<Element>(number >> 34)));
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

inline void Register(const std::string& subject, std::int64_t count, std::size_t bytes, const char* variant, Run run) {
  benchmark::RegisterBenchmark((subject + " " + std::to_string(count) + variant).c_str(), [=](benchmark::State& state) {
    for (auto _ : state) run();
    state.SetItemsProcessed(count * static_cast<std::int64_t>(state.iterations()));
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
  })->Unit(benchmark::kMillisecond);
}

inline void RegisterPair(const std::string& subject, std::int64_t count, std::size_t bytes, Run ours, Run theirs) {
  Register("array " + subject, count, bytes, "/ours", std::move(ours));
  Register("array " + subject, count, bytes, "/reference", std::move(theirs));
}

}  // namespace bench
