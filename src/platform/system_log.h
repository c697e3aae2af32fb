// The system's log: NSLog on macOS, standard error on Linux.
#pragma once

#include "platform/core_foundation.h"

namespace zkt {

// Writes one line; the line end is added. May be called from any thread and from a signal handler on Linux.
void WriteSystemLog(const char* text);

// Writes a line of a label, a colon and a text of the platform, which must not be null.
void WriteSystemLog(const char* label, CFStringRef text);

}  // namespace zkt
