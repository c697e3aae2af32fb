#include "language/lexer.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <utility>

#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool IsHexDigit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }
// Names may contain non-ASCII letters.
bool IsNameStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_' || (c & 0x80) != 0; }
bool IsNameCharacter(char c) { return IsNameStart(c) || IsDigit(c); }
bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string EncodeUtf8(std::uint64_t character) {
  const auto byte = [](std::uint64_t bits) { return static_cast<char>(bits); };
  const auto tail = [&](int shift) { return byte(0x80 | (character >> shift & 0x3F)); };
  if (character < 0x80) return {byte(character)};
  if (character < 0x800) return {byte(0xC0 | character >> 6), tail(0)};
  if (character < 0x10000) return {byte(0xE0 | character >> 12), tail(6), tail(0)};
  return {byte(0xF0 | character >> 18), tail(12), tail(6), tail(0)};
}

class Lexer {
 public:
  explicit Lexer(std::string_view source) : rest_(source) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
  }

  std::vector<Token> Run() {
    while (SkipSpaces()) TakeToken();
    if (!tokens_.empty() && tokens_.back().kind != TokenKind::kLineEnd) Add(TokenKind::kLineEnd, "");
    Add(TokenKind::kEnd, "");
    return std::move(tokens_);
  }

 private:
  // Columns count characters, so UTF-8 continuation bytes do not count.
  std::string_view Skip(std::size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    for (const char c : taken) at_.column += (c & 0xC0) != 0x80 ? 1 : 0;
    rest_.remove_prefix(taken.size());
    return taken;
  }

  void SkipLineEnd() {
    rest_.remove_prefix(1);
    at_ = {at_.line + 1, 1};
  }

  void Add(TokenKind kind, std::string text) { tokens_.push_back({kind, std::move(text), start_}); }

  template <class Belongs>
  std::string_view SkipWhile(Belongs belongs) {
    const auto* const end = std::ranges::find_if_not(rest_, belongs);
    return Skip(static_cast<std::size_t>(end - rest_.begin()));
  }

  // Returns false at the end of the source.
  bool SkipSpaces() {
    SkipWhile(IsSpace);
    start_ = at_;
    return !rest_.empty();
  }

  void TakeToken() {
    const char c = rest_.front();
    if (c == '\n') {
      Add(TokenKind::kLineEnd, "");
      return SkipLineEnd();
    }
    if (c == '\'' || rest_.starts_with("//")) return SkipComment();
    if (c == '"') return TakeText();
    if (c == '&') return TakePrefixed();
    if (IsDigit(c) || (c == '.' && !FollowsName() && rest_.size() > 1 && IsDigit(rest_[1]))) return TakeNumber();
    if (IsNameStart(c)) return TakeWord();
    TakeSymbol();
  }

  bool FollowsName() const { return !tokens_.empty() && tokens_.back().kind == TokenKind::kWord; }

  void SkipComment() {
    SkipWhile([](char c) { return c != '\n'; });
  }

  void TakeWord() {
    const std::string_view word = SkipWhile(IsNameCharacter);
    if (word == "_") return ContinueLine();
    if (word.starts_with('_')) throw ScriptError("a name must begin with a letter, not with '_'", start_);
    if (zkt::IsSameName(word, "Rem")) return SkipComment();
    Add(TokenKind::kWord, std::string(word));
  }

  // A comment may follow the "_".
  void ContinueLine() {
    const Position mark = start_;
    if (SkipSpaces() && (rest_.front() == '\'' || rest_.starts_with("//"))) SkipComment();
    if (!rest_.empty() && rest_.front() != '\n')
      throw ScriptError("only a comment may follow the '_' that continues a line", mark);
    if (rest_.size() <= 1) throw IncompleteError("'_' continues the line, but no line follows", mark);
    SkipLineEnd();
  }

  void TakeText() {
    std::string text;
    Skip(1);
    for (;;) {
      text += SkipWhile([](char c) { return c != '"' && c != '\n'; });
      if (!rest_.starts_with('"')) throw ScriptError("unterminated string; it must end on the line it starts", start_);
      Skip(1);
      if (!rest_.starts_with('"')) return Add(TokenKind::kText, text);
      text += Skip(1);
    }
  }

  // Reads a literal such as &h1F, &b101, &o17, &u41 or &cRRGGBB.
  void TakePrefixed() {
    const std::string text(Skip(1));
    const char prefix = rest_.empty() ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(rest_[0])));
    const int base = prefix == 'b' ? 2 : prefix == 'o' ? 8 : 16;
    if (std::string_view("hboucC").find(prefix) == std::string_view::npos || rest_.size() < 2 || !IsHexDigit(rest_[1]))
      throw ScriptError("'&' does not join strings; use '+'", start_);
    Skip(1);
    const std::string digits(SkipWhile(IsNameCharacter));
    std::uint64_t value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    const bool isColor = prefix == 'c';
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size() ||
        (isColor && digits.size() != 6 && digits.size() != 8) || (prefix == 'u' && value > 0x10FFFF))
      throw ScriptError(std::string("&") + prefix + digits + " is not a valid literal", start_);
    if (prefix == 'u') return Add(TokenKind::kText, EncodeUtf8(value));
    // The literal &cRRGGBBAA ends with the transparency, but the value of a color begins with it.
    if (isColor && digits.size() == 8) value = (value & 0xFF) << 24 | value >> 8;
    Add(isColor ? TokenKind::kColor : TokenKind::kUnsigned, std::to_string(value));
  }

  void TakeNumber() {
    std::string number(SkipWhile(IsDigit));
    if (number.empty()) number = "0";
    if (rest_.size() > 1 && rest_.front() == '.' && IsDigit(rest_[1])) {
      number += Skip(1);
      number += SkipWhile(IsDigit);
    }
    if (rest_.starts_with('e') || rest_.starts_with('E')) {
      Skip(1);
      number += 'e';
      if (rest_.starts_with('-') || rest_.starts_with('+'))
        if (const std::string_view sign = Skip(1); sign == "-") number += sign;
      number += SkipWhile(IsDigit);
    }
    Add(TokenKind::kNumber, number);
  }

  void TakeSymbol() {
    for (const std::string_view sign : {"<=", ">=", "<>"})
      if (rest_.starts_with(sign)) return Add(TokenKind::kSymbol, std::string(Skip(2)));
    for (const auto& [sign, replacement] : {std::pair{"==", "'='"}, std::pair{"!=", "'<>'"}})
      if (rest_.starts_with(sign))
        throw ScriptError(std::string("'") + sign + "' is not an operator; use " + replacement, start_);
    constexpr std::string_view kSymbols = "()=.,+-*/\\^<>:#";
    if (kSymbols.find(rest_.front()) != std::string_view::npos) return Add(TokenKind::kSymbol, std::string(Skip(1)));
    const std::string sign(Skip(1));
    throw ScriptError("unexpected '" + sign + "'" +
                          (sign == "!"   ? "; use Not"
                           : sign == ";" ? "; write each statement on a line of its own"
                           : sign == "$" ? "; strings have no placeholders: join them with '+'"
                                         : ""),
                      start_);
  }

  std::string_view rest_;
  Position at_ = {1, 1};
  Position start_ = {1, 1};  // of the current token
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> SplitIntoTokens(std::string_view source) { return Lexer(source).Run(); }

}  // namespace host
