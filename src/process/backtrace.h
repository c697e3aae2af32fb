// The PrintBacktraceZKT method, and a variant for signal handlers.
#pragma once

namespace zkt {

// Logs up to 100 frames of the calling thread's stack, one line per frame, innermost frame first, even while debugging
// is off.
void PrintBacktrace();

// Logs the same lines without using heap memory, plug-in locks or destructors. It can therefore report a crash inside
// the allocator, and a signal handler can jump out of it after a fault.
void PrintBacktraceInHandler();

// On the first call, makes the system load the code that a backtrace needs, because a signal handler cannot load code
// safely.
void PrepareBacktrace();

}  // namespace zkt
