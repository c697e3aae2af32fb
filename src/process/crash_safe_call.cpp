// A signal handler jumps out of the crashed delegate back into RunProtected. No plug-in frame between the two may own
// an object with a destructor, because the jump would skip the destructor.
#include "process/crash_safe_call.h"

#include <cxxabi.h>
#include <pthread.h>

#include <atomic>
#include <csetjmp>
#include <cstdlib>
#include <memory>
#include <string>
#include <typeinfo>

#include "frame/contract/host_services.h"
#include "platform/thread_end.h"
#include "process/alternate_stack.h"
#include "process/backtrace.h"
#include "process/crash_signals.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/jump_cleanup.h"

namespace zkt {

namespace {

constexpr const char* kCrashException = "DelegateCrashExceptionZKT";

using Function = void (*)(REALobject delegate);

std::atomic<std::int64_t> CallCounter{0};
std::atomic<std::int64_t> CrashCounter{0};
std::atomic<bool> InsideCallDelegateCrash{false};

// The state of the current call. It is not on the stack, where the delegate could overwrite it.
sigjmp_buf gBeforeCall;
std::atomic<pthread_t> gProtectedThread{};
volatile std::sig_atomic_t gCaughtSignal = 0;  // 0 if no signal has been caught
volatile std::sig_atomic_t gHasJumped = 0;

// Clears InsideCallDelegateCrash, which CallDelegateCrash sets, at the end of the scope.
class InsideCallDelegateCrashClass {
 public:
  InsideCallDelegateCrashClass() { Trace("InsideCallDelegateCrashClass"); }
  InsideCallDelegateCrashClass(const InsideCallDelegateCrashClass&) = delete;
  InsideCallDelegateCrashClass& operator=(const InsideCallDelegateCrashClass&) = delete;
  ~InsideCallDelegateCrashClass() {
    Trace("~InsideCallDelegateCrashClass");
    InsideCallDelegateCrash = false;
  }
};

// A backtrace of a corrupted stack can itself fault. In that case, nothing more is logged, and the first signal is
// reported. Only the protected thread may jump, because the target frame is on its stack.
void OnSignal(const char* name, int signal, siginfo_t* info, void* context) {
  if (::pthread_equal(::pthread_self(), gProtectedThread.load(std::memory_order_relaxed)) == 0)
    return PassOn(signal, info, context);
  if (gCaughtSignal == 0) {
    gCaughtSignal = signal;
    Trace(name, signal);
    PrintBacktraceInHandler();
  }
  siglongjmp(gBeforeCall, gCaughtSignal);
}

// clang-format off
void SignalHandlerILL (int signal, siginfo_t* info, void* context) { OnSignal("SignalHandlerILL",  signal, info, context); }
void SignalHandlerFPE (int signal, siginfo_t* info, void* context) { OnSignal("SignalHandlerFPE",  signal, info, context); }
void SignalHandlerSEGV(int signal, siginfo_t* info, void* context) { OnSignal("SignalHandlerSEGV", signal, info, context); }
void SignalHandlerTRAP(int signal, siginfo_t* info, void* context) { OnSignal("SignalHandlerTRAP", signal, info, context); }
void SignalHandlerBUS (int signal, siginfo_t* info, void* context) { OnSignal("SignalHandlerBUS",  signal, info, context); }
void SignalHandlerSYS (int signal, siginfo_t* info, void* context) { OnSignal("SignalHandlerSYS",  signal, info, context); }
void SignalHandlerPIPE(int signal, siginfo_t* info, void* context) { OnSignal("SignalHandlerPIPE", signal, info, context); }
// clang-format on

constexpr CrashHandlers kHandlers = {SignalHandlerILL, SignalHandlerFPE, SignalHandlerSEGV, SignalHandlerTRAP,
                                     SignalHandlerBUS, SignalHandlerSYS, SignalHandlerPIPE};

// An array overrun in a called function's frame overwrites `words` first and then `spare`. A small overrun is therefore
// reported and does not reach the stack protector's canary. A changed canary would end the process.
struct GuardBuffer {
  static constexpr int kSpareWords = 128;

  std::int32_t words[kGuardBufferLength];
  std::int32_t spare[kSpareWords];
};

void FillBuffer(std::int32_t* buffer) {
  Trace("FillBuffer", static_cast<void*>(buffer));
  for (int i = 0; i < kGuardBufferLength; ++i) buffer[i] = -100 - i;
}

// Returns whether both buffers still contain their fill values. Logs the first word that has changed.
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

// Provides a separate frame as the target of the jump, so that the caller's local variables stay intact.
__attribute__((noinline, no_sanitize("null"))) void RunProtected(REALobject delegate, Function function,
                                                                 const std::int32_t* buffer1,
                                                                 const JumpCleanup* outerCleanup) {
  GuardBuffer buffer2;
  gProtectedThread.store(::pthread_self(), std::memory_order_relaxed);
  gCaughtSignal = 0;
  gHasJumped = 0;
  if (sigsetjmp(gBeforeCall, 1) != 0) {
    // The handlers are still installed, so a fault during the cleanup jumps here again, and the remaining cleanup
    // actions run.
    if (gHasJumped == 0) {
      gHasJumped = 1;
      Trace("call returned with crash.");
    }
    JumpCleanup::RunNewerThan(outerCleanup);
    SetDefaultActions();
    return CountAndRaise(MessageOfCrash(gCaughtSignal), gCaughtSignal);
  }
  InstallHandlers(kHandlers);
  pBuffer2 = buffer2.words;
  FillBuffer(buffer2.words);
  Trace("Buffer1", buffer1[0]);
  Trace("Buffer2", buffer2.words[0]);
  Trace("call...");
  try {
    function(delegate);
  } catch (const std::exception& exception) {
    RestoreHandlers(kHandlers);
    return RaiseCaught(exception);
  } catch (const ThreadEnd&) {
    RestoreHandlers(kHandlers);
    throw;
  } catch (...) {
    RestoreHandlers(kHandlers);
    return RaiseException(kCrashException, "Caught unknown C++ exception!");
  }
  Trace("call returned without crash.");
  RestoreHandlers(kHandlers);
  if (!AreIntact(buffer1, buffer2.words)) CountAndRaise("Stack overwritten!", 0);
}

void CallOnce(REALobject delegate) {
  const InsideCallDelegateCrashClass inside;
  GuardBuffer buffer1;
  pBuffer1 = buffer1.words;
  FillBuffer(buffer1.words);
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
  const AlternateStack alternateStack;
  RunProtected(delegate, function, buffer1.words, JumpCleanup::Newest());
}

}  // namespace

void CallDelegateCrash(REALobject delegate) {
  Trace("CallDelegateCrash");
  if (InsideCallDelegateCrash.exchange(true)) return RaiseException(kCrashException, "Recursion not supported.");
  TranslateExceptions([&] { CallOnce(delegate); });
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
