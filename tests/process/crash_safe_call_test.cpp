// Protected calls with real faults and real signals.
#include "process/crash_safe_call.h"

#include <fcntl.h>
#include <sys/mman.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>

#include "frame/catalogue_tables.h"
#include "language/faults.h"
#include "support/child_process.h"
#include "support/host_fixture.h"

// Every change of a disposition, as long as somebody wants to know; the linker puts this in front of the system's.
static std::vector<int>* gChangedSignals = nullptr;
extern "C" int __real_sigaction(int, const struct sigaction*, struct sigaction*);
extern "C" int __wrap_sigaction(int signal, const struct sigaction* action, struct sigaction* former) {
  if (gChangedSignals != nullptr && action != nullptr) gChangedSignals->push_back(signal);
  return __real_sigaction(signal, action, former);
}

namespace {

using tests::CapturedLog;
using tests::Debugging;
using tests::RunApart;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSanitized = true;  // its own bookkeeping grows
#else
constexpr bool kIsSanitized = false;
#endif

constexpr int kSignals[] = {SIGILL, SIGFPE, SIGSEGV, SIGTRAP, SIGBUS, SIGSYS, SIGPIPE};
const std::vector<int> kOrderBack = {SIGFPE, SIGILL, SIGSEGV, SIGTRAP, SIGBUS, SIGSYS, SIGPIPE};

void HandlerOfHost(int) {}
void OtherHandlerOfHost(int) {}

void SetHandler(int signal, void (*handler)(int), int flags = 0) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = flags;
  ASSERT_EQ(__real_sigaction(signal, &action, nullptr), 0);
}

struct sigaction ActionFor(int signal) {
  struct sigaction action {};
  EXPECT_EQ(__real_sigaction(signal, nullptr, &action), 0);
  return action;
}

// The host's own dispositions: a handler each, another one for SIGTRAP.
void SetHandlersOfHost() {
  for (const int signal : kSignals)
    SetHandler(signal, signal == SIGTRAP ? OtherHandlerOfHost : HandlerOfHost, SA_RESTART | SA_NOCLDSTOP);
}

class CrashSafeCall : public tests::HostTest {
 protected:
  CrashSafeCall() {
    auto& classes = host::Host::Current().objectClasses;
    if (classes.empty()) classes.push_back(host::MakeClass(zkt::DelegateCrashExceptionClass(), 0));
  }

  // What the call raised, the error number included; empty for nothing.
  static std::string Call(std::function<void()> body) {
    body_ = std::move(body);
    const host::ObjectRef delegate = host::MakeNativeDelegate(reinterpret_cast<void*>(&Invoke));
    zkt::CallDelegateCrash(delegate.Get());
    return Raised();
  }

  static std::string Raised() {
    const auto raised = TakeRaised();
    if (!raised) return "";
    return raised->className + ": " + raised->message + " " + std::to_string(raised->errorNumber);
  }

  static std::string CrashOf(const char* message, int number) {
    return std::string("DelegateCrashExceptionZKT: Delegate crashed") + message + " " + std::to_string(number);
  }

  // Where backtraces do not disturb.
  static void DropLog() { ASSERT_GE(::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO), 0); }

 private:
  static void Invoke(REALobjectStruct* /*delegate*/) { body_(); }
  static inline std::function<void()> body_;
};

const host::Fault& FaultNamed(std::string_view name) {
  return *std::ranges::find(host::Faults(), name, &host::Fault::name);
}

const char* MessageFor(int signal) {
  const std::pair<int, const char*> messages[] = {
      {SIGILL, " with illegal instruction."},
      {SIGTRAP, " with trace trap."},
      {SIGFPE, " with floating point error."},
      {SIGBUS, " with memory bus error."},
      {SIGSEGV, " with invalid pointer access."},
      {SIGSYS, " with wrong system call."},
      {SIGPIPE, " with broken pipe."},
  };
  for (const auto& [number, message] : messages)
    if (number == signal) return message;
  return ".";
}

// After a crash: default actions, the host's alternate stack, nothing blocked; and it can be done again.
void ExpectCrash(const char* note, int signal, const std::function<std::string()>& call, const std::string& want) {
  static char stackOfHost[64 * 1024];
  const stack_t hosts{.ss_sp = stackOfHost, .ss_flags = 0, .ss_size = sizeof stackOfHost};
  ASSERT_EQ(::sigaltstack(&hosts, nullptr), 0);
  for (const int attempt : {1, 2}) {
    SetHandlersOfHost();
    const std::int64_t crashes = zkt::getCrashCounter();
    const std::int64_t calls = zkt::getCallCounter();
    EXPECT_EQ(call(), want) << note << ", attempt " << attempt;
    EXPECT_EQ(zkt::getCrashCounter(), crashes + 1) << note;
    EXPECT_EQ(zkt::getCallCounter(), calls + 1) << note;
    for (const int each : kSignals) EXPECT_EQ(ActionFor(each).sa_handler, SIG_DFL) << note << ", " << each;
    stack_t now{};
    ASSERT_EQ(::sigaltstack(nullptr, &now), 0);
    EXPECT_EQ(now.ss_sp, hosts.ss_sp) << note;
    EXPECT_EQ(now.ss_size, hosts.ss_size) << note;
    EXPECT_EQ(now.ss_flags, 0) << note;
    sigset_t blocked;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, signal), 0) << note;
  }
}

TEST_F(CrashSafeCall, TurnsRealFaultsIntoExceptions) {
  for (const host::Fault& fault : host::Faults()) {
    if (fault.signal == 0) continue;
    RunApart([&] {
      DropLog();
      ExpectCrash(
          fault.name.data(), fault.signal, [&] { return Call(fault.commit); },
          CrashOf(MessageFor(fault.signal), fault.signal));
    });
  }
}

TEST_F(CrashSafeCall, TurnsRaisedSignalsIntoExceptions) {
  for (const int signal : kSignals) {
    RunApart([&] {
      DropLog();
      ExpectCrash(
          strsignal(signal), signal, [&] { return Call([&] { std::raise(signal); }); },
          CrashOf(MessageFor(signal), signal));
    });
  }
}

TEST_F(CrashSafeCall, LeavesOtherSignalsAlone) {
  for (const int signal : {SIGABRT, SIGTERM, SIGUSR1}) {
    const int status = tests::StatusOf([&] {
      DropLog();
      SetHandler(signal, SIG_DFL);
      Call([&] { std::raise(signal); });
    });
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal;
  }
}

TEST_F(CrashSafeCall, LetsASecondFaultOutsideEndTheProcess) {
  const int status = tests::StatusOf([] {
    DropLog();
    SetHandlersOfHost();
    Call([] { std::raise(SIGFPE); });
    std::raise(SIGSEGV);
  });
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGSEGV);
}

TEST_F(CrashSafeCall, RestoresTheSignalMask) {
  RunApart([] {
    DropLog();
    Call([] {
      sigset_t all;
      sigfillset(&all);
      for (const int signal : kSignals) sigdelset(&all, signal);
      ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
      std::raise(SIGBUS);
    });
    sigset_t blocked;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGUSR1), 0);
  });
}

TEST_F(CrashSafeCall, PutsTheHandlersBackAfterACleanReturn) {
  RunApart([] {
    SetHandlersOfHost();
    std::vector<struct sigaction> before;
    for (const int signal : kSignals) before.push_back(ActionFor(signal));
    std::vector<int> changed;
    gChangedSignals = &changed;
    EXPECT_EQ(Call([] {
                EXPECT_EQ(gChangedSignals->size(), std::size(kSignals)) << "installed";
                for (const int signal : kSignals) EXPECT_NE(ActionFor(signal).sa_handler, HandlerOfHost) << signal;
                stack_t stack{};
                ::sigaltstack(nullptr, &stack);
                EXPECT_GE(stack.ss_size, 64u * 1024);
              }),
              "");
    gChangedSignals = nullptr;
    EXPECT_EQ(std::vector<int>(changed.begin(), changed.begin() + 7), std::vector<int>(kSignals, kSignals + 7));
    EXPECT_EQ(std::vector<int>(changed.begin() + 7, changed.end()), kOrderBack);
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
      const struct sigaction now = ActionFor(kSignals[i]);
      EXPECT_EQ(now.sa_handler, HandlerOfHost) << "for SIGTRAP too, which gets the one of SIGSEGV";
      EXPECT_EQ(now.sa_flags, before[i].sa_flags);
    }
    stack_t stack{};
    ::sigaltstack(nullptr, &stack);
    EXPECT_EQ(stack.ss_flags & SS_DISABLE, kIsSanitized ? 0 : SS_DISABLE);
    EXPECT_EQ(zkt::getCallCounter(), 1);
    EXPECT_EQ(zkt::getCrashCounter(), 0);
  });
}

TEST_F(CrashSafeCall, SetsTheDefaultsInTheirOrderAfterACrash) {
  RunApart([] {
    DropLog();
    std::vector<int> changed;
    gChangedSignals = &changed;
    Call([] { std::raise(SIGBUS); });
    gChangedSignals = nullptr;
    EXPECT_EQ(std::vector<int>(changed.begin() + 7, changed.end()), kOrderBack);
  });
}

TEST_F(CrashSafeCall, TurnsNativeExceptionsIntoExceptions) {
  struct Foreign {};
  const struct {
    const char* note;
    std::function<void()> body;
    const char* want;
    const char* log;
  } cases[] = {
      {"std::exception", [] { throw std::runtime_error("it broke"); }, "Caught std::runtime_error: it broke 0",
       "ZKT Debug: Caught std::runtime_error: it broke\n"},
      {"empty text", [] { throw std::invalid_argument(""); }, "Caught std::invalid_argument:  0",
       "ZKT Debug: Caught std::invalid_argument: \n"},
      {"int", [] { throw 1; }, "Caught unknown C++ exception! 0", ""},
      {"class", [] { throw Foreign(); }, "Caught unknown C++ exception! 0", ""},
  };
  for (const auto& c : cases) {
    RunApart([&] {
      SetHandlersOfHost();
      const Debugging debugging;
      CapturedLog log;
      EXPECT_EQ(Call(c.body), std::string("DelegateCrashExceptionZKT: ") + c.want) << c.note;
      const std::string text = log.Take();
      const std::size_t tail = text.find("call...\n") + 8;
      EXPECT_EQ(text.substr(tail), std::string(c.log) + "ZKT Debug: ~InsideCallDelegateCrashClass\n") << c.note;
      for (const int signal : kSignals) EXPECT_EQ(ActionFor(signal).sa_handler, HandlerOfHost) << c.note;
      EXPECT_EQ(zkt::getCallCounter(), 1) << c.note;
      EXPECT_EQ(zkt::getCrashCounter(), 0) << c.note;
    });
  }
}

TEST_F(CrashSafeCall, FindsOverwrittenGuardBuffers) {
  const struct {
    const char* note;
    std::function<void()> body;
    const char* log;
  } cases[] = {
      {"buffer 1, first word", [] { zkt::pBuffer1[0] = 7; }, "ZKT Debug: Buffer1 changed 0, 7\n"},
      {"buffer 1, last word", [] { zkt::pBuffer1[63] = -1; }, "ZKT Debug: Buffer1 changed 63, -1\n"},
      {"buffer 2, first word", [] { zkt::pBuffer2[0] = 0; }, "ZKT Debug: Buffer2 changed 0, 0\n"},
      {"buffer 2, last word", [] { zkt::pBuffer2[63] = -164; }, "ZKT Debug: Buffer2 changed 63, -164\n"},
      {"both, the same word", [] { zkt::pBuffer2[9] = zkt::pBuffer1[9] = 1; }, "ZKT Debug: Buffer1 changed 9, 1\n"},
      {"both, buffer 2 earlier", [] { zkt::pBuffer2[8] = zkt::pBuffer1[9] = 1; }, "ZKT Debug: Buffer2 changed 8, 1\n"},
  };
  for (const auto& c : cases) {
    RunApart([&] {
      SetHandlersOfHost();
      const Debugging debugging;
      CapturedLog log;
      EXPECT_EQ(Call(c.body), "DelegateCrashExceptionZKT: Stack overwritten! 0") << c.note;
      EXPECT_NE(log.Take().find(c.log), std::string::npos) << c.note;
      EXPECT_EQ(ActionFor(SIGSEGV).sa_handler, HandlerOfHost) << c.note;
      EXPECT_EQ(zkt::getCrashCounter(), 1) << c.note;
    });
  }
}

TEST_F(CrashSafeCall, FillsTheGuardBuffers) {
  RunApart([] {
    EXPECT_EQ(Call([] {
                for (const std::int32_t* const buffer : {zkt::pBuffer1, zkt::pBuffer2})
                  for (int i = 0; i < 64; ++i) EXPECT_EQ(buffer[i], -100 - i);
                // One on each side of what the call itself has on the stack.
                EXPECT_GT(zkt::pBuffer1, zkt::pBuffer2 + 64);
              }),
              "");
  });
}

TEST_F(CrashSafeCall, RefusesWhatItCannotCall) {
  RunApart([] {
    zkt::CallDelegateCrash(nullptr);
    EXPECT_EQ(Raised(), "NilObjectException: Delegate is nil 0");
    const host::ObjectRef withoutFunction = host::MakeNativeDelegate(nullptr);
    zkt::CallDelegateCrash(withoutFunction.Get());
    EXPECT_EQ(Raised(), "NilObjectException: Delegate function is nil 0");
    const tests::Without without(zkt::REALGetDelegateInvoker, "PluginGetDelegateInvoker");
    EXPECT_EQ(Call([] {}), "NilObjectException: Delegate function is nil 0");
    EXPECT_EQ(zkt::getCallCounter(), 0);
  });
}

TEST_F(CrashSafeCall, RefusesACallInsideACall) {
  RunApart([] {
    SetHandlersOfHost();
    std::string inner;
    const auto nested = [&] {
      const host::ObjectRef delegate = host::MakeNativeDelegate(reinterpret_cast<void*>(&HandlerOfHost));
      zkt::CallDelegateCrash(delegate.Get());
      inner = Raised();
    };
    EXPECT_EQ(Call(nested), "");
    EXPECT_EQ(inner, "DelegateCrashExceptionZKT: Recursion not supported. 0");
    EXPECT_EQ(ActionFor(SIGSEGV).sa_handler, HandlerOfHost);
    EXPECT_EQ(zkt::getCallCounter(), 1);
    EXPECT_EQ(zkt::getCrashCounter(), 0);
    // The refused call has not taken the protection from the one around it.
    DropLog();
    EXPECT_EQ(Call([&] {
                nested();
                std::raise(SIGSEGV);
              }),
              CrashOf(" with invalid pointer access.", SIGSEGV));
    EXPECT_EQ(Call([] {}), "");
  });
}

TEST_F(CrashSafeCall, OnlyLogsAHandlerThatTheDelegateHasChanged) {
  const std::pair<int, const char*> names[] = {{SIGILL, "SIGILL"},   {SIGFPE, "SIGFPE"}, {SIGSEGV, "SIGSEGV"},
                                               {SIGTRAP, "SIGTRAP"}, {SIGBUS, "SIGBUS"}, {SIGSYS, "SIGSYS"},
                                               {SIGPIPE, "SIGPIPE"}};
  for (const auto& [signal, name] : names) {
    RunApart([signal = signal, name = name] {
      SetHandlersOfHost();
      const Debugging debugging;
      CapturedLog log;
      EXPECT_EQ(Call([&] { SetHandler(signal, SIG_IGN); }), "") << name;
      const std::string text = log.Take();
      EXPECT_EQ(text.substr(text.find("call...\n") + 8),
                "ZKT Debug: call returned without crash.\nZKT Debug: our handler for " + std::string(name) +
                    " was changed!\nZKT Debug: ~InsideCallDelegateCrashClass\n");
      EXPECT_EQ(ActionFor(signal).sa_handler, HandlerOfHost) << name;
    });
  }
}

// Addresses differ from run to run, and the frames of a backtrace from build to build.
std::string Simplified(const std::string& log) {
  std::string simplified;
  bool inBacktrace = false;
  std::istringstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    const bool isFrame = line.find(" [0x") != std::string::npos && line.ends_with(']');
    if (isFrame && !inBacktrace) simplified += "(backtrace)\n";
    inBacktrace = isFrame;
    if (isFrame) continue;
    const std::size_t address = std::min(line.find("0x"), line.find("(nil)"));
    simplified += address == std::string::npos ? line : line.substr(0, address) + "@";
    simplified += '\n';
  }
  return simplified;
}

TEST_F(CrashSafeCall, TellsTheDebugLogWhatItDoes) {
  RunApart([] {
    const Debugging debugging;
    CapturedLog log;
    zkt::getCrashCounter();
    Call([] {});
    zkt::CallDelegateCrash(nullptr);
    zkt::getCrashCounter();
    Call([] { std::raise(SIGTRAP); });
    const std::string began =
        "ZKT Debug: CallDelegateCrash\n"
        "ZKT Debug: InsideCallDelegateCrashClass\n"
        "ZKT Debug: FillBuffer @\n";
    const std::string called = began +
                               "ZKT Debug: FillBuffer @\n"
                               "ZKT Debug: Buffer1 -100\n"
                               "ZKT Debug: Buffer2 -100\n"
                               "ZKT Debug: call...\n";
    const std::string ended = "ZKT Debug: ~InsideCallDelegateCrashClass\n";
    EXPECT_EQ(Simplified(log.Take()),
              "ZKT Debug: pBuffer1 @\n"
              "ZKT Debug: pBuffer2 @\n" +
                  called + "ZKT Debug: call returned without crash.\n" + ended + began +
                  "ZKT Debug: delegate is nil\n" + ended + called +
                  "ZKT Debug: SignalHandlerTRAP 5\n(backtrace)\n"
                  "ZKT Debug: call returned with crash.\n" +
                  ended);
  });
}

// The backtrace over a stack without an end faults too; it is not tried a second time.
TEST_F(CrashSafeCall, GivesUpABacktraceThatFaults) {
  RunApart([] {
    const Debugging debugging;
    CapturedLog log;
    EXPECT_EQ(Call(FaultNamed("CrashByWildFunction").commit), CrashOf(" with invalid pointer access.", SIGSEGV));
    const std::string text = log.Take();
    const std::string line = "SignalHandlerSEGV " + std::to_string(SIGSEGV) + '\n';
    int count = 0;
    for (std::size_t at = 0; (at = text.find(line, at)) != std::string::npos; ++at) ++count;
    EXPECT_GE(count, 1);
    EXPECT_LE(count, 2);
  });
}

TEST_F(CrashSafeCall, WritesABacktraceWithoutDebugging) {
  RunApart([] {
    CapturedLog log;
    Call([] { std::raise(SIGILL); });
    EXPECT_EQ(Simplified(log.Take()), "(backtrace)\n");
  });
}

long ResidentPages() {
  long size = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident;
}

long DescriptorCount() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

TEST_F(CrashSafeCall, CanBeRepeatedWithoutGrowing) {
  const struct {
    const char* fault;
    int count;
  } cases[] = {{"CrashByNullPointer", 10'000}, {"CrashByClosedPipe", 1'000}, {"CrashByRecursion", 1'000}};
  for (const auto& c : cases) {
    RunApart(
        [&] {
          DropLog();
          const host::Fault& fault = FaultNamed(c.fault);
          const std::string want = CrashOf(MessageFor(fault.signal), fault.signal);
          const auto crash = [&](int times) {
            for (int i = 0; i < times; ++i) ASSERT_EQ(Call(fault.commit), want) << i;
          };
          crash(c.count / 10);
          const long descriptors = DescriptorCount();
          ResidentPages();  // the first look takes memory itself
          const long pages = ResidentPages();
          crash(c.count);
          EXPECT_EQ(DescriptorCount(), descriptors) << c.fault;
          const long grown = ResidentPages() - pages;
          EXPECT_TRUE(kIsSanitized || grown <= 64) << c.fault << ": " << grown << " pages more";
        },
        240);
  }
}

// The stack for handlers belongs to the thread, and goes with it.
TEST_F(CrashSafeCall, WorksOnEveryThread) {
  RunApart([] {
    DropLog();
    long pages = 0;
    for (int i = 0; i < 200; ++i) {
      std::thread([] {
        EXPECT_EQ(Call(FaultNamed("CrashByRecursion").commit), CrashOf(" with invalid pointer access.", SIGSEGV));
      }).join();
      if (i == 20) pages = ResidentPages();
    }
    EXPECT_TRUE(kIsSanitized || ResidentPages() <= pages + 64) << pages << " pages have become " << ResidentPages();
  });
}

}  // namespace
