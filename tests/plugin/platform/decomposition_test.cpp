// Compares the plug-in's Unicode decomposition with that of the utf8proc library.
#include "platform/linux/decomposition.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <cstdlib>
#include <random>
#include <string_view>
#include <vector>

#include "platform/linux/core_foundation.h"
#include "platform/linux/text_decoding.h"

namespace {

std::u16string UTF16Of(char32_t c) {
  if (c < 0x10000) return std::u16string(1, static_cast<char16_t>(c));
  return {static_cast<char16_t>(0xD7C0 + (c >> 10)), static_cast<char16_t>(0xDC00 + (c & 0x3FF))};
}

std::string UTF8Of(std::u16string_view text) { return zkt::EncodeUTF8(text).value(); }

std::string Reference(const std::string& text) {
  utf8proc_uint8_t* decomposed = nullptr;
  const auto length =
      utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
                   &decomposed, static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_STABLE));
  EXPECT_GE(length, 0);
  const std::string result(reinterpret_cast<const char*>(decomposed), static_cast<std::size_t>(length));
  std::free(decomposed);
  return result;
}

// Checks the decomposition of every character. Returns the characters that decomposition changes or reorders.
std::vector<char32_t> CheckEveryCharacter() {
  // A newer version of the library has characters that are not yet in the plug-in's table.
  const bool isSameVersion = std::string_view(utf8proc_unicode_version()) == "15.0.0";
  std::vector<char32_t> interesting;
  for (char32_t c = 1; c < 0x110000; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    const std::u16string text = UTF16Of(c);
    const std::u16string decomposed = zkt::DecomposeCanonically(text);
    const bool isKnown = isSameVersion || decomposed != text;
    EXPECT_EQ(UTF8Of(decomposed), isKnown ? Reference(UTF8Of(text)) : UTF8Of(text)) << static_cast<std::uint32_t>(c);
    const bool isMark = zkt::DecomposeCanonically(u"a\u0315" + text).back() == u'\u0315';
    if (decomposed != text || isMark) interesting.push_back(c);
  }
  return interesting;
}

TEST(Decomposition, AgreesWithTheReferenceOnEveryCharacterAndOnRandomText) {
  const std::vector<char32_t> interesting = CheckEveryCharacter();
  ASSERT_GT(interesting.size(), 11172u + 2061u) << "syllables, pairs and marks";
  std::mt19937 random(7);
  const auto upTo = [&](std::size_t count) { return random() % count; };
  for (int run = 0; run < 20'000; ++run) {
    std::u16string text;
    for (std::size_t i = upTo(12); i > 0; --i)
      text += upTo(4) == 0 ? UTF16Of(U'a' + static_cast<char32_t>(upTo(26)))
                           : UTF16Of(interesting[interesting.size() - 1 - upTo(interesting.size())]);
    for (std::size_t i = upTo(6); i > 0; --i) text += UTF16Of(U'\u0300' + static_cast<char32_t>(upTo(0x70)));
    ASSERT_EQ(UTF8Of(zkt::DecomposeCanonically(text)), Reference(UTF8Of(text))) << "run " << run;
  }
}

TEST(Decomposition, LeavesLoneSurrogatesWhereTheyAre) {
  const char16_t high = 0xD834;
  const char16_t low = 0xDD1E;
  for (const std::u16string& text :
       {std::u16string{high}, {low}, {low, high}, {high, u'a', low}, {u'a', high, u'\u0301'}, {}})
    EXPECT_EQ(zkt::DecomposeCanonically(text), text);
}

TEST(CFString, NormalizesOnlyACopy) {
  const UniChar characters[] = {0x00E9};
  const CFStringRef string = CFStringCreateWithCharacters(nullptr, characters, 1);
  const CFMutableStringRef copy = CFStringCreateMutableCopy(nullptr, 0, string);
  CFStringNormalize(copy, kCFStringNormalizationFormD);
  EXPECT_EQ(CFStringGetLength(string), 1);
  EXPECT_EQ(CFStringGetLength(copy), 2);
  CFRelease(string);
  CFRelease(copy);
}

}  // namespace
