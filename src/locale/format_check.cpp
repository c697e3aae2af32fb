#include "locale/format_check.h"

#include <cstring>

namespace zkt {

namespace {

const char* SkipAnyOf(const char* text, const char* characters) { return text + std::strspn(text, characters); }

// Skips a conversion for a double, starting after its percent sign. Returns null for any other conversion.
const char* SkipConversion(const char* text) {
  constexpr const char* kDigits = "0123456789";
  text = SkipAnyOf(text, "-+ #0'");
  text = SkipAnyOf(text, kDigits);
  if (*text == '.') text = SkipAnyOf(text + 1, kDigits);
  if (*text == 'l') ++text;
  return *text != '\0' && std::strchr("aAeEfFgG", *text) != nullptr ? text + 1 : nullptr;
}

}  // namespace

bool HasSingleDoubleConversion(const char* format) {
  if (format == nullptr) return false;
  int conversions = 0;
  while ((format = std::strchr(format, '%')) != nullptr) {
    ++format;
    if (*format == '%') {
      ++format;
      continue;
    }
    format = SkipConversion(format);
    if (format == nullptr || ++conversions > 1) return false;
  }
  return conversions == 1;
}

}  // namespace zkt
