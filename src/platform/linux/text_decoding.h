// Decodes text to UTF-16, and encodes UTF-16 as UTF-8, for strings on Linux.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zkt {

// Decodes `bytes` from a CoreFoundation encoding. Returns nullopt if they are invalid or the encoding is unknown. An
// external representation in UTF-8, UTF-16 or UTF-32 may begin with a byte-order mark, which is honored and removed.
std::optional<std::u16string> DecodeText(std::string_view bytes, std::uint32_t encoding, bool isExternalRepresentation);

// Converts UTF-16 to UTF-8. Returns nullopt if the text contains an unpaired surrogate.
std::optional<std::string> EncodeUTF8(std::u16string_view text);

struct Encoded {
  std::size_t units;  // code units converted
  std::size_t bytes;  // bytes written
};

// Writes the text as UTF-8. Stops before the first character that does not fit. `substitute` replaces each unpaired
// surrogate. Needs no heap memory.
Encoded EncodeUTF8Into(std::span<char> buffer, std::u16string_view text, char substitute);

}  // namespace zkt
