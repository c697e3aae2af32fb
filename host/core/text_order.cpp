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
  const auto isSame = [](char x, char y) { return IsAscii(x) && FoldedAscii(x) == FoldedAscii(y); };
  return static_cast<std::size_t>(std::ranges::mismatch(a, b, isSame).in1 - a.begin());
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

// Returns the string's text in UTF-8: its own bytes if possible, otherwise a copy in `converted`.
std::string_view Utf8View(const REALstringStruct* string, std::string& converted) {
  if (string == nullptr) return {};
  for (const std::uint32_t readable : {zkt::kEncodingUTF8, zkt::kEncodingASCII, zkt::kEncodingNone})
    if (string->encoding == readable) return string->View();
  for (const std::uint32_t extendsAscii :
       {zkt::kEncodingMacRoman, zkt::kEncodingISOLatin1, zkt::kEncodingWindowsLatin1})
    if (string->encoding == extendsAscii && std::ranges::all_of(string->View(), IsAscii)) return string->View();
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
