// What has to be put right when a protected call is left by a jump.
// A crash in a delegate jumps out of everything that the delegate has called, native functions of ours included, and
// runs no destructors. What must not stay behind then, such as memory or a state that other threads wait for, is listed
// here while it is in use.
#pragma once

namespace zkt {

// An entry of the calling thread's list, newest first. Entries must outlive the jump, so that none is on the stack.
class JumpCleanup {
 public:
  using Action = void (*)(JumpCleanup* self);

  // The action may free the entry.
  constexpr explicit JumpCleanup(Action action) : action_(action) {}
  JumpCleanup(const JumpCleanup&) = delete;
  JumpCleanup& operator=(const JumpCleanup&) = delete;

  // Adds the entry to the list of the calling thread, and takes it off again: in any order, since a host may run
  // several of its threads in turns on one of the system's. A thread that has no room for a list goes without.
  void Enter();
  void Leave();

  // The newest entry of the calling thread; null when there is none.
  static JumpCleanup* Newest();

  // Takes the entries of the calling thread that are newer than `mark` off the list and runs their actions, newest
  // first. An action that crashes is not run again.
  static void RunNewerThan(const JumpCleanup* mark);

 private:
  Action action_;
  JumpCleanup* older_ = nullptr;
};

}  // namespace zkt
