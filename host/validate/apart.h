// Runs work in a process of its own, which may crash, hang or end.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace host::validate {

// What the child tells while it works, in memory that both see.
struct Report {
  // The call in progress, -1 before the first one.
  std::atomic<std::int64_t> call{-1};
  std::atomic<std::int64_t> calls{0};    // that came to their end
  std::atomic<std::int64_t> raised{0};   // that raised an exception
  std::atomic<std::int64_t> entries{0};  // of the plug-in
  bool hasStruck = false;                // a shortage has been felt
  bool isFinished = false;
  char finding[4000] = {};  // empty: nothing was wrong
  char entry[500] = {};
  char arguments[6000] = {};

  // The entry whose time grows fastest with its data, of all so far, and the power.
  double steepest = 0;
  char steepestEntry[500] = {};

  // How the results of calls have come out, by their keys.
  static constexpr std::size_t kMostResults = 8192;
  struct Result {
    std::uint64_t key;
    std::uint64_t digest;
  } results[kMostResults] = {};
  std::size_t resultCount = 0;

  void SetText(char* place, std::size_t size, const std::string& text);
  template <std::size_t kSize>
  void Set(char (&place)[kSize], const std::string& text) {
    SetText(place, kSize, text);
  }
};

struct Ending {
  int status = 0;  // as wait() tells it
  bool wasHanging = false;
  std::string log;  // the end of what it wrote to standard error

  // "ended by signal 11 (Segmentation fault)"
  std::string Describe() const;
};

// Runs the work, whose report is shared, in a child. A child that makes no progress for some seconds is killed. The log
// is kept on demand, since it can be long.
Ending RunApart(Report& report, int secondsLimit, bool keepsLog, const std::function<void()>& work);

// A report that parent and child share.
class SharedReport {
 public:
  SharedReport();
  SharedReport(const SharedReport&) = delete;
  SharedReport& operator=(const SharedReport&) = delete;
  ~SharedReport();

  Report* operator->() const { return report_; }
  Report& operator*() const { return *report_; }

 private:
  Report* report_;
};

}  // namespace host::validate
