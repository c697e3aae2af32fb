// Loads the built plug-in library as if in a new process.
#pragma once

#include "services/services.h"

namespace tests {

// Loads a copy of the library under the name that is returned, so that nothing of an earlier load is left in it, into a
// host that has nothing registered. The host's settings and the environment are the caller's.
std::string LoadFreshPlugin(zkt::Resolver resolver = &host::Resolve, const char* library = ZKT_PLUGIN);

}  // namespace tests
