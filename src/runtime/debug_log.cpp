// Implements the debug switch and writes log lines.
#include "runtime/debug_log.h"

#include <cstdarg>
#include <cstdio>

#include "platform/system_log.h"

namespace zkt {

REALboolean getDebugging() { return IsDebugging(); }

void setDebugging(REALboolean enabled) {
  const std::uint8_t before = DebuggingEnabled.exchange(enabled != 0 ? 1 : 0, std::memory_order_relaxed);
  if (enabled != 0 && before == 0) LogMessageX("%s%s", kTracePrefix, "ZKT debug logging enabled.");
}

void LogMessageX(const char* format, ...) {
  char text[4096] = {};
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  WriteSystemLog(text);
}

}  // namespace zkt
