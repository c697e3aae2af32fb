// Compares the removal of separators with a plain loop, and the parsing of plain decimal numbers with std::from_chars.
// Also formats numbers in a locale and parses the results. Input: a digit that selects the locale, and the number.
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "host.h"
#include "locale/number_format.h"

namespace {

std::string WithoutSeparators(std::string text) {
  text.resize(std::min<std::size_t>(text.size(), 99));
  const std::size_t length = text.size();
  const std::lconv& conventions = *std::localeconv();
  for (const std::string separator : {conventions.mon_thousands_sep, conventions.thousands_sep}) {
    if (separator.empty() || separator.size() >= length) continue;
    for (std::size_t at; (at = text.find(separator)) != std::string::npos;) text.erase(at, separator.size());
  }
  return text;
}

// Returns the value of a plain decimal number. Returns NaN for any other string, and for numbers too close to zero for
// full precision.
double PlainValue(const std::string& text) {
  double value = 0.0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  const bool isPlain = result.ec == std::errc() && result.ptr == end && text.size() <= 99;
  return isPlain && std::fabs(value) > std::numeric_limits<double>::min() ? value : std::nan("");
}

host::StringRef ASCII(std::string_view text) { return host::StringRef(host::MakeString(text, zkt::kEncodingASCII)); }

void RequireReadBack(double value, const host::StringRef& locale) {
  if (!std::isnormal(value)) return;
  const host::StringRef text(zkt::formatZKT(ASCII("%'.17g").Get(), value, locale.Get()));
  double read = 0.0;
  fuzz::Require(zkt::cdblZKT(text.Get(), &read, locale.Get()) && read == value, "a formatted number is parsed back");
}

void Run(const char* name, const std::string& text) {
  std::setlocale(LC_ALL, name);
  zkt::NumberBuffer buffer;
  fuzz::Require(zkt::FixBuf(text.c_str(), buffer) == WithoutSeparators(text),
                "all separators are removed, and nothing else");
  std::setlocale(LC_ALL, "C");

  const host::StringRef locale = ASCII(name);
  const host::StringRef number = ASCII(text);
  double value = 0.0;
  const bool isNumber = zkt::cdblZKT(number.Get(), &value, nullptr);
  if (const double plain = PlainValue(text); !std::isnan(plain))
    fuzz::Require(isNumber && value == plain, "plain decimal numbers are parsed exactly");
  RequireReadBack(value, locale);
  zkt::cdblZKT(number.Get(), &value, locale.Get());
  RequireReadBack(value, locale);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  fuzz::NeedHost();
  std::string_view input = fuzz::Text(bytes, size);
  const char* const name = fuzz::TakeLocale(input);
  Run(name, fuzz::UpToZero(input));
  fuzz::RequireBalance();
  return 0;
}
