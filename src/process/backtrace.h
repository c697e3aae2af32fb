// The method PrintBacktraceZKT, and a variant for signal handlers.
#pragma once

namespace zkt {

// Writes the calling thread's stack to the log, innermost frame first, one line per frame, at most 100 frames. Writes
// even while debugging is off, so the output of a signal handler is not lost.
void PrintBacktrace();

// Writes the same lines without heap memory, without a lock of the plug-in and without destructors: it can report a
// crash inside the allocator, and a fault on the way can jump out of it.
void PrintBacktraceInHandler();

// Makes the system load what a backtrace needs, once per process: in a signal handler it would be too late.
void PrepareBacktrace();

}  // namespace zkt
