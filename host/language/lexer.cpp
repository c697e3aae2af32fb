#include "language/lexer.h"

#include <cctype>
#include <charconv>
#include <cstdint>

#include "declarations/errors.h"
#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool IsHexDigit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }
// Letters beyond ASCII belong to names too.
bool IsLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_' || (c & 0x80) != 0; }

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view WithoutSpacesBehind(std::string_view text) {
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

bool StartsWithRem(std::string_view text) {
  return text.size() >= 3 && zkt::IsSameName(text.substr(0, 3), "rem") &&
         (text.size() == 3 || (!IsLetter(text[3]) && !IsDigit(text[3])));
}

struct Code {
  std::string_view text;  // what stands before the comment
  bool isOpenText = false;
};

Code WithoutComment(std::string_view line) {
  bool isInText = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const std::string_view rest = line.substr(i);
    if (line[i] == '"') isInText = !isInText;
    if (isInText) continue;
    const bool isInWord = i > 0 && (IsLetter(line[i - 1]) || IsDigit(line[i - 1]) || line[i - 1] == '.');
    if (line[i] == '\'' || rest.starts_with("//") || (!isInWord && StartsWithRem(rest))) return {line.substr(0, i)};
  }
  return {line, isInText};
}

class Lexer {
 public:
  explicit Lexer(std::string_view line) : rest_(WithoutComment(line).text) {}

  std::vector<Token> Run() {
    while (SkipSpaces()) tokens_.push_back(TakeToken());
    tokens_.push_back({TokenKind::kEnd, ""});
    return tokens_;
  }

 private:
  // False at the end of the line.
  bool SkipSpaces() {
    while (!rest_.empty() && IsSpace(rest_.front())) rest_.remove_prefix(1);
    return !rest_.empty();
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
      return TakeHexadecimal(TokenKind::kNumber);
    if (IsDigit(c) || (c == '.' && !FollowsName() && rest_.size() > 1 && IsDigit(rest_[1]))) return TakeNumber();
    if (IsLetter(c)) return {TokenKind::kWord, TakeWhile([](char d) { return IsLetter(d) || IsDigit(d); })};
    constexpr std::string_view kSigns = "()=.,+-*/&";
    if (kSigns.find(c) == std::string_view::npos) throw ScriptError(std::string("cannot read ") + c);
    rest_.remove_prefix(1);
    return {TokenKind::kSign, std::string(1, c)};
  }

  bool FollowsName() const { return !tokens_.empty() && tokens_.back().kind == TokenKind::kWord; }

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
    return {kind, std::to_string(value)};
  }

  Token TakeNumber() {
    std::string number = TakeWhile(IsDigit);
    if (rest_.size() > 1 && rest_.front() == '.' && IsDigit(rest_[1])) {
      rest_.remove_prefix(1);
      number += "." + TakeWhile(IsDigit);
    }
    if (!rest_.empty() && (rest_.front() == 'e' || rest_.front() == 'E')) {
      rest_.remove_prefix(1);
      number += 'e';
      if (rest_.starts_with('-') || rest_.starts_with('+')) {
        if (rest_.front() == '-') number += '-';
        rest_.remove_prefix(1);
      }
      number += TakeWhile(IsDigit);
    }
    return {TokenKind::kNumber, number};
  }

  std::string_view rest_;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> SplitIntoTokens(std::string_view line) { return Lexer(line).Run(); }

std::vector<ScriptLine> SplitIntoLines(std::string_view script) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (script.starts_with(kByteOrderMark)) script.remove_prefix(kByteOrderMark.size());
  std::vector<ScriptLine> lines;
  int number = 0;
  bool continues = false;
  while (!script.empty()) {
    const std::size_t end = script.find('\n');
    std::string_view line = script.substr(0, end);
    script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
    ++number;
    const Code code = WithoutComment(line);
    line = WithoutSpacesBehind(code.text);
    if (!continues) lines.push_back({number, ""});
    continues = !code.isOpenText && (line == "_" || line.ends_with(" _") || line.ends_with("\t_"));
    if (continues) line.remove_suffix(1);
    lines.back().text += line;
    lines.back().isContinued = continues;
  }
  return lines;
}

}  // namespace host
