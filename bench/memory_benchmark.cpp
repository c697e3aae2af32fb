// Measures the machine's peak memory bandwidth for reading and copying, for comparison with the other benchmarks.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "reference_loops.h"

namespace {

// 8 KB fits in the first-level cache, and 800 KB fits in the second- or third-level cache. 80 MB does not fit in any
// cache.
constexpr std::int64_t kCounts[] = {1000, 100'000, 10'000'000};

[[maybe_unused]] const bool gRegistered = [] {
  for (const std::int64_t count : kCounts) {
    const auto size = static_cast<std::size_t>(count) * sizeof(std::int64_t);
    const std::string suffix = " " + std::to_string(size / 1000) + " KB";
    benchmark::RegisterBenchmark(("memory read" + suffix).c_str(), [=](benchmark::State& state) {
      const std::vector<std::int64_t> values(static_cast<std::size_t>(count), 1);
      for (auto _ : state) benchmark::DoNotOptimize(reference::Sum<std::int64_t>(values.data(), count));
      state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("memory copy" + suffix).c_str(), [=](benchmark::State& state) {
      const std::vector<char> from(size, 1);
      std::vector<char> to(size);
      for (auto _ : state) {
        std::memcpy(to.data(), from.data(), size);
        benchmark::ClobberMemory();
      }
      state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
    })->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
