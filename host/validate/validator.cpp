#include "validate/validator.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ostream>
#include <sstream>

#include "declarations/errors.h"
#include "services/plugin_library.h"
#include "validate/memory_asker.h"
#include "validate/plugin_memory.h"

namespace host::validate {

namespace {

constexpr std::int64_t kCallsOfChild = 1000;
constexpr int kMostFailures = 20;

// Services without which no references can be kept right.
constexpr std::string_view kReferenceServices[] = {"REALLockObject", "REALUnlockObject", "REALLockString",
                                                   "REALUnlockString", "PluginDisposeStringData"};

std::string Indented(const std::string& text) {
  std::string result;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) result += "    " + line + "\n";
  return result;
}

}  // namespace

namespace {

// A host that takes no classes or modules cannot compile what names them: then nothing can be called.
Catalogue ReadCatalogue() {
  const Host& host = Host::Current();
  try {
    return Catalogue(host);
  } catch (const ScriptError&) {
    if (!host.withheld.contains("PluginRegisterClass") && !host.withheld.contains("PluginRegisterModule")) throw;
    return Catalogue(Host());
  }
}

}  // namespace

LoadedPlugin Load(const std::string& library, Report& report, bool describes) {
  LoadPlugin(library);
  WatchMemoryOf(library);
  Catalogue catalogue = ReadCatalogue();
  // The entries point into the catalogue's memory, which moves along.
  std::vector<Entry> entries = EntriesOf(catalogue);
  std::erase_if(entries, [](const Entry& entry) { return entry.driving == Driving::kEndsProcess; });
  report.entries = static_cast<std::int64_t>(entries.size());
  return {std::move(catalogue), std::move(entries), report, describes};
}

Validator::Ran Validator::RunChild(const Sweep& sweep, Chunk chunk, bool describes) {
  Report& report = *report_;
  report.call = -1;
  report.calls = report.raised = 0;
  report.resultCount = 0;
  report.isFinished = report.hasStruck = false;
  for (char* const text : {report.finding, report.entry, report.arguments}) *text = '\0';
  const Ending ending = RunApart(report, options_.secondsLimit, describes, [&] {
    Host& host = Host::Current();
    host.withheld.insert(sweep.withheld.begin(), sweep.withheld.end());
    host.supervisesServices = sweep.supervisesServices;
    for (const std::string_view service : kReferenceServices)
      gJudgesLedger = gJudgesLedger && !host.withheld.contains(service);
    if (!gJudgesLedger) StopCountingReferences();
    const LoadedPlugin plugin = Load(options_.library, report, describes);
    const auto all = static_cast<std::int64_t>(plugin.entries.size()) * sweep.variants;
    const std::int64_t last = std::min(chunk.last, sweep.calls > 0 ? sweep.calls : all);
    for (std::int64_t call = chunk.first; call < last; ++call) {
      report.call = call;
      sweep.make(plugin, call);
      ++report.calls;
    }
  });
  callsMade_ += report.calls;
  raised_ += report.raised;
  for (std::size_t i = 0; i < report.resultCount; ++i) baseline_[report.results[i].key] = report.results[i].digest;
  if (!report.isFinished) return {false, ending.Describe(), ending.log};
  return {*report.finding == '\0', report.finding, ending.log};
}

// The first call that fails by itself, or else the one that was in progress, which fails after others only. Leaves in
// the report what is told of it.
Validator::Failure Validator::Replay(const Sweep& sweep, Chunk chunk, Ran ran) {
  const std::int64_t inProgress = report_->call;
  const std::string what = ran.what;
  const auto fails = [&](std::int64_t call) { return !(ran = RunChild(sweep, {call, call + 1}, true)).isGood; };
  if (inProgress < 0 || fails(inProgress)) return {inProgress, std::move(ran)};
  for (std::int64_t call = chunk.first; call < inProgress; ++call)
    if (fails(call)) return {call, std::move(ran)};
  ran = RunChild(sweep, {chunk.first, inProgress + 1}, true);
  const std::string after = "only after the calls from " + std::to_string(chunk.first) + " on)";
  ran.what = ran.isGood ? what + "\n(once, not when it was tried again: " + after : ran.what + "\n(not alone: " + after;
  return {inProgress, std::move(ran)};
}

void Validator::RunCalls(const Sweep& sweep) {
  for (std::int64_t first = 0; !HasEnough();) {
    const Chunk chunk{first, first + kCallsOfChild};
    Ran ran = RunChild(sweep, chunk, false);
    const std::int64_t all = sweep.calls > 0 ? sweep.calls : report_->entries * sweep.variants;
    first = chunk.last;
    if (!ran.isGood) {
      const Failure failure = Replay(sweep, chunk, std::move(ran));
      Convict(sweep, failure);
      if (failure.call < 0) return;
      first = failure.call + 1;
    }
    if (first >= all) return;
  }
}

void Validator::Convict(const Sweep& sweep, const Failure& failure) {
  std::ostringstream again;
  again << "xojo-host --host-version " << Host::Current().version;
  for (const std::string& name : sweep.withheld) again << " --withhold '" << name << "'";
  again << " validate " << options_.library << " --seed " << options_.seed;
  if (failure.call >= 0) again << " --only " << sweep.name << ":" << failure.call;
  const std::string title = sweep.name + (failure.call < 0 ? ", loading" : " call " + std::to_string(failure.call));
  AddFailure(title, failure.ran.what, again.str(), failure.ran.log);
  // Each entry is told of once. In a shortage the report says what was lacking, too.
  const std::string entry = report_->entry;
  if (!entry.empty()) convicted_.insert(entry.substr(0, entry.find(kWithout)));
}

void Validator::RunTimed(const std::string& name, const std::function<void()>& run) {
  const auto start = std::chrono::steady_clock::now();
  const std::int64_t before = callsMade_;
  run();
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  out_ << name << ": " << callsMade_ - before << " calls, " << seconds.count() << " s" << std::endl;
}

void Validator::RunSweep(const Sweep& sweep) {
  RunTimed(sweep.name, [&] { RunCalls(sweep); });
}

void Validator::AddFailure(const std::string& title, const std::string& what, const std::string& again,
                           const std::string& log) {
  ++failures_;
  out_ << "FAILED " << title << ": " << report_->entry << '\n' << Indented(what);
  if (*report_->arguments != '\0') out_ << "  arguments:\n" << Indented(report_->arguments);
  if (!log.empty()) out_ << "  log:\n" << Indented(log);
  if (!again.empty()) out_ << "  again: " << again << '\n';
  out_.flush();
}

bool Validator::HasEnough() const { return failures_ >= kMostFailures; }

// One call once more, with what it does.
bool Validator::RunOnly(const Sweep& sweep) {
  const std::int64_t call = std::stoll(options_.only.substr(options_.only.find(':') + 1));
  const Ran ran = RunChild(sweep, {call, call + 1}, true);
  if (!ran.isGood)
    AddFailure(options_.only, ran.what, "", ran.log);
  else
    out_ << options_.only << ": " << report_->entry << "\n  arguments:\n"
         << Indented(report_->arguments) << "  nothing found\n";
  return ran.isGood;
}

bool Validator::Run() {
  const std::string name = options_.only.substr(0, options_.only.find(':'));
  if (name == "storm") return RunOnly(Storm());
  if (name == "growth") return RunOnly(Growth());
  if (name == "shortages") return RunOnly(Shortages());
  if (name == "exceptions") return RunOnly(ServiceFailures());
  if (name == "threads") return RunOnly(Threads());
  if (name == "first") return RunOnly(FirstCalls());
  if (name == "ablation") {
    // What is withheld in this run was not when the results were taken to compare with.
    const auto withheld = std::exchange(Host::Current().withheld, {});
    RunCalls(Baseline());
    Host::Current().withheld = withheld;
    return RunOnly(Ablation({}));
  }
  CheckExports();
  CheckLoading();
  CheckEndings();
  RunSweep(Storm());
  out_ << "  of them raised an exception: " << raised_ << '\n';
  RunSweep(Growth());
  out_ << "  at most to the power of " << report_->steepest << ": " << report_->steepestEntry << '\n';
  RunSweep(Shortages());
  RunSweep(ServiceFailures());
  RunSweep(Threads());
  RunFirstCalls();
  RunAblation();
  out_ << callsMade_ << " calls, " << failures_ << " failures, seed " << options_.seed << std::endl;
  return failures_ == 0;
}

}  // namespace host::validate
