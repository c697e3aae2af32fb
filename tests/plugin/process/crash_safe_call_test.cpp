// Makes protected calls with real faults and signals. Checks the exception and the signal state after each call.
#include <pthread.h>

#include "plugin/process/crash_safe_fixture.h"

// If not null, receives each signal whose disposition changes. The linker redirects calls to sigaction to
// __wrap_sigaction.
static std::vector<int>* gChangedSignals = nullptr;
extern bool gIsMemoryLocked;
extern "C" int __real_sigaction(int, const struct sigaction*, struct sigaction*);
extern "C" int __wrap_sigaction(int signal, const struct sigaction* action, struct sigaction* former) {
  if (action != nullptr) gIsMemoryLocked = false;
  if (gChangedSignals != nullptr && action != nullptr) gChangedSignals->push_back(signal);
  return __real_sigaction(signal, action, former);
}

namespace {

using namespace tests;

// The signals in the order in which their handlers are installed and then restored. The order is the same on every exit
// path.
const std::vector<int> kExpectedChanges = {SIGILL, SIGFPE, SIGSEGV, SIGTRAP, SIGBUS, SIGSYS, SIGPIPE,
                                           SIGFPE, SIGILL, SIGSEGV, SIGTRAP, SIGBUS, SIGSYS, SIGPIPE};

class CrashSafeSignals : public CrashSafeCall {
 protected:
  // Returns the exception that the call raised, and checks the changes to the signal dispositions.
  static std::string CallAndCheckChanges(const std::function<void()>& body) {
    std::vector<int> changed;
    gChangedSignals = &changed;
    const std::string raised = Call(body);
    gChangedSignals = nullptr;
    EXPECT_EQ(changed, kExpectedChanges);
    return raised;
  }

  // After a crash, every signal has its default action, the host's alternate stack is restored, and the signal of the
  // crash is not blocked. A second crash is handled in the same way.
  static void ExpectCrash(std::string_view note, int signal, const std::function<void()>& body) {
    DropLog();
    static char stackOfHost[64 * 1024];
    const stack_t hosts{.ss_sp = stackOfHost, .ss_flags = 0, .ss_size = sizeof stackOfHost};
    ASSERT_EQ(::sigaltstack(&hosts, nullptr), 0);
    for (const int attempt : {1, 2}) {
      SetHandlersOfHost();
      EXPECT_EQ(CallAndCheckChanges(body), CrashBy(signal)) << note << ", attempt " << attempt;
      EXPECT_EQ(zkt::getCrashCounter(), attempt) << note;
      EXPECT_EQ(zkt::getCallCounter(), attempt) << note;
      for (const auto& each : kCrashSignals)
        EXPECT_EQ(ActionFor(each.number).sa_handler, SIG_DFL) << note << ", " << each.name;
      stack_t now{};
      ASSERT_EQ(::sigaltstack(nullptr, &now), 0);
      EXPECT_TRUE(now.ss_sp == hosts.ss_sp && now.ss_size == hosts.ss_size && now.ss_flags == 0) << note;
      sigset_t blocked;
      ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
      EXPECT_EQ(sigismember(&blocked, signal), 0) << note;
    }
  }
};

TEST_F(CrashSafeSignals, TurnRealFaultsIntoExceptions) {
  for (const stress::Fault& fault : stress::Faults())
    if (fault.signal != 0) RunInChild([&] { ExpectCrash(fault.name, fault.signal, fault.commit); });
}

TEST_F(CrashSafeSignals, TurnRaisedSignalsIntoExceptions) {
  for (const auto& signal : kCrashSignals)
    RunInChild([&] { ExpectCrash(signal.name, signal.number, [&] { std::raise(signal.number); }); });
}

TEST_F(CrashSafeSignals, HaveTheirMaskRestoredAfterACrash) {
  RunInChild([] {
    DropLog();
    Call([] {
      sigset_t all;
      sigfillset(&all);
      sigdelset(&all, SIGBUS);
      ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
      std::raise(SIGBUS);
    });
    sigset_t blocked;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGUSR1), 0);
  });
}

TEST_F(CrashSafeSignals, HaveTheirHandlersRestoredAfterACleanReturn) {
  RunInChild([] {
    SetHandlersOfHost();
    const auto expectProtection = [] {
      for (const auto& signal : kCrashSignals)
        EXPECT_NE(ActionFor(signal.number).sa_handler, HandlerOfHost) << signal.name;
      stack_t stack{};
      ::sigaltstack(nullptr, &stack);
      EXPECT_GE(stack.ss_size, 64u * 1024);
    };
    EXPECT_EQ(CallAndCheckChanges(expectProtection), "");
    tests::ExpectHandlersOfHost("clean return");
    stack_t stack{};
    ::sigaltstack(nullptr, &stack);
    EXPECT_EQ(stack.ss_flags & SS_DISABLE, tests::kIsSanitized ? 0 : SS_DISABLE);
    EXPECT_EQ(zkt::getCallCounter(), 1);
    EXPECT_EQ(zkt::getCrashCounter(), 0);
  });
}

TEST_F(CrashSafeSignals, OnlyLogHandlersThatTheDelegateChanged) {
  for (const auto& signal : kCrashSignals) {
    RunInChild([&] {
      SetHandlersOfHost();
      const auto change = [&] { tests::SetHandler(signal.number, SIG_IGN); };
      const std::string trace = tests::TraceOf([&] { EXPECT_EQ(Call(change), "") << signal.name; });
      EXPECT_EQ(trace.substr(trace.find("call...|") + 8), "call returned without crash.|our handler for " +
                                                              std::string(signal.name) +
                                                              " was changed!|~InsideCallDelegateCrashClass|");
      tests::ExpectHandlersOfHost(signal.name);
    });
  }
}

TEST_F(CrashSafeCall, RejectsWhatItCannotCall) {
  RunInChild([] {
    zkt::CallDelegateCrash(nullptr);
    EXPECT_EQ(Raised(), "NilObjectException: Delegate is nil 0");
    const host::ObjectRef withoutFunction = host::MakeNativeDelegate(nullptr);
    zkt::CallDelegateCrash(withoutFunction.Get());
    EXPECT_EQ(Raised(), "NilObjectException: Delegate function is nil 0");
    const tests::ServiceWithheld without(zkt::REALGetDelegateInvoker);
    EXPECT_EQ(Call([] {}), "NilObjectException: Delegate function is nil 0");
    EXPECT_EQ(zkt::getCallCounter(), 0);
  });
}

TEST_F(CrashSafeCall, RejectsNestedCalls) {
  RunInChild([] {
    SetHandlersOfHost();
    std::string inner;
    const auto nested = [&] {
      const host::ObjectRef delegate = host::MakeNativeDelegate(reinterpret_cast<void*>(&HandlerOfHost));
      zkt::CallDelegateCrash(delegate.Get());
      inner = Raised();
    };
    EXPECT_EQ(Call(nested), "");
    EXPECT_EQ(inner, "DelegateCrashExceptionZKT: Recursion not supported. 0");
    tests::ExpectHandlersOfHost("outer call");
    EXPECT_EQ(zkt::getCallCounter(), 1);
    EXPECT_EQ(zkt::getCrashCounter(), 0);
    // The rejected inner call does not remove the protection of the outer call.
    DropLog();
    EXPECT_EQ(Call([&] {
                nested();
                std::raise(SIGSEGV);
              }),
              CrashBy(SIGSEGV));
    EXPECT_EQ(Call([] {}), "");
  });
}

}  // namespace
