// Runs code in a process of its own, because a library registers once in a process, and because code may crash.
#pragma once

#include <functional>
#include <string>

namespace host {

struct ChildOutput {
  int status;        // as waitpid gives it
  std::string text;  // what the child, and what it started, wrote to standard output
};

// Runs the action in a child process, which exits with the status that the action returns. Throws std::runtime_error
// when there is no process to be had.
ChildOutput RunInChild(const std::function<int()>& action);

// The text that a child in which the action runs writes to standard output. Throws std::runtime_error, with that text,
// when the action throws or the child crashes.
std::string OutputOf(const std::function<void()>& action);

}  // namespace host
