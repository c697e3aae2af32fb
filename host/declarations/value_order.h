// How Xojo compares values with "=" and "<".
#pragma once

#include <cstdint>

#include "core/value.h"

namespace host {

// Returns -1, 0 or 1. Strings compare without regard to case, dates by their seconds, and a Variant by its content.
// Where the language would reject a comparison, the kinds have an order: Nil, numbers, strings, dates, other objects by
// address.
std::int64_t CompareValues(const Value& a, const Value& b);

}  // namespace host
