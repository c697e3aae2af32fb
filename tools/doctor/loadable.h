// Finds the library to load in the plug-in that the user names.
#pragma once

#include <string>

namespace doctor {

// Returns a path from which this machine can load the plug-in at `path`, which is a library, a package or a package's
// folder. The library in a zip archive is unpacked into memory and stays there for this process and its children.
// Throws std::runtime_error if the plug-in is for other systems or processors.
std::string LoadablePlugin(const std::string& path);

}  // namespace doctor
