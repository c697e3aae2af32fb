// Tests how host strings are read and built.
#include <cstring>

#include "runtime/free_later.h"
#include "runtime/text_builder.h"
#include "runtime/text_reader.h"
#include "support/host_fixture.h"

namespace {

using namespace tests;
using namespace std::string_view_literals;

using Text = tests::HostTest;

struct ReadCase {
  const char* note;
  std::string_view bytes;
  std::uint32_t encoding;
  std::string_view utf8;
  const char* ascii;
  bool inPlace;
  bool failed;
};

// In Mac Roman, Ä is 0x80 and é is 0x8E. In the Latin encodings, é is 0xE9.
const ReadCase kReadCases[] = {
    {"UTF-8 beyond ASCII", "é", zkt::kEncodingUTF8, "é", "?", true, false},
    {"UTF-8 within ASCII", "abc", zkt::kEncodingUTF8, "abc", "abc", true, false},
    {"embedded zero byte", "a\0b"sv, zkt::kEncodingUTF8, "a\0b"sv, "a", true, false},
    {"ASCII", "abc", zkt::kEncodingASCII, "abc", "abc", true, false},
    {"ASCII beyond ASCII", "\xE9", zkt::kEncodingASCII, "\xE9", "\xE9", true, false},
    {"Latin 1 within ASCII", "abc", zkt::kEncodingISOLatin1, "abc", "abc", true, false},
    {"Latin 1", "\xE9", zkt::kEncodingISOLatin1, "é", "?", false, false},
    {"Windows Latin 1", "\x80", zkt::kEncodingWindowsLatin1, "€", "?", false, false},
    {"Mac Roman", "\x8E", zkt::kEncodingMacRoman, "é", "?", false, false},
    {"UTF-16", "\xE9\0a\0"sv, zkt::kEncodingUTF16, "éa", "?a", false, false},
    {"UTF-16 within ASCII", "a\0b\0"sv, zkt::kEncodingUTF16, "ab", "ab", false, false},
    {"UTF-16 big-endian", "\0\xE9"sv, zkt::kEncodingUTF16BE, "é", "?", false, false},
    {"UTF-16 big-endian within ASCII", "\0a\0b"sv, zkt::kEncodingUTF16BE, "ab", "ab", false, false},
    {"UTF-16 little-endian within ASCII", "a\0b\0"sv, zkt::kEncodingUTF16LE, "ab", "ab", false, false},
    {"UTF-32", "\xE9\0\0\0"sv, zkt::kEncodingUTF32, "é", "?", false, false},
    {"UTF-32 within ASCII", "a\0\0\0b\0\0\0"sv, zkt::kEncodingUTF32, "ab", "ab", false, false},
    {"UTF-32 big-endian within ASCII", "\0\0\0a\0\0\0b"sv, zkt::kEncodingUTF32BE, "ab", "ab", false, false},
    {"UTF-32 little-endian within ASCII", "a\0\0\0b\0\0\0"sv, zkt::kEncodingUTF32LE, "ab", "ab", false, false},
    {"bytes within ASCII", "abc", zkt::kEncodingNone, "abc", "abc", true, false},
    {"bytes read as Mac Roman", "a\x80", zkt::kEncodingNone, "aÄ", "a?", false, true},
    {"unknown encoding", "\xE9", 0x0A01, "", "", false, true},
    {"empty string", "", zkt::kEncodingUTF8, "", "", true, false},
    {"empty bytes", "", zkt::kEncodingNone, "", "", true, false},
};

TEST_F(Text, IsReadAsUTF8AndASCII) {
  for (const ReadCase& c : kReadCases) {
    const host::StringRef string = MakeString(c.bytes, c.encoding);
    int& conversionCount = host::Host::Current().conversionCount = 0;
    zkt::rbText text(string.Get());
    const std::string_view utf8 = text.GetUTF8();
    EXPECT_EQ(conversionCount, c.inPlace ? 0 : 1) << c.note;
    EXPECT_EQ(utf8, c.utf8) << c.note;
    EXPECT_EQ(utf8.data()[utf8.size()], '\0') << c.note;
    EXPECT_EQ(utf8.data() == string->Bytes(), c.inPlace && !c.bytes.empty()) << c.note;
    conversionCount = 0;
    EXPECT_STREQ(text.GetASCII(), c.ascii) << c.note;
    const bool isASCII = std::strchr(c.ascii, '?') == nullptr;
    EXPECT_EQ(conversionCount, c.inPlace && isASCII ? 0 : 1) << c.note;
    conversionCount = 0;
    EXPECT_EQ(text.GetUTF8(), c.utf8) << c.note;
    EXPECT_STREQ(text.GetASCII(), c.ascii) << c.note;
    EXPECT_EQ(conversionCount, 0) << c.note << ": read again";
    EXPECT_EQ(text.HasFailed(), c.failed) << c.note;
  }
}

TEST_F(Text, OfNilIsEmpty) {
  zkt::rbText text(nullptr);
  EXPECT_STREQ(text.GetUTF8().data(), "");
  EXPECT_STREQ(text.GetASCII(), "");
  EXPECT_FALSE(text.HasFailed());
  EXPECT_EQ(zkt::rbData(nullptr).Count(), 0);
}

const std::string kNotTerminated = "String is not zero terminated. Fixed.|";

TEST_F(Text, GetsAMissingTerminator) {
  host::Host::Current().terminatesStringData = false;
  const host::StringRef string = MakeString("\xE9t\xE9", zkt::kEncodingISOLatin1);
  const std::string trace = TraceOf([&] {
    zkt::rbText text(string.Get());
    EXPECT_STREQ(text.GetUTF8().data(), "été");
    EXPECT_STREQ(text.GetASCII(), "?t?");
  });
  host::Host::Current().terminatesStringData = true;
  EXPECT_EQ(trace, kNotTerminated + kNotTerminated);
}

// A string that can be read in place is copied only if it is unterminated.
TEST_F(Text, ReadInPlaceGetsAMissingTerminator) {
  const std::string& line = kNotTerminated;
  const struct {
    const char* note;
    std::string_view bytes;
    std::uint32_t encoding;
    std::string trace;
  } cases[] = {
      {"ASCII", "abc", zkt::kEncodingASCII, line + line},
      {"UTF-8 within ASCII", "abc", zkt::kEncodingUTF8, line + line},
      {"UTF-8", "é", zkt::kEncodingUTF8, line},
      {"Latin 1 within ASCII", "abc", zkt::kEncodingISOLatin1, line + line},
      {"bytes within ASCII", "abc", zkt::kEncodingNone, line + line},
      {"empty", "", zkt::kEncodingUTF8, ""},
  };
  for (const auto& c : cases) {
    const host::StringRef string = MakeString(c.bytes, c.encoding);
    string->Bytes()[string->length] = 'Z';
    const std::string trace = TraceOf([&] {
      zkt::rbText text(string.Get());
      for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(std::string_view(text.GetUTF8().data()), c.bytes) << c.note;
        EXPECT_EQ(std::string_view(text.GetASCII()), c.bytes == "é" ? "?" : c.bytes) << c.note;
      }
    });
    EXPECT_EQ(trace, c.trace) << c.note;
    string->Bytes()[string->length] = '\0';
  }
}

TEST_F(Text, ToleratesAbsentServices) {
  const host::StringRef utf8 = MakeString("é");
  const host::StringRef latin1 = MakeString("\xE9", zkt::kEncodingISOLatin1);
  const host::StringRef bytes = MakeString("\x80", zkt::kEncodingNone);
  const auto read = [](const host::StringRef& string) { return std::string(zkt::rbText(string.Get()).GetUTF8()); };
  {
    const ServiceWithheld absent(zkt::REALGetStringBytes);
    EXPECT_EQ(read(utf8), "é") << "the string is converted, not read in place";
    EXPECT_EQ(read(latin1), "é");
    EXPECT_EQ(read(bytes), "");
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(zkt::rbData(utf8.Get()).Count(), 0); }), "data is NULL, so size fixed to zero.|");
  }
  {
    const ServiceWithheld absent(zkt::REALGetStringByteCount);
    EXPECT_EQ(read(utf8), "");
    EXPECT_EQ(read(bytes), "");
  }
  {
    const ServiceWithheld absent(zkt::REALGetStringEncoding);
    EXPECT_EQ(read(latin1), "é") << "the host still knows the encoding";
  }
  {
    const ServiceWithheld absent(zkt::REALGetStringData);
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(read(utf8), "é"); }), "");
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(read(latin1), ""); }), "REALGetStringData failed.|");
  }
  const ServiceWithheld noBuild(zkt::REALBuildStringWithEncoding);
  EXPECT_EQ(read(bytes), "");
}

TEST_F(Text, LogsOverwrittenGuards) {
  const auto overwrite = [] {
    zkt::rbText text(nullptr);
    const std::uint64_t wrong = 5;
    std::memcpy(static_cast<void*>(&text), &wrong, sizeof wrong);
    std::memcpy(reinterpret_cast<char*>(&text + 1) - sizeof wrong, &wrong, sizeof wrong);
  };
  EXPECT_EQ(TraceOf(overwrite), "Check1 in rbText invalid 5|Check2 in rbText invalid 5|");
}

TEST_F(Text, LogsRebuiltBytesOncePerProcess) {
  const host::StringRef bytes = MakeString("\x80", zkt::kEncodingNone);
  const auto read = [&] { zkt::rbText text(bytes.Get()); };
  EXPECT_EQ(TraceOf(read), "REALBuildUnicodeString failed|");
  EXPECT_EQ(TraceOf(read), "");
}

struct BuildCase {
  const char* note;
  std::string_view bytes;
  std::uint32_t encoding;
  std::string_view builtBytes;
  std::uint32_t builtEncoding;
};

const BuildCase kBuildCases[] = {
    {"UTF-8", "é", zkt::kEncodingUTF8, "é", zkt::kEncodingUTF8},
    {"ASCII is not checked", "\xE9", zkt::kEncodingASCII, "\xE9", zkt::kEncodingASCII},
    {"Mac Roman", "\x80", zkt::kEncodingMacRoman, "\x80", zkt::kEncodingMacRoman},
    {"Mac Roman within ASCII", "abcdefghi", zkt::kEncodingMacRoman, "abcdefghi", zkt::kEncodingASCII},
    {"Latin 1", "abcdefgh\xE9", zkt::kEncodingISOLatin1, "abcdefgh\xE9", zkt::kEncodingISOLatin1},
    {"Windows Latin 1", "\x80", zkt::kEncodingWindowsLatin1, "\x80", zkt::kEncodingWindowsLatin1},
    {"bytes within ASCII", "a\0b"sv, zkt::kEncodingNone, "a\0b"sv, zkt::kEncodingASCII},
    {"bytes", "\x80", zkt::kEncodingNone, "\x80", zkt::kEncodingNone},
    {"UTF-16 becomes UTF-8", "\xE9\0"sv, zkt::kEncodingUTF16, "é", zkt::kEncodingUTF8},
    {"any other encoding", "a\0"sv, 0x0A01, "a\0"sv, 0x0A01},
};

TEST_F(Text, IsBuiltOnNewAndOldHosts) {
  for (const double version : {2024.03, 2012.0, 2011.04}) {
    SetVersion(version);
    for (const BuildCase& c : kBuildCases) {
      const host::StringRef built(
          zkt::REALBuildUnicodeString(c.bytes.data(), static_cast<long long>(c.bytes.size()), c.encoding));
      ASSERT_TRUE(built) << c.note;
      EXPECT_EQ(built->View(), c.builtBytes) << c.note << " on " << version;
      EXPECT_EQ(built->encoding, c.builtEncoding) << c.note << " on " << version;
    }
  }
}

TEST_F(Text, InAnUnsupportedEncodingIsLogged) {
  const auto buildAll = [] {
    for (const BuildCase& c : kBuildCases)
      host::StringRef(zkt::REALBuildUnicodeString(c.bytes.data(), static_cast<long long>(c.bytes.size()), c.encoding));
  };
  EXPECT_EQ(TraceOf(buildAll), "Unknown encoding in REALBuildUnicodeString 2561|");
}

TEST_F(Text, IsNotBuiltFromNothing) {
  const auto traceOfNone = [](const char* bytes, long long count, std::uint32_t encoding = zkt::kEncodingUTF8) {
    return TraceOf([&] { EXPECT_EQ(zkt::REALBuildUnicodeString(bytes, count, encoding), nullptr) << count; });
  };
  EXPECT_EQ(traceOfNone(nullptr, 5) + traceOfNone("a", 0) + traceOfNone("a", -1), "");
  EXPECT_EQ(traceOfNone("a", 2147483648), "Count too big for REALBuildUnicodeString.|");
  SetVersion(2010.0);
  const ServiceWithheld absent(zkt::originalREALBuildString);
  EXPECT_EQ(traceOfNone("a", 1), "");
  EXPECT_EQ(traceOfNone("a\0", 2, zkt::kEncodingUTF16), "Out of memory in REALBuildUnicodeStringUTF16.|");
}

// The fuzz target fuzz_utf8 compares the UTF-8 detection with that of a library.
TEST_F(Text, WithoutAnEncodingIsDetected) {
  const struct {
    const char* note;
    const char* text;
    std::uint32_t encoding;
  } cases[] = {
      {"ASCII", "abc\x01", zkt::kEncodingASCII},
      {"UTF-8", "caf\xC3\xA9", zkt::kEncodingUTF8},
      {"UTF-8 with line breaks", "\xC3\xA9\t\r\n", zkt::kEncodingUTF8},
      {"invalid UTF-8", "caf\xE9", zkt::kEncodingMacRoman},
      {"control character", "a\x01\xC3\xA9", zkt::kEncodingMacRoman},
      {"delete character", "\x7F\xC3\xA9", zkt::kEncodingMacRoman},
  };
  for (const auto& c : cases) {
    const host::StringRef built(zkt::CString2RB_detect_encoding(c.text));
    EXPECT_EQ(built->encoding, c.encoding) << c.note;
    EXPECT_EQ(built->View(), c.text) << c.note;
  }
  EXPECT_EQ(zkt::CString2RB_detect_encoding(nullptr), nullptr);
  EXPECT_EQ(zkt::CString2RB_detect_encoding(""), nullptr);
}

TEST_F(Text, IsFreedLater) {
  REALstring string = host::MakeString("text");
  REALobject object = host::MakeObject(host::FindClass("RuntimeException"));
  {
    const zkt::rbFreeLater both(&object, &string);
    const zkt::rbFreeLater neither(nullptr, nullptr);
  }
  EXPECT_EQ(string, nullptr);
  EXPECT_EQ(object, nullptr);
}

}  // namespace
