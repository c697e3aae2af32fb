#include "graphics/cocoa_init.h"

#include <atomic>

#include "frame/contract/plugin_state.h"
#include "platform/cocoa.h"
#include "runtime/debug_log.h"

namespace zkt {

void CocoaInit() {
  if constexpr (kHasCocoa) {
    static std::atomic<bool> isDone{false};
    if (isDone.exchange(true, std::memory_order_relaxed)) return;
    Trace("CocoaInit", gpartname);
    Trace(KeepExceptionInstances() ? "GetInstancesDictionaryZKT found." : "GetInstancesDictionaryZKT is missing!");
    Trace("Initialize Exceptions...");
    if (!PrepareExceptions()) Trace("PrepareNSExceptionZKT not found");
  }
}

}  // namespace zkt
