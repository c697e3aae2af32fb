// Loads a plug-in library as Xojo does.
#pragma once

#include <stdexcept>
#include <string>

#include "frame/contract/plugin_interface.h"

namespace host {

// The path of ZKTUtil next to the running program.
std::string DefaultPlugin();

// Loads a library into the process without calling it. Throws as LoadPlugin does.
void* OpenLibrary(const std::string& path);

// Loads the library and calls its entry function with the resolver: this host's own by default, or the given one, which
// may be null. The library stays loaded, because the host keeps its records. Throws std::runtime_error with the
// loader's message.
void LoadPlugin(const std::string& path);
void LoadPlugin(const std::string& path, zkt::Resolver resolver);

}  // namespace host
