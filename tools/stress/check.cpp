#include "stress/check.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "services/missing.h"
#include "services/services.h"
#include "stress/random.h"

namespace stress {

namespace {

constexpr std::string_view kIndentation = "    ";

std::string Indented(const std::string& text) {
  std::string result;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) result.append(kIndentation).append(line) += '\n';
  return result;
}

// Adds to `missing` the names that the plug-in has requested in this process and that the host never offers, one per
// line.
void AddMissing(SharedText& missing) {
  std::string text = missing.Get();
  const std::vector<std::string> offered = host::WithholdableNames();
  for (const std::string& name : host::gMissing.names)
    if (const std::string line = "  " + name + '\n';
        std::ranges::count(offered, name) == 0 && text.find(line) == std::string::npos)
      text += line;
  missing.Set(text);
}

}  // namespace

Session::Session(const Options& theOptions)
    : options(theOptions), expectations(options.expectations), report(MakeSharedReport()) {}

bool Session::ReadLabels() {
  const std::string problem = RunChild([&] {
    const Plugin plugin(*this);
    std::string all;
    for (const Entry& entry : plugin.entries) all += entry.label + '\n';
    report.labels.Set(all);
    if (all.empty()) throw Finding("the library declares nothing");
    plugin.CheckReferences();
  });
  std::istringstream lines(report.labels.Get());
  for (std::string line; std::getline(lines, line);) labels.push_back(line);
  if (!problem.empty()) ReportCall("loading:0", problem);
  return problem.empty();
}

std::string Session::RunChild(const std::function<void()>& work) {
  report.position = -1;
  report.isFinished = report.hasFailed = false;
  for (auto* const text : {&report.finding, &report.injected, &report.arguments}) text->Set("");
  report.entry.Set("the library");
  return RunInChild(report, options.secondsLimit, [&] {
    // Set TZ, because without it the C library checks in every date function whether the system time zone has changed.
    ::setenv("TZ", ":/etc/localtime", 0);
    work();
    AddMissing(report.missing);
  });
}

void Session::ReportCall(const std::string& only, const std::string& problem) {
  const bool hasFailed = !problem.empty();
  const std::string entry = report.entry.Get(), injected = report.injected.Get(), arguments = report.arguments.Get();
  std::cout << (hasFailed ? "FAILED " : "") << only << ' ' << entry << (injected.empty() ? "" : ", ") << injected
            << ": " << Indented(hasFailed ? problem : "no problem found").substr(kIndentation.size())
            << (arguments.empty() ? "" : "  arguments: " + arguments + '\n')
            << (hasFailed ? "  replay: " + options.command + " --only " + only + '\n' : "")
            << Indented(report.log.Get()) << std::flush;
  if (!hasFailed) return;
  ++failures;
  cannotLoad = report.position < 0;
  failed.insert(entry);
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
