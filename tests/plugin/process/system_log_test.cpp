// Tests the system log when standard error cannot accept a line: logging must neither end nor block the process.
#include "platform/system_log.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <csignal>
#include <string>

#include "support/child_process.h"

namespace {

using tests::RunInChild;

// The two ends of the pipe or socket that standard error is connected to.
struct Ends {
  int read = -1;
  int write = -1;

  static Ends OfPipe() {
    Ends ends;
    EXPECT_EQ(::pipe(&ends.read), 0);
    return ends;
  }
  static Ends OfSocket() {
    int sockets[2];
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets), 0);
    return {sockets[0], sockets[1]};
  }
};
static_assert(sizeof(Ends) == 2 * sizeof(int), "pipe() fills it");

void LogTo(int descriptor) { ASSERT_EQ(::dup2(descriptor, STDERR_FILENO), STDERR_FILENO); }

bool IsReadable(int descriptor) {
  pollfd state = {descriptor, POLLIN, 0};
  return ::poll(&state, 1, 0) == 1;
}

bool IsPending(int signal) {
  sigset_t pending;
  ::sigpending(&pending);
  return sigismember(&pending, signal) == 1;
}

bool IsBlocked(int signal) {
  sigset_t blocked;
  ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
  return sigismember(&blocked, signal) == 1;
}

void SetBlocked(int how) {
  sigset_t brokenPipe;
  sigemptyset(&brokenPipe);
  sigaddset(&brokenPipe, SIGPIPE);
  ::pthread_sigmask(how, &brokenPipe, nullptr);
}

// A pipe reports at once that its reader is gone; a socket reports it only on a write.
TEST(SystemLog, SurvivesAClosedReader) {
  for (const auto make : {&Ends::OfPipe, &Ends::OfSocket}) {
    RunInChild([&] {
      const Ends ends = make();
      ::close(ends.read);
      LogTo(ends.write);
      for (const bool wasBlocked : {false, true}) {
        if (wasBlocked) SetBlocked(SIG_BLOCK);
        errno = EDOM;
        zkt::WriteSystemLog("nobody reads this");
        EXPECT_EQ(errno, EDOM);
        EXPECT_EQ(IsBlocked(SIGPIPE), wasBlocked);
        EXPECT_FALSE(IsPending(SIGPIPE));
      }
      std::raise(SIGPIPE);
      zkt::WriteSystemLog("nobody reads this either");
      EXPECT_TRUE(IsPending(SIGPIPE)) << "a pending signal of the host stays pending";
    });
  }
}

TEST(SystemLog, DoesNothingWithoutADescriptor) {
  RunInChild([] {
    ::close(STDERR_FILENO);
    errno = EDOM;
    zkt::WriteSystemLog("nobody reads this");
    EXPECT_EQ(errno, EDOM);
  });
}

TEST(SystemLog, DropsLinesInsteadOfWaiting) {
  RunInChild(
      [] {
        const Ends ends = Ends::OfPipe();
        ::fcntl(ends.write, F_SETFL, O_NONBLOCK);
        std::string content;
        while (::write(ends.write, "0123456789abcdef", 16) == 16) content += "0123456789abcdef";
        ::fcntl(ends.write, F_SETFL, 0);
        LogTo(ends.write);
        zkt::WriteSystemLog("dropped");
        char buffer[1 << 16];
        std::string read;
        const auto readAll = [&] {
          for (ssize_t count; IsReadable(ends.read) && (count = ::read(ends.read, buffer, sizeof buffer)) > 0;)
            read.append(buffer, static_cast<std::size_t>(count));
        };
        readAll();
        EXPECT_EQ(read, content);
        read.clear();
        // Long lines are truncated to 4096 bytes, which a pipe with enough space accepts in a single write.
        zkt::WriteSystemLog(std::string(5000, 'x').c_str());
        readAll();
        EXPECT_EQ(read, std::string(4095, 'x') + '\n');
      },
      10);
}

}  // namespace
