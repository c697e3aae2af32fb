// The system's description of a backtrace frame.
#pragma once

#include <span>

namespace zkt {

// Writes the line that the system's backtrace_symbols would return for this frame, zero-terminated and truncated to the
// buffer. Unlike that function, it needs no heap memory, so it can report a crash inside the allocator. The loader may
// take its own lock to find the name.
void DescribeFrame(std::span<char> line, int index, const void* address);

}  // namespace zkt
