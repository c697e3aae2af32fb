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

constexpr std::pair<std::uint32_t, const char*> kIconvNames[] = {
    {zkt::kEncodingMacRoman, "MACINTOSH"},   {zkt::kEncodingISOLatin1, "ISO-8859-1"},
    {zkt::kEncodingWindowsLatin1, "CP1252"}, {zkt::kEncodingASCII, "ASCII"},
    {zkt::kEncodingUTF8, "UTF-8"},           {zkt::kEncodingUTF16, "UTF-16LE"},
    {zkt::kEncodingUTF16LE, "UTF-16LE"},     {zkt::kEncodingUTF16BE, "UTF-16BE"},
    {zkt::kEncodingUTF32, "UTF-32LE"},       {zkt::kEncodingUTF32LE, "UTF-32LE"},
    {zkt::kEncodingUTF32BE, "UTF-32BE"},
};

const char* IconvName(std::uint32_t encoding) {
  for (const auto& [known, name] : kIconvNames)
    if (known == encoding) return name;
  return nullptr;
}

// Returns the length of the unconvertible byte sequence at the start of `bytes`.
std::size_t UnconvertibleLength(std::string_view bytes, std::string_view iconvName) {
  if (iconvName.starts_with("UTF-16")) return std::min<std::size_t>(2, bytes.size());
  if (iconvName.starts_with("UTF-32")) return std::min<std::size_t>(4, bytes.size());
  std::size_t length = 1;
  if (iconvName == "UTF-8")
    while (length < bytes.size() && (static_cast<unsigned char>(bytes[length]) & 0xC0) == 0x80) ++length;
  return length;
}

// Converters live as long as the process. The map is never destroyed, so leak checkers can still reach them.
iconv_t Converter(const char* from, const char* to) {
  static auto& converters = *new std::map<std::pair<std::string, std::string>, iconv_t>;
  const auto [entry, isNew] = converters.try_emplace({from, to}, nullptr);
  if (isNew) entry->second = iconv_open(to, from);
  return entry->second;
}

std::string Describe(const RefCounted* value) {
  return "string \"" + ToUTF8(static_cast<const REALstringStruct*>(value)).substr(0, 60) + "\"";
}

}  // namespace

const RefCountedKind kStringKind = {"string", Describe, nullptr};

REALstringStruct* MakeString(std::string_view bytes, std::uint32_t encoding) {
  // Four zero bytes terminate a string of any code unit width.
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
  while (inputLeft > 0) {
    // After an error, iconv rescans its input, so pass it small chunks.
    constexpr std::size_t kChunkSize = 64;
    char buffer[4 * kChunkSize];
    char* output = buffer;
    std::size_t outputLeft = sizeof buffer;
    const std::size_t chunk = std::min(inputLeft, kChunkSize);
    std::size_t chunkLeft = chunk;
    const std::size_t outcome = iconv(converter, &input, &chunkLeft, &output, &outputLeft);
    const bool isCutOff = errno == EINVAL && chunk < inputLeft;
    inputLeft -= chunk - chunkLeft;
    result.append(buffer, output);
    if (outcome == static_cast<std::size_t>(-1) && !isCutOff) {
      const std::size_t skipped = UnconvertibleLength({input, inputLeft}, fromName);
      input += skipped;
      inputLeft -= skipped;
      result += ConvertText("?", zkt::kEncodingASCII, to).value_or("?");
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
