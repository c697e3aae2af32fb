// A handler jumps out of the crashed delegate back into RunProtected. Between there and the delegate nothing may have a
// destructor, because the jump would leave it out.
#include "process/crash_safe_call.h"

#include <cxxabi.h>

#include <csetjmp>
#include <cstdlib>
#include <memory>
#include <string>
#include <typeinfo>

#include "frame/host_services.h"
#include "platform/thread_end.h"
#include "process/alternate_stack.h"
#include "process/backtrace.h"
#include "process/crash_signals.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/jump_safe_memory.h"

namespace zkt {

namespace {

constexpr const char* kCrashException = "DelegateCrashExceptionZKT";

using Function = void (*)(REALobject delegate);

std::int64_t CallCounter = 0;
std::int64_t CrashCounter = 0;
bool InsideCallDelegateCrash = false;

sigjmp_buf gBeforeCall;
volatile std::sig_atomic_t gCaughtSignal = 0;  // 0: none yet
volatile std::sig_atomic_t gHasJumped = 0;
BacktraceMemory* gBacktraceMemory = nullptr;

class InsideCallDelegateCrashClass {
 public:
  InsideCallDelegateCrashClass() {
    Trace("InsideCallDelegateCrashClass");
    InsideCallDelegateCrash = true;
  }
  InsideCallDelegateCrashClass(const InsideCallDelegateCrashClass&) = delete;
  InsideCallDelegateCrashClass& operator=(const InsideCallDelegateCrashClass&) = delete;
  ~InsideCallDelegateCrashClass() {
    Trace("~InsideCallDelegateCrashClass");
    InsideCallDelegateCrash = false;
  }
};

// A backtrace over a destroyed stack can fault too, and so can a line for a log that is a pipe without a reader. Then
// nothing more is written, and the first signal is the one that counts.
[[noreturn]] void JumpOut(const char* name, int signal) {
  if (gCaughtSignal == 0) {
    gCaughtSignal = signal;
    Trace(name, signal);
    PrintBacktraceWith(*gBacktraceMemory);
  }
  siglongjmp(gBeforeCall, gCaughtSignal);
}

// clang-format off
void SignalHandlerILL (int signal) { JumpOut("SignalHandlerILL",  signal); }
void SignalHandlerFPE (int signal) { JumpOut("SignalHandlerFPE",  signal); }
void SignalHandlerSEGV(int signal) { JumpOut("SignalHandlerSEGV", signal); }
void SignalHandlerTRAP(int signal) { JumpOut("SignalHandlerTRAP", signal); }
void SignalHandlerBUS (int signal) { JumpOut("SignalHandlerBUS",  signal); }
void SignalHandlerSYS (int signal) { JumpOut("SignalHandlerSYS",  signal); }
void SignalHandlerPIPE(int signal) { JumpOut("SignalHandlerPIPE", signal); }
// clang-format on

constexpr CrashSignals::Handler kHandlers[CrashSignals::kCount] = {
    SignalHandlerILL, SignalHandlerFPE, SignalHandlerSEGV, SignalHandlerTRAP,
    SignalHandlerBUS, SignalHandlerSYS, SignalHandlerPIPE};

void FillBuffer(std::int32_t* buffer) {
  Trace("FillBuffer", static_cast<void*>(buffer));
  for (int i = 0; i < kGuardBufferLength; ++i) buffer[i] = -100 - i;
}

// Whether both buffers are as they were filled; logs the first word that is not.
bool AreIntact(const std::int32_t* buffer1, const std::int32_t* buffer2) {
  for (int i = 0; i < kGuardBufferLength; ++i) {
    for (const std::int32_t* const buffer : {buffer1, buffer2}) {
      if (buffer[i] == -100 - i) continue;
      Trace(buffer == buffer1 ? "Buffer1 changed" : "Buffer2 changed", i, buffer[i]);
      return false;
    }
  }
  return true;
}

void CountAndRaise(const char* message, int signal) {
  ++CrashCounter;
  RaiseException(kCrashException, message, signal);
}

std::string DescribeException(const std::exception& exception) {
  const char* const what = exception.what();
  const char* const text = what != nullptr ? what : "";
  const char* const name = typeid(exception).name();
  if (name == nullptr || *name == '\0') return std::string("Caught C++ exception: ") + text;
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> readable(abi::__cxa_demangle(name, nullptr, nullptr, &status),
                                                             &std::free);
  return std::string("Caught ") + (readable ? readable.get() : name) + ": " + text;
}

void RaiseCaught(const std::exception& exception) {
  const std::string text = DescribeException(exception);
  Trace(text.c_str());
  RaiseException(kCrashException, text.c_str());
}

// A frame of its own around the jump: what its caller has on the stack is not touched by it.
__attribute__((noinline, no_sanitize("null"))) void RunProtected(REALobject delegate, Function function,
                                                                 const std::int32_t* buffer1) {
  CrashSignals signals;
  std::int32_t buffer2[kGuardBufferLength];
  gCaughtSignal = 0;
  gHasJumped = 0;
  if (sigsetjmp(gBeforeCall, 1) != 0) {
    // Once: the handlers are still there, and jump back here when the line cannot be written.
    if (gHasJumped == 0) {
      gHasJumped = 1;
      Trace("call returned with crash.");
    }
    CrashSignals::SetToDefault();
    return CountAndRaise(MessageOfCrash(gCaughtSignal), gCaughtSignal);
  }
  signals.Install(kHandlers);
  pBuffer2 = buffer2;
  FillBuffer(buffer2);
  Trace("Buffer1", buffer1[0]);
  Trace("Buffer2", buffer2[0]);
  Trace("call...");
  try {
    function(delegate);
  } catch (const std::exception& exception) {
    signals.Restore(kHandlers);
    return RaiseCaught(exception);
  } catch (const ThreadEnd&) {
    signals.Restore(kHandlers);
    throw;
  } catch (...) {
    signals.Restore(kHandlers);
    return RaiseException(kCrashException, "Caught unknown C++ exception!");
  }
  Trace("call returned without crash.");
  signals.Restore(kHandlers);
  if (!AreIntact(buffer1, buffer2)) CountAndRaise("Stack overwritten!", 0);
}

void CallOnce(REALobject delegate) {
  const InsideCallDelegateCrashClass inside;
  std::int32_t buffer1[kGuardBufferLength];
  pBuffer1 = buffer1;
  FillBuffer(buffer1);
  if (delegate == nullptr) {
    Trace("delegate", "is nil");
    return RaiseException("NilObjectException", "Delegate is nil");
  }
  const auto function = reinterpret_cast<Function>(REALGetDelegateInvoker(delegate, 0));
  if (function == nullptr) {
    Trace("fp", "is nil");
    return RaiseException("NilObjectException", "Delegate function is nil");
  }
  ++CallCounter;
  PrepareBacktrace();
  BacktraceMemory backtraceMemory;
  gBacktraceMemory = &backtraceMemory;
  const AlternateStack alternateStack;
  const JumpSafeMemory::Block* const newest = JumpSafeMemory::Newest();
  RunProtected(delegate, function, buffer1);
  // What the crashed delegate was sorting: the array itself is as it was.
  JumpSafeMemory::FreeNewerThan(newest);
}

}  // namespace

void CallDelegateCrash(REALobject delegate) {
  Trace("CallDelegateCrash");
  if (InsideCallDelegateCrash) return RaiseException(kCrashException, "Recursion not supported.");
  Guarded([&] { CallOnce(delegate); });
}

std::int64_t getCrashCounter() {
  if (pBuffer1 == pBuffer2) {
    Trace("pBuffer1", static_cast<void*>(pBuffer1));
    Trace("pBuffer2", static_cast<void*>(pBuffer2));
  }
  return CrashCounter;
}

std::int64_t getCallCounter() { return CallCounter; }

}  // namespace zkt
