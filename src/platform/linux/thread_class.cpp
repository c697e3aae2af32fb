// Linux has scheduling policies and I/O priorities instead of quality-of-service classes. The plug-in uses only
// settings that an unprivileged user can set and revert. It does not use SCHED_IDLE, because leaving that policy
// requires privileges.
#include "platform/thread_class.h"

#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

#include "platform/thread_slot.h"

namespace zkt {

namespace {

// The kernel's I/O priorities, for which the C library has neither names nor functions.
constexpr int kThisThread = 1;  // IOPRIO_WHO_PROCESS, used with thread id 0
constexpr int kIOClassShift = 13;
constexpr int kBestEffortIO = 2 << kIOClassShift | 4;  // at a thread's default level
constexpr int kIdleIO = 3 << kIOClassShift;

// Stores the class that each thread set last, because the policies do not distinguish all classes.
const ThreadSlot& LastSet() {
  static const ThreadSlot slot;
  return slot;
}

bool IsBatchClass(unsigned threadClass) { return threadClass == kThreadBackground || threadClass == kThreadUtility; }

// Returns the class for a policy: the class that was set last, unless other code has changed the policy since then.
unsigned ClassOf(int policy) {
  const bool isBatch = policy == SCHED_BATCH;
  if (policy == SCHED_IDLE) return kThreadBackground;
  if (!isBatch && policy != SCHED_OTHER) return kThreadUnspecified;
  const auto lastSet = static_cast<ThreadClass>(reinterpret_cast<std::uintptr_t>(LastSet().Get()));
  if (lastSet != kThreadUnspecified && IsBatchClass(lastSet) == isBatch) return lastSet;
  return isBatch ? kThreadUtility : kThreadUnspecified;
}

// Keeps SCHED_RESET_ON_FORK, which an unprivileged user cannot clear.
bool SetPolicy(int policy, int formerPolicy) {
  const sched_param noPriority{};
  return ::sched_setscheduler(0, policy | (formerPolicy & SCHED_RESET_ON_FORK), &noPriority) == 0;
}

bool SetIOPriority(int priority) { return ::syscall(SYS_ioprio_set, kThisThread, 0, priority) == 0; }

}  // namespace

bool GetThreadClass(unsigned& threadClass, int& relativePriority) {
  const int policy = ::sched_getscheduler(0);
  if (policy < 0) return false;
  threadClass = ClassOf(policy & ~SCHED_RESET_ON_FORK);
  relativePriority = 0;
  return true;
}

bool SetThreadClass(ThreadClass threadClass) {
  const auto formerIO = static_cast<int>(::syscall(SYS_ioprio_get, kThisThread, 0));
  const int formerPolicy = ::sched_getscheduler(0);
  if (formerIO < 0 || formerPolicy < 0) return false;
  // The I/O priority is set first, because it can be reverted under any policy.
  if (!SetIOPriority(threadClass == kThreadBackground ? kIdleIO : kBestEffortIO)) return false;
  if (!SetPolicy(IsBatchClass(threadClass) ? SCHED_BATCH : SCHED_OTHER, formerPolicy)) {
    const int error = errno;
    SetIOPriority(formerIO);
    errno = error;
    return false;
  }
  LastSet().Set(reinterpret_cast<void*>(std::uintptr_t{threadClass}));
  return true;
}

}  // namespace zkt
