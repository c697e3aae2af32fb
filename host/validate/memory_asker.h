// Whose name memory is asked for in.
#pragma once

#include <string>

namespace host::validate {

// Chooses the plug-in, a library that has been loaded by this path, which is absolute and without links. Throws
// std::runtime_error if there is none.
void WatchMemoryOf(const std::string& library);

// Whether what is called by this return address is called by the plug-in itself, or for it by the C and C++ libraries.
// Takes no memory, as long as the unwinder takes none.
bool AsksForPlugin(void* caller);

// Whether the plug-in itself calls what has this return address.
bool IsInPlugin(void* caller);

}  // namespace host::validate
