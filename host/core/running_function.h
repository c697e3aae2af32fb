// The plug-in function that the current thread is running, for crash reports.
#pragma once

#include <utility>

namespace host {

inline constinit thread_local const void* gRunningFunction = nullptr;

// Sets the running function until the end of the scope. Scopes nest, because native code can call Xojo code that calls
// native code again.
class RunningFunction {
 public:
  explicit RunningFunction(const void* function) : outer_(std::exchange(gRunningFunction, function)) {}
  RunningFunction(const RunningFunction&) = delete;
  RunningFunction& operator=(const RunningFunction&) = delete;
  ~RunningFunction() { gRunningFunction = outer_; }

 private:
  const void* const outer_;
};

}  // namespace host
