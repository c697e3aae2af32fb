#include "stress/check.h"

#include <algorithm>
#include <sstream>

#include "stress/random.h"

namespace stress {

bool ReadLabels(Session& session) {
  const std::string problem = session.RunChild([&] {
    const Plugin plugin(session);
    std::string all;
    for (const Entry& entry : plugin.entries) all += entry.label + '\n';
    session.report.labels.Set(all);
    if (all.empty()) throw Finding("the library declares nothing");
    plugin.CheckReferences();
  });
  std::istringstream lines(session.report.labels.Get());
  for (std::string line; std::getline(lines, line);) session.labels.push_back(line);
  if (!problem.empty()) session.ReportCall("loading:0", problem);
  return problem.empty();
}

std::string Check::MakeCalls(Session& session, std::int64_t first, std::int64_t end) {
  return session.RunChild([&] {
    Prepare(session, first);
    const Plugin plugin(session);
    for (std::int64_t number = first; number < end; ++number) {
      ++session.report.position;
      MakeCall(plugin, number);
      ++session.report.calls;
    }
  });
}

void Check::RunCalls(Session& session, std::int64_t first, std::int64_t end) {
  while (first < end && !session.HasTooManyFailures()) {
    const std::int64_t groupEnd = std::min(end, first + Report::kMaxCalls);
    const std::string problem = MakeCalls(session, first, groupEnd);
    // The call that was in progress fails either alone or only after the preceding calls.
    const std::int64_t last =
        problem.empty() ? groupEnd - 1 : first + std::max<std::int64_t>(session.report.position, 0);
    if (!problem.empty() && TryCall(session, last)) {
      std::string again = MakeCalls(session, first, last + 1);
      if (again.empty()) again = problem + "\n(not reproduced when the calls were repeated)";
      session.ReportCall(name + ":" + std::to_string(first) + "-" + std::to_string(last), again);
    }
    first = last + 1;
  }
}

bool Check::TryCall(Session& session, std::int64_t number) {
  const std::string problem = MakeCalls(session, number, number + 1);
  if (!problem.empty()) session.ReportCall(name + ":" + std::to_string(number), problem);
  return problem.empty();
}

void Sweep::MakeCall(const Plugin& plugin, std::int64_t number) const {
  const CallParts parts = plugin.session.Unpack(number);
  const Entry* const entry = plugin.Find(parts.entry);
  if (entry == nullptr) return;
  const std::uint64_t seed = plugin.session.options.seed + std::hash<std::string>()(entry->label);
  CallEntry(plugin, *entry, Mix(seed, static_cast<std::uint64_t>(parts.variant)), parts);
}

}  // namespace stress
