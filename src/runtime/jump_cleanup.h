// Cleanup after a jump out of a protected call. When a delegate crashes, a jump ends every function that the delegate
// has called, including native functions of this plug-in, and runs no destructors. Cleanup actions for memory that must
// not leak, and for state that other threads wait for, are registered here while the memory or the state is in use.
#pragma once

namespace zkt {

// An entry in the calling thread's list, which is ordered from newest to oldest. An entry must survive the jump, so it
// must not be on the stack.
class JumpCleanup {
 public:
  using Action = void (*)(JumpCleanup* self);

  // The action may free the entry.
  constexpr explicit JumpCleanup(Action action) : action_(action) {}
  JumpCleanup(const JumpCleanup&) = delete;
  JumpCleanup& operator=(const JumpCleanup&) = delete;

  // Add the entry to the calling thread's list, or remove it. Entries may be removed in any order, because a host may
  // run several of its own threads alternately on one system thread. A thread whose list cannot be stored has no
  // cleanup.
  void Enter();
  void Leave();

  // Returns the newest entry of the calling thread, or null if there is none.
  static JumpCleanup* Newest();

  // Removes the calling thread's entries that are newer than `mark` and runs their actions, newest first. An action
  // that crashes is not run again.
  static void RunNewerThan(const JumpCleanup* mark);

 private:
  Action action_;
  JumpCleanup* older_ = nullptr;
};

}  // namespace zkt
