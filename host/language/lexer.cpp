#include "language/lexer.h"

#include <cctype>
#include <charconv>
#include <cstdint>

#include "frame/declaration_syntax.h"
#include "language/errors.h"

namespace host {

namespace {

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool IsHexDigit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }
// Letters beyond ASCII belong to names too.
bool IsLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_' || (c & 0x80) != 0; }

class Lexer {
 public:
  explicit Lexer(std::string_view line) : rest_(line) {}

  std::vector<Token> Run() {
    while (SkipSpaces()) tokens_.push_back(TakeToken());
    tokens_.push_back({TokenKind::kEnd, ""});
    return tokens_;
  }

 private:
  // False at the end of the line, comments included.
  bool SkipSpaces() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t' || rest_.front() == '\r'))
      rest_.remove_prefix(1);
    const bool isRemark =
        rest_.size() >= 3 && zkt::IsSameName(rest_.substr(0, 3), "rem") && (rest_.size() == 3 || rest_[3] == ' ');
    return !rest_.empty() && rest_.front() != '\'' && !rest_.starts_with("//") && !isRemark;
  }

  template <class Belongs>
  std::string TakeWhile(Belongs belongs) {
    std::size_t length = 0;
    while (length < rest_.size() && belongs(rest_[length])) ++length;
    std::string taken(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return taken;
  }

  Token TakeToken() {
    const char c = rest_.front();
    if (c == '"') return TakeText();
    if (c == '&' && rest_.size() > 1 && (rest_[1] == 'c' || rest_[1] == 'C') && rest_.size() > 2 &&
        IsHexDigit(rest_[2]))
      return TakeHexadecimal(TokenKind::kColor);
    if (c == '&' && rest_.size() > 1 && (rest_[1] == 'h' || rest_[1] == 'H'))
      return TakeHexadecimal(TokenKind::kInteger);
    if (IsDigit(c) || (c == '.' && rest_.size() > 1 && IsDigit(rest_[1]))) return TakeNumber();
    if (IsLetter(c)) return {TokenKind::kWord, TakeWhile([](char d) { return IsLetter(d) || IsDigit(d); })};
    constexpr std::string_view kSigns = "()=.,+-*/&";
    if (kSigns.find(c) == std::string_view::npos) throw ScriptError(std::string("cannot read ") + c);
    rest_.remove_prefix(1);
    return {TokenKind::kSign, std::string(1, c)};
  }

  Token TakeText() {
    std::string text;
    rest_.remove_prefix(1);
    for (;;) {
      const std::size_t quote = rest_.find('"');
      if (quote == std::string_view::npos) throw ScriptError("a text does not end");
      text += rest_.substr(0, quote);
      rest_.remove_prefix(quote + 1);
      if (!rest_.starts_with('"')) return {TokenKind::kText, text};
      text += '"';
      rest_.remove_prefix(1);
    }
  }

  Token TakeHexadecimal(TokenKind kind) {
    rest_.remove_prefix(2);
    const std::string digits = TakeWhile(IsHexDigit);
    std::uint64_t value = 0;
    const auto outcome = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (outcome.ec != std::errc()) throw ScriptError("cannot read the number &h" + digits);
    return {kind, std::to_string(static_cast<std::int64_t>(value))};
  }

  Token TakeNumber() {
    std::string number = TakeWhile(IsDigit);
    TokenKind kind = TokenKind::kInteger;
    if (rest_.size() > 1 && rest_.front() == '.' && IsDigit(rest_[1])) {
      kind = TokenKind::kReal;
      rest_.remove_prefix(1);
      number += "." + TakeWhile(IsDigit);
    }
    if (!rest_.empty() && (rest_.front() == 'e' || rest_.front() == 'E')) {
      kind = TokenKind::kReal;
      rest_.remove_prefix(1);
      number += "e" + TakeWhile([](char c) { return IsDigit(c) || c == '-' || c == '+'; });
    }
    return {kind, number};
  }

  std::string_view rest_;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> SplitIntoTokens(std::string_view line) { return Lexer(line).Run(); }

std::vector<ScriptLine> SplitIntoLines(std::string_view script) {
  std::vector<ScriptLine> lines;
  int number = 0;
  bool continues = false;
  while (!script.empty()) {
    const std::size_t end = script.find('\n');
    std::string_view line = script.substr(0, end);
    script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
    ++number;
    while (!line.empty() && (line.back() == ' ' || line.back() == '\r' || line.back() == '\t')) line.remove_suffix(1);
    if (!continues) lines.push_back({number, ""});
    continues = line.ends_with(" _");
    if (continues) line.remove_suffix(1);
    lines.back().text += line;
  }
  return lines;
}

}  // namespace host
