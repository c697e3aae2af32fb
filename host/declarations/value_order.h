// How Xojo compares values with "=" and "<".
#pragma once

#include <cstdint>

#include "core/value.h"

namespace host {

// -1, 0 or 1. Texts compare without regard to letter case, dates by their seconds, a Variant as what it holds. Where
// the language would refuse, the kinds have an order: Nil, numbers, texts, dates, other objects by their address.
std::int64_t CompareValues(const Value& a, const Value& b);

}  // namespace host
