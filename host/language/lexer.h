// Splits Xojo source into words, literals and symbols, with their positions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "declarations/errors.h"
#include "frame/catalogue/declaration_syntax.h"

namespace host {

enum class TokenKind { kWord, kNumber, kUnsigned, kText, kColor, kSymbol, kLineEnd, kEnd };

struct Token {
  TokenKind kind;
  // A string literal is stored without its quotes. Colors and hexadecimal, binary and octal numbers are stored in
  // decimal.
  std::string text;
  Position at;

  // Whether the token is that word, in any case, or that symbol.
  bool Is(std::string_view wanted) const {
    return (kind == TokenKind::kWord || kind == TokenKind::kSymbol) && zkt::IsSameName(text, wanted);
  }
};

// Skips comments and joins continued lines. Each line ends with a kLineEnd token, and the last token is kEnd. Throws
// ScriptError for characters that Xojo does not allow.
std::vector<Token> SplitIntoTokens(std::string_view source);

}  // namespace host
