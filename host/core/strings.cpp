#include "core/strings.h"

#include <iconv.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <utility>

namespace host {

namespace {

static_assert(std::endian::native == std::endian::little, "UTF-16 and UTF-32 in host order are little-endian here");

const char* IconvName(std::uint32_t encoding) {
  switch (encoding) {
    case zkt::kEncodingMacRoman:
      return "MACINTOSH";
    case zkt::kEncodingISOLatin1:
      return "ISO-8859-1";
    case zkt::kEncodingWindowsLatin1:
      return "CP1252";
    case zkt::kEncodingASCII:
      return "ASCII";
    case zkt::kEncodingUTF8:
      return "UTF-8";
    case zkt::kEncodingUTF16:
    case zkt::kEncodingUTF16LE:
      return "UTF-16LE";
    case zkt::kEncodingUTF16BE:
      return "UTF-16BE";
    case zkt::kEncodingUTF32:
    case zkt::kEncodingUTF32LE:
      return "UTF-32LE";
    case zkt::kEncodingUTF32BE:
      return "UTF-32BE";
    default:
      return nullptr;
  }
}

// How many bytes to leave out where `bytes` begins with something that cannot be converted.
std::size_t UnconvertibleLength(std::string_view bytes, std::string_view iconvName) {
  if (iconvName.starts_with("UTF-16")) return std::min<std::size_t>(2, bytes.size());
  if (iconvName.starts_with("UTF-32")) return std::min<std::size_t>(4, bytes.size());
  std::size_t length = 1;
  if (iconvName == "UTF-8")
    while (length < bytes.size() && (static_cast<unsigned char>(bytes[length]) & 0xC0) == 0x80) ++length;
  return length;
}

// Converters live as long as the process, and so does the map of them: no destructor at exit may lose them.
iconv_t Converter(const char* from, const char* to) {
  static auto& converters = *new std::map<std::pair<std::string, std::string>, iconv_t>;
  const auto [entry, isNew] = converters.try_emplace({from, to}, nullptr);
  if (isNew) entry->second = iconv_open(to, from);
  return entry->second;
}

std::string Describe(const Counted* value) {
  return "string \"" + ToUTF8(static_cast<const REALstringStruct*>(value)).substr(0, 60) + "\"";
}

}  // namespace

const CountedKind kStringKind = {"string", Describe, nullptr};

REALstringStruct* MakeString(std::string_view bytes, std::uint32_t encoding) {
  // Four zero bytes end a text of any code unit width.
  constexpr std::size_t kTerminator = 4;
  void* const memory = std::malloc(sizeof(REALstringStruct) + bytes.size() + kTerminator);
  if (memory == nullptr) return nullptr;
  auto* const string = static_cast<REALstringStruct*>(memory);
  Track(string, kStringKind);
  string->length = static_cast<std::int64_t>(bytes.size());
  string->encoding = encoding;
  std::memcpy(string->Bytes(), bytes.data(), bytes.size());
  std::memset(string->Bytes() + bytes.size(), 0, kTerminator);
  return string;
}

std::optional<std::string> ConvertText(std::string_view bytes, std::uint32_t from, std::uint32_t to) {
  if (from == to || from == zkt::kEncodingNone || to == zkt::kEncodingNone) return std::string(bytes);
  const char* const fromName = IconvName(from);
  const char* const toName = IconvName(to);
  if (fromName == nullptr || toName == nullptr) return std::nullopt;
  const iconv_t converter = Converter(fromName, toName);
  if (converter == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  std::string result;
  char* input = const_cast<char*>(bytes.data());
  std::size_t inputLeft = bytes.size();
  // Behind what it cannot convert the converter begins anew with all that it is offered: that is little there.
  constexpr std::size_t kLeastOffered = 32;
  constexpr std::size_t kMostOffered = 1024;
  std::size_t mostOffered = kLeastOffered;
  while (inputLeft > 0) {
    char buffer[4 * kMostOffered];
    char* output = buffer;
    std::size_t outputLeft = sizeof buffer;
    const std::size_t offered = std::min(inputLeft, mostOffered);
    std::size_t offeredLeft = offered;
    const std::size_t outcome = iconv(converter, &input, &offeredLeft, &output, &outputLeft);
    const int error = errno;
    const bool isCutOff = error == EINVAL && offered < inputLeft;
    inputLeft -= offered - offeredLeft;
    result.append(buffer, output);
    mostOffered = std::min(2 * mostOffered, kMostOffered);
    if (outcome == static_cast<std::size_t>(-1) && error != E2BIG && !isCutOff) {
      const std::size_t skipped = UnconvertibleLength({input, inputLeft}, fromName);
      input += skipped;
      inputLeft -= skipped;
      result += ConvertText("?", zkt::kEncodingASCII, to).value_or("?");
      mostOffered = kLeastOffered;
    }
  }
  return result;
}

std::string ToHex(std::uint64_t number, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%0*llX", digits, static_cast<unsigned long long>(number));
  return text;
}

std::string ToUTF8(const REALstringStruct* string) {
  if (string == nullptr) return {};
  return ConvertText(string->View(), string->encoding, zkt::kEncodingUTF8).value_or(std::string(string->View()));
}

}  // namespace host
