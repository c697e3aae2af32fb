// Ways to end the process: ExitZKT, AbortZKT, CrashNiceZKT and CrashUglyZKT. None of them returns.
#pragma once

#include <cstdint>

namespace zkt {

// Ends the process with the low 32 bits of `code` as its status; exit handlers run.
[[noreturn]] void ExitZKT(std::int64_t code);

// Ends the process by the abort signal.
[[noreturn]] void AbortZKT();

// Crashes by the processor's trap instruction, which a crash reporter sees where it happened: an illegal instruction,
// or a trace trap on processors whose trap instruction is a breakpoint.
[[noreturn]] void CrashNice();

// Crashes by the abort signal.
[[noreturn]] void CrashUgly();

}  // namespace zkt
