// Scoped readers of host strings: rbText for text in a given encoding, rbData for the raw bytes. Their names are fixed
// by the host's interface. Create one on the stack of a native function. Its results are valid until it goes out of
// scope.
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

  // Creates the UTF-8 view. ASCII and UTF-8 strings are read in place. A failed conversion leaves an empty view.
  void ConvertUTF8();

  // Returns the text as UTF-8, converted on first use. A text read in place may lack a zero terminator.
  std::string_view GetUTF8();

  // Returns the same text zero-terminated. Never null. Empty if there is no memory for a copy.
  const char* GetUTF8CString();

  // Returns the text as zero-terminated ASCII, converted on first use. Never null.
  const char* GetASCII();

  // Checks whether all bytes are below 0x80, in which case they serve as every 8-bit view.
  void CheckASCII();

  // Returns whether a conversion failed. Bytes without an encoding that are not ASCII always count as failed.
  bool HasFailed() const { return failed_; }

 private:
  enum ASCIIState : std::uint32_t { kIsASCII = 1, kNotKnown = 2, kNotASCII = 3 };
  static constexpr std::int64_t kNotComputed = -1;

  // The text in one encoding: bytes of the string itself, of the host's record, or of a zero-terminated copy.
  struct View {
    const char* bytes = "";
    std::int64_t length = 0;  // or kNotComputed
    std::unique_ptr<char[]> copy;
    bool ownsRecord = false;
    REALstringData record;  // has no value unless it is owned

    void Set(const char* newBytes, std::int64_t newLength);
  };

  void Reset();
  void Hold(REALstring string);
  void ViewInPlace(View& view);
  void RebuildFromRawBytes();
  void Convert(View& view, std::uint32_t encoding);
  static const char* Terminated(View& view);

  // The guard words show in the log if a native function has overwritten its stack.
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
