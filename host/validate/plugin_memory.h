// The memory of a plug-in, which can be told to run out, and is watched: of malloc and operator new, as far as they are
// called by the plug-in itself or for it by the C and C++ libraries. Other libraries that it calls, and the host, get
// what they want and are not watched.
#pragma once

#include <cstddef>

#include "core/shortage.h"

namespace host::validate {

// Of memory for the plug-in that was chosen by WatchMemoryOf.
extern Shortage gMemoryShortage;

// While it exists, blocks are noted that the plug-in takes. There is one at a time.
class MemoryWatch {
 public:
  MemoryWatch();
  MemoryWatch(const MemoryWatch&) = delete;
  MemoryWatch& operator=(const MemoryWatch&) = delete;
  ~MemoryWatch();
};

// The blocks that were noted and that nobody has given back.
std::size_t CountTakenBlocks();

}  // namespace host::validate
