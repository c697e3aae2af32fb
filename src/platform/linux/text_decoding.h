// Text of the known encodings to and from UTF-16, for the string objects of Linux.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zkt {

// The text of `bytes` in a CoreFoundation encoding; nothing when they are no such text or the encoding is not known.
// An external representation of UTF-8, UTF-16 or UTF-32 may begin with a byte-order mark, which is used and dropped.
std::optional<std::u16string> DecodeText(std::string_view bytes, std::uint32_t encoding, bool isExternalRepresentation);

// UTF-16 as UTF-8; nothing when a surrogate stands alone.
std::optional<std::string> EncodeUTF8(std::u16string_view text);

struct Encoded {
  std::size_t units;  // that were converted
  std::size_t bytes;  // that were written
};

// Writes the beginning of the text as UTF-8, as far as whole characters fit; `substitute` stands for a surrogate that
// stands alone. Needs no memory.
Encoded EncodeUTF8Into(std::span<char> buffer, std::u16string_view text, char substitute);

}  // namespace zkt
