// A check looks for one kind of fault in a plug-in.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "stress/plugin.h"
#include "stress/session.h"

namespace stress {

// Reads the labels of the plug-in's entries into the session. Reports a failure and returns false if the plug-in cannot
// be loaded.
bool ReadLabels(Session& session);

class Check {
 public:
  virtual ~Check() = default;

  std::string name;  // the name in reports and in --only

  // Makes all calls at the session's level and reports failures.
  virtual void Run(Session& session) { RunCalls(session, 0, Count(session)); }

  // Makes the calls from `first` up to, but not including, `end` in one child process. Returns the problem, if any.
  virtual std::string MakeCalls(Session& session, std::int64_t first, std::int64_t end);

  // Makes one call, and reports it if it fails. Returns whether it succeeded.
  bool TryCall(Session& session, std::int64_t number);

 protected:
  // The number of calls at the session's level.
  virtual std::int64_t Count(const Session&) const { return 0; }

  // Prepares the host for the calls from `first` onward, before the plug-in is loaded.
  virtual void Prepare(const Session&, std::int64_t /*first*/) const {}

  // Makes the call in the child process. Throws Finding if the plug-in is at fault.
  virtual void MakeCall(const Plugin& plugin, std::int64_t number) const = 0;

  // Makes the calls in groups, narrows each failure down to one call if possible, and reports it.
  void RunCalls(Session& session, std::int64_t first, std::int64_t end);
};

// A check that calls every entry several times with different arguments.
class Sweep : public Check {
 protected:
  std::int64_t Count(const Session& session) const override { return Variants(session) * std::ssize(session.labels); }
  void MakeCall(const Plugin& plugin, std::int64_t number) const override;

  // The number of times that each entry is called, each time with arguments from a different seed.
  virtual std::int64_t Variants(const Session& session) const {
    return std::array{0, 1, 8, 40}.at(static_cast<std::size_t>(session.options.level));
  }
  virtual void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed,
                         const CallParts& parts) const = 0;
};

using Checks = std::vector<std::unique_ptr<Check>>;

// Creates all checks, in the order in which they run.
Checks MakeChecks();

}  // namespace stress
