// The program that `xojo-host stress` runs. It is separate because it replaces malloc and operator new.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <regex>

#include "core/host.h"
#include "doctor/library.h"
#include "services/crash_report.h"
#include "services/missing.h"
#include "services/plugin_library.h"
#include "stress/check.h"

namespace stress {

namespace {

// Keeps the checks that --only names, or all checks except those that --skip names.
void Select(const Options& options, Checks& checks) {
  std::vector<std::string> known;
  for (const auto& check : checks) known.push_back(check->name);
  for (const auto* const list : {&options.only, &options.skip})
    for (const std::string& name : *list)
      if (std::ranges::count(known, name) == 0)
        throw std::runtime_error("'" + name +
                                 "' is neither a check nor CHECK:NUMBER nor CHECK:FIRST-LAST. The checks are " +
                                 doctor::Listed(known, known.size()));
  std::erase_if(checks, [&](const auto& check) {
    const auto isIn = [&](const std::vector<std::string>& list) { return std::ranges::count(list, check->name) > 0; };
    return isIn(options.skip) || (!options.only.empty() && !isIn(options.only));
  });
}

void RunChecks(Session& session, const Checks& checks) {
  for (const auto& check : checks) {
    const std::int64_t before = session.report.calls;
    check->Run(session);
    std::cout << check->name << ": " << session.report.calls - before << " calls" << std::endl;
    if (session.cannotLoad)
      std::cout << "stopped: the library cannot be loaded; use --skip " << check->name << " to continue\n";
    if (session.HasTooManyFailures()) break;
  }
  if (const std::string missing = session.report.missing.Get(); !missing.empty())
    std::cout << "The plug-in requested these services, which the host does not offer:\n" << missing;
  std::cout << session.report.calls << " calls, " << session.failures << " failures, seed " << session.options.seed
            << '\n';
}

// Replays the calls that --only names. Returns false if --only names no calls.
bool Replay(Session& session, const Checks& checks) {
  const std::string only = session.options.only.size() == 1 ? session.options.only.front() : "";
  std::smatch match;
  const bool isCall = std::regex_match(only, match, std::regex("([a-z]+):([0-9]{1,18})(-([0-9]{1,18}))?"));
  const auto check = std::ranges::find(checks, isCall ? match[1].str() : "", &Check::name);
  if (check == checks.end()) return false;
  const std::int64_t first = std::stoll(match[2]);
  const std::int64_t last = match[4].matched ? std::stoll(match[4]) : first;
  const std::string problem = (*check)->MakeCalls(session, first, std::min(last, first + Report::kMaxCalls - 1) + 1);
  if (problem.empty() && session.report.entry.Get().empty())
    throw std::runtime_error("--only " + only + ": this plug-in has no such call on this host");
  session.ReportCall(only, problem);
  return true;
}

// Quotes a word for the shell if necessary.
std::string Quoted(const std::string& word) {
  constexpr const char* kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./:=,+-";
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

// Returns the command that replays calls of this run, without --only and without options that have default values.
std::string CommandOf(const char* program, const CLI::App& app) {
  std::string command;
  for (const std::string variable : {"LOCPATH", "TZ"})
    if (const char* const value = std::getenv(variable.c_str())) command += variable + "=" + Quoted(value) + " ";
  command += Quoted(program) + " stress";
  for (const std::string name :
       {"--plugin", "--expect", "--withhold", "--trap-missing", "--host-version", "--seed", "--timeout"}) {
    const CLI::Option& option = *app.get_option(name);
    if (option.empty()) continue;
    for (const std::string& value : option.reduced_results()) {
      if (value == option.get_default_str()) continue;
      if (name != "--plugin") command += " " + name;
      if (name != "--trap-missing") command += " " + Quoted(value);
    }
  }
  return command;
}

}  // namespace

}  // namespace stress

int main(int argumentCount, char** arguments) try {
  CLI::App app("Calls everything that a plug-in library declares, to find crashes, leaks and hangs.",
               "xojo-host stress");
  app.option_defaults()->always_capture_default();
  host::Host& host = host::Host::Current();
  stress::Options options;
  app.add_option("plugin,--plugin", options.library,
                 "Library, package or unpacked package to check (default: the library next to xojo-host)")
      ->check(CLI::ExistingPath)
      ->take_last();
  app.add_option("--host-version", host.version, "Xojo version to emulate; 2019.02 is 2019 release 2")->take_last();
  app.add_option("--withhold", host.withheld, "Host services to withhold, by name");
  app.add_flag("--trap-missing", host::gMissing.areTrapped,
               "Name a missing service when it is called; the plug-in cannot detect that it is missing");
  app.add_option("--expect", options.expectations, "File with expectations about particular entries")
      ->check(CLI::ExistingFile);
  app.add_option("--level", options.level, "Thoroughness, 1 (quick) to 3")->check(CLI::Range(1, 3));
  app.add_option("--seed", options.seed, "Seed for the random arguments");
  app.add_option("--timeout", options.secondsLimit, "Seconds without progress before a call counts as hung")
      ->check(CLI::PositiveNumber);
  app.add_option("--calls", options.calls, "Number of random calls (default: depends on the level)")
      ->check(CLI::PositiveNumber);
  app.add_option("--only", options.only,
                 "Run only these checks, or replay the calls that a failure names: CHECK:NUMBER or CHECK:FIRST-LAST")
      ->delimiter(',');
  app.add_option("--skip", options.skip, "Skip these checks")->delimiter(',');
  CLI11_PARSE(app, argumentCount, arguments);
  options.command = stress::CommandOf(*arguments, app);
  if (options.library.empty()) options.library = host::DefaultPlugin();
  if (!std::filesystem::exists(options.library)) throw std::runtime_error("no plug-in to check; name its file");
  options.library = std::filesystem::canonical(options.library);
  host::ReportCrashes();
  // Restore SIGCHLD in case the parent process ignores it, because the checks wait for the programs that they start.
  std::signal(SIGCHLD, SIG_DFL);
  stress::Session session(options);
  stress::Checks checks = stress::MakeChecks();
  if (stress::ReadLabels(session) && !stress::Replay(session, checks)) {
    stress::Select(options, checks);
    stress::RunChecks(session, checks);
  }
  return session.failures == 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << "xojo-host stress: " << error.what() << '\n';
  return 1;
}
