#include "stress/session.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "services/missing.h"
#include "services/services.h"

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

}  // namespace stress
