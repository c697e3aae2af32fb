// Parses declarations in Xojo syntax, such as "Name(extends a() as Int32, byref b as Double, c as Integer = -2) as
// Boolean". Works at run time and at compile time, where it is used to check the tables.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace zkt {

// Xojo's names and keywords are case-insensitive.
constexpr bool IsSameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (lower(a[i]) != lower(b[i])) return false;
  return true;
}

template <class... Names>
constexpr bool IsOneOf(std::string_view name, Names... names) {
  return (IsSameName(name, names) || ...);
}

struct DeclaredType {
  std::string_view name;  // empty if there is no type
  bool isArray = false;
};

struct DeclaredParameter {
  std::string_view name;
  DeclaredType type;
  bool isExtends = false;
  bool isByRef = false;
  bool isAssigns = false;
  std::string_view defaultValue;  // a literal as written; empty if the parameter is required
};

// The result of parsing. All strings are slices of the parsed declaration.
struct ParsedDeclaration {
  static constexpr std::size_t kMaxParameters = 12;

  std::string_view name;
  std::array<DeclaredParameter, kMaxParameters> parameters{};
  std::size_t parameterCount = 0;
  DeclaredType result;
  const char* trouble = nullptr;  // the error message; null if the declaration is valid

  constexpr bool IsValid() const { return trouble == nullptr; }
};

namespace syntax_detail {

enum class Literal { kNone, kText, kBoolean, kNil, kWholeNumber, kNumber };

constexpr std::size_t DigitCount(std::string_view text) {
  std::size_t count = 0;
  while (count < text.size() && text[count] >= '0' && text[count] <= '9') ++count;
  return count;
}

constexpr Literal KindOfNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t whole = DigitCount(text);
  if (whole == 0) return Literal::kNone;
  if (whole == text.size()) return Literal::kWholeNumber;
  const std::string_view fraction = text.substr(whole + 1);
  return text[whole] == '.' && !fraction.empty() && DigitCount(fraction) == fraction.size() ? Literal::kNumber
                                                                                            : Literal::kNone;
}

constexpr Literal KindOf(std::string_view literal) {
  if (literal.starts_with('"')) return Literal::kText;
  if (IsOneOf(literal, "True", "False")) return Literal::kBoolean;
  if (IsSameName(literal, "Nil")) return Literal::kNil;
  return KindOfNumber(literal);
}

// Returns whether a literal is valid for the type. No literal is valid for Color. Only Nil is valid for arrays and for
// all types that are not listed here.
constexpr bool Suits(std::string_view literal, const DeclaredType& type) {
  const Literal kind = KindOf(literal);
  if (type.isArray) return kind == Literal::kNil;
  if (IsSameName(type.name, "String")) return kind == Literal::kText;
  if (IsSameName(type.name, "Boolean")) return kind == Literal::kBoolean;
  if (IsSameName(type.name, "Color")) return false;
  if (IsOneOf(type.name, "Int32", "Int64", "Integer")) return kind == Literal::kWholeNumber;
  if (IsOneOf(type.name, "UInt32", "UInt64")) return kind == Literal::kWholeNumber && !literal.starts_with('-');
  if (IsOneOf(type.name, "Currency", "Double", "Single"))
    return kind == Literal::kWholeNumber || kind == Literal::kNumber;
  return kind == Literal::kNil;
}

class DeclarationReader {
 public:
  constexpr explicit DeclarationReader(std::string_view text) : rest_(text) {}

  constexpr ParsedDeclaration Read() {
    declaration_.name = TakeWord("expected a name");
    if (Take('(') && !Take(')')) {
      do {
        ReadParameter();
      } while (Take(','));
      Require(Take(')'), "expected a closing parenthesis");
    }
    if (TakeKeyword("as")) {
      declaration_.result.name = TakeWord("expected the type of the result");
      declaration_.result.isArray = TakeArrayMark();
    }
    SkipSpaces();
    Require(rest_.empty(), "unexpected text after the declaration");
    return declaration_;
  }

 private:
  static constexpr bool IsNameStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
  static constexpr bool IsWordCharacter(char c) { return IsNameStart(c) || (c >= '0' && c <= '9') || c == '.'; }

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
    Require(word.empty() || IsNameStart(word.front()), "a name must begin with a letter or an underscore");
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
    if (declaration_.parameterCount == ParsedDeclaration::kMaxParameters) return Require(false, "too many parameters");
    DeclaredParameter& parameter = declaration_.parameters[declaration_.parameterCount++];
    parameter.isExtends = TakeKeyword("extends");
    parameter.isAssigns = TakeKeyword("assigns");
    parameter.isByRef = TakeKeyword("byref");
    parameter.name = TakeWord("expected the name of a parameter");
    parameter.type.isArray = TakeArrayMark();
    Require(TakeKeyword("as"), "expected the type of a parameter");
    parameter.type.name = TakeWord("expected the type of a parameter");
    if (Take('=')) {
      parameter.defaultValue = TakeLiteral();
      Require(Suits(parameter.defaultValue, parameter.type),
              "the default value does not match the type of the parameter");
    }
    for (std::size_t i = 0; i + 1 < declaration_.parameterCount; ++i)
      Require(!IsSameName(declaration_.parameters[i].name, parameter.name), "two parameters have the same name");
    Require(!parameter.isExtends || declaration_.parameterCount == 1, "only the first parameter can have 'extends'");
    Require(!parameter.defaultValue.empty() || declaration_.parameterCount == 1 || parameter.isAssigns ||
                declaration_.parameters[declaration_.parameterCount - 2].defaultValue.empty(),
            "a required parameter follows an optional one");
  }

  // Parses a quoted string, a number or a word.
  constexpr std::string_view TakeLiteral() {
    SkipSpaces();
    std::size_t length = 0;
    if (!rest_.empty() && rest_.front() == '"') {
      length = rest_.find('"', 1) + 1;
      Require(length > 0, "unterminated string");
    } else {
      while (length < rest_.size() && (IsWordCharacter(rest_[length]) || rest_[length] == '-')) ++length;
    }
    Require(length > 0, "expected a default value");
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
