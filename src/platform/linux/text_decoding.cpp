#include "platform/linux/text_decoding.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "platform/linux/string_encodings.h"

namespace zkt {

namespace {

// clang-format off
// The characters for bytes 0x80 to 0xFF in Mac Roman (from Apple's Unicode mapping table ROMAN.TXT).
constexpr char16_t kMacRoman[128] = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1,
    0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8,
    0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC,
    0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6, 0x00DF,
    0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211,
    0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8,
    0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153,
    0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA,
    0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4,
    0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};

// The characters for bytes 0x80 to 0xFF in Windows Latin 1. The five undefined bytes map to the control characters with
// the same numbers.
constexpr char16_t kWindowsLatin1[128] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
    0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x00A6, 0x00A7,
    0x00A8, 0x00A9, 0x00AA, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF,
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x00B4, 0x00B5, 0x00B6, 0x00B7,
    0x00B8, 0x00B9, 0x00BA, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF,
    0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C6, 0x00C7,
    0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD, 0x00CE, 0x00CF,
    0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D7,
    0x00D8, 0x00D9, 0x00DA, 0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00DF,
    0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E6, 0x00E7,
    0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00ED, 0x00EE, 0x00EF,
    0x00F0, 0x00F1, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00F7,
    0x00F8, 0x00F9, 0x00FA, 0x00FB, 0x00FC, 0x00FD, 0x00FE, 0x00FF,
};
// clang-format on

using Byte = unsigned char;

constexpr char32_t kByteOrderMark = 0xFEFF;

bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

void Append(std::u16string& text, char32_t c) {
  if (c < 0x10000) {
    text += static_cast<char16_t>(c);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (c >> 10));
    text += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
  }
}

using Decoded = std::optional<std::u16string>;

// Decodes one character per byte. `upperHalf` maps the bytes from 0x80 to 0xFF. If it is null, these bytes are invalid.
Decoded DecodeSingleBytes(std::string_view bytes, const char16_t* upperHalf) {
  std::u16string text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const Byte byte = static_cast<Byte>(c);
    if (byte >= 0x80 && upperHalf == nullptr) return std::nullopt;
    text += byte < 0x80 ? byte : upperHalf[byte - 0x80];
  }
  return text;
}

Decoded DecodeISOLatin1(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (const char c : bytes) text += static_cast<Byte>(c);
  return text;
}

// Accepts only well-formed UTF-8 (The Unicode Standard, table 3-7).
Decoded DecodeUTF8(std::string_view bytes, bool dropMark) {
  if (dropMark && bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  std::u16string text;
  text.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size();) {
    const Byte lead = static_cast<Byte>(bytes[i++]);
    if (lead < 0x80) {
      text += lead;
      continue;
    }
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() - i < static_cast<std::size_t>(following)) return std::nullopt;
    char32_t c = lead & (0x3F >> following);
    for (int n = 0; n < following; ++n) {
      const Byte next = static_cast<Byte>(bytes[i++]);
      if ((next & 0xC0) != 0x80) return std::nullopt;
      c = (c << 6) | (next & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (c < kSmallest[following] || c > 0x10FFFF || IsSurrogate(c)) return std::nullopt;
    Append(text, c);
  }
  return text;
}

char32_t CodeUnitAt(std::string_view bytes, std::size_t width, std::endian order) {
  char32_t unit = 0;
  for (std::size_t i = 0; i < width; ++i) {
    const std::size_t significance = order == std::endian::big ? width - 1 - i : i;
    unit |= static_cast<char32_t>(static_cast<Byte>(bytes[i])) << (8 * significance);
  }
  return unit;
}

// Decodes UTF-16 or UTF-32, depending on the width. UTF-16 code units are copied unchanged, including unpaired
// surrogates. UTF-32 code units must be valid code points.
Decoded DecodeWide(std::string_view bytes, std::size_t width, std::endian order, bool useMark) {
  if (bytes.size() % width != 0) return std::nullopt;
  if (useMark && bytes.size() >= width) {
    const std::endian swapped = order == std::endian::little ? std::endian::big : std::endian::little;
    const bool isSwapped = CodeUnitAt(bytes, width, swapped) == kByteOrderMark;
    if (isSwapped) order = swapped;
    if (CodeUnitAt(bytes, width, order) == kByteOrderMark) bytes.remove_prefix(width);
  }
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (; !bytes.empty(); bytes.remove_prefix(width)) {
    const char32_t unit = CodeUnitAt(bytes, width, order);
    if (width == 4 && (unit > 0x10FFFF || IsSurrogate(unit))) return std::nullopt;
    Append(text, unit);
  }
  return text;
}

// Returns the code point at `i`, or nullopt for an unpaired surrogate. Advances `i` past it.
std::optional<char32_t> NextCodePoint(std::u16string_view text, std::size_t& i) {
  const char32_t unit = text[i++];
  if (!IsSurrogate(unit)) return unit;
  const bool isPaired = unit < 0xDC00 && i < text.size() && text[i] >= 0xDC00 && text[i] <= 0xDFFF;
  if (!isPaired) return std::nullopt;
  return 0x10000 + ((unit - 0xD800) << 10) + (text[i++] - 0xDC00U);
}

// A code point encoded in UTF-8 (The Unicode Standard, table 3-6).
struct UTF8Sequence {
  char bytes[4];
  std::size_t size;

  explicit UTF8Sequence(char32_t c) : bytes{}, size(c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4) {
    constexpr Byte kLead[] = {0, 0xC0, 0xE0, 0xF0};
    for (std::size_t i = size - 1; i > 0; --i, c >>= 6) bytes[i] = static_cast<char>(0x80 | (c & 0x3F));
    bytes[0] = static_cast<char>(kLead[size - 1] | c);
  }
};

}  // namespace

Decoded DecodeText(std::string_view bytes, std::uint32_t encoding, bool isExternalRepresentation) {
  switch (encoding) {
    case kCFStringEncodingMacRoman:
      return DecodeSingleBytes(bytes, kMacRoman);
    case kCFStringEncodingWindowsLatin1:
      return DecodeSingleBytes(bytes, kWindowsLatin1);
    case kCFStringEncodingISOLatin1:
      return DecodeISOLatin1(bytes);
    case kCFStringEncodingASCII:
      return DecodeSingleBytes(bytes, nullptr);
    case kCFStringEncodingUTF8:
      return DecodeUTF8(bytes, isExternalRepresentation);
    case kCFStringEncodingUTF16:
      return DecodeWide(bytes, 2, std::endian::native, isExternalRepresentation);
    case kCFStringEncodingUTF16BE:
      return DecodeWide(bytes, 2, std::endian::big, false);
    case kCFStringEncodingUTF16LE:
      return DecodeWide(bytes, 2, std::endian::little, false);
    case kCFStringEncodingUTF32:
      return DecodeWide(bytes, 4, std::endian::native, isExternalRepresentation);
    case kCFStringEncodingUTF32BE:
      return DecodeWide(bytes, 4, std::endian::big, false);
    case kCFStringEncodingUTF32LE:
      return DecodeWide(bytes, 4, std::endian::little, false);
    default:
      return std::nullopt;
  }
}

std::optional<std::string> EncodeUTF8(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const std::optional<char32_t> c = NextCodePoint(text, i);
    if (!c) return std::nullopt;
    const UTF8Sequence sequence(*c);
    bytes.append(sequence.bytes, sequence.size);
  }
  return bytes;
}

Encoded EncodeUTF8Into(std::span<char> buffer, std::u16string_view text, char substitute) {
  Encoded encoded{0, 0};
  for (std::size_t i = 0; i < text.size(); encoded.units = i) {
    const std::optional<char32_t> c = NextCodePoint(text, i);
    const UTF8Sequence sequence(c.value_or(static_cast<unsigned char>(substitute)));
    if (sequence.size > buffer.size() - encoded.bytes) break;
    std::copy_n(sequence.bytes, sequence.size, buffer.data() + encoded.bytes);
    encoded.bytes += sequence.size;
  }
  return encoded;
}

}  // namespace zkt
