// Collects the bytes of the current field.
#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "csv/byte_masks.h"

namespace zkt::csv {

// The field is a slice of the text as long as its bytes are contiguous there, and a copy otherwise.
class FieldBuffer {
 public:
  FieldBuffer() : copy_(200, '\0') {}

  bool IsEmpty() const { return size_ == 0; }
  std::string_view Content() const { return {begin_, size_}; }
  void Clear() { size_ = 0; }

  // The bytes must be in a PaddedText.
  void Append(const char* begin, const char* end) {
    const std::size_t count = static_cast<std::size_t>(end - begin);
    if (count == 0) return;
    if (size_ == 0)
      begin_ = begin;
    else if (begin_ + size_ != begin)
      return AppendToCopy(begin, count);
    size_ += count;
  }

 private:
  static constexpr std::size_t kStep = 16;
  static_assert(kStep <= kBlockSize);

  void AppendToCopy(const char* begin, std::size_t count) {
    const bool isCopy = begin_ == copy_.data();
    if (copy_.size() < size_ + count + kStep) copy_.resize(2 * (size_ + count + kStep));
    if (!isCopy) CopyRun(copy_.data(), begin_, size_);
    CopyRun(copy_.data() + size_, begin, count);
    begin_ = copy_.data();
    size_ += count;
  }

  // Runs are short, so copying whole steps, even beyond the end, is faster than copying the exact size.
  static void CopyRun(char* to, const char* from, std::size_t count) {
    for (std::size_t done = 0; done < count; done += kStep) std::memcpy(to + done, from + done, kStep);
  }

  const char* begin_ = nullptr;
  std::size_t size_ = 0;
  std::string copy_;
};

}  // namespace zkt::csv
