// Runs the benchmarks, then prints a table that compares each benchmark "…/ours" with its "…/reference".
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frame/contract/host_services.h"
#include "frame/contract/plugin_state.h"
#include "plot.h"
#include "services/services.h"

namespace {

// Prints a row for each median: the time per element, the bytes per second, and the speedup over the reference, if
// there is one.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  // Finalize also writes a chart of the ratios to `plotFile`, unless that name is empty.
  explicit RatioReporter(std::string plotFile) : plotFile_(std::move(plotFile)) {}

  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs)
      if (run.aggregate_name == "median") medians_[run.run_name.function_name] = ResultOf(run);
    std::fprintf(stderr, ".");
  }

  void Finalize() override {
    std::printf("\n%-48s %12s %9s %9s %9s %8s\n", "medians of CPU time", "ms", "ns/elem.", "GB/s", "calls/el.",
                "ratio");
    for (const auto& [name, result] : medians_) {
      std::printf("%-48s %12.3f %9s %9s %9s", name.c_str(), result.milliseconds,
                  Figure(result.nanosecondsPerItem).c_str(), Figure(result.gigabytesPerSecond).c_str(),
                  Figure(result.callsPerItem).c_str());
      if (const auto ratio = RatioOf(name)) std::printf(" %8.2f", *ratio);
      std::printf("\n");
    }
    std::printf("ratio: how many times as fast as the reference\n");
    if (!plotFile_.empty()) WritePlot(plotFile_, Ratios());
  }

 private:
  struct Result {
    double milliseconds;
    double nanosecondsPerItem;
    double gigabytesPerSecond;
    double callsPerItem;  // delegate calls
  };

  // Returns the speed of a plug-in benchmark relative to its reference (2 means twice as fast), or nullopt if its
  // reference was not measured.
  std::optional<double> RatioOf(const std::string& name) const {
    const auto reference = medians_.find(name.substr(0, name.rfind('/')) + "/reference");
    if (!name.ends_with("/ours") || reference == medians_.end()) return std::nullopt;
    return reference->second.milliseconds / medians_.at(name).milliseconds;
  }

  std::vector<std::pair<std::string, double>> Ratios() const {
    std::vector<std::pair<std::string, double>> ratios;
    for (const auto& median : medians_)
      if (const auto ratio = RatioOf(median.first))
        ratios.emplace_back(median.first.substr(0, median.first.rfind('/')), *ratio);
    return ratios;
  }

  static Result ResultOf(const Run& run) {
    const auto rate = [&](const char* name) {
      const auto found = run.counters.find(name);
      return found != run.counters.end() ? static_cast<double>(found->second) : 0.0;
    };
    const double items = rate("items_per_second");
    return {run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e3,
            items > 0 ? 1e9 / items : 0, rate("bytes_per_second") / 1e9, rate("calls")};
  }

  static std::string Figure(double value) {
    char text[32] = "";
    if (value > 0) std::snprintf(text, sizeof text, "%.2f", value);
    return text;
  }

  std::string plotFile_;
  std::map<std::string, Result> medians_;
};

}  // namespace

int main(int argumentCount, char** arguments) {
  zkt::gResolver = &host::Resolve;
  zkt::rbversion = host::Host::Current().version;
  // Keep freed memory in the process: otherwise, page faults would dominate the measurements.
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  std::vector<char*> all = {arguments[0]};
  std::string defaults[] = {"--benchmark_repetitions=7", "--benchmark_enable_random_interleaving=true",
                            "--benchmark_report_aggregates_only=true", "--benchmark_min_time=0.05",
                            "--benchmark_min_warmup_time=0.05"};
  for (std::string& option : defaults) all.push_back(option.data());
  all.insert(all.end(), arguments + 1, arguments + argumentCount);
  int count = static_cast<int>(all.size());
  benchmark::Initialize(&count, all.data());
  if (benchmark::ReportUnrecognizedArguments(count, all.data())) return 1;
  const char* const plotFile = std::getenv("ZKT_PLOT");
  RatioReporter reporter(plotFile != nullptr ? plotFile : "");
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}
