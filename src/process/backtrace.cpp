#include "process/backtrace.h"

#include <execinfo.h>

#include <memory>
#include <new>

#include "platform/backtrace_line.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

constexpr int kMaxFrames = 100;

void PrintFrames(void** table) {
  const int count = ::backtrace(table, kMaxFrames);
  for (int i = 0; i < count; ++i) {
    char line[4096];
    DescribeFrame(line, i, table[i]);
    LogMessageX("%s%s", kTracePrefix, line);
  }
}

}  // namespace

void PrintBacktrace() {
  const std::unique_ptr<void*[]> table(new (std::nothrow) void*[kMaxFrames]());
  if (table)
    PrintFrames(table.get());
  else
    Trace("out of memory?");
}

void PrintBacktraceInHandler() {
  void* table[kMaxFrames] = {};
  PrintFrames(table);
}

void PrepareBacktrace() {
  void* frame = nullptr;
  [[maybe_unused]] static const int count = ::backtrace(&frame, 1);
}

}  // namespace zkt
