// The state that all checks of a run share. Calls are numbered, and a call's number is enough to repeat the call.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "stress/child_process.h"
#include "stress/entries.h"

namespace stress {

// Command-line options of `xojo-host stress`.
struct Options {
  std::string library;       // path
  std::string expectations;  // path of a file; empty if there are none
  int level = 2;             // 1 to 3; each level makes about ten times as many calls as the level below
  std::uint64_t seed = 1;
  int secondsLimit = 20;          // seconds without progress after which a call counts as hung
  std::int64_t calls = 0;         // number of random calls; 0 for the level's default
  std::vector<std::string> only;  // the checks to run, or the calls to replay, such as "random:1234" or "random:0-99"
  std::vector<std::string> skip;  // the checks to skip
  std::string command;            // replays the calls that a following --only selects
};

// The parts that a call number encodes.
struct CallParts {
  std::int64_t entry = 0;    // index into the session's labels; varies fastest
  std::int64_t variant = 0;  // of the arguments
  std::int64_t extra = 0;    // its meaning depends on the check: for example, the number of the request that fails
};
inline constexpr std::int64_t kMaxVariants = 64;

struct Session {
  // The current host determines which host version the plug-in sees, and which services are always withheld.
  explicit Session(const Options& theOptions);

  // Runs `work`, which loads the plug-in, in a child process. Returns the problem; an empty string if there is none.
  std::string RunChild(const std::function<void()>& work);

  // These functions convert between a call number and its parts.
  std::int64_t Pack(const CallParts& parts) const {
    return (parts.extra * kMaxVariants + parts.variant) * std::ssize(labels) + parts.entry;
  }
  CallParts Unpack(std::int64_t number) const {
    const std::int64_t rest = number / std::ssize(labels);
    return {number % std::ssize(labels), rest % kMaxVariants, rest / kMaxVariants};
  }

  // Prints the report of the last call. If it has a problem, also prints the command that replays the call, and
  // excludes the called entry from all further calls. `only` selects the call in --only.
  void ReportCall(const std::string& only, const std::string& problem);

  // Whether to skip the remaining calls, because too many calls have failed or the library cannot be loaded.
  bool HasTooManyFailures() const { return failures >= 20 || cannotLoad; }

  const Options options;
  const Expectations expectations;
  Report& report;
  std::vector<std::string> labels;  // of all entries
  std::set<std::string> failed;     // labels of entries that are no longer called
  int failures = 0;
  bool cannotLoad = false;  // whether the last failure happened while the library was loading
};

}  // namespace stress
