// The plug-in in a child process: loaded, called, and judged.
#pragma once

#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/host.h"
#include "stress/child_process.h"
#include "stress/entries.h"

namespace stress {

struct Session;

// Something is wrong with the plug-in.
class Finding : public std::runtime_error {
  using runtime_error::runtime_error;
};

// Requests of a call that fail: the nth one, alone or with all that follow.
struct Injection {
  host::FaultInjector* requests = nullptr;  // null: none fails
  std::int64_t nth = 0;
  bool andLater = false;
};

struct Outcome {
  std::string text;        // the result, or the exception
  bool isNeutral = false;  // zero, False, nil, empty, no result, or an exception
};

class Plugin {
 public:
  // Loads the session's library. `prepare` runs before the library's entry function.
  Plugin(Session& session, bool describes, const std::function<void(host::Host&)>& prepare);

  // The entry of an index in the session's labels, one that ends the process or one that does not. Null for another,
  // and for one that this host does not have or that has failed before.
  const Entry* Find(std::int64_t index, bool endsProcess = false) const;

  std::uint64_t SeedOf(const Entry& entry, std::int64_t variant) const;

  // Writes to the report which entry is called next, and which requests fail or services are missing.
  void Describe(const Entry& entry, const std::string& injected = "") const;

  // Calls the entry with the arguments that follow from the seed. Throws Finding if references are wrong afterwards,
  // the result is not of the declared type, or a C++ exception gets out.
  Outcome CallOnce(const Entry& entry, std::uint64_t seed, const Injection& injection = {}) const;

  // The same, but a call that keeps memory or a file descriptor is repeated. Throws Finding if it does so each time.
  Outcome Call(const Entry& entry, std::uint64_t seed, const Injection& injection = {}) const;

  // Calls the entry many times on two threads at once, each with arguments that follow from its own seed. Throws
  // Finding also if results are compared and one differs from that on a single thread.
  void CallOnTwoThreads(const Entry& entry, const std::array<std::uint64_t, 2>& seeds, bool comparesResults) const;

  // Throws Finding for references that were left locked or released too often.
  void CheckReferences() const;

  Session& session;
  Report& report;
  const host::Catalogue catalogue;
  const std::vector<Entry> entries;  // all of them

 private:
  Outcome MakeCall(const Entry& entry, std::uint64_t seed, const Injection& injection) const;
  Outcome Judge(const Entry& entry, const host::Value& result) const;

  const bool describes_;
  const bool countsReferences_;  // a host cannot that lacks services for them
};

}  // namespace stress
