// Checks that the running time of a call grows clearly more slowly than the square of the length of its strings and
// arrays.
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

class Complexity final : public Sweep {
  // The measured time to sort grows roughly as n^1.2, and the time to compare all pairs as n^2.
  static constexpr double kMaxExponent = 1.6;
  static constexpr int kDoublings = 4;

  std::int64_t Variants(const Session&) const override { return Shape::kCount; }

  void Run(Session& session) override {
    Check::Run(session);
    std::cout << "  steepest growth of the running time: about O(n^" << session.report.steepest << ")\n";
  }

  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t, const CallParts& parts) const override {
    const std::int64_t shape = parts.variant;
    const auto isData = [&](const host::Parameter& parameter) {
      if (parameter.type.isArray) return shape < Shape::kOrders;
      return parameter.type.Is(host::TypeKind::kString) &&
             !(shape == Shape::kCount - 1 && entry.expectations.contains(kMayBeSlow));
    };
    // A method with two names is measured only once.
    const auto first = std::ranges::find(plugin.entries, entry.function, &Entry::function);
    if (std::ranges::none_of(entry.parameters, isData) || (entry.function != nullptr && &*first != &entry)) return;
    plugin.report.entry.Set(entry.label);
    // With twice the data, the call takes 2^exponent times as long.
    double exponent = 2 * kMaxExponent;
    // Measure again if the growth seems too steep, because the machine may have been busy.
    for (int i = 0; i < 6 && exponent > kMaxExponent; ++i)
      exponent = std::log2(TimeOf(plugin, entry, {shape, kDoublings}) / TimeOf(plugin, entry, {shape, 0})) / kDoublings;
    plugin.report.steepest = std::max(plugin.report.steepest, exponent);
    if (exponent > kMaxExponent)
      throw Finding("running time is about O(n^" + std::to_string(exponent).substr(0, 4) + ")");
  }

  // Returns the least processor time of several calls, in seconds. Other load on the machine only makes calls slower.
  static double TimeOf(const Plugin& plugin, const Entry& entry, const Shape& shape) {
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 3; ++i) {
      const std::vector<host::Argument> arguments = MakeArguments(plugin.Declarations(), entry, 0, shape);
      const double start = ProcessorTime();
      try {
        entry.call(arguments);
      } catch (const host::XojoException&) {
        // A call that rejects its arguments is also timed.
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
