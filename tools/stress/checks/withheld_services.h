// Withholds host services, each alone and in random selections. Every call must return the same result as on the
// complete host, return a neutral result, or raise an exception.
#pragma once

#include <map>

#include "services/services.h"
#include "stress/checks/baseline.h"

namespace stress {

class WithheldServices final : public Sweep {
  using Services = std::set<std::string>;

  void Run(Session& session) override {
    for (std::int64_t i = 0; i < std::ssize(Selections(session, 10 * session.options.level)); ++i) {
      const std::int64_t first = session.Pack({0, 0, i});
      RunCalls(session, first, first + Count(session));
    }
  }

  ChildResult MakeCalls(Session& session, std::int64_t first, std::int64_t end, bool isVerbose) override {
    constexpr int kMaxRandom = 30;
    const std::vector<Services> selections = Selections(session, kMaxRandom);
    selection_ = selections[static_cast<std::size_t>(session.Unpack(first).extra) % selections.size()];
    // Compare with the same calls in the same order on the complete host, because a result may depend on earlier calls.
    const std::int64_t complete = first % session.Pack({0, 0, 1});
    usual_ = &results_[{complete, end - first}];
    if (usual_->empty()) {
      ChildResult result = Baseline().MakeCalls(session, complete, complete + end - first, isVerbose);
      if (!result.problem.empty()) return result;
      usual_->assign(session.report.results, session.report.results + end - first);
    }
    return Check::MakeCalls(session, first, end, isVerbose);
  }

  void Prepare(const Session& session, host::Host& host, std::int64_t) const override {
    host.withheld.insert(selection_.begin(), selection_.end());
    session.report.injected.Set(MissingText());
  }

  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, std::int64_t) const override {
    plugin.Describe(entry, MissingText());
    const Outcome outcome = plugin.Call(entry, seed);
    const std::uint64_t usual = usual_->at(static_cast<std::size_t>(plugin.report.position));
    // A host that does not report its version counts as another host version, on which results may differ.
    if (outcome.isNeutral || selection_.contains("REALGetRBVersion")) return;
    if (entry.expectations.contains(kMayDifferWithoutServices)) return;
    if (std::hash<std::string>()(outcome.text) != usual)
      throw Finding("returned " + outcome.text + "; expected a neutral result or the same result as with all services");
  }

  std::string MissingText() const {
    std::string missing = "without";
    for (const std::string& service : selection_) missing += " " + service;
    return missing;
  }

  // Returns each service alone, then random selections. A larger `randomCount` only appends selections.
  static std::vector<Services> Selections(const Session& session, int randomCount) {
    std::vector<std::string> names = host::WithholdableNames();
    std::erase(names, "RegisterPluginVersion");  // no plug-in can be loaded without it
    std::vector<Services> selections;
    selections.reserve(names.size() + static_cast<std::size_t>(randomCount));
    for (const std::string& name : names) selections.push_back({name});
    Random random(session.options.seed);
    for (int i = 0; i < randomCount; ++i) {
      const auto percent = static_cast<unsigned>(random.Between(5, 95));
      Services& selection = selections.emplace_back();
      for (const std::string& name : names)
        if (random.Percent(percent)) selection.insert(name);
    }
    return selections;
  }

  Services selection_;
  std::map<std::pair<std::int64_t, std::int64_t>, std::vector<std::uint64_t>> results_;
  std::vector<std::uint64_t>* usual_ = nullptr;
};

}  // namespace stress
