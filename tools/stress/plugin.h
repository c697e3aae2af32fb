// Loads the plug-in in a child process, calls it, and checks the effects.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "core/host.h"
#include "stress/child_process.h"
#include "stress/entries.h"
#include "stress/session.h"

namespace stress {

// A problem with the plug-in.
class Finding : public std::runtime_error {
  using runtime_error::runtime_error;
};

// Which requests made during a call fail: only the nth, or the nth and all later ones.
struct Injection {
  host::FaultInjector* requests = nullptr;  // null if none fails
  std::string what;                         // such as "allocation"
  std::int64_t nth = 0;
  bool andLater = false;

  // Returns a description such as "allocation 2 and all later ones fail".
  std::string Text() const {
    return what + " " + std::to_string(nth) + (andLater ? " and all later ones fail" : " fails");
  }
};

struct Outcome {
  std::string text;        // the result, or the exception
  bool isNeutral = false;  // zero, False, nil, empty, no result, or an exception
};

class Plugin {
 public:
  // Loads the session's library.
  explicit Plugin(Session& session);

  // Returns the entry with the given index in the session's labels. With `endsProcess`, finds only entries that end the
  // process; otherwise, finds only entries that do not. Returns null for other entries, for entries that this host
  // lacks, and for entries that have failed before.
  const Entry* Find(std::int64_t index, bool endsProcess = false) const;

  // Calls the entry with arguments generated from the seed. Throws Finding if references are unbalanced afterward, the
  // result does not have the declared type, or a C++ exception escapes.
  Outcome CallOnce(const Entry& entry, std::uint64_t seed, const Injection& injection = {}) const;

  // Like CallOnce, but repeats a call that leaves a memory block or a file descriptor behind. Throws Finding if every
  // repetition does so.
  Outcome Call(const Entry& entry, std::uint64_t seed, const Injection& injection = {}) const;

  // Calls the entry many times on two threads at once, one with arguments generated from `seed` and the other with
  // arguments generated from `seed` + 1. Also throws Finding if a result differs from the result on a single thread,
  // unless it may.
  void CallOnTwoThreads(const Entry& entry, std::uint64_t seed) const;

  Declared Declarations() const { return {catalogue, entries, session.expectations}; }

  // Throws Finding for leaked and over-released references.
  void CheckReferences() const;

  Session& session;
  Report& report;
  const host::Catalogue catalogue;
  const std::vector<Entry> entries;  // of the plug-in

 private:
  Outcome MakeCall(const Entry& entry, std::uint64_t seed, const Injection& injection) const;
};

}  // namespace stress
