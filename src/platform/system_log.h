// The system's log: NSLog on macOS, standard error on Linux.
#pragma once

namespace zkt {

// Writes one line; the line end is added. May be called from any thread and from a signal handler on Linux.
void WriteSystemLog(const char* text);

}  // namespace zkt
