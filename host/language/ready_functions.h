// Functions that a script can name behind AddressOf, since it cannot write its own.
#pragma once

#include <string_view>

#include "language/native_call.h"

namespace host {

// Empty if there is no function of that name.
DelegateTarget FindReadyFunction(std::string_view name);

}  // namespace host
