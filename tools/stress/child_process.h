// Runs work in a child process, which may crash, hang or exit.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace stress {

// A string in shared memory. Excess characters are cut off.
class SharedText {
 public:
  void Set(std::string_view text) { size_ = text.copy(bytes_, sizeof bytes_); }
  std::string Get() const { return {bytes_, size_}; }

 private:
  char bytes_[400'000] = {};
  std::size_t size_ = 0;
};

// A child's report on its work, in memory shared with its parent.
struct Report {
  static constexpr std::int64_t kMaxCalls = 1000;
  std::atomic<std::int64_t> position{-1};  // of the call in progress; -1 during loading
  std::atomic<std::int64_t> calls{0};      // made by all children so far
  bool isFinished = false;                 // the work is complete
  bool hasFailed = false;                  // an injected failure has occurred
  double steepest = 0;                     // exponent of the steepest growth measured
  SharedText finding;                      // empty if there is no problem
  SharedText log;                          // the end of the last child's standard error
  SharedText entry;
  SharedText injected;  // which requests fail, or which services are withheld
  SharedText arguments;
  SharedText labels;                      // of all entries, one per line
  SharedText missing;                     // requested names that the host does not offer, one per line
  std::uint64_t results[kMaxCalls] = {};  // digests by position
};

// Makes a report in shared memory, which is never freed.
Report& MakeSharedReport();

// Runs the work in a child, which is killed after `secondsLimit` seconds without progress. Returns the problem: how the
// child ended, or the exception that the work threw. Returns an empty string if there is no problem.
std::string RunInChild(Report& report, int secondsLimit, const std::function<void()>& work);

}  // namespace stress
