// Signal handlers run PrintBacktraceWith: beyond the backtrace itself it only takes memory and writes lines, and
// nothing in it has a destructor.
#include "process/backtrace.h"

#include <execinfo.h>

#include "runtime/debug_log.h"

namespace zkt {

namespace {

constexpr int kMostFrames = 100;

void PrintFrames(BacktraceMemory& memory, int count) {
  memory.symbols = ::backtrace_symbols(memory.table, count);
  if (memory.symbols == nullptr) return;
  for (int i = 0; i < count; ++i) LogMessageX("%s%s", kTracePrefix, memory.symbols[i]);
}

}  // namespace

void PrintBacktraceWith(BacktraceMemory& memory) {
  memory.table = static_cast<void**>(std::calloc(kMostFrames, sizeof(void*)));
  if (memory.table == nullptr) return Trace("out of memory?");
  const int count = ::backtrace(memory.table, kMostFrames);
  if (count >= 1) PrintFrames(memory, count);
  memory.Free();
}

void PrintBacktrace() {
  BacktraceMemory memory;
  PrintBacktraceWith(memory);
}

void PrepareBacktrace() {
  void* frame = nullptr;
  [[maybe_unused]] static const int count = ::backtrace(&frame, 1);
}

}  // namespace zkt
