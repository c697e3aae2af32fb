// Reads declarations as Xojo writes them: "Name(extends a() as Int32, byref b as Double, c as Integer = -2) as
// Boolean". Usable at compile time, where the tables are checked, and at run time.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace zkt {

// Xojo's names and words are the same in any letter case.
constexpr bool IsSameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (lower(a[i]) != lower(b[i])) return false;
  return true;
}

struct DeclaredType {
  std::string_view name;  // empty: none
  bool isArray = false;
};

struct DeclaredParameter {
  std::string_view name;
  DeclaredType type;
  bool isExtends = false;
  bool isByRef = false;
  bool isAssigns = false;
  std::string_view defaultValue;  // a literal as it is written; empty: the parameter is required
};

// The texts are parts of the declaration that was read.
struct ParsedDeclaration {
  static constexpr std::size_t kMostParameters = 12;

  std::string_view name;
  std::array<DeclaredParameter, kMostParameters> parameters{};
  std::size_t parameterCount = 0;
  DeclaredType result;
  const char* trouble = nullptr;  // what is wrong with the text; null: nothing

  constexpr bool IsValid() const { return trouble == nullptr; }
};

namespace syntax_detail {

class DeclarationReader {
 public:
  constexpr explicit DeclarationReader(std::string_view text) : rest_(text) {}

  constexpr ParsedDeclaration Read() {
    declaration_.name = TakeWord("a name is missing");
    if (Take('(') && !Take(')')) {
      do {
        ReadParameter();
      } while (Take(','));
      Require(Take(')'), "a closing parenthesis is missing");
    }
    if (TakeKeyword("as")) {
      declaration_.result.name = TakeWord("the type of the result is missing");
      declaration_.result.isArray = TakeArrayMark();
    }
    SkipSpaces();
    Require(rest_.empty(), "something follows the declaration");
    return declaration_;
  }

 private:
  static constexpr bool IsWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.';
  }

  constexpr void Require(bool condition, const char* trouble) {
    if (!condition && declaration_.trouble == nullptr) declaration_.trouble = trouble;
  }

  constexpr void SkipSpaces() {
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
  }

  constexpr bool Take(char c) {
    SkipSpaces();
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  constexpr std::size_t WordLength() {
    SkipSpaces();
    std::size_t length = 0;
    while (length < rest_.size() && IsWordCharacter(rest_[length])) ++length;
    return length;
  }

  constexpr std::string_view TakeWord(const char* trouble) {
    const std::size_t length = WordLength();
    const std::string_view word = rest_.substr(0, length);
    Require(!word.empty(), trouble);
    rest_.remove_prefix(word.size());
    return word;
  }

  constexpr bool TakeKeyword(std::string_view keyword) {
    const std::size_t length = WordLength();
    if (!IsSameName(rest_.substr(0, length), keyword)) return false;
    rest_.remove_prefix(length);
    return true;
  }

  constexpr bool TakeArrayMark() {
    if (!Take('(')) return false;
    Require(Take(')'), "an array has more than one dimension");
    return true;
  }

  constexpr void ReadParameter() {
    if (declaration_.parameterCount == ParsedDeclaration::kMostParameters)
      return Require(false, "there are too many parameters");
    DeclaredParameter& parameter = declaration_.parameters[declaration_.parameterCount++];
    parameter.isExtends = TakeKeyword("extends");
    parameter.isAssigns = TakeKeyword("assigns");
    parameter.isByRef = TakeKeyword("byref");
    parameter.name = TakeWord("the name of a parameter is missing");
    parameter.type.isArray = TakeArrayMark();
    Require(TakeKeyword("as"), "the type of a parameter is missing");
    parameter.type.name = TakeWord("the type of a parameter is missing");
    if (Take('=')) parameter.defaultValue = TakeLiteral();
    Require(!parameter.isExtends || declaration_.parameterCount == 1, "only the first parameter can be extended");
    Require(!parameter.defaultValue.empty() || declaration_.parameterCount == 1 || parameter.isAssigns ||
                declaration_.parameters[declaration_.parameterCount - 2].defaultValue.empty(),
            "a required parameter follows an optional one");
  }

  // A quoted text, a number or a word.
  constexpr std::string_view TakeLiteral() {
    SkipSpaces();
    std::size_t length = 0;
    if (!rest_.empty() && rest_.front() == '"') {
      length = rest_.find('"', 1) + 1;
      Require(length > 0, "a text does not end");
    } else {
      while (length < rest_.size() && (IsWordCharacter(rest_[length]) || rest_[length] == '-')) ++length;
    }
    Require(length > 0, "a default value is missing");
    const std::string_view literal = rest_.substr(0, length);
    rest_.remove_prefix(literal.size());
    return literal;
  }

  std::string_view rest_;
  ParsedDeclaration declaration_;
};

}  // namespace syntax_detail

constexpr ParsedDeclaration ParseDeclaration(std::string_view text) {
  return syntax_detail::DeclarationReader(text).Read();
}

}  // namespace zkt
