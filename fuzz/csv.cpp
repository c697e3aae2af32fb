// Compares the CSV splitter with a splitter that reads one byte at a time. Input: the delimiter, the quote
// character, and the CSV data.
#include "csv/splitter.h"
#include "support/naive_csv.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  std::string_view text = fuzz::Text(bytes, size);
  const char delimiter = fuzz::TakeByte(text);
  const char quote = fuzz::TakeByte(text);
  std::vector<std::string> fields;
  const auto keep = [&](std::string_view field) { fields.emplace_back(field); };
  zkt::csv::SplitText(zkt::csv::PaddedText(text), {delimiter, quote}, keep, zkt::csv::NoObserver{});
  fuzz::Require(fields == naive::Split(text, delimiter, quote), "the fields match those of the naive splitter");
  return 0;
}
