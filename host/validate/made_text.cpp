#include "validate/made_text.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "core/strings.h"

namespace host::validate {

namespace {

using namespace std::string_view_literals;

constexpr std::uint32_t kEncodings[] = {zkt::kEncodingMacRoman,
                                        zkt::kEncodingUTF16,
                                        zkt::kEncodingISOLatin1,
                                        zkt::kEncodingWindowsLatin1,
                                        zkt::kEncodingASCII,
                                        zkt::kEncodingNone,
                                        zkt::kEncodingUTF8,
                                        zkt::kEncodingUTF32,
                                        zkt::kEncodingUTF16BE,
                                        zkt::kEncodingUTF16LE,
                                        zkt::kEncodingUTF32BE,
                                        zkt::kEncodingUTF32LE,
                                        0x0A03 /* no encoding of the host's */,
                                        0xFFFFFFFF};

constexpr std::string_view kLocales[] = {"",
                                         "C",
                                         "POSIX",
                                         "de_DE.UTF-8",
                                         "fr_FR.UTF-8",
                                         "en_IN.UTF-8",
                                         "ja_JP.UTF-8",
                                         "ps_AF.UTF-8",
                                         "de_DE.ISO-8859-1",
                                         "xx_XX.UTF-8",
                                         "de",
                                         "../../etc",
                                         "/",
                                         "de_DE.UTF-8\0junk"sv,
                                         "LC_NUMERIC=C;LC_TIME=C",
                                         "d\xC3\xA9_D\xC3\x89"};

constexpr std::string_view kFormats[] = {"%f",        "%g",          "%.2f",
                                         "%'.2f",     "%+020.10e",   "%a",
                                         "%A",        "%99999f",     "%.99999f",
                                         "%lf",       "%%",          "%%%f%%",
                                         "%",         "%d",          "%s",
                                         "%n",        "%f%f",        "%*f",
                                         "%.f",       "%-+ #0'5.3G", "%Lf",
                                         "%hf",       "%2$f",        "%Y-%m-%d %H:%M:%S",
                                         "%c",        "%x %X",       "%A %B %p",
                                         "%Ey",       "%Od",         "%s",
                                         "%Z%z",      "%99999Y",     "%e.%n%t%U",
                                         "%+",        "%E",          "%9",
                                         "%.2f Euro", "%f\0%s"sv,    "%-0999999999.2147483000f"};

constexpr std::string_view kTexts[] = {"0",
                                       "-0",
                                       "1.5",
                                       "1,5",
                                       "1.234.567,89",
                                       "1e308",
                                       "1e309",
                                       "nan",
                                       "inf",
                                       "0x1p-3",
                                       " 12 ",
                                       "12x",
                                       "2024-02-29 23:59:59",
                                       "29.02.2023",
                                       "Donnerstag, 29. Februar 2024",
                                       "99999-99-99",
                                       "a,b,c",
                                       "a;b;c\r\nd;e;f\r\n",
                                       "\"a\"\"b\",\"c\nd\",e",
                                       "\"",
                                       "\"\"\"",
                                       "a\"b\"c,\"d\" ,",
                                       "\xEF\xBB\xBF\x61,b",
                                       ",,,,\n,,,,",
                                       "\t\t\n\t",
                                       "Gr\xC3\xBC\xC3\x9F Gott",
                                       "\xE2\x82\xAC \xF0\x9F\x98\x80 e\xCC\x81",
                                       "\xD8\xB9\xD8\xB1\xD8\xA8\xD9\x8A",
                                       "abc",
                                       "ABC",
                                       "a\0b"sv};

constexpr std::string_view kSingleBytes[] = {",", ";", "\t", "\"", "'", "a", "\n", "\r", "\0"sv, "\xC3\xA4", ",,", " "};

constexpr std::string_view kPaths[] = {"/bin/true",  "/bin/true",      "/bin/false", "/nonexistent/program",
                                       "/",          "/dev/null",      "",           "no program",
                                       "/bin/true/", "/bin/true\0x"sv, "\xFF"};

// Mostly short; a very long one is rare enough for the time that it takes.
std::size_t Length(Random& random) {
  const std::size_t dice = random.Below(1000);
  if (dice < 700) return random.Below(20);
  if (dice < 970) return random.Below(300);
  return random.Below(dice < 999 ? 5000 : 300'000);
}

std::string Nonsense(Random& random) {
  std::string text(Length(random), '\0');
  // Of all bytes, of few letters, or of what separates fields.
  constexpr std::string_view kFew = "ab \xC3\xA4";
  constexpr std::string_view kSeparators = ",;\t\"\r\n x";
  const std::size_t kind = random.Below(3);
  for (char& c : text) {
    const std::uint64_t bits = random.Bits();
    c = kind == 0   ? static_cast<char>(bits)
        : kind == 1 ? kFew[bits % kFew.size()]
                    : kSeparators[bits % kSeparators.size()];
  }
  return text;
}

std::span<const std::string_view> WordsFor(std::string_view parameterName) {
  if (zkt::IsSameName(parameterName, "locale")) return kLocales;
  if (zkt::IsSameName(parameterName, "format")) return kFormats;
  if (zkt::IsSameName(parameterName, "delimiter") || zkt::IsSameName(parameterName, "quote")) return kSingleBytes;
  return kTexts;
}

std::string Words(Random& random, std::string_view parameterName) {
  std::string text(random.OneOf(WordsFor(parameterName)));
  if (random.Percent(10)) text.insert(random.Below(text.size() + 1), 1, static_cast<char>(random.Bits()));
  if (random.Percent(3)) text.insert(random.Below(text.size() + 1), 1, '\0');
  if (random.Percent(3)) text += random.OneOf(kTexts);
  return text;
}

Value StringValue(std::string_view bytes, std::uint32_t encoding) {
  return {{Basic::kString, false, {}}, Owned<Counted>(MakeString(bytes, encoding))};
}

Value InSomeEncoding(Random& random, const std::string& text, unsigned percentOfUTF8) {
  if (random.Percent(percentOfUTF8)) return StringValue(text, zkt::kEncodingUTF8);
  const std::uint32_t encoding = random.OneOf(kEncodings);
  // Converted, or bytes that the encoding may not even allow.
  if (!random.Percent(25))
    if (const auto converted = ConvertText(text, zkt::kEncodingUTF8, encoding))
      return StringValue(*converted, encoding);
  return StringValue(text, encoding);
}

}  // namespace

Value MakeText(Random& random, std::string_view parameterName) {
  if (random.Percent(8)) return DefaultValue({Basic::kString, false, {}});
  return InSomeEncoding(random, random.Percent(65) ? Words(random, parameterName) : Nonsense(random), 60);
}

Value MakeHarmlessPath(Random& random) {
  if (random.Percent(10)) return DefaultValue({Basic::kString, false, {}});
  return InSomeEncoding(random, std::string(random.OneOf(kPaths)), 80);
}

}  // namespace host::validate
