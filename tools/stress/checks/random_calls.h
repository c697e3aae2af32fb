// Calls random entries with random arguments.
#pragma once

#include "stress/check.h"
#include "stress/random.h"

namespace stress {

class RandomCalls final : public Check {
  std::int64_t Count(const Session& session) const override {
    if (session.options.calls > 0) return session.options.calls;
    return session.options.level == 1 ? 10'000 : session.options.level == 2 ? 100'000 : 1'000'000;
  }

  void MakeCall(const Plugin& plugin, std::int64_t number) const override {
    const std::uint64_t seed = Mix(plugin.session.options.seed, static_cast<std::uint64_t>(number));
    const Entry* const entry = plugin.Find(static_cast<std::int64_t>(seed >> 1) % std::ssize(plugin.session.labels));
    if (entry == nullptr) return;
    plugin.Describe(*entry);
    plugin.Call(*entry, seed);
  }
};

}  // namespace stress
