// Makes host services throw C++ exceptions. Services that retain or release references never throw, because otherwise
// no plug-in could keep its references balanced.
#pragma once

#include "stress/check.h"

namespace stress {

class Exceptions final : public Sweep {
  void Prepare(const Session&, host::Host& host, std::int64_t) const override { host.instrumentsServices = true; }

  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, std::int64_t) const override {
    FailEachRequest(plugin, entry, seed, host::Host::Current().serviceFailures, "service call");
  }
};

}  // namespace stress
