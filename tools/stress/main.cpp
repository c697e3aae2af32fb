// The program behind `xojo-host stress`. It is one of its own because it replaces malloc and operator new.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <memory>
#include <regex>

#include "core/host.h"
#include "stress/checks/baseline.h"
#include "stress/checks/endings.h"
#include "stress/checks/exceptions.h"
#include "stress/checks/exports.h"
#include "stress/checks/failing_allocations.h"
#include "stress/checks/first_calls.h"
#include "stress/checks/growth.h"
#include "stress/checks/loading.h"
#include "stress/checks/random_calls.h"
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
  Add<Endings>(checks, "endings");
  Add<RandomCalls>(checks, "random");
  Add<Growth>(checks, "growth");
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
    if (session.HasEnough()) break;
    const std::int64_t before = session.report.calls;
    check->Run(session);
    std::cout << check->name << ": " << session.report.calls - before << " calls" << std::endl;
  }
  std::cout << session.report.calls << " calls, " << session.failures << " failures, seed " << session.options.seed
            << '\n';
}

// Makes the calls again that --only names.
void Replay(Session& session, const Checks& checks) {
  const std::string& only = session.options.only;
  std::string names;
  for (const auto& check : checks) names += (names.empty() ? "" : ", ") + check->name;
  std::smatch match;
  const bool isFormed = std::regex_match(only, match, std::regex("([a-z]+):([0-9]{1,18})(-([0-9]{1,18}))?"));
  const auto check = std::ranges::find(checks, isFormed ? match[1].str() : "", &Check::name);
  if (check == checks.end())
    throw std::runtime_error("--only takes CHECK:NUMBER, not '" + only + "'. The checks are " + names);
  const std::int64_t first = std::stoll(match[2]);
  const std::int64_t last = match[4].matched ? std::stoll(match[4]) : first;
  const Ran ran = (*check)->MakeCalls(session, first, std::min(last, first + Report::kMostCalls - 1) + 1, true);
  if (!ran.what.empty()) return session.AddFailure(only, ran);
  if (session.report.entry.Get().empty())
    throw std::runtime_error("--only " + only + ": there is no such call on this host");
  session.PrintCall(only, ran);
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
  app.add_option("library", options.library, "The library, instead of the one beside xojo-host")
      ->check(CLI::ExistingFile);
  app.add_option("--plugin", plugin, "The library, if none is named");
  app.add_option("--host-version", host.version, "The Xojo version to be: 2019.02 is 2019 release 2")->take_last();
  app.add_option("--withhold", withheld, "Services that the host never offers, by name");
  app.add_option("--expect", options.expectations, "A file of expectations about particular entries")
      ->check(CLI::ExistingFile);
  app.add_option("--level", options.level, "How thoroughly")->check(CLI::Range(1, 3));
  app.add_option("--seed", options.seed, "What the arguments follow from");
  app.add_option("--timeout", options.secondsLimit, "Seconds without progress that are a hang")
      ->check(CLI::PositiveNumber);
  app.add_option("--calls", options.calls, "Random calls, instead of the level's")->check(CLI::PositiveNumber);
  app.add_option("--only", options.only, "Replay what a failure names: CHECK:NUMBER");
  CLI11_PARSE(app, argumentCount, arguments);
  host.withheld.insert(withheld.begin(), withheld.end());
  options.library = std::filesystem::canonical(options.library.empty() ? plugin : options.library);
  if (!options.expectations.empty()) options.expectations = std::filesystem::canonical(options.expectations);
  // Programs that are started are waited for, also where whoever starts this one waits for none.
  std::signal(SIGCHLD, SIG_DFL);
  stress::Session session(options);
  if (session.ReadLabels()) (options.only.empty() ? stress::RunAll : stress::Replay)(session, stress::MakeChecks());
  return session.failures == 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << "xojo-host stress: " << error.what() << '\n';
  return 1;
}
