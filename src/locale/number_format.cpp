#include "locale/number_format.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "locale/format_check.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/text_builder.h"
#include "runtime/text_classification.h"
#include "runtime/text_reader.h"

namespace zkt {

namespace {

// Removing a separator can join the characters around it into another separator, so each search starts at the
// beginning.
void RemoveAll(char* text, std::size_t originalLength, const char* separator) {
  const std::size_t length = std::strlen(separator);
  if (length == 0 || length >= originalLength) return;
  while (char* const found = std::strstr(text, separator))
    std::memmove(found, found + length, std::strlen(found + length) + 1);
}

bool Parse(const char* text, double* value) {
  NumberBuffer buffer;
  const char* const digits = FixBuf(text, buffer);
  errno = 0;
  char* end = nullptr;
  *value = std::strtod(digits, &end);
  return errno == 0 && (end == nullptr || *end == '\0');
}

// Limits the width and the precision of a format to 999999. Otherwise, the C library could generate gigabytes of text,
// of which all but the first characters would be discarded. The limit does not change those first characters. Numbers
// beyond the range of int stay unchanged, because the C library rejects them. The format must take one double.
std::string ClampWidthAndPrecision(std::string format) {
  constexpr std::string_view kDigits = "0123456789";
  constexpr std::string_view kMax = "999999";
  std::size_t at = format.find('%');
  while (format[at + 1] == '%') at = format.find('%', at + 2);
  while (at = format.find_first_of("123456789aAeEfFgGl", at), format[at] <= '9') {
    const std::size_t digits = format.find_first_not_of(kDigits, at) - at;
    int count = 0;
    const bool isInt = std::from_chars(&format[at], &format[at + digits], count).ec == std::errc();
    if (isInt && digits > kMax.size()) format.replace(at, digits, kMax);
    at = format.find_first_not_of(kDigits, at);
  }
  return format;
}

REALstring Format(const std::string& format, double value, const char* locale) {
  if (locale != nullptr && std::setlocale(LC_NUMERIC, locale) == nullptr) {
    RaiseException("UnsupportedFormatException", "Invalid locale.");
    return nullptr;
  }
  NumberBuffer buffer = {};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  std::snprintf(buffer, sizeof buffer - 1, format.c_str(), value);
#pragma GCC diagnostic pop
  // Callers rely on the C locale being in effect afterwards.
  if (locale != nullptr) std::setlocale(LC_NUMERIC, "C");
  const std::string_view text = buffer;
  if (!IsASCII(text)) Trace("Error: text is not ascii", static_cast<const char*>(buffer));
  return REALBuildUnicodeString(text.data(), static_cast<long long>(text.size()), kEncodingASCII);
}

}  // namespace

const char* FixBuf(const char* text, NumberBuffer& buffer) {
  if (text == nullptr) return "";
  const std::size_t length = strnlen(text, sizeof buffer - 1);
  std::memset(buffer, 0, sizeof buffer);
  std::memcpy(buffer, text, length);
  const std::lconv* const conventions = std::localeconv();
  if (conventions == nullptr) return buffer;
  for (const char* const separator : {conventions->mon_thousands_sep, conventions->thousands_sep})
    if (separator != nullptr) RemoveAll(buffer, length, separator);
  return buffer;
}

REALstring formatZKT(REALstring format, double value, REALstring locale) {
  rbText formatText(format);
  rbText localeText(locale);
  const char* const checkedFormat = formatText.GetASCII();
  const char* const localeName = localeText.GetASCII();
  if (!HasSingleDoubleConversion(checkedFormat)) {
    RaiseException("UnsupportedFormatException", "Invalid format.");
    return nullptr;
  }
  return TranslateExceptions(
      [&] { return Format(ClampWidthAndPrecision(checkedFormat), value, locale != nullptr ? localeName : nullptr); });
}

REALboolean cdblZKT(REALstring text, double* value, REALstring locale) {
  *value = 0.0;
  if (text == nullptr) return false;
  rbText textReader(text);
  rbText localeReader(locale);
  const char* const number = textReader.GetASCII();
  const char* const localeName = localeReader.GetASCII();
  if (locale == nullptr) return Parse(number, value);
  const bool isKnown = std::setlocale(LC_NUMERIC, localeName) != nullptr;
  std::setlocale(LC_MONETARY, localeName);
  if (!isKnown) {
    RaiseException("UnsupportedFormatException", "Invalid locale.");
    return false;
  }
  const bool success = Parse(number, value);
  // Callers rely on the C locale being in effect afterwards.
  std::setlocale(LC_NUMERIC, "C");
  std::setlocale(LC_MONETARY, "C");
  return success;
}

}  // namespace zkt
