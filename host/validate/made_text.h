// Texts for arguments: what parameters of their name are for, limits, and nonsense, in every encoding.
#pragma once

#include <string_view>

#include "core/value.h"
#include "validate/random.h"

namespace host::validate {

// A text for a parameter of this name; nil sometimes.
Value MakeText(Random& random, std::string_view parameterName);

// The path of a program that does nothing, or of none. Nothing else may ever be started.
Value MakeHarmlessPath(Random& random);

}  // namespace host::validate
