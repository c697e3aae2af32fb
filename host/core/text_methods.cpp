// String methods. Positions count characters and start at 0.
#include <wctype.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

#include "core/classes.h"
#include "core/exceptions.h"
#include "core/framework.h"
#include "core/text_order.h"
#include "core/utf8_locale.h"

namespace host {

namespace {

bool BeginsCharacter(char byte) { return (byte & 0xC0) != 0x80; }

std::int64_t Length(const std::string& text) { return std::ranges::count_if(text, BeginsCharacter); }

// Returns the byte offset of the character at a position, or the length in bytes if the position is past the end.
std::size_t OffsetOf(const std::string& text, std::int64_t position) {
  std::size_t offset = 0;
  for (; offset < text.size(); ++offset)
    if (BeginsCharacter(text[offset]) && --position < 0) break;
  return offset;
}

std::string Left(const std::string& text, std::int64_t count) { return text.substr(0, OffsetOf(text, count)); }
std::string MiddleFrom(const std::string& text, std::int64_t start) { return text.substr(OffsetOf(text, start)); }
std::string Middle(const std::string& text, std::int64_t start, std::int64_t count) {
  return Left(MiddleFrom(text, start), count);
}
std::string Right(const std::string& text, std::int64_t count) {
  return MiddleFrom(text, std::max<std::int64_t>(Length(text) - count, 0));
}

// Applies a function, such as towlower, to every character.
std::string MapCharacters(const std::string& text, const std::function<wint_t(wint_t)>& map) {
  const Utf8Locale locale;
  std::string mapped;
  for (std::string_view rest = text; !rest.empty();) {
    wchar_t character = 0;
    const std::size_t length = Utf8Locale::Read(rest, character);
    char bytes[MB_LEN_MAX];
    mbstate_t state = {};
    const std::size_t size =
        length > 0 ? wcrtomb(bytes, static_cast<wchar_t>(map(static_cast<wint_t>(character))), &state) : 0;
    if (length > 0)
      mapped.append(bytes, size);
    else
      mapped += rest.front();
    rest.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return mapped;
}

std::string Lowercase(const std::string& text) { return MapCharacters(text, towlower); }
std::string Uppercase(const std::string& text) { return MapCharacters(text, towupper); }
std::string Titlecase(const std::string& text) {
  bool isInWord = false;
  return MapCharacters(text, [&](wint_t character) {
    const bool isFirst = !isInWord;
    isInWord = iswalnum(character) != 0;
    return isFirst ? towupper(character) : towlower(character);
  });
}

std::string TrimEnds(const std::string& text, bool left, bool right) {
  constexpr const char* kSpaces = " \t\r\n\f\v";
  const std::size_t first = left ? text.find_first_not_of(kSpaces) : 0;
  if (first == std::string::npos) return "";
  const std::size_t last = right ? text.find_last_not_of(kSpaces) : text.size() - 1;
  return last == std::string::npos ? "" : text.substr(first, last - first + 1);
}
std::string Trim(const std::string& text) { return TrimEnds(text, true, true); }
std::string TrimLeft(const std::string& text) { return TrimEnds(text, true, false); }
std::string TrimRight(const std::string& text) { return TrimEnds(text, false, true); }

// Ignores letter case, as all searches in this file do.
std::int64_t IndexOfFrom(std::int64_t start, const std::string& text, const std::string& wanted) {
  const std::size_t offset = OffsetOf(text, start);
  const std::size_t found = Lowercase(text).find(Lowercase(wanted), offset);
  return found == std::string::npos ? -1 : Length(text.substr(0, found));
}
std::int64_t IndexOf(const std::string& text, const std::string& wanted) { return IndexOfFrom(0, text, wanted); }
std::int64_t IndexOfAfter(const std::string& text, std::int64_t start, const std::string& wanted) {
  return IndexOfFrom(start, text, wanted);
}
bool Contains(const std::string& text, const std::string& wanted) { return IndexOf(text, wanted) >= 0; }
bool BeginsWith(const std::string& text, const std::string& start) {
  return Lowercase(text).starts_with(Lowercase(start));
}
bool EndsWith(const std::string& text, const std::string& end) { return Lowercase(text).ends_with(Lowercase(end)); }
bool IsEmpty(const std::string& text) { return text.empty(); }
std::int64_t Bytes(const REALstringStruct* text) { return text != nullptr ? text->length : 0; }

std::string ReplaceIn(std::string text, const std::string& old, const std::string& replacement, bool isAll) {
  if (old.empty()) return text;
  const std::string wanted = Lowercase(old);
  for (std::size_t at = 0; (at = Lowercase(text).find(wanted, at)) != std::string::npos;) {
    text.replace(at, old.size(), replacement);
    at += replacement.size();
    if (!isAll) break;
  }
  return text;
}
std::string Replace(const std::string& text, const std::string& old, const std::string& replacement) {
  return ReplaceIn(text, old, replacement, false);
}
std::string ReplaceAll(const std::string& text, const std::string& old, const std::string& replacement) {
  return ReplaceIn(text, old, replacement, true);
}

Array* ArrayOf(const std::vector<std::string>& texts) {
  ArrayRef array(MakeArray(kStringType, static_cast<std::int64_t>(texts.size()) - 1));
  for (std::size_t i = 0; i < texts.size(); ++i)
    SetElement(array.Get(), static_cast<std::int64_t>(i), MakeValue(texts[i]));
  return array.Detach();
}

Array* Characters(const std::string& text) {
  std::vector<std::string> characters;
  for (const char byte : text) {
    if (BeginsCharacter(byte) || characters.empty()) characters.emplace_back();
    characters.back() += byte;
  }
  return ArrayOf(characters);
}

Array* Split(const std::string& text, const std::string& delimiter) {
  if (delimiter.empty()) return Characters(text);
  std::vector<std::string> fields;
  for (std::size_t at = 0; !text.empty();) {
    const std::size_t end = text.find(delimiter, at);
    fields.push_back(text.substr(at, end - at));
    if (end == std::string::npos) break;
    at = end + delimiter.size();
  }
  return ArrayOf(fields);
}

std::string Join(Array* texts, const std::string& delimiter) {
  if (texts == nullptr) {
    Raise("NilObjectException", "FromArray of an array that is Nil");
    return "";
  }
  std::string joined;
  for (std::int64_t i = 0; i <= UpperBound(texts); ++i)
    joined += (i > 0 ? delimiter : "") + GetElement(texts, i).Text();
  return joined;
}

enum class Comparison : std::int64_t { kCaseSensitive, kCaseInsensitive };

std::int64_t Compare(const REALstringStruct* a, const REALstringStruct* b) { return CompareTexts(a, b); }
std::int64_t CompareBy(const std::string& a, const std::string& b, std::int64_t comparison) {
  if (static_cast<Comparison>(comparison) == Comparison::kCaseSensitive) return a < b ? -1 : a > b ? 1 : 0;
  const StringRef first(MakeString(a)), second(MakeString(b));
  return CompareTexts(first.Get(), second.Get());
}

double ToDouble(const std::string& text) { return std::strtod(text.c_str(), nullptr); }
std::int64_t ToInteger(const std::string& text) { return std::strtoll(text.c_str(), nullptr, 10); }

std::uint32_t CodeOf(REALobjectStruct* encoding) {
  return encoding != nullptr ? static_cast<std::uint32_t>(FindProperty(encoding, "Code")->Integer())
                             : std::uint32_t{zkt::kEncodingNone};
}

// Changes the encoding but not the bytes.
REALstringStruct* DefineEncoding(const REALstringStruct* text, REALobjectStruct* encoding) {
  return MakeString(text != nullptr ? text->View() : "", CodeOf(encoding));
}

// Converts the bytes to the encoding.
REALstringStruct* ConvertEncoding(const REALstringStruct* text, REALobjectStruct* encoding) {
  if (text == nullptr) return nullptr;
  const auto converted = ConvertText(text->View(), text->encoding, CodeOf(encoding));
  return MakeString(converted ? *converted : std::string(text->View()), CodeOf(encoding));
}

template <std::uint32_t kCode>
REALobjectStruct* Encoding() {
  REALobjectStruct* const encoding = MakeObject(FindClass("TextEncoding"));
  *FindProperty(encoding, "Code") = MakeValue(std::int64_t{kCode});
  return encoding;
}

std::string LineFeed() { return "\n"; }
std::string CarriageReturnLineFeed() { return "\r\n"; }

}  // namespace

std::vector<FrameworkMethod> TextMethods() {
  return {
      {"", "Length(extends text As String) As Integer", Native<Length>()},
      {"", "Bytes(extends text As String) As Integer", Address(&Bytes)},
      {"", "IsEmpty(extends text As String) As Boolean", Native<IsEmpty>()},
      {"", "Left(extends text As String, count As Integer) As String", Native<Left>()},
      {"", "Right(extends text As String, count As Integer) As String", Native<Right>()},
      {"", "Middle(extends text As String, start As Integer) As String", Native<MiddleFrom>()},
      {"", "Middle(extends text As String, start As Integer, count As Integer) As String", Native<Middle>()},
      {"", "Lowercase(extends text As String) As String", Native<Lowercase>()},
      {"", "Uppercase(extends text As String) As String", Native<Uppercase>()},
      {"", "Titlecase(extends text As String) As String", Native<Titlecase>()},
      {"", "Trim(extends text As String) As String", Native<Trim>()},
      {"", "TrimLeft(extends text As String) As String", Native<TrimLeft>()},
      {"", "TrimRight(extends text As String) As String", Native<TrimRight>()},
      {"", "IndexOf(extends text As String, wanted As String) As Integer", Native<IndexOf>()},
      {"", "IndexOf(extends text As String, start As Integer, wanted As String) As Integer", Native<IndexOfAfter>()},
      {"", "Contains(extends text As String, wanted As String) As Boolean", Native<Contains>()},
      {"", "BeginsWith(extends text As String, start As String) As Boolean", Native<BeginsWith>()},
      {"", "EndsWith(extends text As String, end As String) As Boolean", Native<EndsWith>()},
      {"", "Replace(extends text As String, old As String, new As String) As String", Native<Replace>()},
      {"", "ReplaceAll(extends text As String, old As String, new As String) As String", Native<ReplaceAll>()},
      {"", "Split(extends text As String, delimiter As String = \" \") As String()", Native<Split>()},
      {"", "Characters(extends text As String) As String()", Native<Characters>()},
      {"", "Compare(extends text As String, other As String) As Integer", Address(&Compare)},
      {"", "Compare(extends text As String, other As String, options As ComparisonOptions) As Integer",
       Native<CompareBy>()},
      {"", "ToDouble(extends text As String) As Double", Native<ToDouble>()},
      {"", "ToInteger(extends text As String) As Integer", Native<ToInteger>()},
      {"", "Val(text As String) As Double", Native<ToDouble>()},
      {"String", "FromArray(texts() As String, delimiter As String = \" \") As String", Native<Join>()},
      {"", "DefineEncoding(extends text As String, encoding As TextEncoding) As String", Address(&DefineEncoding)},
      {"", "ConvertEncoding(extends text As String, encoding As TextEncoding) As String", Address(&ConvertEncoding)},
      {"Encodings", "ASCII As TextEncoding", Address(&Encoding<zkt::kEncodingASCII>)},
      {"Encodings", "ISOLatin1 As TextEncoding", Address(&Encoding<zkt::kEncodingISOLatin1>)},
      {"Encodings", "UTF8 As TextEncoding", Address(&Encoding<zkt::kEncodingUTF8>)},
      {"Encodings", "WindowsLatin1 As TextEncoding", Address(&Encoding<zkt::kEncodingWindowsLatin1>)},
      {"", "EndOfLine As String", Native<LineFeed>()},
      {"EndOfLine", "UNIX As String", Native<LineFeed>()},
      {"EndOfLine", "Windows As String", Native<CarriageReturnLineFeed>()},
  };
}

std::vector<ObjectClass*> TextClasses() {
  constexpr Type kOptions = {TypeKind::kEnumeration, false, "ComparisonOptions"};
  return {new ObjectClass{.name = "TextEncoding", .properties = {{"Code", MakeValue(0)}}, .isReadOnly = true},
          new ObjectClass{.name = "ComparisonOptions",
                          .constants = {{"CaseSensitive", Value{kOptions, std::int64_t{0}}},
                                        {"CaseInsensitive", Value{kOptions, std::int64_t{1}}}}}};
}

}  // namespace host
