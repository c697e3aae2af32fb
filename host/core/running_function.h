// The native function of the plug-in that a thread runs, for the report of a crash.
#pragma once

#include <utility>

namespace host {

inline constinit thread_local const void* gRunningFunction = nullptr;

// Sets the function for a scope: native code can call Xojo code, which calls native code again.
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
