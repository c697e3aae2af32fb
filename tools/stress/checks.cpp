// The checks. Those that need more than a few lines have their own files.
#include <array>
#include <csignal>

#include "doctor/doctor.h"
#include "doctor/package.h"
#include "stress/checks/complexity.h"
#include "stress/checks/withheld_services.h"
#include "stress/memory.h"
#include "stress/random.h"

namespace stress {

namespace {

// Calls `attempt` to make the first request fail, then the second, and so on until no request is left. Does so twice:
// first with each request alone, then with each request and all later ones. `attempt` receives the number of the
// request and whether later requests also fail. It returns whether a request has failed.
void ForEachRequest(const std::function<bool(std::int64_t nth, bool andLater)>& attempt) {
  // Beyond this number, only some requests are made to fail.
  constexpr std::int64_t kEachUpTo = 400;
  for (const bool andLater : {false, true})
    for (std::int64_t nth = 1; attempt(nth, andLater); nth += nth < kEachUpTo ? 1 : nth / 4) {
    }
}

// Makes each request of a call fail in turn. Throws Finding if the next call without an injected failure does not
// return the usual result.
void FailEachRequest(const Plugin& plugin, const Entry& entry, std::uint64_t seed, host::FaultInjector& requests,
                     const std::string& what) {
  plugin.report.injected.Set("");
  const std::string usual = plugin.Call(entry, seed).text;
  ForEachRequest([&](std::int64_t nth, bool andLater) {
    plugin.Call(entry, seed, {&requests, what, nth, andLater});
    ++plugin.report.calls;
    if (!requests.HasTriggered()) return false;
    if (const std::string again = plugin.Call(entry, seed).text; again != usual)
      throw Finding("afterwards returns " + again + " instead of " + usual);
    return true;
  });
}

// Checks that the library exports REALPluginMain and nothing else.
class Exports final : public Check {
  std::int64_t Count(const Session&) const override { return 1; }

  void MakeCall(const Plugin& plugin, std::int64_t) const override {
    plugin.report.entry.Set("the library");
    const std::string file = doctor::LoadablePlugin(plugin.session.options.library);
    std::vector<std::string> others = doctor::ReadLibraries(doctor::ReadWholeFile(file)).front().exports;
    std::erase(others, "REALPluginMain");
    if (!others.empty()) throw Finding("exports more than REALPluginMain: " + doctor::Listed(others));
  }
};

// Makes each allocation fail in turn, each in a new process.
void FailEachAllocation(Check& check, Session& session, std::int64_t entry) {
  ForEachRequest([&](std::int64_t nth, bool andLater) {
    return !session.HasTooManyFailures() && check.TryCall(session, session.Pack({entry, andLater, nth})) &&
           session.report.hasFailed;
  });
}

Injection InjectionOf(const CallParts& parts) {
  return {&gPluginMemory.requests, "allocation", parts.extra, parts.variant != 0};
}

// Checks that the library can be loaded even if allocations fail.
class Loading final : public Check {
  void Run(Session& session) override { FailEachAllocation(*this, session, 0); }

  void Prepare(const Session& session, std::int64_t number) const override {
    const Injection injection = InjectionOf(session.Unpack(number));
    session.report.injected.Set(injection.Text());
    injection.requests->Arm(injection.nth, injection.andLater);
  }

  void MakeCall(const Plugin& plugin, std::int64_t) const override {
    gPluginMemory.requests.Disarm();
    plugin.report.entry.Set("the library");
    plugin.report.hasFailed = gPluginMemory.requests.HasTriggered();
    plugin.CheckReferences();
  }
};

// Makes allocations fail in the first call of a process, when services are bound, libraries are loaded and the layout
// of arrays is verified.
class FirstCalls final : public Sweep {
  void Run(Session& session) override {
    // A separate process for each call is slow, so lower levels skip entries. The seed determines which entries.
    const std::int64_t step = std::array{0, 8, 2, 1}.at(static_cast<std::size_t>(session.options.level));
    const auto begin = static_cast<std::int64_t>(session.options.seed % static_cast<std::uint64_t>(step));
    for (std::int64_t entry = begin; entry < std::ssize(session.labels); entry += step)
      FailEachAllocation(*this, session, entry);
  }

  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, const CallParts& parts) const override {
    plugin.CallOnce(entry, seed, InjectionOf(parts));
    plugin.report.hasFailed = gPluginMemory.requests.HasTriggered();
    if (plugin.Call(entry, seed).text != plugin.Call(entry, seed).text)
      throw Finding("afterwards returns a different result each time");
  }
};

// Checks that methods that end the process do so with the right signal or exit status.
class Termination final : public Check {
  static constexpr std::int64_t kArguments[] = {0, 3, 255, 256, -1, 0x1'0000'0005};

  void Run(Session& session) override {
    for (std::int64_t entry = 0; entry < std::ssize(session.labels); ++entry)
      for (std::int64_t argument = 0; argument < std::ssize(kArguments); ++argument)
        if (session.expectations.About(session.labels[static_cast<std::size_t>(entry)]).contains(kEndsWith))
          TryCall(session, session.Pack({entry, argument}));
  }

  std::string MakeCalls(Session& session, std::int64_t number, std::int64_t end) override {
    const std::string problem = Check::MakeCalls(session, number, end);
    ++session.report.calls;
    const std::string expected = session.report.injected.Get();
    if (problem.empty() && !expected.empty()) return "does not end the process";
    return expected.find(problem + ";") != std::string::npos ? "" : problem;
  }

  void MakeCall(const Plugin& plugin, std::int64_t number) const override {
    const CallParts parts = plugin.session.Unpack(number);
    const std::int64_t argument = kArguments[parts.variant % std::ssize(kArguments)];
    const Entry* const entry = plugin.Find(parts.entry, true);
    if (entry == nullptr) return;
    std::string expected = "expected: ";
    for (const std::string& ending : entry->expectations.at(kEndsWith))
      expected += "ended with " + (ending == "argument" ? "status " + std::to_string(argument & 0xFF) : ending) + ";";
    plugin.report.entry.Set(entry->label);
    plugin.report.injected.Set(expected);
    for (const int signal : {SIGABRT, SIGILL, SIGTRAP})
      std::signal(signal, SIG_DFL);  // a sanitizer may handle these signals
    entry->call(std::vector<host::Argument>(entry->parameters.size(), {host::MakeValue(argument)}));
  }
};

// Calls random entries with random arguments.
class RandomCalls final : public Check {
  std::int64_t Count(const Session& session) const override {
    if (session.options.calls > 0) return session.options.calls;
    return std::array{0, 10'000, 100'000, 1'000'000}.at(static_cast<std::size_t>(session.options.level));
  }

  void MakeCall(const Plugin& plugin, std::int64_t number) const override {
    const std::uint64_t seed = Mix(plugin.session.options.seed, static_cast<std::uint64_t>(number));
    const Entry* const entry = plugin.Find(static_cast<std::int64_t>(seed >> 1) % std::ssize(plugin.session.labels));
    if (entry != nullptr) plugin.Call(*entry, seed);
  }
};

// Makes the plug-in's allocations fail, and makes the host fail to create strings, objects and arrays.
class FailingAllocations final : public Sweep {
  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, const CallParts&) const override {
    FailEachRequest(plugin, entry, seed, gPluginMemory.requests, "allocation");
    FailEachRequest(plugin, entry, seed, host::Host::Current().creationFailures, "host value");
  }
};

// Makes host services throw C++ exceptions. Services that retain or release references never throw, because otherwise
// no plug-in could keep its references balanced.
class Exceptions final : public Sweep {
  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, const CallParts&) const override {
    FailEachRequest(plugin, entry, seed, host::Host::Current().serviceFailures, "service call");
  }
};

// Calls every entry on two threads at once, except entries that are marked one-thread-only.
class Threads final : public Sweep {
  void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, const CallParts&) const override {
    if (!entry.expectations.contains(kOneThreadOnly)) plugin.CallOnTwoThreads(entry, seed);
  }
};

template <class Kind>
void Add(Checks& checks, const char* name) {
  checks.push_back(std::make_unique<Kind>());
  checks.back()->name = name;
}

}  // namespace

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

}  // namespace stress
