// Loads a plug-in library as Xojo does.
#pragma once

#include <stdexcept>
#include <string>

#include "frame/contract/plugin_interface.h"
#include "services/services.h"

namespace host {

// Returns the path of ZKTUtil next to the running program.
std::string DefaultPlugin();

// Loads a library into the process without calling it. Throws as LoadPlugin does.
void* OpenLibrary(const std::string& path);

// Loads the library and passes `resolver`, which may be null, to its entry function. The library stays loaded, because
// the host keeps pointers to the library's records. Throws std::runtime_error with the loader's message.
void LoadPlugin(const std::string& path, zkt::Resolver resolver = &Resolve);

}  // namespace host
