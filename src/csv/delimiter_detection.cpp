#include "csv/delimiter_detection.h"

#include <bit>

namespace zkt::csv {

namespace {

// Returns a mask whose bit i is set if the number of set bits up to and including bit i is odd.
std::uint64_t PrefixXor(std::uint64_t bits) {
  for (int distance = 1; distance < 64; distance *= 2) bits ^= bits << distance;
  return bits;
}

}  // namespace

char DetectDelimiter(const PaddedText& text) {
  std::uint64_t commas = 0;
  std::uint64_t semicolons = 0;
  std::uint64_t tabs = 0;
  const auto count = [](std::uint64_t mask) { return static_cast<std::uint64_t>(std::popcount(mask)); };
  std::uint64_t insideQuotes = 0;  // all bits are set if a quote from an earlier block is still open
  // The padding after the text contains none of the counted bytes.
  for (const char* position = text.begin(); position < text.end(); position += kBlockSize) {
    const Block block(position);
    if (const std::uint64_t quotes = block.Equal('"'); quotes == 0) {
      if (insideQuotes != 0) continue;
      commas += count(block.Equal(','));
      semicolons += count(block.Equal(';'));
      tabs += count(block.Equal('\t'));
    } else {
      const std::uint64_t quoted = PrefixXor(quotes) ^ insideQuotes;
      commas += count(block.Equal(',') & ~quoted);
      semicolons += count(block.Equal(';') & ~quoted);
      tabs += count(block.Equal('\t') & ~quoted);
      insideQuotes = std::uint64_t{0} - (quoted >> 63);
    }
  }
  if (tabs > commas && tabs > semicolons) return '\t';
  return commas > semicolons ? ',' : ';';
}

}  // namespace zkt::csv
