// Tests the methods that end the process, and the backtrace.
#include "process/process_control.h"

#include <dlfcn.h>
#include <execinfo.h>

#include <csignal>
#include <cstdlib>

#include "platform/backtrace_line.h"
#include "process/backtrace.h"
#include "support/child_process.h"
#include "support/host_fixture.h"

namespace {

using tests::CapturedLog;
using tests::StatusOf;

TEST(ProcessControl, ExitsWithTheLowBitsOfTheCode) {
  const struct {
    std::int64_t code;
    int want;
  } cases[] = {{0, 0}, {3, 3}, {255, 255}, {256, 0}, {-1, 255}, {0x1'0000'0005, 5}};
  for (const auto& c : cases) {
    const int status = StatusOf([&] { zkt::ExitZKT(c.code); });
    EXPECT_TRUE(WIFEXITED(status)) << c.code;
    EXPECT_EQ(WEXITSTATUS(status), c.want) << c.code;
  }
}

TEST(ProcessControl, RunsExitHandlers) {
  const int status = StatusOf([] {
    std::atexit([] { ::_exit(42); });
    zkt::ExitZKT(0);
  });
  EXPECT_EQ(WEXITSTATUS(status), 42);
}

TEST(ProcessControl, CrashesWithTheSignalOfTheMethod) {
#if defined(__x86_64__)
  constexpr int kTrapSignal = SIGILL;
#else
  constexpr int kTrapSignal = SIGTRAP;
#endif
  const struct {
    const char* note;
    void (*crash)();
    int want;
  } cases[] = {
      {"AbortZKT", zkt::AbortZKT, SIGABRT},
      {"CrashNice", zkt::CrashNice, kTrapSignal},
      {"CrashUgly", zkt::CrashUgly, SIGABRT},
  };
  for (const auto& c : cases) {
    const int status = StatusOf([&] {
      std::signal(c.want, SIG_DFL);  // a sanitizer may have set its own handler
      c.crash();
    });
    ASSERT_TRUE(WIFSIGNALED(status)) << c.note;
    EXPECT_EQ(WTERMSIG(status), c.want) << c.note;
  }
}

int CountLines(const std::string& text) { return static_cast<int>(std::count(text.begin(), text.end(), '|')); }

__attribute__((noinline)) int Deepen(int levels) {
  if (levels == 0) {
    zkt::PrintBacktrace();
    return 0;
  }
  volatile int result = Deepen(levels - 1);  // prevents a tail call
  return result + 1;
}

TEST(Backtrace, HasALineForEachFrameWithoutDebugging) {
  const auto deepLog = [](int levels) { return tests::LogOf([=] { Deepen(levels); }); };
  const std::string deep = deepLog(5);
  EXPECT_EQ(CountLines(deep), CountLines(deepLog(0)) + 5) << deep;
  std::size_t begin = 0;
  for (int i = 0; i < CountLines(deep); ++i, begin = deep.find('|', begin) + 1)
    EXPECT_EQ(deep.compare(begin, 11, "ZKT Debug: "), 0) << deep.substr(begin);
  EXPECT_EQ(CountLines(deepLog(200)), 100);
}

// The lines are the same as those of the system's function, although they are written without allocating memory.
TEST(Backtrace, EqualsTheBacktraceOfTheSystem) {
  static const int inThisFile = 0;
  std::vector<void*> frames(100);
  frames.resize(static_cast<std::size_t>(::backtrace(frames.data(), 100)));
  frames.insert(frames.end(), {nullptr, reinterpret_cast<void*>(8), const_cast<int*>(&inThisFile),
                               ::dlsym(RTLD_DEFAULT, "qsort"), static_cast<char*>(::dlsym(RTLD_DEFAULT, "qsort")) + 1});
  char** const want = ::backtrace_symbols(frames.data(), static_cast<int>(frames.size()));
  ASSERT_NE(want, nullptr);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    char line[4096];
    zkt::DescribeFrame(line, static_cast<int>(i), frames[i]);
    EXPECT_STREQ(line, want[i]);
    char shortLine[20];
    zkt::DescribeFrame(shortLine, static_cast<int>(i), frames[i]);
    EXPECT_EQ(shortLine, std::string(want[i]).substr(0, 19));
  }
  std::free(static_cast<void*>(want));
}

}  // namespace
