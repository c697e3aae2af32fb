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

std::string Indented(const std::string& text) {
  std::string result;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) result += "    " + line + "\n";
  return result;
}

// Quotes a word for the shell if necessary.
std::string Quoted(const std::string& word) {
  constexpr const char* kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./:=,+-";
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

std::string ReplayCommand(const Options& options, const std::string& only) {
  std::vector<std::string> words = options.command;
  words.insert(words.end(), {"--only", only});
  std::string command;
  for (const char* const variable : {"LOCPATH", "TZ"})
    if (const char* const value = std::getenv(variable)) command += std::string(" ") + variable + "=" + Quoted(value);
  for (const std::string& word : words) command += " " + Quoted(word);
  return command;
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
  const ChildResult result = RunChild([&] {
    const Plugin plugin(*this);
    std::string all;
    for (const Entry& entry : plugin.entries) all += entry.label + '\n';
    report.labels.Set(all);
    if (all.empty()) throw Finding("the library declares nothing");
    plugin.CheckReferences();
  });
  std::istringstream lines(report.labels.Get());
  for (std::string line; std::getline(lines, line);) labels.push_back(line);
  if (!result.problem.empty()) AddFailure("loading:0", result);
  return result.problem.empty();
}

ChildResult Session::RunChild(const std::function<void()>& work) {
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

void Session::AddFailure(const std::string& only, const ChildResult& result) {
  ++failures;
  cannotLoad = report.position < 0;
  PrintCall("FAILED " + only, result, "  replay:" + ReplayCommand(options, only) + '\n');
  if (const std::string entry = report.entry.Get(); !entry.empty()) failed.insert(entry);
}

void Session::PrintCall(const std::string& title, const ChildResult& result, const std::string& replay) const {
  const std::string injected = report.injected.Get();
  const std::string arguments = report.arguments.Get();
  // All lines of a problem except the first are indented.
  const std::string problem = result.problem.empty() ? "no problem found" : result.problem;
  const std::size_t end = std::min(problem.find('\n'), problem.size());
  std::cout << title << ' ' << report.entry.Get() << (injected.empty() ? "" : ", ") << injected << ": "
            << problem.substr(0, end) << '\n'
            << Indented(problem.substr(std::min(end + 1, problem.size())))
            << (arguments.empty() ? "" : "  arguments: " + arguments + '\n') << replay << Indented(result.log)
            << std::flush;
}

ChildResult Check::MakeCalls(Session& session, std::int64_t first, std::int64_t end) {
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
    const ChildResult result = MakeCalls(session, first, groupEnd);
    // The call that was in progress fails either alone or only after the preceding calls.
    const std::int64_t last =
        result.problem.empty() ? groupEnd - 1 : first + std::max<std::int64_t>(session.report.position, 0);
    if (!result.problem.empty() && TryCall(session, last)) {
      ChildResult again = MakeCalls(session, first, last + 1);
      if (again.problem.empty()) again.problem = result.problem + "\n(not reproduced when the calls were repeated)";
      session.AddFailure(name + ":" + std::to_string(first) + "-" + std::to_string(last), again);
    }
    first = last + 1;
  }
}

bool Check::TryCall(Session& session, std::int64_t number) {
  const ChildResult result = MakeCalls(session, number, number + 1);
  if (!result.problem.empty()) session.AddFailure(name + ":" + std::to_string(number), result);
  return result.problem.empty();
}

void Sweep::MakeCall(const Plugin& plugin, std::int64_t number) const {
  const CallParts parts = plugin.session.Unpack(number);
  const Entry* const entry = plugin.Find(parts.entry);
  if (entry == nullptr) return;
  CallEntry(plugin, *entry, plugin.SeedOf(*entry, parts.variant), parts.variant);
}

}  // namespace stress
