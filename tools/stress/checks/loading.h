// Checks that the library can be loaded even if allocations fail.
#pragma once

#include "stress/check.h"
#include "stress/memory.h"

namespace stress {

class Loading final : public Check {
  void Run(Session& session) override {
    ForEachRequest([&](std::int64_t nth, bool andLater) {
      return !session.HasTooManyFailures() && TryCall(session, session.Pack({0, andLater, nth})) &&
             session.report.hasFailed;
    });
  }

  void Prepare(const Session& session, host::Host&, std::int64_t number) const override {
    const CallParts parts = session.Unpack(number);
    session.report.injected.Set(RequestText("allocation", parts.extra, parts.variant != 0));
    gPluginMemory.requests.Arm(parts.extra, parts.variant != 0);
  }

  void MakeCall(const Plugin& plugin, std::int64_t) const override {
    gPluginMemory.requests.Disarm();
    plugin.report.entry.Set("the library");
    plugin.report.hasFailed = gPluginMemory.requests.HasTriggered();
    plugin.CheckReferences();
  }
};

}  // namespace stress
