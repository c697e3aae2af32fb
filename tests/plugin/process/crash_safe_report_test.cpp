// Tests what protected calls report: native exceptions, overwritten guard buffers, log lines, and backtraces.
#include <pthread.h>

#include <regex>
#include <thread>

#include "plugin/process/crash_safe_fixture.h"

// While true, an allocation ends the process. __wrap_sigaction sets it to false when a crashed call replaces its signal
// handlers.
bool gIsMemoryLocked = false;
#if !defined(__SANITIZE_ADDRESS__)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* malloc(std::size_t size) {
  if (gIsMemoryLocked) ::_exit(77);
  return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  if (gIsMemoryLocked) ::_exit(77);
  return __libc_calloc(count, size);
}
}
#endif

// This class is outside the unnamed namespace, because the reported class name would otherwise contain the namespace.
struct WithoutText : std::exception {
  const char* what() const noexcept override { return nullptr; }
};

namespace {

using namespace tests;

TEST_F(CrashSafeCall, FindsNativeExceptionsAndOverwrittenGuardBuffers) {
  const std::string returned = "call returned without crash.|";
  const struct {
    const char* note;
    std::function<void()> body;
    const char* want;
    std::string trace;  // the lines after "call..."
    int crashes;
  } cases[] = {
      {"std::exception", [] { throw std::runtime_error("it broke"); }, "Caught std::runtime_error: it broke 0",
       "Caught std::runtime_error: it broke|", 0},
      {"empty message", [] { throw std::invalid_argument(""); }, "Caught std::invalid_argument:  0",
       "Caught std::invalid_argument: |", 0},
      {"no message", [] { throw WithoutText(); }, "Caught WithoutText:  0", "Caught WithoutText: |", 0},
      {"int", [] { throw 1; }, "Caught unknown C++ exception! 0", "", 0},
      {"buffer 1, last word", [] { zkt::pBuffer1[63] = -1; }, "Stack overwritten! 0",
       returned + "Buffer1 changed 63, -1|", 1},
      {"buffer 2, first word", [] { zkt::pBuffer2[0] = 0; }, "Stack overwritten! 0", returned + "Buffer2 changed 0, 0|",
       1},
      {"both, the same word", [] { zkt::pBuffer2[9] = zkt::pBuffer1[9] = 1; }, "Stack overwritten! 0",
       returned + "Buffer1 changed 9, 1|", 1},
      {"a modest overrun of buffer 2", [] { std::fill_n(zkt::pBuffer2, 64 + 128, 5); }, "Stack overwritten! 0",
       returned + "Buffer2 changed 0, 5|", 1},
      {"both, buffer 2 earlier", [] { zkt::pBuffer2[8] = zkt::pBuffer1[9] = 1; }, "Stack overwritten! 0",
       returned + "Buffer2 changed 8, 1|", 1},
  };
  for (const auto& c : cases) {
    RunInChild([&] {
      tests::SetHandlersOfHost();
      const std::string trace =
          TraceOf([&] { EXPECT_EQ(Call(c.body), std::string("DelegateCrashExceptionZKT: ") + c.want) << c.note; });
      EXPECT_EQ(trace.substr(trace.find("call...|") + 8), c.trace + "~InsideCallDelegateCrashClass|") << c.note;
      tests::ExpectHandlersOfHost(c.note);
      EXPECT_EQ(zkt::getCallCounter(), 1) << c.note;
      EXPECT_EQ(zkt::getCrashCounter(), c.crashes) << c.note;
    });
  }
}

TEST_F(CrashSafeCall, FillsTheGuardBuffers) {
  RunInChild([] {
    EXPECT_EQ(Call([] {
                for (const std::int32_t* const buffer : {zkt::pBuffer1, zkt::pBuffer2})
                  for (int i = 0; i < 64; ++i) EXPECT_EQ(buffer[i], -100 - i);
                // There is one buffer on each side of the call's own data on the stack.
                EXPECT_GT(zkt::pBuffer1, zkt::pBuffer2 + 64);
              }),
              "");
  });
}

// Replaces addresses, which differ between runs, and backtrace frames, which differ between builds.
std::string Simplified(const std::string& log) {
  const std::string withoutFrames =
      std::regex_replace(log, std::regex(R"((([^|]* )?\[0x[0-9a-f]+\]\|)+)"), "(backtrace)|");
  return std::regex_replace(withoutFrames, std::regex(R"((0x|\(nil\))[^|]*)"), "@");
}

TEST_F(CrashSafeCall, LogsItsStepsWhileDebugging) {
  RunInChild([] {
    const std::string trace = TraceOf([] {
      zkt::getCrashCounter();
      Call([] {});
      zkt::CallDelegateCrash(nullptr);
      zkt::getCrashCounter();
      Call([] { std::raise(SIGTRAP); });
    });
    const std::string began = "CallDelegateCrash|InsideCallDelegateCrashClass|FillBuffer @|";
    const std::string called = began + "FillBuffer @|Buffer1 -100|Buffer2 -100|call...|";
    const std::string ended = "~InsideCallDelegateCrashClass|";
    EXPECT_EQ(Simplified(trace), "pBuffer1 @|pBuffer2 @|" + called + "call returned without crash.|" + ended + began +
                                     "delegate is nil|" + ended + called +
                                     "SignalHandlerTRAP 5|(backtrace)|call returned with crash.|" + ended);
  });
}

// After a jump to an unmapped address, writing the backtrace also causes a fault. The plug-in must not try to write it
// again.
TEST_F(CrashSafeCall, GivesUpABacktraceThatFaults) {
  RunInChild([] {
    const std::string trace =
        TraceOf([] { EXPECT_EQ(Call(tests::FaultNamed("CrashByWildFunction").commit), CrashBy(SIGSEGV)); });
    const std::string line = "SignalHandlerSEGV " + std::to_string(SIGSEGV) + '|';
    EXPECT_NE(trace.find(line), std::string::npos) << trace;
    EXPECT_EQ(trace.find(line), trace.rfind(line)) << trace;
  });
}

// A failed write to a log whose reader is gone does not count as a crash of the delegate, and does not affect the
// report of a crash.
TEST_F(CrashSafeCall, DoesNotDependOnItsLog) {
  RunInChild([] {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    ::dup2(ends[1], STDERR_FILENO);
    const Debugging debugging;
    EXPECT_EQ(Call([] {}), "");
    EXPECT_EQ(Call([] { std::raise(SIGSEGV); }), CrashBy(SIGSEGV));
  });
}

// On macOS, pthread_exit does not unwind the stack. On Linux, it unwinds with an exception type that libc++ does not
// declare.
#if defined(__GLIBCXX__)
TEST_F(CrashSafeCall, AllowsTheThreadToEnd) {
  RunInChild([] {
    tests::SetHandlersOfHost();
    std::thread([] { Call([] { ::pthread_exit(nullptr); }); }).join();
    EXPECT_EQ(Raised(), "");
    tests::ExpectHandlersOfHost("end of the thread");
    EXPECT_EQ(Call([] {}), "");
  });
}
#endif

TEST_F(CrashSafeCall, WritesABacktraceWithoutDebugging) {
  RunInChild([] { EXPECT_EQ(Simplified(tests::LogOf([] { Call([] { std::raise(SIGILL); }); })), "(backtrace)|"); });
}

#if !defined(__SANITIZE_ADDRESS__)
// Simulates a crash inside the allocator, whose lock is never released.
TEST_F(CrashSafeCall, AllocatesNothingBetweenTheCrashAndTheJump) {
  RunInChild([] {
    const auto crash = [] {
      gIsMemoryLocked = true;  // until the crashed call replaces its handlers
      std::raise(SIGSEGV);
    };
    const std::string log = tests::LogOf([&] { EXPECT_EQ(Call(crash), CrashBy(SIGSEGV)); });
    EXPECT_EQ(Simplified(log), "(backtrace)|");
  });
}
#endif

}  // namespace
