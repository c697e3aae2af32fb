// How Xojo compares strings with "=" and "<".
#pragma once

#include <cstdint>

#include "core/strings.h"

namespace host {

// Compares two texts by their characters, ignoring case and encodings. The result is negative, 0 or positive. Nil is
// the empty text; bytes without an encoding are read as UTF-8.
std::int32_t CompareTexts(const REALstringStruct* a, const REALstringStruct* b);

}  // namespace host
