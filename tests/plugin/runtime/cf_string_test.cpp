#include "runtime/cf_string.h"

#include "platform/linux/text_decoding.h"
#include "support/host_fixture.h"

namespace {

using tests::MakeString;
using namespace std::string_view_literals;

using CFStrings = tests::HostTest;

std::string UTF8Of(CFStringRef string) {
  char buffer[256];
  if (CFStringGetCString(string, buffer, sizeof buffer, kCFStringEncodingUTF8) == 0) return "no UTF-8";
  return buffer;
}

TEST_F(CFStrings, AreCreatedFromEveryEncoding) {
  const struct {
    const char* note;
    std::string_view bytes;
    std::uint32_t encoding;
    const char* want;  // null if no string can be created
    long length;       // in UTF-16 code units
  } cases[] = {
      {"UTF-8 up to four bytes", "aé€𝄞", zkt::kEncodingUTF8, "aé€𝄞", 5},
      {"UTF-8 with a byte-order mark", "\xEF\xBB\xBFy", zkt::kEncodingUTF8, "y", 1},
      {"invalid UTF-8", "a\xC3", zkt::kEncodingUTF8, nullptr, 0},
      {"a surrogate in UTF-8", "\xED\xA0\x80", zkt::kEncodingUTF8, nullptr, 0},
      {"overlong UTF-8", "\xC0\x80", zkt::kEncodingUTF8, nullptr, 0},
      {"overlong UTF-8 of three bytes", "\xE0\x80\x80", zkt::kEncodingUTF8, nullptr, 0},
      {"UTF-8 beyond Unicode", "\xF4\x90\x80\x80", zkt::kEncodingUTF8, nullptr, 0},
      {"no encoding: Mac Roman", "\x8E\xDB", zkt::kEncodingNone, "é€", 2},
      {"Mac Roman", "a\x80", zkt::kEncodingMacRoman, "aÄ", 2},
      {"Windows Latin 1", "\x80\x9F", zkt::kEncodingWindowsLatin1, "€Ÿ", 2},
      {"Latin 1", "\xE9", zkt::kEncodingISOLatin1, "é", 1},
      {"ASCII", "abc", zkt::kEncodingASCII, "abc", 3},
      {"ASCII, high byte", "\x80", zkt::kEncodingASCII, nullptr, 0},
      {"UTF-16, surrogate pair", "\x34\xD8\x1E\xDD"sv, zkt::kEncodingUTF16, "𝄞", 2},
      {"UTF-16, odd byte dropped", "a\0b"sv, zkt::kEncodingUTF16, "a", 1},
      {"UTF-16, lone surrogate", "\x34\xD8"sv, zkt::kEncodingUTF16, "no UTF-8", 1},
      {"UTF-16, lone low surrogate", "\x1E\xDD"sv, zkt::kEncodingUTF16, "no UTF-8", 1},
      {"UTF-16, two low surrogates", "\x1E\xDD\x1E\xDD"sv, zkt::kEncodingUTF16, "no UTF-8", 2},
      {"UTF-16, high surrogate before a character", "\x34\xD8\0\xE0"sv, zkt::kEncodingUTF16, "no UTF-8", 2},
      {"UTF-16 big-endian", "\x20\xAC"sv, zkt::kEncodingUTF16BE, "€", 1},
      {"UTF-16 little-endian", "\xAC\x20"sv, zkt::kEncodingUTF16LE, "€", 1},
      {"UTF-32", "\x1E\xD1\x01\0"sv, zkt::kEncodingUTF32, "𝄞", 2},
      {"UTF-32 with a swapped byte-order mark", "\0\0\xFE\xFF\0\0\0a"sv, zkt::kEncodingUTF32, "a", 1},
      {"UTF-32 with a byte-order mark", "\xFF\xFE\0\0a\0\0\0"sv, zkt::kEncodingUTF32, "a", 1},
      {"UTF-32 big-endian", "\0\x01\xD1\x1E"sv, zkt::kEncodingUTF32BE, "𝄞", 2},
      {"UTF-32, surrogate", "\0\xD8\0\0"sv, zkt::kEncodingUTF32, nullptr, 0},
      {"UTF-32 beyond Unicode", "\0\0\x11\0"sv, zkt::kEncodingUTF32, nullptr, 0},
      {"unknown encoding", "a", 0x0A01, nullptr, 0},
      {"empty", "", zkt::kEncodingUTF8, "", 0},
  };
  for (const auto& c : cases) {
    const CFStringRef made = zkt::RBString2CFString(MakeString(c.bytes, c.encoding).Get());
    const zkt::fmCFReleaseLater release(made);
    ASSERT_EQ(made != nullptr, c.want != nullptr) << c.note;
    if (made == nullptr) continue;
    EXPECT_EQ(UTF8Of(made), c.want) << c.note;
    EXPECT_EQ(CFStringGetLength(made), c.length) << c.note;
  }
  EXPECT_EQ(zkt::RBString2CFString(nullptr), nullptr);
}

// Compares the conversions with the C library's tables.
TEST_F(CFStrings, AgreeWithTheCLibraryOnEveryByte) {
  for (const std::uint32_t encoding : {zkt::kEncodingMacRoman, zkt::kEncodingWindowsLatin1, zkt::kEncodingISOLatin1}) {
    for (int byte = 1; byte < 256; ++byte) {
      const std::string bytes(1, static_cast<char>(byte));
      std::string want = host::ConvertText(bytes, encoding, zkt::kEncodingUTF8).value();
      // For these bytes, Apple's table has the increment sign and Apple's logo. The C library's table has a Greek
      // letter and another private-use character.
      if (encoding == zkt::kEncodingMacRoman && byte == 0xC6) want = "∆";
      if (encoding == zkt::kEncodingMacRoman && byte == 0xF0) want = "\uF8FF";
      const CFStringRef made = zkt::RBString2CFString(MakeString(bytes, encoding).Get());
      const zkt::fmCFReleaseLater release(made);
      const std::string got = UTF8Of(made);
      // The C library maps five byte values of Windows Latin 1 to no character. The plug-in converts them to control
      // characters.
      if (want == "?" && byte != '?')
        EXPECT_EQ(got, host::ConvertText(bytes, zkt::kEncodingISOLatin1, zkt::kEncodingUTF8)) << byte;
      else
        EXPECT_EQ(got, want) << encoding << ", " << byte;
    }
  }
}

// The host's UTF-16 strings are read unit by unit. A byte-order mark is recognized only in external text.
TEST(TextDecoding, UsesTheByteOrderMarkOfUTF16) {
  const struct {
    const char* note;
    std::string_view bytes;
    bool isExternal;
    std::u16string_view want;
  } cases[] = {
      {"native", "\xFF\xFE\xAC\x20"sv, true, u"€"},
      {"swapped", "\xFE\xFF\x20\xAC"sv, true, u"€"},
      {"native, without text", "\xFF\xFE"sv, true, u""},
      {"swapped, without text", "\xFE\xFF"sv, true, u""},
      {"a second byte-order mark is content", "\xFF\xFE\xFF\xFE"sv, true, u"\uFEFF"},
      {"not recognized", "\xFF\xFE\xAC\x20"sv, false, u"\uFEFF€"},
  };
  for (const auto& c : cases) EXPECT_EQ(zkt::DecodeText(c.bytes, zkt::kEncodingUTF16, c.isExternal), c.want) << c.note;
}

TEST_F(CFStrings, LogOtherEncodings) {
  const struct {
    std::uint32_t encoding;
    const char* want;
  } cases[] = {
      {zkt::kEncodingASCII, "other encoding 1536|"},
      {zkt::kEncodingUTF32LE, "other encoding 469762304|"},
      {zkt::kEncodingWindowsLatin1, ""},
      {zkt::kEncodingUTF8, ""},
      {zkt::kEncodingUTF16, ""},
      {zkt::kEncodingUTF32, ""},
      {zkt::kEncodingMacRoman, ""},
      {zkt::kEncodingISOLatin1, ""},
      {zkt::kEncodingNone, ""},
  };
  for (const auto& c : cases) {
    const std::string trace = tests::TraceOf([&] {
      const zkt::fmCFReleaseLater release(zkt::RBString2CFString(MakeString("a\0\0\0"sv, c.encoding).Get()));
    });
    EXPECT_EQ(trace, c.want) << c.encoding;
  }
}

TEST(CFString, CountsReferencesAndChecksTheBuffer) {
  const UniChar characters[] = {'a', 'b', 'c'};
  const CFStringRef string = CFStringCreateWithCharacters(nullptr, characters, 3);
  CFRelease(CFRetain(string));
  char exact[4];
  EXPECT_TRUE(CFStringGetCString(string, exact, 4, kCFStringEncodingUTF8));
  EXPECT_STREQ(exact, "abc");
  EXPECT_FALSE(CFStringGetCString(string, exact, 3, kCFStringEncodingUTF8));
  EXPECT_FALSE(CFStringGetCString(string, exact, 4, kCFStringEncodingMacRoman));
  CFRelease(string);
}

}  // namespace
