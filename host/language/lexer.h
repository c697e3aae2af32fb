// Splits a line of Xojo code into words, literals and signs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

enum class TokenKind { kWord, kNumber, kText, kColor, kSign, kEnd };

struct Token {
  TokenKind kind;
  std::string text;  // a text literal without its quotes; of a number, hexadecimal ones in decimal
};

// Comments are left out; the last token is the end. Throws ScriptError for what is no Xojo.
std::vector<Token> SplitIntoTokens(std::string_view line);

// The lines of a script, with continued lines ("_" at the end, a comment behind it perhaps) put together and without
// comments; numbers start at 1.
struct ScriptLine {
  int number;
  std::string text;
  bool isContinued = false;  // and nothing has followed
};

std::vector<ScriptLine> SplitIntoLines(std::string_view script);

}  // namespace host
