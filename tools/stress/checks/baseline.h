// Calls every entry in turn on the complete host, which withholds nothing.
#pragma once

#include "stress/check.h"

namespace stress {

class Baseline final : public Sweep {
  // Stores a digest of the result in the report.
  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, std::int64_t) const override {
    plugin.Describe(entry);
    plugin.report.results[plugin.report.position] = std::hash<std::string>()(plugin.Call(entry, seed).text);
  }
};

}  // namespace stress
