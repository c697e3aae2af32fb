// What a value may be used as, and how it is shown.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/value.h"
#include "declarations/catalogue.h"
#include "declarations/native_call.h"

namespace host {

// A function that a script can name behind AddressOf.
struct ReadyFunction {
  std::string_view name;
  bool (*suits)(const Signature& signature);  // whether it can be called with what a delegate is called with
  DelegateTarget target;                      // gives an Int64 where there is a result
};

// What an expression gives.
struct Operand {
  Value value;
  Value* variable = nullptr;  // where it lies, if it is a variable
  // A number or Array(…) that is written out has no fixed type yet; Nil fits every reference.
  bool isLiteral = false;
  const ReadyFunction* function = nullptr;  // of AddressOf
  std::string digits = {};                  // of a real number that is written out: Currency is read from them
  std::vector<Operand> elements = {};       // of Array(…)
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

struct Converted {
  Value value;
  int cost;  // 0: it is of that type; the more, the less it suits
};

// The operand as a value of the type; nothing if it cannot be one.
std::optional<Converted> Convert(const Operand& operand, const Type& type, const Catalogue& catalogue);

// Array(…) as an array of the type that suits its elements. Throws ScriptError for what cannot be an element.
Operand MakeArrayLiteral(std::vector<Operand> elements);

// True, False or Nil; nothing for any other word.
std::optional<Operand> ReadWord(std::string_view word);

// A numeric literal with an optional minus sign. Throws ScriptError if it is malformed or no type can hold it.
Operand ReadNumber(std::string_view text);

// The default value of a parameter, as written in its declaration.
Operand ReadDefault(std::string_view literal);

// The value as Print shows it.
std::string Show(const Value& value);

}  // namespace host
