#include "process/crash_signals.h"

#include <pthread.h>

#include "runtime/debug_log.h"

namespace zkt {

namespace {

struct KnownSignal {
  int number;
  const char* message;
  const char* complaint;  // logged if the handler is no longer the plug-in's
};

// clang-format off
constexpr KnownSignal kSignals[kCrashSignalCount] = {
    {SIGILL,  "Delegate crashed with illegal instruction.",    "our handler for SIGILL was changed!"},
    {SIGFPE,  "Delegate crashed with floating point error.",   "our handler for SIGFPE was changed!"},
    {SIGSEGV, "Delegate crashed with invalid pointer access.", "our handler for SIGSEGV was changed!"},
    {SIGTRAP, "Delegate crashed with trace trap.",             "our handler for SIGTRAP was changed!"},
    {SIGBUS,  "Delegate crashed with memory bus error.",       "our handler for SIGBUS was changed!"},
    {SIGSYS,  "Delegate crashed with wrong system call.",      "our handler for SIGSYS was changed!"},
    {SIGPIPE, "Delegate crashed with broken pipe.",            "our handler for SIGPIPE was changed!"},
};
// clang-format on

// The order in which the handlers are restored.
constexpr CrashSignal kOrderBack[] = {kFPE, kILL, kSEGV, kTRAP, kBUS, kSYS, kPIPE};

struct sigaction gFormer[kCrashSignalCount];
sigset_t gFormerMask;

struct sigaction DefaultAction() {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigemptyset(&action.sa_mask);
  return action;
}

struct sigaction ActionOf(CrashHandler handler) {
  struct sigaction action {};
  action.sa_sigaction = handler;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESTART | SA_NODEFER;
  sigemptyset(&action.sa_mask);
  return action;
}

// A signal that is already pending is unrelated to the delegate, so it stays blocked.
void UnblockSignals() {
  sigset_t pending;
  sigset_t unblocked;
  sigemptyset(&unblocked);
  ::sigpending(&pending);
  for (const KnownSignal& signal : kSignals)
    if (sigismember(&pending, signal.number) == 0) sigaddset(&unblocked, signal.number);
  ::pthread_sigmask(SIG_UNBLOCK, &unblocked, &gFormerMask);
}

// Returns whether the current instruction caused the signal. Such a signal cannot be ignored, because the thread would
// repeat the instruction.
bool IsFault(const siginfo_t& info) { return info.si_code > 0 && info.si_code != SI_USER && info.si_code != SI_QUEUE; }

const struct sigaction& FormerActionFor(int signal) {
  std::size_t i = 0;
  while (i + 1 < kCrashSignalCount && kSignals[i].number != signal) ++i;
  return gFormer[i];
}

void CallHandler(const struct sigaction& action, int signal, siginfo_t* info, void* context) {
  sigset_t blocked = action.sa_mask;
  sigset_t mask;
  if ((action.sa_flags & SA_NODEFER) == 0) sigaddset(&blocked, signal);
  ::pthread_sigmask(SIG_BLOCK, &blocked, &mask);
  if ((action.sa_flags & SA_SIGINFO) != 0)
    action.sa_sigaction(signal, info, context);
  else
    action.sa_handler(signal);
  ::pthread_sigmask(SIG_SETMASK, &mask, nullptr);
}

}  // namespace

void InstallHandlers(const CrashHandlers& handlers) {
  for (std::size_t i = 0; i < kCrashSignalCount; ++i) {
    const struct sigaction ours = ActionOf(handlers[i]);
    // The former action is saved before the new handler is installed, because another thread may receive the signal
    // immediately.
    ::sigaction(kSignals[i].number, nullptr, &gFormer[i]);
    ::sigaction(kSignals[i].number, &ours, nullptr);
  }
  UnblockSignals();
}

void RestoreHandlers(const CrashHandlers& handlers) {
  ::pthread_sigmask(SIG_SETMASK, &gFormerMask, nullptr);
  for (const CrashSignal i : kOrderBack) {
    // SIGTRAP intentionally gets the former handler for SIGSEGV.
    struct sigaction found {};
    ::sigaction(kSignals[i].number, &gFormer[i == kTRAP ? kSEGV : i], &found);
    if (found.sa_sigaction != handlers[i]) Trace(kSignals[i].complaint);
  }
}

void SetDefaultActions() {
  const struct sigaction standard = DefaultAction();
  for (const CrashSignal i : kOrderBack) ::sigaction(kSignals[i].number, &standard, nullptr);
}

void PassOn(int signal, siginfo_t* info, void* context) {
  const struct sigaction& former = FormerActionFor(signal);
  const bool isIgnored = former.sa_handler == SIG_IGN;
  if (isIgnored && !IsFault(*info)) return;
  if (!isIgnored && former.sa_handler != SIG_DFL) return CallHandler(former, signal, info, context);
  const struct sigaction standard = DefaultAction();
  ::sigaction(signal, &standard, nullptr);
  ::raise(signal);
}

const char* MessageOfCrash(int signal) {
  for (const KnownSignal& known : kSignals)
    if (known.number == signal) return known.message;
  return "Delegate crashed.";
}

}  // namespace zkt
