// Loads the built plug-in library as if in a new process.
#pragma once

#include "core/host.h"

namespace tests {

// Loads a copy of the library, so that nothing of an earlier load is left in it, into a host that has nothing
// registered. The host's settings and the environment are the caller's.
void LoadFreshPlugin();
void LoadFreshPlugin(zkt::Resolver resolver);

}  // namespace tests
