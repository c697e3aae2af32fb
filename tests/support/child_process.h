// Runs part of a test in a child process with a time limit, so that code that exits, crashes, forks, or changes signals
// does not affect other tests.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace tests {

// Runs the body in a child process and returns the wait status. SIGALRM ends a child that exceeds the time limit.
template <class Body>
int StatusOf(Body body, unsigned secondsLimit = 60) {
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    ::alarm(secondsLimit);
    body();
    std::fflush(nullptr);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  return status;
}

// Runs the body in a child process. Fails the test if a signal ends the child or if an expectation fails in the child.
template <class Body>
void RunInChild(Body body, unsigned secondsLimit = 60) {
  const int status = StatusOf(body, secondsLimit);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
      << (WIFSIGNALED(status) ? "ended by signal " : "failed with ")
      << (WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status));
}

// Returns the number of open file descriptors of this process.
inline long DescriptorCount() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

}  // namespace tests
