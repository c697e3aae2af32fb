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

constexpr std::int64_t kMaxExtra = std::int64_t{1} << 40;

std::string Indented(const std::string& text) {
  std::string result;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) result += "    " + line + "\n";
  return result;
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

std::string Quoted(const std::string& word) {
  constexpr const char* kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./:=,+-";
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

Session::Session(const Options& theOptions)
    : options(theOptions), expectations(options.expectations), report(MakeSharedReport()) {}

bool Session::ReadLabels() {
  const ChildResult result = RunChild(true, {}, [](const Plugin& plugin) {
    std::string all;
    for (const Entry& entry : plugin.entries) all += entry.label + '\n';
    plugin.report.labels.Set(all);
    if (all.empty()) throw Finding("the library declares nothing");
    plugin.CheckReferences();
  });
  std::istringstream lines(report.labels.Get());
  for (std::string line; std::getline(lines, line);) labels.push_back(line);
  if (!result.problem.empty()) AddFailure("loading:0", result);
  return result.problem.empty();
}

ChildResult Session::RunChild(bool isVerbose, const std::function<void(host::Host&)>& prepare,
                              const std::function<void(const Plugin&)>& work) {
  report.position = -1;
  report.isFinished = report.hasFailed = false;
  for (auto* const text : {&report.finding, &report.entry, &report.injected, &report.arguments}) text->Set("");
  return RunInChild(report, options.secondsLimit, isVerbose, [&] {
    // Set TZ, because without it the C library checks in every date function whether the system time zone has changed.
    ::setenv("TZ", ":/etc/localtime", 0);
    report.entry.Set("the library");
    const Plugin plugin(*this, isVerbose, prepare);
    report.entry.Set("");
    work(plugin);
    AddMissing(report.missing);
  });
}

std::int64_t Session::Pack(const CallParts& parts) const {
  if (parts.entry >= std::ssize(labels) || parts.variant >= kMaxVariants || parts.extra >= kMaxExtra)
    throw std::out_of_range("too many entries, variants or requests to number the calls");
  return (parts.extra * kMaxVariants + parts.variant) * std::ssize(labels) + parts.entry;
}

CallParts Session::Unpack(std::int64_t number) const {
  const std::int64_t rest = number / std::ssize(labels);
  if (number < 0 || rest / kMaxVariants >= kMaxExtra)
    throw std::out_of_range("no call has the number " + std::to_string(number));
  return {number % std::ssize(labels), rest % kMaxVariants, rest / kMaxVariants};
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

ChildResult Check::MakeCalls(Session& session, std::int64_t first, std::int64_t end, bool isVerbose) {
  const auto prepare = [&](host::Host& host) { Prepare(session, host, first); };
  return session.RunChild(isVerbose, prepare, [&](const Plugin& plugin) {
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
    const ChildResult result = MakeCalls(session, first, groupEnd, false);
    // The call that was in progress fails either alone or only after the preceding calls.
    const std::int64_t last =
        result.problem.empty() ? groupEnd - 1 : first + std::max<std::int64_t>(session.report.position, 0);
    if (!result.problem.empty() && TryCall(session, last)) {
      ChildResult again = MakeCalls(session, first, last + 1, true);
      if (again.problem.empty()) again.problem = result.problem + "\n(not reproduced when the calls were repeated)";
      session.AddFailure(name + ":" + std::to_string(first) + "-" + std::to_string(last), again);
    }
    first = last + 1;
  }
}

bool Check::TryCall(Session& session, std::int64_t number) {
  const ChildResult result = MakeCalls(session, number, number + 1, true);
  if (!result.problem.empty()) session.AddFailure(name + ":" + std::to_string(number), result);
  return result.problem.empty();
}

void Sweep::MakeCall(const Plugin& plugin, std::int64_t number) const {
  const CallParts parts = plugin.session.Unpack(number);
  const Entry* const entry = plugin.Find(parts.entry);
  if (entry == nullptr) return;
  CallEntry(plugin, *entry, plugin.SeedOf(*entry, parts.variant), parts.variant);
}

void ForEachRequest(const std::function<bool(std::int64_t nth, bool andLater)>& attempt) {
  // Beyond this number, only some requests are made to fail.
  constexpr std::int64_t kEachUpTo = 400;
  for (const bool andLater : {false, true})
    for (std::int64_t nth = 1; attempt(nth, andLater); nth += nth < kEachUpTo ? 1 : nth / 4) {
    }
}

std::string RequestText(const std::string& what, std::int64_t nth, bool andLater) {
  return what + " " + std::to_string(nth) + (andLater ? " and all later ones fail" : " fails");
}

void FailEachRequest(const Plugin& plugin, const Entry& entry, std::uint64_t seed, host::FaultInjector& requests,
                     const std::string& what) {
  const std::string usual = plugin.Call(entry, seed).text;
  ForEachRequest([&](std::int64_t nth, bool andLater) {
    plugin.Describe(entry, RequestText(what, nth, andLater));
    plugin.Call(entry, seed, {&requests, nth, andLater});
    ++plugin.report.calls;
    if (!requests.HasTriggered()) return false;
    if (const std::string again = plugin.Call(entry, seed).text; again != usual)
      throw Finding("afterwards returns " + again + " instead of " + usual);
    return true;
  });
}

}  // namespace stress
