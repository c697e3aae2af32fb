// Runs code in a child process, because a library registers only once per process, and because the code may crash.
#pragma once

#include <functional>
#include <string>

namespace host {

struct ChildOutput {
  int status;        // wait status, as from waitpid
  std::string text;  // what the child and its own children wrote to standard output
};

// Runs the action in a child process, which exits with the result of the action. Throws std::runtime_error if no
// process can be started.
ChildOutput RunInChild(const std::function<int()>& action);

// Runs the action in a child process and returns its standard output. Throws std::runtime_error with that output if the
// action throws or the child crashes.
std::string OutputOf(const std::function<void()>& action);

}  // namespace host
