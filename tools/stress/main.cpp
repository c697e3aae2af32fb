// The program behind `xojo-host stress`. It is separate because it replaces malloc and operator new.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <memory>
#include <regex>

#include "core/host.h"
#include "stress/checks/baseline.h"
#include "stress/checks/complexity.h"
#include "stress/checks/exceptions.h"
#include "stress/checks/exports.h"
#include "stress/checks/failing_allocations.h"
#include "stress/checks/first_calls.h"
#include "stress/checks/loading.h"
#include "stress/checks/random_calls.h"
#include "stress/checks/termination.h"
#include "stress/checks/threads.h"
#include "stress/checks/withheld_services.h"

namespace stress {

namespace {

using Checks = std::vector<std::unique_ptr<Check>>;

template <class Kind>
void Add(Checks& checks, const char* name) {
  checks.push_back(std::make_unique<Kind>());
  checks.back()->name = name;
}

// In the order in which they run.
Checks MakeChecks() {
  Checks checks;
  Add<Exports>(checks, "exports");
  Add<Loading>(checks, "loading");
  Add<Termination>(checks, "termination");
  Add<RandomCalls>(checks, "random");
  Add<Complexity>(checks, "complexity");
  Add<FailingAllocations>(checks, "allocations");
  Add<Exceptions>(checks, "exceptions");
  Add<Threads>(checks, "threads");
  Add<FirstCalls>(checks, "first");
  Add<Baseline>(checks, "baseline");
  Add<WithheldServices>(checks, "withheld");
  return checks;
}

void RunAll(Session& session, const Checks& checks) {
  for (const auto& check : checks) {
    if (session.HasTooManyFailures()) break;
    const std::int64_t before = session.report.calls;
    check->Run(session);
    std::cout << check->name << ": " << session.report.calls - before << " calls" << std::endl;
  }
  std::cout << session.report.calls << " calls, " << session.failures << " failures, seed " << session.options.seed
            << '\n';
}

// Repeats the calls that --only names.
void Replay(Session& session, const Checks& checks) {
  const std::string& only = session.options.only;
  std::string names;
  for (const auto& check : checks) names += (names.empty() ? "" : ", ") + check->name;
  std::smatch match;
  const bool isValid = std::regex_match(only, match, std::regex("([a-z]+):([0-9]{1,18})(-([0-9]{1,18}))?"));
  const auto check = std::ranges::find(checks, isValid ? match[1].str() : "", &Check::name);
  if (check == checks.end())
    throw std::runtime_error("--only: expected CHECK:NUMBER or CHECK:FIRST-LAST, but got '" + only +
                             "'. The checks are " + names);
  const std::int64_t first = std::stoll(match[2]);
  const std::int64_t last = match[4].matched ? std::stoll(match[4]) : first;
  const ChildResult result =
      (*check)->MakeCalls(session, first, std::min(last, first + Report::kMaxCalls - 1) + 1, true);
  if (!result.problem.empty()) return session.AddFailure(only, result);
  if (session.report.entry.Get().empty())
    throw std::runtime_error("--only " + only + ": this plug-in has no such call on this host");
  session.PrintCall(only, result);
}

}  // namespace

}  // namespace stress

int main(int argumentCount, char** arguments) try {
  CLI::App app("Calls everything that a plug-in library declares, to find crashes, leaks and hangs.",
               "xojo-host stress");
  app.option_defaults()->always_capture_default();
  host::Host& host = host::Host::Current();
  stress::Options options;
  std::string plugin;
  std::vector<std::string> withheld;
  app.add_option("library", options.library, "Plug-in library to check (default: the one next to xojo-host)")
      ->check(CLI::ExistingFile);
  app.add_option("--plugin", plugin, "Plug-in library to check if no argument names one");
  app.add_option("--host-version", host.version, "Xojo version to emulate; 2019.02 is 2019 release 2")->take_last();
  app.add_option("--withhold", withheld, "Host services to withhold, by name");
  app.add_option("--expect", options.expectations, "File with expectations about particular entries")
      ->check(CLI::ExistingFile);
  app.add_option("--level", options.level, "Thoroughness, 1 (quick) to 3")->check(CLI::Range(1, 3));
  app.add_option("--seed", options.seed, "Seed for the random arguments");
  app.add_option("--timeout", options.secondsLimit, "Seconds without progress before a call counts as hung")
      ->check(CLI::PositiveNumber);
  app.add_option("--calls", options.calls, "Number of random calls (default: depends on the level)")
      ->check(CLI::PositiveNumber);
  app.add_option("--only", options.only, "Replay the calls that a failure names: CHECK:NUMBER or CHECK:FIRST-LAST");
  CLI11_PARSE(app, argumentCount, arguments);
  host.withheld.insert(withheld.begin(), withheld.end());
  options.library = std::filesystem::canonical(options.library.empty() ? plugin : options.library);
  if (!options.expectations.empty()) options.expectations = std::filesystem::canonical(options.expectations);
  // Restore SIGCHLD in case the parent ignores it: the checks wait for the programs that they start.
  std::signal(SIGCHLD, SIG_DFL);
  stress::Session session(options);
  if (session.ReadLabels()) (options.only.empty() ? stress::RunAll : stress::Replay)(session, stress::MakeChecks());
  return session.failures == 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << "xojo-host stress: " << error.what() << '\n';
  return 1;
}
