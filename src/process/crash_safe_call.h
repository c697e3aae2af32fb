// The module "CallDelegateCrashSafeZKT": calls a delegate and converts a crash in it to an exception. Signals belong to
// the process, so only one protected call, from one thread, runs at a time.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Calls the delegate. Raises "DelegateCrashExceptionZKT" if the delegate crashes with one of seven signals (the error
// number is the signal number), overwrites the stack of this call, throws a C++ exception, or is inside another
// protected call, and "NilObjectException" for nil or an object that cannot be called. After a crash, the seven signals
// have their default action, and objects on the delegate's stack have not been destroyed. In all other cases the host's
// handlers are restored, except for SIGTRAP, which gets the handler of SIGSEGV.
void CallDelegateCrash(REALobject delegate);

// Return how many calls of this process ended with a signal or overwrote the stack, and the total number of calls.
std::int64_t getCrashCounter();
std::int64_t getCallCounter();

// The frames of the call hold 32-bit words with known values, which an array overrun overwrites.
inline constexpr int kGuardBufferLength = 64;

// The words of the current or latest call, or null before the first. Global, so the words stay in memory.
inline std::int32_t* pBuffer1 = nullptr;
inline std::int32_t* pBuffer2 = nullptr;

}  // namespace zkt
