// The system's description of a backtrace frame.
#pragma once

#include <span>

namespace zkt {

// Writes the line that backtrace_symbols would return for this frame, zero-terminated and truncated to fit the buffer.
// Unlike backtrace_symbols, this function needs no heap memory, so it can report a crash inside the allocator. The
// dynamic loader may take its own lock to look up the symbol name.
void DescribeFrame(std::span<char> line, int index, const void* address);

}  // namespace zkt
