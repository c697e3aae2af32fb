// A text that may be read a block at a time: zero bytes follow it for one block and one byte more.
#pragma once

#include <string>
#include <string_view>

#include "csv/byte_masks.h"

namespace zkt::csv {

class PaddedText {
 public:
  // Copies the text. Throws std::length_error or std::bad_alloc when that cannot be done.
  explicit PaddedText(std::string_view text) : size_(text.size()) {
    // A block may begin one byte behind the end: a doubled quote can count the first zero byte in.
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
