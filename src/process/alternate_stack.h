// A separate stack for signal handlers, because a thread that has overflowed its own stack cannot run a handler there.
#pragma once

#include <csignal>

namespace zkt {

// Makes the calling thread's SA_ONSTACK handlers run on the plug-in's alternate stack until the end of the scope, then
// restores the host's alternate stack. Changes nothing if memory runs out, or if the thread is already running on the
// host's alternate stack. A thread's alternate stack is allocated on first use and freed when the thread ends.
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
