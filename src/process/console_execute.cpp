#include "process/console_execute.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

#include "arrays/array_access.h"
#include "frame/contract/host_reference.h"
#include "process/kept_texts.h"
#include "runtime/path.h"

namespace zkt {

namespace {

constexpr std::int64_t kMostElements = 64;

// The argument vector or environment of a program: pointers to strings, followed by a null pointer.
class TextVector {
 public:
  // Returns false if memory runs out.
  bool Fill(_REALarrayString* array, KeptTexts& texts) {
    if (array == nullptr) return true;
    const std::int64_t last = std::min(REALGetArrayUBound(array), kMostElements - 1);
    for (std::int64_t i = 0; i <= last; ++i) {
      const OwnedString element(REALGetArrayString(array, i));
      pointers_[i] = texts.Keep(element.Get());
      if (pointers_[i] == nullptr) return false;
    }
    return true;
  }

  // The type that execve requires. It does not change the strings.
  char* const* Get() const { return const_cast<char* const*>(pointers_); }

 private:
  const char* pointers_[kMostElements + 1] = {};
};

// The path of the program. The second path is used if nothing exists at the first. Either may be null.
struct ProgramPath {
  const char* first;
  const char* second;
};

// The signal mask and an ignored SIGPIPE survive execve, and programs expect neither.
void ResetSignals() {
  sigset_t none;
  sigemptyset(&none);
  ::pthread_sigmask(SIG_SETMASK, &none, nullptr);
  std::signal(SIGPIPE, SIG_DFL);
}

// Between fork and execve the child has only the forking thread: anything that may wait for another thread, such as an
// allocation, comes before. A child that cannot run the program must not flush the host's buffers again.
std::int64_t Start(const ProgramPath& path, const TextVector& arguments, const TextVector& environment) {
  const pid_t child = ::fork();
  if (child == 0) {
    ResetSignals();
    errno = ENOENT;
    if (path.first != nullptr) ::execve(path.first, arguments.Get(), environment.Get());
    if (path.second != nullptr && errno == ENOENT) ::execve(path.second, arguments.Get(), environment.Get());
    ::_exit(1);
  }
  return child;
}

std::int64_t Execute(const ProgramPath& path, KeptTexts& texts, _REALarrayString* arguments,
                     _REALarrayString* environment) {
  TextVector argumentVector;
  TextVector environmentVector;
  if (!argumentVector.Fill(arguments, texts) || !environmentVector.Fill(environment, texts)) return -1;
  return Start(path, argumentVector, environmentVector);
}

}  // namespace

std::int64_t ConsoleExecuteZKT(REALstring path, _REALarrayString* arguments, _REALarrayString* environment) {
  KeptTexts texts;
  return Execute({texts.Keep(path), nullptr}, texts, arguments, environment);
}

std::int64_t ConsoleExecuteZKTf(REALfolderItem path, _REALarrayString* arguments, _REALarrayString* environment) {
  KeptTexts texts;
  rbPath reader = rbPath::OfFolderItem(path);
  return Execute({reader.GetUnixPath(), reader.GetPathAsGiven()}, texts, arguments, environment);
}

}  // namespace zkt
