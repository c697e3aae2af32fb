// The seven signals that a crash comes as, and what is in force for them around a protected call.
// Signals belong to the process, and there is one protected call at a time. What was there before the call is kept in
// static storage: out of reach for a delegate that writes beyond its frame, and readable for handlers on other threads.
#pragma once

#include <csignal>
#include <cstddef>

namespace zkt {

// In the order of installation.
enum CrashSignal : std::size_t { kILL, kFPE, kSEGV, kTRAP, kBUS, kSYS, kPIPE, kCrashSignalCount };

using CrashHandler = void (*)(int signal, siginfo_t* info, void* context);
using CrashHandlers = CrashHandler[kCrashSignalCount];

// Puts a handler in place for each signal, then lets the calling thread receive all of them, except those that were
// pending before. The handlers run on the alternate stack, and a fault inside one of them reaches its handler again.
void InstallHandlers(const CrashHandlers& handlers);

// Puts the mask of the calling thread and the handlers back that were there before, and logs where somebody else has
// changed a handler meanwhile. SIGTRAP gets the handler of SIGSEGV.
void RestoreHandlers(const CrashHandlers& handlers);

// Leaves the default action for all seven signals.
void SetDefaultActions();

// Does what the process would have done about a signal without the protected call: calls the handler that was there
// before, with the same arguments, ignores the signal, or takes the default action. For signals on other threads.
void PassOn(int signal, siginfo_t* info, void* context);

// What to tell about a crash by that signal.
const char* MessageOfCrash(int signal);

}  // namespace zkt
