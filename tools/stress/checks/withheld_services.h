// Withholds host services, each alone and in random selections. Every call must return the same result as on the
// complete host, return a neutral result, or raise an exception.
#pragma once

#include <map>

#include "services/services.h"
#include "stress/check.h"
#include "stress/random.h"

namespace stress {

// Calls every entry in turn on the complete host, which withholds nothing. Stores digests of the results in the report.
class Baseline final : public Sweep {
  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, const CallParts&) const override {
    plugin.report.results[plugin.report.position] = std::hash<std::string>()(plugin.Call(entry, seed).text);
  }
};

class WithheldServices final : public Sweep {
  using Services = std::set<std::string>;

  void Run(Session& session) override {
    for (std::int64_t i = 0; i < std::ssize(Names()) + std::int64_t{10} * session.options.level; ++i) {
      const std::int64_t first = session.Pack({0, 0, i});
      RunCalls(session, first, first + Count(session));
    }
  }

  std::string MakeCalls(Session& session, std::int64_t first, std::int64_t end) override {
    selection_ = Selection(session, session.Unpack(first).extra);
    // Compare with the same calls in the same order on the complete host, because a result may depend on earlier calls.
    const std::int64_t complete = first % session.Pack({0, 0, 1});
    usual_ = &results_[{complete, end - first}];
    if (usual_->empty()) {
      std::string problem = Baseline().MakeCalls(session, complete, complete + end - first);
      if (!problem.empty()) return problem;
      usual_->assign(session.report.results, session.report.results + end - first);
    }
    return Check::MakeCalls(session, first, end);
  }

  void Prepare(const Session& session, std::int64_t) const override {
    host::Host::Current().withheld.insert(selection_.begin(), selection_.end());
    std::string missing = "without";
    for (const std::string& service : selection_) missing += " " + service;
    session.report.injected.Set(missing);
  }

  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, const CallParts&) const override {
    const Outcome outcome = plugin.Call(entry, seed);
    const std::uint64_t usual = usual_->at(static_cast<std::size_t>(plugin.report.position));
    // A host that does not report its version counts as another host version, on which results may differ.
    if (outcome.isNeutral || selection_.contains("REALGetRBVersion")) return;
    if (entry.expectations.contains(kMayDifferWithoutServices)) return;
    if (std::hash<std::string>()(outcome.text) != usual)
      throw Finding("returned " + outcome.text + "; expected a neutral result or the same result as with all services");
  }

  static std::vector<std::string> Names() {
    std::vector<std::string> names = host::WithholdableNames();
    std::erase(names, "RegisterPluginVersion");  // no plug-in can be loaded without it
    return names;
  }

  // Returns the services to withhold: a single service for low indices, and a random selection for all others.
  static Services Selection(const Session& session, std::int64_t index) {
    std::vector<std::string> names = Names();
    if (index < std::ssize(names)) return {names[static_cast<std::size_t>(index)]};
    Random random(Mix(session.options.seed, static_cast<std::uint64_t>(index)));
    const auto percent = static_cast<unsigned>(random.Between(5, 95));
    std::erase_if(names, [&](const std::string&) { return !random.Percent(percent); });
    return {names.begin(), names.end()};
  }

  Services selection_;
  std::map<std::pair<std::int64_t, std::int64_t>, std::vector<std::uint64_t>> results_;
  std::vector<std::uint64_t>* usual_ = nullptr;
};

}  // namespace stress
