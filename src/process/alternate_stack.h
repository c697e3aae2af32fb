// A stack of their own for the signal handlers of a thread: a thread whose stack is used up can run no handler on it.
#pragma once

#include <csignal>

namespace zkt {

// Lets the handlers of the calling thread that ask for it run on a stack of ours, for a scope; then whatever the host
// had for them is back. Without memory, or on a thread that is just running on the host's own, nothing changes.
// The stack is made at a thread's first use and lives as long as the thread.
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
