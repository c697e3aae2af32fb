// The system's log: NSLog on macOS, standard error on Linux.
#pragma once

#include "platform/core_foundation.h"

namespace zkt {

// Writes one line and adds the line end. May be called from any thread, and on Linux from a signal handler.
void WriteSystemLog(const char* text);

// Writes a line with a label, a colon and a platform text, which must not be null.
void WriteSystemLog(const char* label, CFStringRef text);

}  // namespace zkt
