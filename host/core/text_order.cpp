#include "core/text_order.h"

#include <wctype.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace host {

namespace {

bool IsAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

constexpr char FoldedAscii(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

// Not the locale of the process, which scripts and plug-ins may change.
locale_t UnicodeLocale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

char32_t Folded(char32_t character) {
  if (character < 0x80) return static_cast<char32_t>(FoldedAscii(static_cast<char>(character)));
  const locale_t locale = UnicodeLocale();
  return locale != nullptr ? static_cast<char32_t>(towlower_l(static_cast<wint_t>(character), locale)) : character;
}

// Takes one character off the text, which is not empty, without its letter case. A byte that begins no character stands
// for itself behind all characters, so that different texts stay different.
char32_t TakeFolded(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  constexpr char32_t kBehindAllCharacters = 0x110000;
  constexpr unsigned char kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  char32_t character = lead & kLeadBits[length];
  bool isCharacter = length > 0 && length <= text.size();
  for (std::size_t i = 1; isCharacter && i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    isCharacter = (byte & 0xC0) == 0x80;
    character = character << 6 | (byte & 0x3F);
  }
  text.remove_prefix(isCharacter ? length : 1);
  return isCharacter ? Folded(character) : kBehindAllCharacters + lead;
}

// How many ASCII characters both begin with, letter case aside: nearly always all that it takes.
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
  while (!a.empty() && !b.empty()) {
    const char32_t x = TakeFolded(a);
    const char32_t y = TakeFolded(b);
    if (x != y) return x < y ? -1 : 1;
  }
  return a.empty() ? (b.empty() ? 0 : -1) : 1;
}

// Whether the bytes are UTF-8 as they stand.
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

// A string's text in UTF-8, in place where it can be.
class Utf8View {
 public:
  explicit Utf8View(const REALstringStruct* string) {
    if (string == nullptr) return;
    if (IsUtf8(string)) {
      text_ = string->View();
    } else {
      converted_ = ToUTF8(string);
      text_ = converted_;
    }
  }
  Utf8View(const Utf8View&) = delete;
  Utf8View& operator=(const Utf8View&) = delete;

  std::string_view Text() const { return text_; }

 private:
  std::string converted_;
  std::string_view text_;
};

}  // namespace

std::int32_t CompareTexts(const REALstringStruct* a, const REALstringStruct* b) {
  return a == b ? 0 : CompareUtf8(Utf8View(a).Text(), Utf8View(b).Text());
}

}  // namespace host
