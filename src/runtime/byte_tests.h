// Questions about runs of bytes that decide a text's encoding. They know nothing of the host.
#pragma once

#include <cstddef>
#include <string_view>

namespace zkt {

// Whether no byte is at or above 0x80; true for no bytes at all.
bool IsASCII(std::string_view bytes);

// Whether the bytes are printable text in well-formed UTF-8 (The Unicode Standard, table 3-7): no overlong forms, no
// surrogates, nothing beyond U+10FFFF, and of the control characters only tab, line feed and carriage return.
bool IsPrintableUTF8(std::string_view bytes);

}  // namespace zkt
