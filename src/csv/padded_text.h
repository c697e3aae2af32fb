// A text that may be read a block at a time: zero bytes follow it for at least one block.
#pragma once

#include <string>
#include <string_view>

#include "csv/byte_masks.h"

namespace zkt::csv {

class PaddedText {
 public:
  // Copies the text. Throws std::length_error or std::bad_alloc when that cannot be done.
  explicit PaddedText(std::string_view text) : size_(text.size()) {
    // One reservation for text and padding: growing afterwards would copy the text a second time.
    constexpr std::size_t kPadding = 2 * kBlockSize;
    bytes_.reserve(text.size() + kPadding);
    bytes_.append(text);
    bytes_.append(kPadding, '\0');
  }

  const char* begin() const { return bytes_.data(); }
  const char* end() const { return bytes_.data() + size_; }
  std::size_t size() const { return size_; }

 private:
  std::string bytes_;
  std::size_t size_;
};

}  // namespace zkt::csv
