// The running time of a call grows at most as fast as sorting takes when its texts and arrays grow.
#pragma once

#include <algorithm>
#include <cmath>
#include <ctime>
#include <iostream>
#include <limits>

#include "declarations/errors.h"
#include "stress/check.h"
#include "stress/values.h"

namespace stress {

class Growth final : public Sweep {
  // Sorting takes a power of 1.2, comparing each with each one of 2.
  static constexpr double kSteep = 1.6;
  static constexpr int kDoublings = 4;

  std::int64_t Variants(const Session&) const override { return Shape::kCount; }

  void Run(Session& session) override {
    Check::Run(session);
    std::cout << "  running times are at most about O(n^" << session.report.steepest << ")\n";
  }

  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t, std::int64_t shape) const override {
    const auto isData = [&](const host::Parameter& parameter) {
      if (parameter.type.isArray) return shape < Shape::kOrders;
      return parameter.type.Is(host::Basic::kString) &&
             !(shape == Shape::kCount - 1 && entry.expectations.contains(kMayBeSlow));
    };
    // A method with two names is measured once.
    const auto first = std::ranges::find(plugin.entries, entry.function, &Entry::function);
    if (std::ranges::none_of(entry.parameters, isData) || (entry.function != nullptr && &*first != &entry)) return;
    plugin.Describe(entry);
    // Twice the data take 2 to this power times the time.
    double power = 2 * kSteep;
    // What seems steep is measured again: the machine may have been busy.
    for (int i = 0; i < 6 && power > kSteep; ++i)
      power = std::log2(TimeOf(plugin, entry, {shape, kDoublings}) / TimeOf(plugin, entry, {shape, 0})) / kDoublings;
    plugin.report.steepest = std::max(plugin.report.steepest, power);
    if (power > kSteep) throw Finding("running time is about O(n^" + std::to_string(power).substr(0, 4) + ")");
  }

  // The least processor time, in seconds: whatever else happens on the machine makes a call slower, never faster.
  static double TimeOf(const Plugin& plugin, const Entry& entry, const Shape& shape) {
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 3; ++i) {
      const Arguments arguments = MakeArguments(plugin, entry, 0, shape);
      const double start = ProcessorTime();
      try {
        entry.call(arguments.list);
      } catch (const host::XojoException&) {
        // Refusing data takes time too.
      }
      least = std::min(least, ProcessorTime() - start);
    }
    return least;
  }

  static double ProcessorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
  }
};

}  // namespace stress
