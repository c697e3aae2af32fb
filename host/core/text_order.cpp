#include "core/text_order.h"

#include <wctype.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "core/utf8_locale.h"
#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

bool IsAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

constexpr char FoldedAscii(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

// Removes the first character from a nonempty string and returns it in lowercase. For a byte that does not start a
// character, returns a distinct value after all characters, so strings that differ in such bytes are not equal.
wint_t TakeFolded(std::string_view& text) {
  constexpr wint_t kAfterAllCharacters = 0x110000;
  wchar_t character = 0;
  const std::size_t length = Utf8Locale::Read(text, character);
  const auto byte = static_cast<unsigned char>(text.front());
  text.remove_prefix(std::max<std::size_t>(length, 1));
  return length > 0 ? towlower(static_cast<wint_t>(character)) : kAfterAllCharacters + byte;
}

// Returns the length of the common ASCII prefix, ignoring case. This fast path covers most of a typical comparison.
std::size_t CommonAsciiLength(std::string_view a, std::string_view b) {
  const std::size_t length = std::min(a.size(), b.size());
  std::size_t i = 0;
  while (i < length && IsAscii(a[i]) && (a[i] == b[i] || FoldedAscii(a[i]) == FoldedAscii(b[i]))) ++i;
  return i;
}

std::int32_t CompareUtf8(std::string_view a, std::string_view b) {
  const std::size_t common = CommonAsciiLength(a, b);
  a.remove_prefix(common);
  b.remove_prefix(common);
  const Utf8Locale locale;
  while (!a.empty() && !b.empty()) {
    const wint_t x = TakeFolded(a);
    const wint_t y = TakeFolded(b);
    if (x != y) return x < y ? -1 : 1;
  }
  return a.empty() ? (b.empty() ? 0 : -1) : 1;
}

// Whether the bytes can be read as UTF-8 without conversion.
bool IsUtf8(const REALstringStruct* string) {
  switch (string->encoding) {
    case zkt::kEncodingUTF8:
    case zkt::kEncodingASCII:
    case zkt::kEncodingNone:
      return true;
    case zkt::kEncodingMacRoman:
    case zkt::kEncodingISOLatin1:
    case zkt::kEncodingWindowsLatin1:
      return std::ranges::all_of(string->View(), IsAscii);
    default:
      return false;
  }
}

// Returns the string's text in UTF-8: its own bytes if possible, otherwise a copy in `converted`.
std::string_view Utf8View(const REALstringStruct* string, std::string& converted) {
  if (string == nullptr) return {};
  if (IsUtf8(string)) return string->View();
  converted = ToUTF8(string);
  return converted;
}

}  // namespace

std::int32_t CompareTexts(const REALstringStruct* a, const REALstringStruct* b) {
  std::string convertedA, convertedB;
  return a == b ? 0 : CompareUtf8(Utf8View(a, convertedA), Utf8View(b, convertedB));
}

bool IsSameIdentifier(std::string_view a, std::string_view b) {
  return zkt::IsSameName(a, b) || (!std::ranges::all_of(a, IsAscii) && CompareUtf8(a, b) == 0);
}

}  // namespace host
