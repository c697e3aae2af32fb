// Reading the numbers and texts of a file that may be damaged: every access is checked.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace doctor {

// A file does not hold what its own words promise. The message says in what way.
struct DamagedFile : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A view of bytes, which must outlive it. Offsets and sizes may come straight from the file.
class Bytes {
 public:
  Bytes() = default;
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

  std::uint64_t Size() const { return bytes_.size(); }
  std::string_view View() const { return bytes_; }

  // The `size` bytes from `offset` on.
  Bytes Part(std::uint64_t offset, std::uint64_t size) const {
    if (offset > Size() || size > Size() - offset) throw DamagedFile("the file is cut off");
    return Bytes(bytes_.substr(offset, size));
  }

  // A record as it lies in the file.
  template <class Record>
  Record Read(std::uint64_t offset) const {
    static_assert(std::is_trivially_copyable_v<Record>);
    Record record;
    std::memcpy(&record, Part(offset, sizeof(Record)).View().data(), sizeof(Record));
    return record;
  }

  // A 32-bit number of big-endian order.
  std::uint32_t ReadBig32(std::uint64_t offset) const { return __builtin_bswap32(Read<std::uint32_t>(offset)); }

  // The text from `offset` to the next NUL.
  std::string Text(std::uint64_t offset) const {
    const std::string_view rest = Part(offset, Size() - std::min(offset, Size())).View();
    const std::size_t end = rest.find('\0');
    if (end == std::string_view::npos) throw DamagedFile("a text has no end");
    return std::string(rest.substr(0, end));
  }

 private:
  std::string_view bytes_;
};

}  // namespace doctor
