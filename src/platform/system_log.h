// The system's log: NSLog on macOS, standard error on Linux.
#pragma once

#include "platform/core_foundation.h"

namespace zkt {

// Writes one line and appends a line break. Can be called from any thread and, on Linux, from a signal handler.
void WriteSystemLog(const char* text);

// Writes one line that consists of a label, a colon and a CoreFoundation string, which must not be null.
void WriteSystemLog(const char* label, CFStringRef text);

}  // namespace zkt
