// Makes allocations fail in the first call of a process, when services are bound, libraries are loaded and the layout
// of arrays is verified.
#pragma once

#include <array>

#include "stress/check.h"
#include "stress/memory.h"

namespace stress {

class FirstCalls final : public Check {
  void Run(Session& session) override {
    // A separate process for each call is slow, so lower levels skip entries. The seed determines which entries.
    const std::int64_t step = std::array{0, 8, 2, 1}.at(static_cast<std::size_t>(session.options.level));
    const auto begin = static_cast<std::int64_t>(session.options.seed) % step;
    for (std::int64_t entry = begin; entry < std::ssize(session.labels); entry += step)
      ForEachRequest([&](std::int64_t nth, bool andLater) {
        return !session.HasTooManyFailures() && TryCall(session, session.Pack({entry, andLater, nth})) &&
               session.report.hasFailed;
      });
  }

  void MakeCall(const Plugin& plugin, std::int64_t number) const override {
    const CallParts parts = plugin.session.Unpack(number);
    const Entry* const entry = plugin.Find(parts.entry);
    if (entry == nullptr) return;
    const bool andLater = parts.variant != 0;
    const std::uint64_t seed = plugin.SeedOf(*entry, 0);
    plugin.Describe(*entry, RequestText("allocation", parts.extra, andLater));
    plugin.CallOnce(*entry, seed, {&gPluginMemory.requests, parts.extra, andLater});
    plugin.report.hasFailed = gPluginMemory.requests.HasTriggered();
    if (plugin.Call(*entry, seed).text != plugin.Call(*entry, seed).text)
      throw Finding("afterwards returns a different result each time");
  }
};

}  // namespace stress
