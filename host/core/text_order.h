// Compares strings as Xojo's "=" and "<" do.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/strings.h"

namespace host {

// Compares two strings by their characters, ignoring case and encodings. The result is negative, 0 or positive. Nil
// counts as an empty string. Bytes without an encoding are read as UTF-8.
std::int32_t CompareTexts(const REALstringStruct* a, const REALstringStruct* b);

// Whether Xojo treats two variable or method names as the same. Letter case is ignored in every alphabet.
bool IsSameIdentifier(std::string_view a, std::string_view b);

}  // namespace host
