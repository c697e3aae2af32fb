#include "validate/apart.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>
#include <stdexcept>
#include <system_error>

namespace host::validate {

namespace {

[[noreturn]] void ThrowSystemError(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

void RedirectOutput(int log) {
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO}) ::dup2(nowhere, standard);
  ::dup2(log >= 0 ? log : nowhere, STDERR_FILENO);
}

[[noreturn]] void BeChild(Report& report, int log, const std::function<void()>& work) {
  constexpr rlimit kNoCoreFile{0, 0};
  ::setrlimit(RLIMIT_CORE, &kNoCoreFile);
  RedirectOutput(log);
  try {
    work();
  } catch (const std::exception& error) {
    report.Set(report.finding, error.what());
  } catch (...) {
    report.Set(report.finding, "threw what is no std::exception");
  }
  report.isFinished = true;
  ::_exit(0);
}

// Waits until the child has closed its end of the pipe, which every way to end does. False if it makes no progress.
bool AwaitEnd(const Report& report, int pipe, int secondsLimit) {
  while (true) {
    const std::int64_t before = report.call + report.calls;
    pollfd end{pipe, POLLIN, 0};
    const int outcome = ::poll(&end, 1, secondsLimit * 1000);
    if (outcome > 0) return true;
    if (outcome == 0 && before == report.call + report.calls) return false;
  }
}

std::string ReadEnd(int file) {
  constexpr off_t kMost = 3000;
  const off_t size = ::lseek(file, 0, SEEK_END);
  std::string text(static_cast<std::size_t>(size < kMost ? size : kMost), '\0');
  const ssize_t count = ::pread(file, text.data(), text.size(), size - static_cast<off_t>(text.size()));
  text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return text;
}

}  // namespace

void Report::SetText(char* place, std::size_t size, const std::string& text) {
  place[text.copy(place, size - 1)] = '\0';
}

std::string Ending::Describe() const {
  if (wasHanging) return "hung, and was killed";
  if (WIFSIGNALED(status))
    return "ended by signal " + std::to_string(WTERMSIG(status)) + " (" + ::strsignal(WTERMSIG(status)) + ")";
  return "ended the process with status " + std::to_string(WEXITSTATUS(status));
}

Ending RunApart(Report& report, int secondsLimit, bool keepsLog, const std::function<void()>& work) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) ThrowSystemError("pipe");
  const int log = keepsLog ? ::memfd_create("log", MFD_CLOEXEC) : -1;
  std::cout.flush();
  const pid_t child = ::fork();
  if (child < 0) ThrowSystemError("fork");
  if (child == 0) BeChild(report, log, work);
  ::close(ends[1]);
  Ending ending;
  ending.wasHanging = !AwaitEnd(report, ends[0], secondsLimit);
  if (ending.wasHanging) ::kill(child, SIGKILL);
  ::waitpid(child, &ending.status, 0);
  ::close(ends[0]);
  if (log >= 0) {
    ending.log = ReadEnd(log);
    ::close(log);
  }
  return ending;
}

SharedReport::SharedReport() {
  void* const memory = ::mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) ThrowSystemError("mmap");
  report_ = new (memory) Report;
}

SharedReport::~SharedReport() { ::munmap(report_, sizeof(Report)); }

}  // namespace host::validate
