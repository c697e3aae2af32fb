// Implicit conversions between types, and the text form of values.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/value.h"

namespace host {

// What is known about an expression before it runs.
struct Operand {
  Type type = {};
  std::optional<Value> constant = {};
  // Whether the expression is a numeric literal, whose type is not fixed yet, or Nil, which has no type.
  bool isLiteral = false;
  std::string digits = {};  // the digits of a real literal, for an exact conversion to Currency
};

// The costs of implicit conversions. The cost of a call is the sum of the costs of converting its arguments. The values
// are far apart, so that low costs only break ties, even if many of them add up.
enum Cost : int {
  kSame = 0,
  kFilledDefault = 1,
  kDerived = 20,  // for each level of inheritance
  kWider = 400,
  kLiteralFits = 600,
  kUnsignedLiteralFits = 700,
  kToReal = 1200,
  kToCurrency = 1300,
  kToSingle = 1400,
  kBoxed = 2000,
  kUnboxed = 2200,
  kNarrower = 3000,
  kCut = 3200,
};

struct Conversion {
  int cost;  // 0 if the operand already has the type; conversions with lower costs are preferred
  // Converts a value of the operand's type; null if no conversion is needed.
  std::function<Value(const Value&)> convert = {};

  Value Apply(const Value& value) const { return convert ? convert(value) : value; }
};

// Returns the conversion of an operand to a type; nullopt if there is none.
std::optional<Conversion> FindConversion(const Operand& operand, const Type& type);

// Converts the content of a Variant to a type. Throws XojoException (TypeMismatchException) if there is no conversion.
Value FromVariant(const Value& variant, const Type& type);

// Whether class a is b or derives from b.
bool DerivesFrom(const Type& a, const Type& b);

// Reads True, False or Nil. Returns nullopt for any other word.
std::optional<Operand> ReadWord(std::string_view word);

// Reads a numeric literal with an optional minus sign. Throws ScriptError if it is malformed or no type can hold it.
Operand ReadNumber(std::string_view text);

// Reads the default value of a parameter, as written in its declaration.
Operand ReadDefault(std::string_view literal);

// Reads a default value and converts it to the parameter's type.
Value DefaultArgument(std::string_view literal, const Type& type);

// Formats a value as ToString does.
std::string Show(const Value& value);

}  // namespace host
