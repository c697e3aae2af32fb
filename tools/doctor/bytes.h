// Bounds-checked access to the content of a file that may be damaged.
#pragma once

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace doctor {

// Thrown if a file is damaged or not in the expected format. The message says why.
struct DamagedFile : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A 32-bit number stored in big-endian order.
struct Big32 {
  std::uint32_t stored;
  operator std::uint32_t() const { return __builtin_bswap32(stored); }
};

// A view of bytes, which must outlive the view. Offsets, sizes and counts from the file can be passed without checks.
class Bytes : public std::string_view {
 public:
  Bytes() = default;
  explicit Bytes(std::string_view bytes) : std::string_view(bytes) {}

  Bytes Part(std::uint64_t offset, std::uint64_t size) const {
    if (offset > this->size() || size > this->size() - offset) throw DamagedFile("the file is truncated");
    return Bytes(substr(offset, size));
  }

  Bytes From(std::uint64_t offset) const { return Part(offset, offset < size() ? size() - offset : 0); }

  // Reads a number or record in the file's layout.
  template <class Record>
  Record Read(std::uint64_t offset) const {
    Record record;
    std::memcpy(&record, Part(offset, sizeof(Record)).data(), sizeof(Record));
    return record;
  }

  template <class Record>
  std::vector<Record> ReadAll(std::uint64_t offset, std::uint64_t count) const {
    std::vector<Record> records;
    for (; count > 0; --count, offset += sizeof(Record)) records.push_back(Read<Record>(offset));
    return records;
  }

  // Returns the string from `offset` to the next NUL.
  std::string Text(std::uint64_t offset) const {
    const Bytes rest = From(offset);
    const std::size_t end = rest.find('\0');
    if (end == npos) throw DamagedFile("it has an unterminated string");
    return std::string(rest.substr(0, end));
  }
};

}  // namespace doctor
