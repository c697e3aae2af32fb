// What an expression may be used as, as far as its type tells, and what values look like as text.
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
  // A number that is written out has no fixed type yet; Nil, which has no type, fits every reference.
  bool isLiteral = false;
  std::string digits = {};  // of a real number that is written out: Currency is read from them
};

// The costs of implicit conversions. They add up over the arguments of a call. The steps are far apart, so that lower
// ones, times the number of parameters, only decide between equals.
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
  int cost;  // 0: it is of that type; the more, the less it suits
  // Makes a value of the type from one of the operand's; null: the value is one already.
  std::function<Value(const Value&)> convert = {};

  Value Apply(const Value& value) const { return convert ? convert(value) : value; }
};

// How an operand becomes a value of the type; nothing if it cannot.
std::optional<Conversion> FindConversion(const Operand& operand, const Type& type);

// What a Variant holds as a value of the type. Throws XojoException (TypeMismatchException) if it cannot be one.
Value FromVariant(const Value& variant, const Type& type);

// The class a derives from b, or is b.
bool DerivesFrom(const Type& a, const Type& b);

// True, False or Nil; nothing for any other word.
std::optional<Operand> ReadWord(std::string_view word);

// A numeric literal with an optional minus sign. Throws ScriptError if it is malformed or no type can hold it.
Operand ReadNumber(std::string_view text);

// The default value of a parameter, as written in its declaration.
Operand ReadDefault(std::string_view literal);

// The same as a value of the parameter's type.
Value DefaultArgument(std::string_view literal, const Type& type);

// The value as text, as ToString returns it.
std::string Show(const Value& value);

}  // namespace host
