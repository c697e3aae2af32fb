// Cleanup for a protected call that is left by a jump. A crash in a delegate jumps out of everything that the delegate
// has called, including native functions of this plug-in, and runs no destructors. Resources that must not leak then,
// such as memory or a state that other threads wait for, are registered here while in use.
#pragma once

namespace zkt {

// An entry of the calling thread's list, newest first. An entry must survive the jump, so it is never on the stack.
class JumpCleanup {
 public:
  using Action = void (*)(JumpCleanup* self);

  // The action may free the entry.
  constexpr explicit JumpCleanup(Action action) : action_(action) {}
  JumpCleanup(const JumpCleanup&) = delete;
  JumpCleanup& operator=(const JumpCleanup&) = delete;

  // Add the entry to the list of the calling thread and remove it, in any order: a host may alternate several of its
  // threads on one system thread. A thread without memory for a list has no cleanup.
  void Enter();
  void Leave();

  // Returns the newest entry of the calling thread, or null if there is none.
  static JumpCleanup* Newest();

  // Removes the entries of the calling thread that are newer than `mark` and runs their actions, newest first. An
  // action that crashes does not run again.
  static void RunNewerThan(const JumpCleanup* mark);

 private:
  Action action_;
  JumpCleanup* older_ = nullptr;
};

}  // namespace zkt
