// Scoped readers of host strings: rbText converts a string to UTF-8 or ASCII, and rbData returns the raw bytes. The
// names are fixed by the host's interface. Create a reader on the stack of a native function. The results are valid
// until the reader goes out of scope.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "frame/contract/host_reference.h"

namespace zkt {

class rbText {
 public:
  // Takes a borrowed string, which may be nil, and retains it.
  explicit rbText(REALstring string);
  rbText(const rbText&) = delete;
  rbText& operator=(const rbText&) = delete;
  ~rbText();

  // Creates the UTF-8 view. ASCII and UTF-8 strings are read in place if a zero byte follows them. If the conversion
  // fails, or if there is not enough memory for a copy, the view is empty.
  void ConvertUTF8();

  // Returns the string as UTF-8, converted on first use. A zero byte follows it.
  std::string_view GetUTF8();

  // Returns the string as zero-terminated ASCII, converted on first use. Never returns null.
  const char* GetASCII();

  // Checks whether all bytes are below 0x80. If so, views that have not been computed yet use the string's own bytes.
  void CheckASCII();

  // Returns whether a conversion failed. A string without an encoding counts as failed unless all its bytes are ASCII.
  bool HasFailed() const { return failed_; }

 private:
  enum ASCIIState : std::uint32_t { kIsASCII = 1, kNotKnown = 2, kNotASCII = 3 };
  static constexpr std::int64_t kNotComputed = -1;

  // The string in one encoding. The bytes belong to the string itself, to the host's record, or to a zero-terminated
  // copy.
  struct View {
    const char* bytes = "";
    std::int64_t length = 0;  // or kNotComputed
    std::unique_ptr<char[]> copy;
    bool ownsRecord = false;
    REALstringData record;  // valid only if ownsRecord is true

    void Set(const char* newBytes, std::int64_t newLength);
  };

  void Reset();
  void Hold(REALstring string);
  void ViewInPlace(View& view);
  void RebuildFromRawBytes();
  void Convert(View& view, std::uint32_t encoding);
  void ConvertByHost(View& view, std::uint32_t encoding);
  static void Terminate(View& view);

  // The destructor logs a changed guard word, which means that a native function has overwritten its stack.
  std::uint64_t headGuard_;
  OwnedString string_;
  View ascii_;
  View utf8_;
  bool failed_ = false;
  std::uint32_t encoding_ = kEncodingASCII;
  ASCIIState asciiState_ = kIsASCII;
  std::uint64_t tailGuard_;
};

class rbData {
 public:
  // Takes a borrowed string, which may be nil, and retains it.
  explicit rbData(REALstring string);
  rbData(const rbData&) = delete;
  rbData& operator=(const rbData&) = delete;

  const char* Bytes() const { return bytes_; }
  std::int64_t Count() const { return count_; }

 private:
  OwnedString string_;
  const char* bytes_ = nullptr;
  std::int64_t count_ = 0;
};

}  // namespace zkt
