// Finds the next special byte in masks of 64 comparison results instead of looping over bytes.
#pragma once

#include <bit>
#include <cstdint>

#include "csv/byte_masks.h"
#include "csv/dialect.h"

namespace zkt::csv {

// Scans a PaddedText from front to back, block by block.
class SpecialByteScanner {
 public:
  SpecialByteScanner(const char* begin, const char* end, Dialect dialect) : end_(end), dialect_(dialect) {
    LoadBlock(begin);
    ahead_ = specials_;
  }

  // Returns the next delimiter, quote or line break, or the end of the text if there is none.
  const char* NextSpecial() {
    while (ahead_ == 0) {
      const char* const next = block_ + kBlockSize;
      if (next >= end_) return end_;
      LoadBlock(next);
      ahead_ = specials_;
    }
    const char* const found = block_ + std::countr_zero(ahead_);
    ahead_ &= ahead_ - 1;
    return AtMostEnd(found);
  }

  // Makes NextSpecial() continue at a position that the caller has reached by other means.
  void Seek(const char* position) {
    const std::size_t offset = MoveTo(position);
    ahead_ = specials_ >> offset << offset;
  }

  // Returns the first quote at or after `position`, or the end of the text if there is none. Call Seek() afterwards.
  const char* FindQuote(const char* position) {
    std::size_t offset = MoveTo(position);
    while (quotes_ >> offset == 0) {
      const char* const next = block_ + kBlockSize;
      if (next >= end_) return end_;
      LoadBlock(next);
      offset = 0;
    }
    return AtMostEnd(block_ + offset + std::countr_zero(quotes_ >> offset));
  }

 private:
  void LoadBlock(const char* begin) {
    block_ = begin;
    const Block bytes(begin);
    quotes_ = bytes.Equal(dialect_.quote);
    specials_ = quotes_ | bytes.Equal(dialect_.delimiter) | bytes.Equal('\n') | bytes.Equal('\r');
  }

  // Switches to the block that contains the position. Returns the offset of the position in the block.
  std::size_t MoveTo(const char* position) {
    const std::size_t offset = static_cast<std::size_t>(position - block_);
    if (offset >= kBlockSize) LoadBlock(block_ + offset / kBlockSize * kBlockSize);
    return offset % kBlockSize;
  }

  // If the delimiter or the quote is the zero byte, it also matches the padding.
  const char* AtMostEnd(const char* found) const { return found < end_ ? found : end_; }

  const char* block_;
  const char* end_;
  Dialect dialect_;
  std::uint64_t quotes_;
  std::uint64_t specials_;
  std::uint64_t ahead_;  // special bytes of the current block that NextSpecial() has not returned yet
};

}  // namespace zkt::csv
