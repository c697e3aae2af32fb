// The memory of a plug-in, which can be told to run out: of malloc and operator new, as far as they are called by the
// plug-in itself or for it by the C and C++ libraries. Other libraries that it calls, and the host, get what they want.
#pragma once

#include <string>

#include "core/shortage.h"

namespace host::validate {

// Of memory for the plug-in that was chosen.
extern Shortage gMemoryShortage;

// Chooses the plug-in, a library that has been loaded by this path, which is absolute and without links. Throws
// std::runtime_error if there is none.
void WatchMemoryOf(const std::string& library);

}  // namespace host::validate
