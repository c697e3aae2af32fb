// Runs a piece of a test in a process of its own, with a time limit: what exits, crashes, forks or changes signals must
// not touch the tests beside it.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace tests {

// How the child ended, as wait() tells it. A child that runs too long is ended by SIGALRM.
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

// What the body expects is reported by the child.
template <class Body>
void RunApart(Body body, unsigned secondsLimit = 60) {
  const int status = StatusOf(body, secondsLimit);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
      << (WIFSIGNALED(status) ? "ended by signal " : "failed with ")
      << (WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status));
}

// How many files and the like this process has open.
inline long DescriptorCount() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

}  // namespace tests
