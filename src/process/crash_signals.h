// Installs and restores handlers for the seven crash signals around a protected call. Handlers are process-wide, and
// only one protected call runs at a time. The former handlers are kept in static storage, where a delegate that
// overruns its frame cannot reach them and handlers on other threads can read them.
#pragma once

#include <csignal>
#include <cstddef>

namespace zkt {

// The crash signals, in the order in which their handlers are installed.
enum CrashSignal : std::size_t { kILL, kFPE, kSEGV, kTRAP, kBUS, kSYS, kPIPE, kCrashSignalCount };

using CrashHandler = void (*)(int signal, siginfo_t* info, void* context);
using CrashHandlers = CrashHandler[kCrashSignalCount];

// Installs a handler for each signal, then unblocks these signals for the calling thread, except those that are already
// pending. The handlers run on the alternate stack, and a fault inside a handler calls that handler again.
void InstallHandlers(const CrashHandlers& handlers);

// Restores the calling thread's former signal mask and the former handlers. Logs every handler that other code has
// replaced in the meantime. SIGTRAP gets the former handler for SIGSEGV.
void RestoreHandlers(const CrashHandlers& handlers);

// Sets the default action for all seven signals.
void SetDefaultActions();

// Handles a signal that did not arrive on the protected thread, as if no protected call were in progress: calls the
// former handler with the same arguments, ignores the signal, or takes the default action.
void PassOn(int signal, siginfo_t* info, void* context);

// Returns the exception message for a crash with this signal.
const char* MessageOfCrash(int signal);

}  // namespace zkt
