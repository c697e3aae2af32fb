// The memory of the plug-in, which can be made to fail, and is watched for leaks: of malloc and operator new, as far as
// the plug-in itself calls them, or the C and C++ libraries on its behalf. Other libraries and the host are not
// touched.
#pragma once

#include <link.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

#include "core/fault_injector.h"

namespace stress {

struct PluginMemory {
  const link_map* plugin = nullptr;
  std::vector<const link_map*> callers;  // libraries that request memory on behalf of those that call them
  host::FaultInjector requests;          // of the plug-in's
  std::atomic<bool> isWatched = false;   // the blocks are counted that the plug-in takes from now on
  std::atomic<std::size_t> blocks = 0;   // counted blocks that have not been given back
};
extern constinit PluginMemory gPluginMemory;

// Chooses the plug-in, a library that has been loaded by this path.
void SetPluginOfMemory(const std::string& library);

}  // namespace stress
