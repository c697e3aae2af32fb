#include "core/child_output.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "core/files.h"

namespace host {

ChildOutput RunInChild(const std::function<int()>& action) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(std::tmpfile(), std::fclose);
  std::cout.flush();
  const pid_t child = output ? ::fork() : -1;
  if (child < 0) throw std::runtime_error("cannot start a child process");
  if (child == 0) {
    int status = 1;
    if (::dup2(::fileno(output.get()), STDOUT_FILENO) >= 0) try {
        status = action();
      } catch (const std::exception& error) {
        std::cout << error.what() << '\n';
      }
    std::cout.flush();
    ::_exit(status);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return {status, ReadFile("/proc/self/fd/" + std::to_string(::fileno(output.get())))};
}

std::string OutputOf(const std::function<void()>& action) {
  ChildOutput child = RunInChild([&] {
    action();
    return 0;
  });
  if (child.status != 0) {
    while (child.text.ends_with('\n')) child.text.pop_back();
    throw std::runtime_error(child.text.empty() ? "a child process ended without a message" : child.text);
  }
  return std::move(child.text);
}

}  // namespace host
