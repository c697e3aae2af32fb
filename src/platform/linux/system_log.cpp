// Writes each log line to standard error with a single write. Signal handlers also log, so nothing here takes a lock,
// allocates memory or opens a descriptor.
#include "platform/system_log.h"

#include <poll.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace zkt {

namespace {

// A writable pipe accepts this many bytes in one write (POSIX, PIPE_BUF). A longer write could block.
constexpr std::size_t kLongestLine = PIPE_BUF;

// Returns false if a write would block or the other end is closed.
bool IsWritableNow(int descriptor) {
  pollfd state = {descriptor, POLLOUT, 0};
  return ::poll(&state, 1, 0) == 1 && (state.revents & (POLLOUT | POLLERR | POLLNVAL)) == POLLOUT;
}

// Suppresses a SIGPIPE that a write by the calling thread raises. A SIGPIPE that is already pending stays pending.
class NoBrokenPipe {
 public:
  NoBrokenPipe() {
    sigset_t pending;
    ::sigemptyset(&brokenPipe_);
    ::sigaddset(&brokenPipe_, SIGPIPE);
    ::sigpending(&pending);
    wasPending_ = ::sigismember(&pending, SIGPIPE) == 1;
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe_, &former_);
  }
  NoBrokenPipe(const NoBrokenPipe&) = delete;
  NoBrokenPipe& operator=(const NoBrokenPipe&) = delete;
  ~NoBrokenPipe() { ::pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

  // Call this after a write that failed because the other end is closed.
  void Discard() const {
    constexpr timespec kNoTime = {};
    if (!wasPending_) ::sigtimedwait(&brokenPipe_, nullptr, &kNoTime);
  }

 private:
  sigset_t brokenPipe_;
  sigset_t former_;
  bool wasPending_;
};

// Drops the line if it cannot be written.
void WriteLine(const char* line, std::size_t length) {
  const int callersErrno = errno;
  if (IsWritableNow(STDERR_FILENO)) {
    const NoBrokenPipe noBrokenPipe;
    if (::write(STDERR_FILENO, line, length) < 0 && errno == EPIPE) noBrokenPipe.Discard();
  }
  errno = callersErrno;
}

}  // namespace

void WriteSystemLog(const char* text) {
  char line[kLongestLine];
  const std::size_t length = std::min(std::strlen(text), sizeof line - 1);
  std::memcpy(line, text, length);
  line[length] = '\n';
  WriteLine(line, length + 1);
}

void WriteSystemLog(const char* label, CFStringRef text) {
  UInt8 bytes[kLongestLine] = {};
  CFStringGetBytes(text, {0, CFStringGetLength(text)}, kCFStringEncodingUTF8, '?', false, bytes, sizeof bytes - 1,
                   nullptr);
  char line[kLongestLine];
  std::snprintf(line, sizeof line, "%s: %s", label, reinterpret_cast<const char*>(bytes));
  WriteSystemLog(line);
}

}  // namespace zkt
