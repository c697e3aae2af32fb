// Tests how ConsoleExecuteZKT treats the host's process: its signals, buffers, descriptors and threads.
#include <sys/resource.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <thread>

#include "plugin/process/console_execute_fixture.h"

namespace {

using namespace tests;

// The host's signal settings must not affect the program.
TEST_F(ConsoleExecute, StartsProgramsWithOrdinarySignals) {
  RunInChild([] {
    sigset_t all;
    sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    // A shell ignores these signals in its background jobs, and programs inherit that. This test may be such a job.
    for (const int signal : {SIGINT, SIGQUIT}) std::signal(signal, SIG_DFL);
    const Outcome outcome = Run([] {
      return Execute("/bin/grep", {"grep", "-E", "^Sig(Blk|Ign):", "/proc/self/status"}, {});
    });
    EXPECT_EQ(outcome.output, "SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n");
    sigset_t mask;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    EXPECT_EQ(sigismember(&mask, SIGTERM), 1) << "the host's own mask is unchanged";
  });
}

// Only the host process, not the child, flushes the host's buffers and runs the host's exit handlers.
TEST_F(ConsoleExecute, ReportsAProgramThatCannotRunOnlyInItsStatus) {
  const struct {
    const char* note;
    std::function<std::int64_t()> start;
  } cases[] = {
      {"missing", [] { return Execute("/nowhere/program", {"a"}, {}); }},
      {"folder", [] { return Execute("/tmp", {"a"}, {}); }},
      {"not a program", [] { return Execute("/etc/passwd", {"a"}, {}); }},
      {"empty path", [] { return Execute("", {"a"}, {}); }},
      {"nil path", [] { return zkt::ConsoleExecuteZKT(nullptr, nullptr, nullptr); }},
      {"nil folder item", [] { return zkt::ConsoleExecuteZKTf(nullptr, nullptr, nullptr); }},
  };
  for (const auto& c : cases) {
    RunInChild([&] {
      std::atexit([] { std::fputs("exit handler", stdout); });
      std::setvbuf(stdout, nullptr, _IOFBF, BUFSIZ);
      const Outcome outcome = Run([&] {
        std::fputs("waits in the buffer", stdout);
        return c.start();
      });
      EXPECT_EQ(outcome.status, W_EXITCODE(1, 0)) << c.note;
      EXPECT_EQ(outcome.output, "") << c.note;
      EXPECT_FALSE(TakeRaised()) << c.note;
    });
  }
}

TEST_F(ConsoleExecute, ReturnsMinusOneWhenNoProcessCanBeStarted) {
  RunInChild([] {
    constexpr unsigned kNobody = 65534;
    const rlimit none{0, 0};
    ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &none), 0);
    ASSERT_TRUE(::getuid() != 0 || ::setuid(kNobody) == 0);
    EXPECT_EQ(Execute("/bin/true", {"true"}, {}), -1);
    EXPECT_FALSE(TakeRaised());
    ExpectBalance();
  });
}

TEST_F(ConsoleExecute, LeavesNoDescriptorAndNoProcessBehind) {
  RunInChild(
      [] {
        const long descriptors = tests::DescriptorCount();
        for (int i = 0; i < 1000; ++i) {
          const std::int64_t child = Execute("/bin/true", {"true"}, {});
          int status = -1;
          ASSERT_EQ(::waitpid(static_cast<pid_t>(child), &status, 0), child);
          ASSERT_EQ(status, 0);
        }
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child process is left";
        EXPECT_EQ(tests::DescriptorCount(), descriptors);
        ExpectBalance();
      },
      240);
}

// A lock that another thread holds during the fork is never released in the child, so the child must not need any lock.
TEST_F(ConsoleExecute, StartsProgramsWhileOtherThreadsAreBusy) {
  RunInChild(
      [] {
        std::atomic<bool> isDone{false};
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
          threads.emplace_back([&] {
            while (!isDone) {
              const auto memory = std::make_unique<char[]>(100'000);
              std::fprintf(stderr, "%s", memory.get());
            }
          });
        for (int i = 0; i < 200; ++i) {
          const char* const path = i % 2 == 0 ? ZKT_SHOW_ARGUMENTS : "/nowhere/program";
          const Outcome outcome = Run([&] { return Execute(path, {"a"}, {}); });
          EXPECT_EQ(outcome.status, i % 2 == 0 ? 0 : W_EXITCODE(1, 0)) << i;
        }
        isDone = true;
        for (std::thread& thread : threads) thread.join();
      },
      120);
}

}  // namespace
