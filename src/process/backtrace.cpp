// Signal handlers run this: beyond the backtrace itself it only takes memory and writes lines, and nothing here has a
// destructor.
#include "process/backtrace.h"

#include <execinfo.h>

#include <cstdlib>

#include "runtime/debug_log.h"

namespace zkt {

namespace {

constexpr int kMostFrames = 100;

void PrintFrames(void* const* table, int count) {
  char** const symbols = ::backtrace_symbols(table, count);
  if (symbols == nullptr) return;
  for (int i = 0; i < count; ++i) LogMessageX("%s%s", kTracePrefix, symbols[i]);
  std::free(symbols);
}

}  // namespace

void PrintBacktrace() {
  const auto table = static_cast<void**>(std::calloc(kMostFrames, sizeof(void*)));
  if (table == nullptr) {
    Trace("out of memory?");
    return;
  }
  const int count = ::backtrace(table, kMostFrames);
  if (count >= 1) PrintFrames(table, count);
  std::free(table);
}

void PrepareBacktrace() {
  void* frame = nullptr;
  [[maybe_unused]] static const int count = ::backtrace(&frame, 1);
}

}  // namespace zkt
