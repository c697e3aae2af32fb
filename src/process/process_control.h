// Functions that end the process: ExitZKT, AbortZKT, CrashNiceZKT and CrashUglyZKT. None of them returns.
#pragma once

#include <cstdint>

namespace zkt {

// Ends the process with the low 32 bits of `code` as its exit status. Exit handlers run.
[[noreturn]] void ExitZKT(std::int64_t code);

// Ends the process with SIGABRT.
[[noreturn]] void AbortZKT();

// Crashes with the processor's trap instruction, so that a crash reporter sees the exact location. The signal is
// SIGILL, or SIGTRAP on processors whose trap instruction is a breakpoint.
[[noreturn]] void CrashNice();

// Crashes with SIGABRT.
[[noreturn]] void CrashUgly();

}  // namespace zkt
