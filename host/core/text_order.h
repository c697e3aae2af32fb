// How Xojo compares strings with "=" and "<".
#pragma once

#include <cstdint>

#include "core/strings.h"

namespace host {

// Negative, 0 or positive: the order of two texts by their characters, without regard to letter case and whatever their
// encodings. Nil is the empty text; bytes without an encoding are read as UTF-8.
std::int32_t CompareTexts(const REALstringStruct* a, const REALstringStruct* b);

}  // namespace host
