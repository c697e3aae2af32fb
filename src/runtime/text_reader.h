// Scoped readers of host strings: rbText for text in a wanted encoding, rbData for the bytes as they are.
// Make one on the stack of a native function; what it hands out is valid until it goes out of scope.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "frame/contract/host_reference.h"

namespace zkt {

class rbText {
 public:
  // Takes a borrowed string, nil included, and holds it.
  explicit rbText(REALstring string);
  rbText(const rbText&) = delete;
  rbText& operator=(const rbText&) = delete;
  ~rbText();

  // Makes the UTF-8 view. ASCII and UTF-8 strings are read in place; a failed conversion leaves an empty view.
  void ConvertUTF8();

  // The text as UTF-8, converted when first asked for. Read in place, it need not be followed by a zero byte.
  std::string_view GetUTF8();

  // The same, zero-terminated, for what takes C strings. Never null; empty when memory for a copy is out.
  const char* GetUTF8CString();

  // The text as ASCII, zero-terminated, converted when first asked for. Never null.
  const char* GetASCII();

  // Finds out whether all bytes are below 0x80, in which case they serve as every 8-bit view.
  void CheckASCII();

  // Whether a conversion failed. Encoding-less bytes that are no ASCII always count as a failure, rebuilt or not.
  bool HasFailed() const { return failed_; }

 private:
  enum ASCIIState : std::uint32_t { kIsASCII = 1, kNotKnown = 2, kNotASCII = 3 };
  static constexpr std::int64_t kNotComputed = -1;

  // The text in one encoding: bytes of the string itself, of the host's record, or of a copy with a zero behind it.
  struct View {
    const char* bytes = "";
    std::int64_t length = 0;  // or kNotComputed
    std::unique_ptr<char[]> copy;
    bool ownsRecord = false;
    REALstringData record;  // without a value unless it is owned

    void Set(const char* newBytes, std::int64_t newLength);
  };

  void Reset();
  void Hold(REALstring string);
  void ViewInPlace(View& view);
  void RebuildFromRawBytes();
  void Convert(View& view, std::uint32_t encoding);
  static const char* Terminated(View& view);

  // The guards show in the log when a native function has written over its stack.
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
  // Takes a borrowed string, nil included, and holds it.
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
