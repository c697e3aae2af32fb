// Reads the tokens of a source. Error messages say what was expected and what was found.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "language/lexer.h"

namespace host {

class TokenReader {
 public:
  explicit TokenReader(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

 protected:
  const Token& Current() const { return tokens_[next_]; }
  const Token& Following() const { return tokens_[std::min(next_ + 1, tokens_.size() - 1)]; }
  Token Take() { return tokens_[next_++]; }

  bool Is(TokenKind kind) const { return Current().kind == kind; }
  bool Is(std::string_view text) const { return Current().Is(text); }
  bool IsAtLineEnd() const { return Is(TokenKind::kLineEnd) || Is(TokenKind::kEnd); }

  // Accept reads the next token if it is that word or symbol. Require throws if it is not.
  bool Accept(std::string_view text);
  void Require(std::string_view text);
  // Reads a name that is not a reserved word. Throws ScriptError if anything else follows.
  std::string RequireName();
  std::string RequireMemberName();
  void RequireLineEnd();

  // Throws an error such as "expected a name, but found ')'". At the end of the source, throws IncompleteError instead,
  // because more may follow. `found` replaces the current token in the message.
  [[noreturn]] void FailExpecting(const std::string& wanted, const std::string& found = "") const;
  [[noreturn]] void FailUnsupported(std::string_view feature) const;

 private:
  std::vector<Token> tokens_;
  std::size_t next_ = 0;
};

}  // namespace host
