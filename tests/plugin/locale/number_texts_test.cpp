// Uses real locales to test number formatting and number parsing.
#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "locale/date_format.h"
#include "locale/format_check.h"
#include "locale/locale_class.h"
#include "locale/number_format.h"
#include "plugin/locale/locale_fixture.h"

namespace {

using namespace tests;

TEST(FormatCheck, AcceptsASingleDoubleConversionOnly) {
  for (const char* const format :
       {"%f", "%.2f", "%10.3e", "%lf", "%-+ #0'012.5lG", "%%%a%%", "100 %% is %g!", "%.f", "%E", "%A", "%F"})
    EXPECT_TRUE(zkt::HasSingleDoubleConversion(format)) << format;
  for (const char* const format :
       {"",    "%",    "%%",  "plain", "%d",  "%s",  "%n",   "%f%f",  "%f %d",   "%*f",  "%.*f",   "%Lf", "%llf",
        "%hf", "%1$f", "%5%", "%%f",   "%f%", "%5.", "% .2", "%.-2f", "%2.2.2f", "%c%f", "%f\n%x", "%l",  "%'"})
    EXPECT_FALSE(zkt::HasSingleDoubleConversion(format)) << format;
  EXPECT_FALSE(zkt::HasSingleDoubleConversion(nullptr));
}

class NumberTexts : public Locales {
 protected:
  static std::string Format(const char* format, double value, const char* locale = nullptr) {
    return TakeText(zkt::formatZKT(OptionalString(format).Get(), value, OptionalString(locale).Get()));
  }
};

constexpr const char* kInvalidLocale = "UnsupportedFormatException: Invalid locale.";

TEST_F(NumberTexts, FormatNumbers) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::string ninetyEight(98, '0');
  const struct {
    const char* format;
    double value;
    const char* locale;
    std::string want;
  } cases[] = {
      {"%.2f", 1234.5, nullptr, "1234.50"},
      {"%'.2f", 1234567.891, "de_DE.UTF-8", "1.234.567,89"},
      {"%'.2f", -1234567.891, "de_CH.UTF-8", "-1\u2019234\u2019567.89"},
      {"%'.1f", 1234567.0, "fr_FR.UTF-8", "1\u202F234\u202F567,0"},
      {"%'.0f", 123456789.0, "en_IN.UTF-8", "12,34,56,789"},
      {"%.1f", 0.5, "ps_AF.UTF-8", "0\u066B5"},
      {"%'.2f", 1234.5, "de_DE.ISO-8859-1", "1.234,50"},
      {"%e", 1e-310, nullptr, "1.000000e-310"},
      {"%g", -0.0, nullptr, "-0"},
      {"%f", kInfinity, "de_DE.UTF-8", "inf"},
      {"%F", -kInfinity, nullptr, "-INF"},
      {"%5.1f%%", 99.5, nullptr, " 99.5%"},
      {"%a", 1.0, nullptr, "0x1p+0"},
      {"%0200.0f", 0.0, nullptr, ninetyEight},
      {"%098.0f", 0.0, nullptr, ninetyEight},
      {"%0100.0f", 0.0, nullptr, ninetyEight},
      // The C library would need gigabytes of memory for these formats.
      {"%-0999999999.0f", 0.0, nullptr, "0" + std::string(97, ' ')},
      {"7654321 %%7654321 %.2147483000f", 0.0, nullptr, "7654321 %7654321 0." + std::string(79, '0')},
      {"%.0000000002f", 0.0, nullptr, "0.00"},
      {"%02147483648.2f", 0.0, nullptr, "nil"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Format(c.format, c.value, c.locale), c.want) << c.format;
    EXPECT_EQ(Categories(), "C C C ") << c.format;
  }
  EXPECT_EQ(Format("%f", std::nan("")).substr(0, 3), "nan");
}

TEST_F(NumberTexts, MarkFormattedNumbersAsASCIIAndLogIt) {
  const std::string trace = tests::TraceOf([] {
    const host::StringRef text(zkt::formatZKT(MakeString("%.1f").Get(), 0.5, MakeString("ps_AF.UTF-8").Get()));
    EXPECT_EQ(text->encoding, zkt::kEncodingASCII);
  });
  EXPECT_NE(("|" + trace).find("|Error: text is not ascii 0\u066B5|"), std::string::npos) << trace;
}

TEST_F(NumberTexts, UseTheCurrentLocaleWithoutAName) {
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  std::setlocale(LC_MONETARY, "de_CH.UTF-8");
  EXPECT_EQ(Format("%.2f", 1.5), "1,50");
  double value = 0;
  EXPECT_TRUE(zkt::cdblZKT(MakeString("1.234,5").Get(), &value, nullptr));
  EXPECT_EQ(value, 1234.5);
  EXPECT_EQ(Categories(), "de_DE.UTF-8 de_CH.UTF-8 C ");
  EXPECT_EQ(Format("%.2f", 1.5, "fr_FR.UTF-8"), "1,50");
  EXPECT_EQ(Categories(), "C de_CH.UTF-8 C ");
}

TEST_F(NumberTexts, ReadNumbers) {
  const std::string zeros(97, '0');
  const struct {
    const char* note;
    const char* text;
    const char* locale;
    bool success;
    double value;
  } cases[] = {
      {"nil", nullptr, nullptr, false, 0.0},
      {"nil, unknown locale", nullptr, "xx_XX", false, 0.0},
      {"plain", "-12.5", nullptr, true, -12.5},
      {"trailing text", "12abc", nullptr, false, 12.0},
      {"trailing space", "12 ", nullptr, false, 12.0},
      {"leading spaces", "  12", nullptr, true, 12.0},
      {"not a number", "abc", nullptr, false, 0.0},
      {"German", "1.234.567,89", "de_DE.UTF-8", true, 1234567.89},
      {"group separators anywhere", "1.2.3,4", "de_DE.UTF-8", true, 123.4},
      {"English number in a German locale", "1234.5", "de_DE.UTF-8", true, 12345.0},
      {"German number without a locale", "1.234,5", nullptr, false, 1.234},
      {"lakhs", "12,34,567.5", "en_IN.UTF-8", true, 1234567.5},
      {"overflow", "1e999", nullptr, false, std::numeric_limits<double>::infinity()},
      {"hexadecimal", "0x1p4", nullptr, true, 16.0},
      {"only a separator", ".", "de_DE.UTF-8", false, 0.0},
  };
  for (const auto& c : cases) {
    double value = 99.0;
    EXPECT_EQ(zkt::cdblZKT(OptionalString(c.text).Get(), &value, OptionalString(c.locale).Get()), c.success) << c.note;
    EXPECT_EQ(value, c.value) << c.note;
    EXPECT_EQ(Categories(), "C C C ") << c.note;
    EXPECT_EQ(MessageRaised(), "") << c.note;
  }
  // Texts of 98 and 99 bytes are read completely. The last byte of a 100-byte text is ignored.
  for (const auto& [tail, want] : {std::pair{"7", 7.0}, {"78", 78.0}, {"789", 78.0}}) {
    double value = 0.0;
    EXPECT_TRUE(zkt::cdblZKT(MakeString(zeros + tail).Get(), &value, nullptr)) << tail;
    EXPECT_EQ(value, want) << tail;
  }
  double value = 99.0;
  const host::StringRef empty(host::MakeString("", zkt::kEncodingUTF8));
  ASSERT_NE(empty.Get(), nullptr);
  EXPECT_TRUE(zkt::cdblZKT(empty.Get(), &value, nullptr));
  EXPECT_EQ(value, 0.0);
}

TEST_F(NumberTexts, RemoveSeparatorsOfOneAndOfSeveralBytes) {
  zkt::NumberBuffer buffer;
  const struct {
    const char* numeric;
    const char* monetary;
    const char* text;
    const char* want;
  } cases[] = {
      {"C", "C", "1,234.5", "1,234.5"},
      {"fr_FR.UTF-8", "C", "1\u202F234\u202F567,5", "1234567,5"},
      {"C", "de_CH.UTF-8", "1\u2019234.5", "1234.5"},
      {"fr_FR.UTF-8", "de_DE.UTF-8", "1.2\u202F3.4", "1234"},
      {"fr_FR.UTF-8", "C", "1\u202F", "1"},
      {"fr_FR.UTF-8", "C", "\u202F", "\u202F"},
      // After one separator is removed, the remaining bytes can form another separator.
      {"fr_FR.UTF-8", "C",
       "1\xE2\x80\u202F\xAF"
       "2",
       "12"},
  };
  for (const auto& c : cases) {
    ASSERT_NE(std::setlocale(LC_NUMERIC, c.numeric), nullptr) << c.numeric;
    ASSERT_NE(std::setlocale(LC_MONETARY, c.monetary), nullptr) << c.monetary;
    EXPECT_STREQ(zkt::FixBuf(c.text, buffer), c.want);
  }
  EXPECT_STREQ(zkt::FixBuf(nullptr, buffer), "");
}

// Several threads may parse numbers at the same time if they pass no locale name.
TEST_F(NumberTexts, AreReadOnSeveralThreads) {
  std::atomic<int> wrong{0};
  std::vector<std::jthread> threads;
  for (const char digit : {'1', '2', '3', '4'})
    threads.emplace_back([&wrong, digit] {
      const std::string text(90, digit);
      const double want = std::strtod(text.c_str(), nullptr);
      for (int i = 0; i < 20'000; ++i) {
        zkt::NumberBuffer buffer;
        wrong += std::strtod(zkt::FixBuf(text.c_str(), buffer), nullptr) != want;
      }
    });
  threads.clear();
  EXPECT_EQ(wrong, 0);
}

// The bytes after an unterminated string are not part of it.
TEST_F(NumberTexts, StopAtTheEndOfTheirStrings) {
  const auto unterminated = [](const char* text) {
    host::StringRef string = MakeString(text);
    string->Bytes()[string->length] = 'Z';
    return string;
  };
  double value = 0.0;
  const host::StringRef german = unterminated("de_DE.UTF-8");
  EXPECT_EQ(TakeText(zkt::formatZKT(unterminated("%.2f").Get(), 1.5, german.Get())), "1,50");
  EXPECT_TRUE(zkt::cdblZKT(unterminated("12").Get(), &value, german.Get()));
  EXPECT_EQ(value, 12.0);
  const host::ObjectRef locale(zkt::GetLocale(german.Get()));
  EXPECT_TRUE(locale);
}

TEST_F(NumberTexts, RejectInvalidFormatsAndLocales) {
  double value = 99.0;
  const auto date = host::ObjectRef(host::MakeObject(host::FindClass("Date")));
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  const host::StringRef unknown = MakeString("xx_XX");

  EXPECT_EQ(Format("%d", 1.0, "xx_XX"), "nil");
  EXPECT_EQ(MessageRaised(), "UnsupportedFormatException: Invalid format.");
  EXPECT_EQ(Format(nullptr, 1.0), "nil");
  EXPECT_EQ(MessageRaised(), "UnsupportedFormatException: Invalid format.");
  EXPECT_EQ(Format("%f", 1.0, "xx_XX"), "nil");
  EXPECT_EQ(MessageRaised(), kInvalidLocale);
  EXPECT_FALSE(zkt::cdblZKT(MakeString("1").Get(), &value, unknown.Get()));
  EXPECT_EQ(MessageRaised(), kInvalidLocale);
  EXPECT_EQ(value, 0.0);
  EXPECT_EQ(TakeText(zkt::formatDateZKT(MakeString("%Y").Get(), AsDate(date), unknown.Get())), "nil");
  EXPECT_EQ(MessageRaised(), kInvalidLocale);
  REALdate variable = reinterpret_cast<REALdate>(host::MakeObject(host::FindClass("Date")));
  EXPECT_FALSE(zkt::parseDateZKT(MakeString("%Y").Get(), MakeString("2024").Get(), &variable, unknown.Get()));
  EXPECT_EQ(MessageRaised(), kInvalidLocale);
  EXPECT_EQ(variable, nullptr);
  EXPECT_EQ(zkt::GetLocale(unknown.Get()), nullptr);
  EXPECT_EQ(MessageRaised(), "");
  EXPECT_EQ(Categories(), "de_DE.UTF-8 de_DE.UTF-8 de_DE.UTF-8 ");
}

}  // namespace
