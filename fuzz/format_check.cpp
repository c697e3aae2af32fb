// Compares the printf format check with a regular expression, and formats a number with each format. Input: the format.
#include "locale/format_check.h"

#include <regex.h>

#include "host.h"
#include "locale/number_format.h"

namespace {

bool HasSingleDoubleConversion(const std::string& format) {
  static const regex_t pattern = [] {
    regex_t compiled;
    const int error = ::regcomp(&compiled, "^([^%]|%%)*%[-+ #0']*[0-9]*(\\.[0-9]*)?l?[aAeEfFgG]([^%]|%%)*$",
                                REG_EXTENDED | REG_NOSUB);
    fuzz::Require(error == 0, "the expression can be compiled");
    return compiled;
  }();
  return ::regexec(&pattern, format.c_str(), 0, nullptr, 0) == 0;
}

void Run(const std::string& format, bool isGood) {
  const host::StringRef formatText(host::MakeString(format, zkt::kEncodingASCII));
  const host::StringRef text(zkt::formatZKT(formatText.Get(), -1234567.875, nullptr));
  fuzz::Require(host::TakeRaised().has_value() == !isGood, "only rejected formats raise an exception");
  fuzz::Require(!text || text->length <= 98, "a number has at most 98 bytes");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  fuzz::NeedHost();
  const std::string format = fuzz::UpToZero(fuzz::Text(bytes, size));
  const bool isGood = zkt::HasSingleDoubleConversion(format.c_str());
  fuzz::Require(isGood == HasSingleDoubleConversion(format), "the check agrees with the regular expression");
  Run(format, isGood);
  fuzz::RequireBalance();
  return 0;
}
