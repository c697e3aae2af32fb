// Runs the benchmarks and closes with a table of ratios: a benchmark "…/ours" beside its "…/reference".
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "core/host.h"
#include "frame/host_services.h"

namespace {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.aggregate_name != "median") continue;
      ConsoleReporter::ReportRuns({run});
      medians_[run.run_name.function_name] = run.GetAdjustedCPUTime();
    }
  }

  void Finalize() override {
    std::printf("\nHow many times faster than the reference (medians of CPU time):\n");
    const std::string ours = "/ours";
    for (const auto& [name, time] : medians_) {
      if (!name.ends_with(ours)) continue;
      const std::string subject = name.substr(0, name.size() - ours.size());
      const auto reference = medians_.find(subject + "/reference");
      if (reference != medians_.end()) std::printf("  %-40s %6.2f\n", subject.c_str(), reference->second / time);
    }
  }

 private:
  std::map<std::string, double> medians_;
};

}  // namespace

int main(int argumentCount, char** arguments) {
  zkt::gResolver = &host::Resolve;
  zkt::rbversion = host::Host::Current().version;
  // Memory that was used once stays with the process: page faults would drown what is measured.
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
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}
