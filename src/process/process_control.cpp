#include "process/process_control.h"

#include <cstdlib>

namespace zkt {

void ExitZKT(std::int64_t code) { std::exit(static_cast<int>(code)); }

void AbortZKT() { std::abort(); }

void CrashNice() { __builtin_trap(); }

void CrashUgly() { std::abort(); }

}  // namespace zkt
