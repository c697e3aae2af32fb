// Runs code in a child process, because a plug-in can register only once per process, and because the code may crash.
#pragma once

#include <functional>
#include <string>

namespace host {

struct ChildOutput {
  int status;        // wait status, as from waitpid
  std::string text;  // standard output of the child and its descendants
};

// Runs the action in a child process, whose exit status is the action's result. Throws std::runtime_error if the
// process cannot be started.
ChildOutput RunInChild(const std::function<int()>& action);

// Runs the action in a child process and returns its standard output. Throws std::runtime_error with that output if the
// action throws or the child ends abnormally.
std::string OutputOf(const std::function<void()>& action);

}  // namespace host
