// How the system describes a frame of a backtrace.
#pragma once

#include <span>

namespace zkt {

// Writes the line that the system's backtrace_symbols has for this frame, zero-terminated and cut to the buffer. Unlike
// that function it needs no memory, so a crash inside the allocator can be reported too. The loader may take its own
// lock to find the name.
void DescribeFrame(std::span<char> line, int index, const void* address);

}  // namespace zkt
