// Calls every entry on two threads at once, except entries that are marked one-thread-only.
#pragma once

#include "stress/check.h"

namespace stress {

class Threads final : public Sweep {
  void Prepare(const Session&, host::Host& host, std::int64_t) const override { host.instrumentsServices = true; }

  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, std::int64_t) const override {
    if (entry.expectations.contains(kOneThreadOnly)) return;
    plugin.Describe(entry);
    plugin.CallOnTwoThreads(entry, {seed, seed + 1}, !entry.expectations.contains(kMayDifferOnThreads));
  }
};

}  // namespace stress
