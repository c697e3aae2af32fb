// The method PrintBacktraceZKT, and the same for signal handlers.
#pragma once

namespace zkt {

// Writes the calling thread's stack to the log, innermost frame first, at most 100 frames, one line each. The lines are
// written while debugging is off too, so that what a signal handler has to say is not lost.
void PrintBacktrace();

// Writes the same lines without heap memory and without a lock of the plug-in, and has nothing with a destructor: a
// crash inside the allocator is reported too, and a fault on the way can be jumped out of.
void PrintBacktraceInHandler();

// Makes the system load now what it needs for a backtrace, once in a process: in a signal handler it is too late.
void PrepareBacktrace();

}  // namespace zkt
