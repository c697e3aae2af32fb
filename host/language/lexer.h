// Splits Xojo source into words, literals and signs, with their positions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "declarations/errors.h"

namespace host {

enum class TokenKind { kWord, kNumber, kUnsigned, kText, kColor, kSign, kLineEnd, kEnd };

struct Token {
  TokenKind kind;
  // A text literal without its quotes, a color and a hexadecimal, binary or octal number in decimal.
  std::string text;
  Position at;
};

// Leaves comments out and joins continued lines. Every line ends with a line end, also the last one; the last token is
// the end. Throws ScriptError for what is not Xojo.
std::vector<Token> SplitIntoTokens(std::string_view source);

}  // namespace host
