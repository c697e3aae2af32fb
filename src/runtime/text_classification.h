// Classifies bytes to determine a string's encoding. Independent of the host.
#pragma once

#include <cstddef>
#include <string_view>

namespace zkt {

// Returns whether all bytes are below 0x80. Returns true if there are no bytes.
bool IsASCII(std::string_view bytes);

// Returns whether the bytes are well-formed UTF-8 (The Unicode Standard, table 3-7) and contain no ASCII control
// characters except tab, line feed and carriage return. Overlong forms, surrogates and code points beyond U+10FFFF are
// not well formed.
bool IsPrintableUTF8(std::string_view bytes);

}  // namespace zkt
