#include "process/crash_signals.h"

#include "runtime/debug_log.h"

namespace zkt {

namespace {

struct CrashSignal {
  int number;
  const char* message;
  const char* complaint;  // about a handler that is not ours any more
};

// clang-format off
constexpr CrashSignal kSignals[CrashSignals::kCount] = {
    {SIGILL,  "Delegate crashed with illegal instruction.",    "our handler for SIGILL was changed!"},
    {SIGFPE,  "Delegate crashed with floating point error.",   "our handler for SIGFPE was changed!"},
    {SIGSEGV, "Delegate crashed with invalid pointer access.", "our handler for SIGSEGV was changed!"},
    {SIGTRAP, "Delegate crashed with trace trap.",             "our handler for SIGTRAP was changed!"},
    {SIGBUS,  "Delegate crashed with memory bus error.",       "our handler for SIGBUS was changed!"},
    {SIGSYS,  "Delegate crashed with wrong system call.",      "our handler for SIGSYS was changed!"},
    {SIGPIPE, "Delegate crashed with broken pipe.",            "our handler for SIGPIPE was changed!"},
};
// clang-format on

// Everything that is put back goes in this order.
constexpr CrashSignals::Index kOrderBack[] = {CrashSignals::kFPE,  CrashSignals::kILL, CrashSignals::kSEGV,
                                              CrashSignals::kTRAP, CrashSignals::kBUS, CrashSignals::kSYS,
                                              CrashSignals::kPIPE};

struct sigaction ActionOf(CrashSignals::Handler handler, int flags) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = flags;
  sigemptyset(&action.sa_mask);
  return action;
}

}  // namespace

void CrashSignals::Install(const Handler (&handlers)[kCount]) {
  for (std::size_t i = 0; i < kCount; ++i) {
    const struct sigaction ours = ActionOf(handlers[i], SA_ONSTACK | SA_RESTART | SA_NODEFER);
    // What was there for SIGTRAP is not kept: see Restore.
    ::sigaction(kSignals[i].number, &ours, i == kTRAP ? nullptr : &former_[i]);
  }
}

void CrashSignals::Restore(const Handler (&handlers)[kCount]) const {
  for (const Index i : kOrderBack) {
    // What was there for SIGSEGV serves SIGTRAP as well; that is kept on purpose.
    struct sigaction found {};
    ::sigaction(kSignals[i].number, &former_[i == kTRAP ? kSEGV : i], &found);
    if (found.sa_handler != handlers[i]) Trace(kSignals[i].complaint);
  }
}

void CrashSignals::SetToDefault() {
  const struct sigaction standard = ActionOf(SIG_DFL, 0);
  for (const Index i : kOrderBack) ::sigaction(kSignals[i].number, &standard, nullptr);
}

const char* MessageOfCrash(int signal) {
  for (const CrashSignal& known : kSignals)
    if (known.number == signal) return known.message;
  return "Delegate crashed.";
}

}  // namespace zkt
