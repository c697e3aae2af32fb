// The method PrintBacktraceZKT, which signal handlers call too.
#pragma once

namespace zkt {

// Writes the calling thread's stack to the log, innermost frame first, at most 100 frames, a line each; also while
// debugging is off, so that what a signal handler has to say is not lost.
void PrintBacktrace();

// Makes the system load now what it needs for a backtrace, once in a process: in a signal handler it is too late.
void PrepareBacktrace();

}  // namespace zkt
