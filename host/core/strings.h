// Host strings: zero-terminated bytes with an encoding.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/ref_counted.h"
#include "frame/contract/plugin_interface.h"

// The bytes follow the record.
struct REALstringStruct : host::RefCounted {
  std::int64_t length;
  std::uint32_t encoding;

  char* Bytes() { return reinterpret_cast<char*>(this + 1); }
  std::string_view View() const { return {reinterpret_cast<const char*>(this + 1), static_cast<std::size_t>(length)}; }
};

namespace host {

extern const RefCountedKind kStringKind;

using StringRef = Ref<REALstringStruct>;

// Makes a string. The caller owns one reference. Returns null if memory runs out.
REALstringStruct* MakeString(std::string_view bytes, std::uint32_t encoding = zkt::kEncodingUTF8);

// Converts text to another encoding; characters that the target encoding lacks become "?". Returns nullopt if either
// encoding is unknown.
std::optional<std::string> ConvertText(std::string_view bytes, std::uint32_t from, std::uint32_t to);

// Formats a number in uppercase hexadecimal with at least `digits` digits.
std::string ToHex(std::uint64_t number, int digits = 1);

// Returns the string in UTF-8. If the encoding is unknown, returns the bytes unchanged. Returns an empty string for
// nil.
std::string ToUTF8(const REALstringStruct* string);

}  // namespace host
