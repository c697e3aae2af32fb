#include "stress/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <new>
#include <system_error>

namespace stress {

namespace {

// Returns the result of a system call. Throws if the call failed.
int Require(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

[[noreturn]] void RunAsChild(Report& report, int log, const std::function<void()>& work) {
  constexpr rlimit kNoCoreFile{0, 0};
  ::setrlimit(RLIMIT_CORE, &kNoCoreFile);
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO}) ::dup2(nowhere, standard);
  ::dup2(log, STDERR_FILENO);
  try {
    work();
  } catch (const std::exception& error) {
    report.finding.Set(error.what());
  } catch (...) {
    report.finding.Set("threw something that is not a std::exception");
  }
  report.isFinished = true;
  ::_exit(0);
}

// Waits for the child to end. Returns false if it stops making progress.
bool AwaitEnd(pid_t child, const Report& report, int secondsLimit) {
  pollfd end{Require(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)), "pidfd_open"), POLLIN, 0};
  bool hasEnded = false;
  std::int64_t progress = 0;
  for (int idle = 0; idle < secondsLimit && !hasEnded; ++idle) {
    if (report.position + report.calls != progress) idle = 0;
    progress = report.position + report.calls;
    hasEnded = ::poll(&end, 1, 1000) > 0;
  }
  ::close(end.fd);
  return hasEnded;
}

std::string ReadEnd(int file) {
  std::string text(3000, '\0');
  const off_t begin = std::max<off_t>(0, ::lseek(file, 0, SEEK_END) - std::ssize(text));
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(0, ::pread(file, text.data(), text.size(), begin))));
  return text;
}

}  // namespace

Report& MakeSharedReport() {
  void* const memory = ::mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  Require(memory == MAP_FAILED ? -1 : 0, "mmap");
  return *new (memory) Report;
}

std::string RunInChild(Report& report, int secondsLimit, const std::function<void()>& work) {
  const int log = Require(::memfd_create("log", MFD_CLOEXEC), "memfd_create");
  const pid_t child = Require(::fork(), "fork");
  if (child == 0) RunAsChild(report, log, work);
  const bool hasEnded = AwaitEnd(child, report, secondsLimit);
  if (!hasEnded) ::kill(child, SIGKILL);
  int status = 0;
  ::waitpid(child, &status, 0);
  report.log.Set(ReadEnd(log));
  ::close(log);
  if (report.isFinished) return report.finding.Get();
  if (WIFEXITED(status)) return "ended with status " + std::to_string(WEXITSTATUS(status));
  return hasEnded ? std::string("ended with SIG") + ::sigabbrev_np(WTERMSIG(status)) : "hung and was killed";
}

}  // namespace stress
