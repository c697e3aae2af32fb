// A check looks for one kind of fault in a plug-in. Its calls have numbers, each of which is enough to make the call
// again. What all checks of one run share is the session.
#pragma once

#include <array>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "stress/child_process.h"
#include "stress/plugin.h"

namespace stress {

// Command-line options of `xojo-host stress`.
struct Options {
  std::string library;
  std::string expectations;  // a file; empty: there are none
  int level = 2;             // 1 to 3; each makes about ten times as many calls as the one before
  std::uint64_t seed = 1;
  int secondsLimit = 20;   // without progress are a hang
  std::int64_t calls = 0;  // at random, instead of what the level says
  std::string only;        // what to replay: "random:1234", or "random:0-99" in one process
};

// What the number of a call is packed from.
struct CallParts {
  std::int64_t entry = 0;    // the index in the session's labels, which varies fastest
  std::int64_t variant = 0;  // of the arguments
  std::int64_t extra = 0;    // what else a check needs: which services are withheld, which request fails
};
inline constexpr std::int64_t kMostVariants = 64;

struct Session {
  // The current host says which version the plug-in is loaded into, and which services it never gets.
  explicit Session(const Options& theOptions);

  // Reads the labels of the plug-in's entries. False, with a failure reported, if it cannot be loaded.
  bool ReadLabels();

  // Loads the plug-in in a child process and does the work with it. `prepare` runs before the plug-in's entry function.
  Ran RunChild(bool describes, const std::function<void(host::Host&)>& prepare,
               const std::function<void(const Plugin&)>& work);

  // Both throw std::out_of_range: for parts that a number cannot hold, and for a number without parts.
  std::int64_t Pack(const CallParts& parts) const;
  CallParts Unpack(std::int64_t number) const;

  // Prints what the report says of a call; a failure with the command that replays it. Notes the entry that has failed.
  void AddFailure(const std::string& only, const Ran& ran);
  void PrintCall(const std::string& title, const Ran& ran) const;

  // Whether so much has failed that the rest is not tried.
  bool HasEnough() const { return failures >= 20; }

  const Options options;
  const Expectations expectations;
  Report& report;
  std::vector<std::string> labels;  // of all entries
  std::set<std::string> failed;     // labels of entries that are not called again
  int failures = 0;
};

class Check {
 public:
  virtual ~Check() = default;

  std::string name;  // in reports and --only

  // Makes all calls that belong to the session's level and reports what fails.
  virtual void Run(Session& session) { RunCalls(session, 0, Count(session)); }

  // Makes the calls from one number up to another in one child process. With `describes`, the report says what is
  // called, and the log is kept.
  virtual Ran MakeCalls(Session& session, std::int64_t first, std::int64_t end, bool describes);

 protected:
  // How many calls belong to the session's level.
  virtual std::int64_t Count(const Session&) const { return 0; }

  // Prepares the host for calls from a number on, before the plug-in is loaded.
  virtual void Prepare(const Session&, host::Host&, std::int64_t /*first*/) const {}

  // Makes the call in the child process. Throws Finding for a fault.
  virtual void MakeCall(const Plugin& plugin, std::int64_t number) const = 0;

  // Both report failures. The first makes the calls in groups and finds the one that fails; the second returns true if
  // the call is good.
  void RunCalls(Session& session, std::int64_t first, std::int64_t end);
  bool TryCall(Session& session, std::int64_t number);
};

// A check that calls every entry, some times with different arguments.
class Sweep : public Check {
 protected:
  std::int64_t Count(const Session& session) const override { return Variants(session) * std::ssize(session.labels); }
  void MakeCall(const Plugin& plugin, std::int64_t number) const override;

  // How often each entry is called, each time with the arguments that follow from another seed.
  virtual std::int64_t Variants(const Session& session) const {
    return std::array{0, 1, 8, 40}.at(static_cast<std::size_t>(session.options.level));
  }
  virtual void CallEntry(const Plugin& plugin, const Entry& entry, std::uint64_t seed, std::int64_t variant) const = 0;
};

// Makes the first request fail, then the second, until there are no more: each alone, and with all later ones.
// `attempt` gets the number of the request and whether later ones fail too, and returns whether one has failed.
void ForEachRequest(const std::function<bool(std::int64_t nth, bool andLater)>& attempt);

// "allocation 2 and all later ones fail"
std::string RequestText(const std::string& what, std::int64_t nth, bool andLater);

// Makes each request of a call fail. Throws Finding if the call does not work again afterwards.
void FailEachRequest(const Plugin& plugin, const Entry& entry, std::uint64_t seed, host::FaultInjector& requests,
                     const std::string& what);

// A word as a shell reads it.
std::string Quoted(const std::string& word);

}  // namespace stress
