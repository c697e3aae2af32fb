// Functions that a script can name behind AddressOf, since it cannot write its own.
#pragma once

#include <string_view>

#include "declarations/conversion.h"

namespace host {

// Null if there is no function of that name.
const ReadyFunction* FindReadyFunction(std::string_view name);

}  // namespace host
