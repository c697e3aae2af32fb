// All checks of a run.
#pragma once

#include <memory>
#include <vector>

#include "stress/check.h"

namespace stress {

// Creates all checks, in the order in which they run.
std::vector<std::unique_ptr<Check>> MakeChecks();

}  // namespace stress
