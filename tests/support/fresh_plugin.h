// Loads the built plug-in library as if in a new process.
#pragma once

#include "services/services.h"

namespace tests {

// Loads a copy of the library, so that no state of an earlier load remains, into a host without registrations. Returns
// the path of the copy. The host's settings and the environment stay as the caller has set them.
std::string LoadFreshPlugin(zkt::Resolver resolver = &host::Resolve, const char* library = ZKT_PLUGIN);

}  // namespace tests
