// What a plug-in is held to as a whole: its exports, loading, and the methods that end the process.
#include <sys/wait.h>

#include <algorithm>
#include <csignal>

#include "declarations/native_call.h"
#include "doctor/library.h"
#include "doctor/package.h"
#include "services/plugin_library.h"
#include "validate/memory_asker.h"
#include "validate/plugin_memory.h"
#include "validate/validator.h"

namespace host::validate {

namespace {

// How the entries that end the process do it. A trap is an illegal instruction or a breakpoint, as the processor has
// it.
struct End {
  std::string_view name;
  int signal;
};
#if defined(__x86_64__)
constexpr int kTrapSignal = SIGILL;
#else
constexpr int kTrapSignal = SIGTRAP;
#endif
constexpr End kEnds[] = {{"AbortZKT", SIGABRT}, {"CrashNiceZKT", kTrapSignal}, {"CrashUglyZKT", SIGABRT}};
constexpr std::int64_t kExitCodes[] = {0, 3, 255, 256, -1, 0x1'0000'0005};

}  // namespace

void Validator::CheckExports() {
  const std::string file = doctor::ReadWholeFile(options_.library);
  const std::vector<std::string> exports = doctor::ReadLibraries(file).front().exports;
  std::string others;
  for (const std::string& name : exports)
    if (name != "REALPluginMain") others += " " + name;
  if (!others.empty()) AddFailure("exports", "the library also exports" + others, "", "");
  if (std::ranges::find(exports, "REALPluginMain") == exports.end())
    AddFailure("exports", "the library does not export REALPluginMain", "", "");
}

// Loading, and loading with each allocation of memory failing.
void Validator::CheckLoading() {
  for (const bool fromThereOn : {false, true}) {
    for (std::int64_t nth = 1; !HasEnough(); ++nth) {
      Report& report = *report_;
      report.isFinished = report.hasStruck = false;
      *report.finding = *report.entry = *report.arguments = '\0';
      const Ending ending = RunApart(report, options_.secondsLimit, true, [&] {
        OpenLibrary(options_.library);
        WatchMemoryOf(options_.library);
        gMemoryShortage.Begin(nth, fromThereOn);
        LoadPlugin(options_.library);
        gMemoryShortage.End();
        report.hasStruck = gMemoryShortage.HasStruck();
        const Catalogue catalogue(Host::Current());
        if (nth == 1 && EntriesOf(catalogue).empty()) throw Finding("the library declares nothing");
        const ReferenceReport references = ReportReferences();
        if (!references.IsBalanced())
          throw Finding("references are wrong after loading; " + DescribeReferences(references));
      });
      const std::string what = report.isFinished ? report.finding : ending.Describe();
      if (!what.empty()) {
        AddFailure("loading without memory " + std::to_string(nth), what, "", ending.log);
        break;
      }
      if (!report.hasStruck) break;
    }
  }
}

void Validator::CheckEndings() {
  const auto check = [&](std::string_view name, std::int64_t code, const auto& isRight) {
    Report& report = *report_;
    report.isFinished = report.hasStruck = false;
    *report.finding = *report.entry = *report.arguments = '\0';
    const Ending ending = RunApart(report, options_.secondsLimit, true, [&] {
      for (const int signal : {SIGABRT, SIGILL, SIGTRAP}) std::signal(signal, SIG_DFL);  // a sanitizer may sit there
      LoadPlugin(options_.library);
      const Catalogue catalogue(Host::Current());
      for (const Method& method : catalogue.Methods()) {
        if (!zkt::IsSameName(method.signature.name, name)) continue;
        report.Set(report.entry, std::string(name));
        report.hasStruck = true;
        std::vector<Argument> arguments;
        for (const Parameter& parameter : method.signature.parameters) arguments.push_back({{parameter.type, code}});
        CallNative(method.function, arguments, method.signature.result);
      }
    });
    if (!report.hasStruck && report.isFinished) return;  // not declared
    ++callsMade_;
    if (report.isFinished || !isRight(ending.status))
      AddFailure("endings, code " + std::to_string(code), report.isFinished ? "came back" : ending.Describe(), "",
                 ending.log);
  };
  for (const End& end : kEnds)
    check(end.name, 0, [&](int status) { return WIFSIGNALED(status) && WTERMSIG(status) == end.signal; });
  for (const std::int64_t code : kExitCodes)
    check("ExitZKT", code, [&](int status) { return WIFEXITED(status) && WEXITSTATUS(status) == (code & 0xFF); });
}

}  // namespace host::validate
