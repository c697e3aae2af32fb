// Compares delimiter detection with a plain loop over the bytes. Input: the CSV data.
#include "csv/delimiter_detection.h"
#include "support/naive_csv.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text = fuzz::Text(bytes, size);
  fuzz::Require(zkt::csv::DetectDelimiter(zkt::csv::PaddedText(text)) == naive::DetectDelimiter(text),
                "the delimiter matches that of the naive count");
  return 0;
}
