// The "CallDelegateCrashSafeZKT" module, which calls a delegate and converts a crash in it to an exception. Signal
// handlers are process-wide, so only one protected call can run at a time.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Calls the delegate. Raises "DelegateCrashExceptionZKT" if the delegate crashes with one of seven signals (the error
// number is the signal number), overwrites the stack of this call, or throws a C++ exception. Raises the same exception
// if another protected call is in progress. Raises "NilObjectException" if the delegate is nil or cannot be called.
// After a crash, the seven signals have their default actions, and destructors of objects on the delegate's stack have
// not run. In all other cases, the host's handlers are restored, except that SIGTRAP gets the host's handler for
// SIGSEGV.
void CallDelegateCrash(REALobject delegate);

// Return the number of calls in this process that ended with a signal or overwrote the stack, and the total number of
// calls.
std::int64_t getCrashCounter();
std::int64_t getCallCounter();

// The number of 32-bit words in each guard buffer. Guard buffers are in the stack frames of a protected call and
// contain known values, which an array overrun overwrites.
inline constexpr int kGuardBufferLength = 64;

// The guard buffers of the current or most recent call, or null before the first call. The pointers are global, so the
// compiler must keep the buffers in memory.
inline std::int32_t* pBuffer1 = nullptr;
inline std::int32_t* pBuffer2 = nullptr;

}  // namespace zkt
