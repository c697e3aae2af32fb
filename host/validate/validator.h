// Looks for ways to bring a plug-in down: the engine behind `xojo-host validate`.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "validate/attempt.h"
#include "validate/options.h"

namespace host::validate {

// What stands in a report between an entry and what it lacked.
inline constexpr const char* kWithout = " without ";

// A loaded plug-in, in a child.
struct LoadedPlugin {
  Catalogue catalogue;
  std::vector<Entry> entries;  // those that take part in sweeps
  Report& report;
  bool describes;  // every call, before it is made

  Report* Describes() const { return describes ? &report : nullptr; }
};

// A row of calls, each of which follows from its number.
struct Sweep {
  std::string name;
  std::set<std::string, std::less<>> withheld;
  std::int64_t calls = 0;     // 0: every entry in turn,
  std::int64_t variants = 0;  // so many times
  bool supervisesServices = false;
  std::function<void(const LoadedPlugin& plugin, std::int64_t call)> make;
};

class Validator {
 public:
  // The host that is current says which version the plug-in meets.
  Validator(Options options, std::ostream& out) : options_(std::move(options)), out_(out) {}

  // Runs all sweeps; true if nothing was found.
  bool Run();

 private:
  struct Chunk {
    std::int64_t first;
    std::int64_t last;
  };
  // What a child was, after it has ended.
  struct Ran {
    bool isGood;
    std::string what;
    std::string log;
  };
  struct Failure {
    std::int64_t call;  // -1: loading
    Ran ran;
  };

  // validator.cpp
  Ran RunChild(const Sweep& sweep, Chunk chunk, bool describes);
  Failure Replay(const Sweep& sweep, Chunk chunk, Ran ran);
  void RunSweep(const Sweep& sweep);
  void RunTimed(const std::string& name, const std::function<void()>& run);
  void RunCalls(const Sweep& sweep);
  bool RunOnly(const Sweep& sweep);
  void Convict(const Sweep& sweep, const Failure& failure);
  void AddFailure(const std::string& title, const std::string& what, const std::string& again, const std::string& log);
  bool HasEnough() const;

  // checks.cpp
  void CheckExports();
  void CheckLoading();
  void CheckEndings();

  // sweeps.cpp
  void RunFirstCalls();
  void RunAblation();
  Sweep Storm() const;
  Sweep Growth() const;
  Sweep Shortages() const;
  Sweep ServiceFailures() const;
  Sweep Threads() const;
  Sweep FirstCalls() const;
  Sweep Ablation(const std::set<std::string, std::less<>>& withheld) const;
  Sweep Baseline() const;
  std::int64_t Variants() const;
  std::uint64_t SeedOf(const Entry& entry, std::int64_t variant) const;

  Options options_;
  std::ostream& out_;
  SharedReport report_;
  std::set<std::string> convicted_;  // entries that are not called again
  int failures_ = 0;
  std::int64_t callsMade_ = 0;
  std::int64_t raised_ = 0;  // calls of the storm that raised an exception
  std::unordered_map<std::uint64_t, std::uint64_t> baseline_;
};

// Loads the plug-in into this process, which has to be a child.
LoadedPlugin Load(const std::string& library, Report& report, bool describes);

}  // namespace host::validate
