// Generates random strings, and formats values.
#include <algorithm>

#include "core/arrays.h"
#include "core/strings.h"
#include "declarations/conversion.h"
#include "stress/random.h"
#include "stress/values.h"

namespace stress {

namespace {

using namespace std::string_view_literals;

// clang-format off
constexpr std::string_view kTexts[] = {
    "0",   "-0",  "1.5", "1,5", "1.234.567,89",        "1e308", "1e309",      "nan",         "inf",   "0x1p-3", " 12 ",
    "12x", "abc", "ABC", "a\0b"sv,                     "2024-02-29 23:59:59", "29.02.2023",  "Donnerstag, 29. Februar 2024",
    "99999-99-99",       "a,b,c",                      "a;b;c\r\nd;e;f\r\n",  "\"a\"\"b\",\"c\nd\",e",
    "\"",  "\"\"\"",     "a\"b\"c,\"d\" ,",            "\xEF\xBB\xBF\x61,b",  ",,,,\n,,,,",  "\t\t\n\t",
    "Gr\xC3\xBC\xC3\x9F Gott",  "\xE2\x82\xAC \xF0\x9F\x98\x80 e\xCC\x81",    "\xD8\xB9\xD8\xB1\xD8\xA8\xD9\x8A"};

// The only program that the checks may start is one that does nothing.
constexpr std::string_view kPrograms[] = {
    "/bin/true", "/bin/true", "/bin/false", "/nonexistent/program", "/", "/dev/null", "", "no program", "/bin/true/",
    "/bin/true\0x"sv, "\xFF"};
// clang-format on

// Returns a string of random bytes, of a few different letters, or of field separators. Most results are short, because
// very long strings take a long time to process.
std::string Noise(Random& random) {
  constexpr std::string_view kLetters[] = {"", "ab \xC3\xA4", ",;\t\"\r\n x"};
  const std::size_t dice = random.Below(1000);
  std::string text(random.Below(dice < 700 ? 20 : dice < 970 ? 300 : dice < 999 ? 5000 : 300'000), '\0');
  const std::string_view letters = random.OneOf(kLetters);
  for (char& c : text) c = letters.empty() ? static_cast<char>(random.Bits()) : random.OneOf(letters);
  return text;
}

// Formats a string with printable ASCII unchanged and every other byte escaped.
std::string TextOf(const REALstringStruct& string) {
  std::string text = "\"";
  for (const char c : string.View().substr(0, 160)) {
    const bool isPlain = c >= ' ' && c < 0x7F && c != '"' && c != '\\';
    text += isPlain ? std::string(1, c) : "\\x" + host::ToHex(static_cast<unsigned char>(c), 2);
  }
  return text + "\" (" + std::to_string(string.length) + " bytes, encoding 0x" + host::ToHex(string.encoding) + ")";
}

}  // namespace

std::string RandomText(Random& random, const std::vector<std::string>& words) {
  if (random.Percent(35)) return Noise(random);
  std::string text = words.empty() ? std::string(random.OneOf(kTexts)) : random.OneOf(words);
  if (random.Percent(10)) text.insert(random.Below(text.size() + 1), 1, static_cast<char>(random.Bits()));
  if (random.Percent(3)) text.insert(random.Below(text.size() + 1), 1, '\0');
  if (random.Percent(3)) text += random.OneOf(kTexts);
  return text;
}

std::string RandomProgram(Random& random) { return std::string(random.OneOf(kPrograms)); }

std::string TextOf(const host::Value& value) {
  if (value.type.Is(host::TypeKind::kNothing)) return "nothing";
  if (!value.type.IsReference()) return host::Show(value);
  if (value.Reference() == nullptr) return "nil";
  const host::RefCountedKind* const kind = value.Reference()->kind;
  if (kind == &host::kStringKind) return TextOf(*value.String());
  if (kind == &host::kObjectKind)
    return value.Object()->type->name + ": " + host::Show({host::kObjectType, value.payload});
  if (kind != &host::kArrayKind) return "a destroyed value";
  std::string text = std::to_string(value.Array()->count) + " elements:";
  for (std::int64_t i = 0; i < std::min(value.Array()->count, std::int64_t{8}); ++i)
    text += " " + TextOf(host::GetElement(value.Array(), i));
  return text;
}

}  // namespace stress
