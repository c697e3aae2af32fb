// The check of printf formats, against a regular expression; what it lets through is run. Input: the format.
#include "locale/format_check.h"

#include <regex>

#include "host.h"
#include "locale/number_format.h"

namespace {

// The library's matcher calls itself for every character.
constexpr std::size_t kLongest = 300;

bool TakesOneDouble(const std::string& format) {
  static const std::regex pattern("(?:[^%]|%%)*%[-+ #0']*[0-9]*(?:\\.[0-9]*)?l?[aAeEfFgG](?:[^%]|%%)*");
  return std::regex_match(format, pattern);
}

// Whether a width or precision would have the C library write for seconds.
bool IsLaborious(const std::string& format) {
  static const std::regex pattern("[0-9]{5}");
  return std::regex_search(format, pattern);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size > kLongest) return 0;
  fuzz::NeedHost();
  const std::string format = fuzz::UpToZero(fuzz::Text(bytes, size));
  const bool isGood = zkt::TakesOneDouble(format.c_str());
  fuzz::Require(isGood == TakesOneDouble(format), "the check says what the expression says");
  if (!IsLaborious(format)) {
    const host::StringRef formatText(host::MakeString(format, zkt::kEncodingASCII));
    const host::StringRef text(zkt::formatZKT(formatText.Get(), -1234567.875, nullptr));
    fuzz::Require(host::Host::Current().TakeRaised().has_value() == !isGood, "refused formats raise, others do not");
    fuzz::Require(!text || text->length <= 98, "a number has at most 98 bytes");
  }
  fuzz::RequireBalance();
  return 0;
}
