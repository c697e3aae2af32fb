// The plug-in's memory: its allocations can be made to fail, and can be watched for leaks. Covers calls to malloc and
// operator new by the plug-in, and by the C and C++ libraries on its behalf, but not by other libraries or the host.
#pragma once

#include <link.h>

#include <atomic>
#include <cstddef>
#include <vector>

#include "core/fault_injector.h"

namespace stress {

struct PluginMemory {
  const link_map* plugin = nullptr;
  std::vector<const link_map*> callers;  // libraries that allocate on behalf of their callers
  host::FaultInjector requests;          // of the plug-in
  std::atomic<bool> isWatched = false;   // whether new blocks of the plug-in are counted
  std::atomic<std::size_t> blocks = 0;   // counted blocks that have not been freed
};
extern constinit PluginMemory gPluginMemory;

// Sets the plug-in whose allocations are watched: a loaded library, by its handle.
void SetWatchedPlugin(void* library);

}  // namespace stress
