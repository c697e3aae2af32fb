// The module "CallDelegateCrashSafeZKT": calling a delegate so that a crash in it comes back as an exception.
// Signals belong to the process: one protected call at a time, from one thread.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Calls the delegate. Raises "DelegateCrashExceptionZKT" when it crashes by one of seven signals (the error number is
// the signal's), writes over the stack of this call, throws a C++ exception, or is inside another protected call;
// "NilObjectException" for nil and for what cannot be called. After a crash the seven signals have their default
// action, and objects on the stack of the delegate have not been destroyed; on every other way out the handlers are
// those of the host again, but for SIGTRAP, which gets the one of SIGSEGV.
void CallDelegateCrash(REALobject delegate);

// The calls that ended in a signal or had written over the stack, and the calls at all, in this process.
std::int64_t getCrashCounter();
std::int64_t getCallCounter();

// 32-bit words with known values in the frames of the call: who writes beyond an array, writes over them.
inline constexpr int kGuardBufferLength = 64;

// Those of the call in progress, or of the last one; null before the first. Global, so that the words are in memory.
inline std::int32_t* pBuffer1 = nullptr;
inline std::int32_t* pBuffer2 = nullptr;

}  // namespace zkt
