// Tests ConsoleExecuteZKT by starting real programs.
#include "process/console_execute.h"

#include <fcntl.h>
#include <sys/resource.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

#include "core/folder_items.h"
#include "process/string_store.h"
#include "support/child_process.h"
#include "support/host_fixture.h"

namespace {

using namespace tests;
using Texts = std::vector<std::string>;

class ConsoleExecute : public tests::HostTest {
 protected:
  struct Outcome {
    int status = -1;  // as returned by waitpid
    std::string output;
  };

  static host::ArrayRef MakeArray(const Texts& texts, std::uint32_t encoding = zkt::kEncodingUTF8) {
    host::ArrayRef array(
        host::MakeArray({host::TypeKind::kString, false, {}}, static_cast<std::int64_t>(texts.size()) - 1));
    for (std::size_t i = 0; i < texts.size(); ++i)
      host::ElementAt<REALstringStruct*>(array.Get(), static_cast<std::int64_t>(i)) =
          host::MakeString(texts[i], encoding);
    return array;
  }

  static _REALarrayString* Native(const host::ArrayRef& array) {
    return reinterpret_cast<_REALarrayString*>(array.Get());
  }

  // Calls `start`, which starts a program, and waits until the program ends. Captures the program's standard output
  // through a pipe.
  template <class Start>
  static Outcome Run(Start start) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const int output = ::dup(STDOUT_FILENO);
    ::dup2(ends[1], STDOUT_FILENO);
    ::close(ends[1]);
    const std::int64_t child = start();
    ::dup2(output, STDOUT_FILENO);
    ::close(output);
    Outcome outcome;
    char buffer[4096];
    for (ssize_t count; (count = ::read(ends[0], buffer, sizeof buffer)) > 0;)
      outcome.output.append(buffer, static_cast<std::size_t>(count));
    ::close(ends[0]);
    EXPECT_GT(child, 0);
    EXPECT_EQ(::waitpid(static_cast<pid_t>(child), &outcome.status, 0), child);
    return outcome;
  }

  static std::int64_t Execute(std::string_view path, const Texts& arguments, const Texts& environment) {
    return zkt::ConsoleExecuteZKT(MakeString(path).Get(), Native(MakeArray(arguments)), Native(MakeArray(environment)));
  }

  // Returns the expected output of ZKT_SHOW_ARGUMENTS.
  static std::string Shown(const Texts& arguments, const Texts& environment) {
    std::string shown;
    for (const std::string& argument : arguments) shown += argument + '\0';
    shown += '\n';
    for (const std::string& variable : environment) shown += variable + '\0';
    return shown;
  }
};

Texts Numbered(const char* prefix, int count) {
  Texts texts;
  for (int i = 0; i < count; ++i) texts.push_back(prefix + std::to_string(i));
  return texts;
}

Texts First64(Texts texts) {
  texts.resize(std::min<std::size_t>(texts.size(), 64));
  return texts;
}

TEST_F(ConsoleExecute, PassesArgumentsAndEnvironmentByteForByte) {
  const struct {
    const char* note;
    Texts arguments;
    Texts environment;
  } cases[] = {
      {"one", {"show"}, {"A=1"}},
      {"spaces, quotes, special characters",
       {"show", "a b", "'\"`$HOME\\", "*", "-x", "\n\t"},
       {"A=a b", "B", "=", "C=='\""}},
      {"empty elements", {"show", "", "x", ""}, {"", "A="}},
      {"not ASCII", {"show", "übel", "日本", "e\xCC\x81", "𝄞"}, {"Ä=ö"}},
      {"64", Numbered("argument ", 64), Numbered("V=", 64)},
      {"70", Numbered("argument ", 70), Numbered("V=", 70)},
      {"long", {"show", std::string(100'000, 'x')}, {"A=" + std::string(100'000, 'y')}},
      {"no environment", {"show"}, {}},
  };
  RunInChild([&] {
    ::setenv("INHERITED", "no", 1);
    for (const auto& c : cases) {
      const Outcome outcome = Run([&] { return Execute(ZKT_SHOW_ARGUMENTS, c.arguments, c.environment); });
      EXPECT_EQ(outcome.status, 0) << c.note;
      EXPECT_EQ(outcome.output, Shown(First64(c.arguments), First64(c.environment))) << c.note;
    }
    ExpectBalance();
  });
}

TEST_F(ConsoleExecute, AcceptsEmptyAndNilArrays) {
  RunInChild([] {
    const Outcome outcomes[] = {Run([] { return Execute(ZKT_SHOW_ARGUMENTS, {}, {}); }), Run([] {
                                  return zkt::ConsoleExecuteZKT(MakeString(ZKT_SHOW_ARGUMENTS).Get(), nullptr, nullptr);
                                })};
    for (const Outcome& outcome : outcomes) {
      EXPECT_EQ(outcome.status, 0);
      // Since version 5.18, Linux passes one empty argument to a program that is started without arguments.
      EXPECT_TRUE(outcome.output == Shown({}, {}) || outcome.output == Shown({""}, {})) << outcome.output;
    }
    ExpectBalance();
  });
}

TEST_F(ConsoleExecute, ConvertsTextsToUTF8) {
  RunInChild([] {
    const Outcome outcome = Run([] {
      return zkt::ConsoleExecuteZKT(MakeString(ZKT_SHOW_ARGUMENTS, zkt::kEncodingMacRoman).Get(),
                                    Native(MakeArray({"\xE9", "a"}, zkt::kEncodingISOLatin1)),
                                    Native(MakeArray({std::string("=\0\xAC\x20", 4)}, zkt::kEncodingUTF16)));
    });
    EXPECT_EQ(outcome.output, Shown({"é", "a"}, {"=€"}));
    ExpectBalance();
  });
}

// The bytes after an unterminated string are not part of it.
TEST_F(ConsoleExecute, DoesNotReadPastTheEndOfStrings) {
  RunInChild([] {
    const auto unterminate = [](REALstring string) { string->Bytes()[string->length] = 'Z'; };
    const host::StringRef path = MakeString(ZKT_SHOW_ARGUMENTS);
    const host::ArrayRef arguments = MakeArray({"show", "a"});
    unterminate(path.Get());
    for (const std::int64_t i : {0, 1}) unterminate(host::ElementAt<REALstring>(arguments.Get(), i));
    EXPECT_EQ(Run([&] { return zkt::ConsoleExecuteZKT(path.Get(), Native(arguments), nullptr); }).output,
              Shown({"show", "a"}, {}));
  });
}

TEST_F(ConsoleExecute, UsesOnlyTheFirstElementWithoutAnUpperBound) {
  RunInChild([] {
    const tests::ServiceWithheld without(zkt::REALGetArrayUBound);
    EXPECT_EQ(Run([] { return Execute(ZKT_SHOW_ARGUMENTS, {"a", "b"}, {"C=", "D="}); }).output, Shown({"a"}, {"C="}));
  });
}

TEST_F(ConsoleExecute, AcceptsFolderItems) {
  const auto folder = std::filesystem::temp_directory_path() / ("zkt-cafe\xCC\x81-" + std::to_string(::getpid()));
  std::filesystem::create_directory(folder);
  std::filesystem::create_symlink(ZKT_SHOW_ARGUMENTS, folder / "show it");
  const std::string precomposed =
      std::filesystem::temp_directory_path().string() + "/zkt-caf\xC3\xA9-" + std::to_string(::getpid()) + "/show it";
  for (const double version : {2024.03, 2012.5}) {
    SetVersion(version);
    RunInChild([&] {
      {
        const host::ObjectRef item(host::MakeObject(host::FindClass("FolderItem")));
        ASSERT_TRUE(host::SetPath(item.Get(), precomposed, host::PathMode::kNative));
        const Outcome outcome = Run(
            [&] { return zkt::ConsoleExecuteZKTf(item.Get(), Native(MakeArray({"a"})), Native(MakeArray({"B="}))); });
        EXPECT_EQ(outcome.output, Shown({"a"}, {"B="})) << version;
      }
      ExpectBalance();
    });
  }
  std::filesystem::remove_all(folder);
}

// On Linux, file names are plain bytes. A file with a composed name is found, but a file with the decomposed form of
// the name takes precedence.
TEST_F(ConsoleExecute, FindsFilesWithComposedNames) {
  const auto folder = std::filesystem::temp_directory_path() / ("zkt-" + std::to_string(::getpid()));
  std::filesystem::create_directory(folder);
  const struct {
    const char* note;
    const char* saved;
    const char* given;
    int status;
  } cases[] = {
      {"Latin", "caf\xC3\xA9", "caf\xC3\xA9", 0},
      {"Hangul", "\xED\x95\x9C", "\xED\x95\x9C", 0},
      {"Angstrom sign", "\xE2\x84\xAB", "\xE2\x84\xAB", 0},
      {"saved decomposed", "nai\xCC\x88ve", "na\xC3\xAFve", 0},
      {"neither", "u\xCC\x88", "o\xCC\x88", W_EXITCODE(1, 0)},
  };
  for (const auto& c : cases) {
    std::filesystem::create_symlink("/bin/true", folder / c.saved);
    RunInChild([&] {
      const host::ObjectRef item(host::MakeObject(host::FindClass("FolderItem")));
      ASSERT_TRUE(host::SetPath(item.Get(), (folder / c.given).string(), host::PathMode::kNative));
      EXPECT_EQ(Run([&] { return zkt::ConsoleExecuteZKTf(item.Get(), Native(MakeArray({"true"})), nullptr); }).status,
                c.status)
          << c.note;
    });
  }
  std::filesystem::remove_all(folder);
}

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

TEST_F(ConsoleExecute, LogsATextThatIsLinkedTwice) {
  const auto linkTwice = [] {
    zkt::StringStore texts;
    EXPECT_STREQ(texts.Keep(nullptr), "");  // must log nothing
    zkt::StringStore::Text other(nullptr);
    auto* const linked = new zkt::StringStore::Text(nullptr);
    linked->next = &other;
    texts.Link(linked);
  };
  EXPECT_EQ(tests::TraceOf(linkTwice), "Warning: Next already set!|");
}

}  // namespace
