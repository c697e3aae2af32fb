// The seven crash signals and their handlers around a protected call. Signals belong to the process, and only one
// protected call runs at a time. The former handlers are kept in static storage, where a delegate that overruns its
// frame cannot reach them and handlers on other threads can read them.
#pragma once

#include <csignal>
#include <cstddef>

namespace zkt {

// In the order of installation.
enum CrashSignal : std::size_t { kILL, kFPE, kSEGV, kTRAP, kBUS, kSYS, kPIPE, kCrashSignalCount };

using CrashHandler = void (*)(int signal, siginfo_t* info, void* context);
using CrashHandlers = CrashHandler[kCrashSignalCount];

// Installs a handler for each signal, then unblocks these signals for the calling thread, except those that were
// pending before. The handlers run on the alternate stack, and a fault inside a handler calls that handler again.
void InstallHandlers(const CrashHandlers& handlers);

// Restores the former signal mask of the calling thread and the former handlers. Logs a handler that somebody else has
// changed in the meantime. SIGTRAP gets the former handler of SIGSEGV.
void RestoreHandlers(const CrashHandlers& handlers);

// Sets the default action for all seven signals.
void SetDefaultActions();

// Handles a signal on another thread as the process would have without the protected call: calls the former handler
// with the same arguments, ignores the signal, or takes the default action.
void PassOn(int signal, siginfo_t* info, void* context);

// Returns the exception message for a crash with this signal.
const char* MessageOfCrash(int signal);

}  // namespace zkt
