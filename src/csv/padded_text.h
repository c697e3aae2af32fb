// A copy of the input, padded with enough zero bytes that it can be read in whole blocks.
#pragma once

#include <string>
#include <string_view>

#include "csv/byte_masks.h"

namespace zkt::csv {

class PaddedText {
 public:
  // Copies the text. Throws std::length_error or std::bad_alloc if the text cannot be copied.
  explicit PaddedText(std::string_view text) : size_(text.size()) {
    // A block may begin one byte after the end, because a doubled quote may include the first zero byte. Memory for the
    // text and the padding is reserved at once, because growing the string later would copy the text again.
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
