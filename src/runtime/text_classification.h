// Classifies bytes to determine the encoding of a text. Independent of the host.
#pragma once

#include <cstddef>
#include <string_view>

namespace zkt {

// Returns whether all bytes are below 0x80. True for an empty text.
bool IsASCII(std::string_view bytes);

// Returns whether the bytes are printable text in well-formed UTF-8 (The Unicode Standard, table 3-7) without overlong
// forms, surrogates, code points beyond U+10FFFF, or controls other than tab, line feed and carriage return.
bool IsPrintableUTF8(std::string_view bytes);

}  // namespace zkt
