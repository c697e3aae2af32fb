// Compares values as Xojo's "=" and "<" do.
#pragma once

#include <cstdint>

#include "core/value.h"

namespace host {

// Returns -1, 0 or 1. Compares strings without regard to case, dates by their seconds, and a Variant by its content.
// Values that Xojo cannot compare are ordered by kind: Nil, numbers, strings, dates, then other objects by address.
std::int64_t CompareValues(const Value& a, const Value& b);

}  // namespace host
