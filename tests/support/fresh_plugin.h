// Loads the built plug-in library as a new process would.
#pragma once

#include "services/services.h"

namespace tests {

// Clears the host's registrations and loads a new copy of the library, which has no state from an earlier load. Returns
// the path of the copy. Other host settings and the environment stay as the caller has set them.
std::string LoadFreshPlugin(zkt::Resolver resolver = &host::Resolve, const char* library = ZKT_PLUGIN);

}  // namespace tests
