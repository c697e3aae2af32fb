// A separate stack for signal handlers: a thread whose own stack has overflowed cannot run a handler on it.
#pragma once

#include <csignal>

namespace zkt {

// For a scope, runs the calling thread's SA_ONSTACK handlers on the plug-in's alternate stack, then restores the
// host's. Changes nothing if memory runs out, or if the thread is currently running on the host's alternate stack. The
// stack is allocated at a thread's first use and freed at the thread's end.
class AlternateStack {
 public:
  AlternateStack();
  AlternateStack(const AlternateStack&) = delete;
  AlternateStack& operator=(const AlternateStack&) = delete;
  ~AlternateStack();

 private:
  stack_t hosts_{};
  bool isInstalled_ = false;
};

}  // namespace zkt
