// Makes the plug-in's allocations fail, and makes the host fail to create strings, objects and arrays.
#pragma once

#include "stress/check.h"
#include "stress/memory.h"

namespace stress {

class FailingAllocations final : public Sweep {
  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, std::int64_t) const override {
    FailEachRequest(plugin, entry, seed, gPluginMemory.requests, "allocation");
    FailEachRequest(plugin, entry, seed, host::Host::Current().creationFailures, "host value");
  }
};

}  // namespace stress
