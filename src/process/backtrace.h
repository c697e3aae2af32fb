// The method PrintBacktraceZKT, which signal handlers call too.
#pragma once

#include <cstdlib>
#include <utility>

namespace zkt {

// What a backtrace needs while it is made. It is given back here if a fault ends the backtrace early.
class BacktraceMemory {
 public:
  BacktraceMemory() = default;
  BacktraceMemory(const BacktraceMemory&) = delete;
  BacktraceMemory& operator=(const BacktraceMemory&) = delete;
  ~BacktraceMemory() { Free(); }

  void Free() {
    std::free(std::exchange(symbols, nullptr));
    std::free(std::exchange(table, nullptr));
  }

  void** table = nullptr;
  char** symbols = nullptr;
};

// Writes the calling thread's stack to the log, innermost frame first, at most 100 frames, a line each; also while
// debugging is off, so that what a signal handler has to say is not lost.
void PrintBacktrace();

// The same for a signal handler, with memory of whom it will jump out to.
void PrintBacktraceWith(BacktraceMemory& memory);

// Makes the system load now what it needs for a backtrace, once in a process: in a signal handler it is too late.
void PrepareBacktrace();

}  // namespace zkt
