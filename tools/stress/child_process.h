// Runs work in a child process, which may crash, hang or exit.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace stress {

// A text in shared memory. What does not fit is cut off.
class SharedText {
 public:
  void Set(std::string_view text) { bytes_[text.copy(bytes_, sizeof bytes_ - 1)] = '\0'; }
  std::string Get() const { return bytes_; }

 private:
  char bytes_[400'000] = {};
};

// What a child reports while it works, in memory that it shares with its parent.
struct Report {
  static constexpr std::int64_t kMostCalls = 1000;
  std::atomic<std::int64_t> position{-1};  // of the call in progress; -1 while the plug-in is loaded
  std::atomic<std::int64_t> calls{0};      // made by all children so far
  bool isFinished = false;                 // the work has come to its end
  bool hasFailed = false;                  // an injected failure has taken place
  double steepest = 0;                     // growth that was measured, as a power
  SharedText finding;                      // empty: nothing was wrong
  SharedText entry;
  SharedText injected;  // which requests fail, or which services are missing
  SharedText arguments;
  SharedText labels;                       // of all entries, one a line
  std::uint64_t results[kMostCalls] = {};  // digests by position
};

// A report in shared memory, which lives as long as the process.
Report& MakeSharedReport();

// What became of a child.
struct Ran {
  std::string what;  // was wrong; empty if nothing was
  std::string log;   // the end of its standard error
};

// Runs the work in a child, which is killed if it makes no progress for some seconds. An exception that the work throws
// is a finding. The log is kept on demand, because it can be long.
Ran RunInChild(Report& report, int secondsLimit, bool keepsLog, const std::function<void()>& work);

}  // namespace stress
