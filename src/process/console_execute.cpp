#include "process/console_execute.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

#include "arrays/array_access.h"
#include "frame/contract/host_reference.h"
#include "process/string_store.h"
#include "runtime/path.h"

namespace zkt {

namespace {

constexpr std::int64_t kMaxElements = 64;

// A program's argument vector or environment: pointers to strings, followed by a null pointer.
class ArgumentVector {
 public:
  // Returns false if memory runs out.
  bool Fill(_REALarrayString* array, StringStore& texts) {
    if (array == nullptr) return true;
    const std::int64_t last = std::min(REALGetArrayUBound(array), kMaxElements - 1);
    for (std::int64_t i = 0; i <= last; ++i) {
      const OwnedString element(REALGetArrayString(array, i));
      pointers_[i] = texts.Keep(element.Get());
      if (pointers_[i] == nullptr) return false;
    }
    return true;
  }

  // Returns the pointers with the type that execve requires. execve does not change the strings.
  char* const* Get() const { return const_cast<char* const*>(pointers_); }

 private:
  const char* pointers_[kMaxElements + 1] = {};
};

// Two candidates for the program's path. The second path is used if no file exists at the first. Either path may be
// null.
struct ProgramPath {
  const char* first;
  const char* second;
};

// execve would pass on the host's signal mask and an ignored SIGPIPE, which programs do not expect.
void ResetSignals() {
  sigset_t none;
  sigemptyset(&none);
  ::pthread_sigmask(SIG_SETMASK, &none, nullptr);
  std::signal(SIGPIPE, SIG_DFL);
}

// Between fork and execve, the child has only the thread that called fork. Operations that may wait for another thread,
// such as allocations, must therefore be done before fork. A child that cannot run the program calls _exit, which does
// not flush the host's buffers a second time.
std::int64_t Start(const ProgramPath& path, const ArgumentVector& arguments, const ArgumentVector& environment) {
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

std::int64_t Execute(const ProgramPath& path, StringStore& texts, _REALarrayString* arguments,
                     _REALarrayString* environment) {
  ArgumentVector argumentVector;
  ArgumentVector environmentVector;
  if (!argumentVector.Fill(arguments, texts) || !environmentVector.Fill(environment, texts)) return -1;
  return Start(path, argumentVector, environmentVector);
}

}  // namespace

std::int64_t ConsoleExecuteZKT(REALstring path, _REALarrayString* arguments, _REALarrayString* environment) {
  StringStore texts;
  return Execute({texts.Keep(path), nullptr}, texts, arguments, environment);
}

std::int64_t ConsoleExecuteZKTf(REALfolderItem path, _REALarrayString* arguments, _REALarrayString* environment) {
  StringStore texts;
  rbPath reader = rbPath::OfFolderItem(path);
  return Execute({reader.GetUnixPath(), reader.GetPathAsGiven()}, texts, arguments, environment);
}

}  // namespace zkt
