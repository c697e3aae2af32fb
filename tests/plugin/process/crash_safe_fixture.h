// Helpers for tests of protected calls in child processes. They make the calls and check the signal state afterward.
#pragma once

#include <fcntl.h>

#include <algorithm>
#include <csignal>
#include <functional>

#include "frame/catalogue/tables.h"
#include "process/crash_safe_call.h"
#include "stress/faults.h"
#include "support/child_process.h"
#include "support/host_fixture.h"

namespace tests {

#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kIsSanitized = true;  // the sanitizer allocates memory for itself and sets an alternate stack
#else
inline constexpr bool kIsSanitized = false;
#endif

struct CrashSignal {
  int number;
  const char* name;
  const char* message;
};

// The signals in the order in which their handlers are installed.
inline constexpr CrashSignal kCrashSignals[] = {
    {SIGILL, "SIGILL", "illegal instruction"},
    {SIGFPE, "SIGFPE", "floating point error"},
    {SIGSEGV, "SIGSEGV", "invalid pointer access"},
    {SIGTRAP, "SIGTRAP", "trace trap"},
    {SIGBUS, "SIGBUS", "memory bus error"},
    {SIGSYS, "SIGSYS", "wrong system call"},
    {SIGPIPE, "SIGPIPE", "broken pipe"},
};

inline void HandlerOfHost(int) {}
inline void OtherHandlerOfHost(int) {}

inline struct sigaction ActionFor(int signal) {
  struct sigaction action {};
  EXPECT_EQ(::sigaction(signal, nullptr, &action), 0);
  return action;
}

inline void SetHandler(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART | SA_NOCLDSTOP;
  ASSERT_EQ(::sigaction(signal, &action, nullptr), 0);
}

// Sets the signal dispositions of a host, with a different handler for SIGTRAP.
inline void SetHandlersOfHost() {
  for (const CrashSignal& signal : kCrashSignals)
    SetHandler(signal.number, signal.number == SIGTRAP ? OtherHandlerOfHost : HandlerOfHost);
}

// Expects the host's dispositions, except that SIGTRAP has the handler of SIGSEGV.
inline void ExpectHandlersOfHost(const char* note) {
  for (const CrashSignal& signal : kCrashSignals) {
    EXPECT_EQ(ActionFor(signal.number).sa_handler, HandlerOfHost) << note << ", " << signal.name;
    EXPECT_EQ(ActionFor(signal.number).sa_flags & (SA_RESTART | SA_NOCLDSTOP), SA_RESTART | SA_NOCLDSTOP) << note;
  }
}

// Discards standard error, including backtraces.
inline void DropLog() { ASSERT_GE(::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO), 0); }

// Returns the result of Call for a crash with the given signal.
inline std::string CrashBy(int signal) {
  for (const CrashSignal& known : kCrashSignals)
    if (known.number == signal)
      return std::string("DelegateCrashExceptionZKT: Delegate crashed with ") + known.message + ". " +
             std::to_string(signal);
  return "no such signal";
}

inline const stress::Fault& FaultNamed(std::string_view name) {
  return *std::ranges::find(stress::Faults(), name, &stress::Fault::name);
}

class CrashSafeCall : public HostTest {
 protected:
  CrashSafeCall() {
    auto& classes = host::Host::Current().objectClasses;
    if (classes.empty()) classes.push_back(host::MakeClass(zkt::DelegateCrashExceptionClass(), 0));
  }

  // Returns the class, message, and error number of the exception that the call raised, or an empty string.
  static std::string Call(std::function<void()> body) {
    body_ = std::move(body);
    const host::ObjectRef delegate = host::MakeNativeDelegate(reinterpret_cast<void*>(&Invoke));
    zkt::CallDelegateCrash(delegate.Get());
    return Raised();
  }

  static std::string Raised() {
    const auto raised = TakeRaised();
    return raised ? raised->className + ": " + raised->message + " " + std::to_string(raised->errorNumber) : "";
  }

 private:
  static void Invoke(REALobjectStruct* /*delegate*/) { body_(); }
  static inline std::function<void()> body_;
};

}  // namespace tests
