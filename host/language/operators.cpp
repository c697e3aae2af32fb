#include "language/operators.h"

#include <cmath>

#include "core/classes.h"
#include "declarations/errors.h"
#include "declarations/value_order.h"

namespace host {

namespace {

bool IsComparison(std::string_view sign) { return zkt::IsOneOf(sign, "=", "<>", "<", "<=", ">", ">="); }

Value TruthOf(bool truth) { return {kBooleanType, std::int64_t{truth}}; }

bool IsNil(const Operand& operand) { return operand.type.kind == TypeKind::kNothing && operand.isLiteral; }

Type WholeType(const Type& a, const Type& b) {
  const bool isUnsigned = a.kind == TypeKind::kUInt64 || b.kind == TypeKind::kUInt64;
  return isUnsigned ? Type{TypeKind::kUInt64} : kIntegerType;
}

Type ResultOfArithmetic(char sign, const Type& a, const Type& b) {
  if (sign == '/' || a.IsReal() || b.IsReal()) return kDoubleType;
  const bool isCurrency = a.kind == TypeKind::kCurrency;
  if (isCurrency && b.kind == TypeKind::kCurrency && sign == '*') return kDoubleType;
  if (isCurrency || b.kind == TypeKind::kCurrency) return kCurrencyType;
  return WholeType(a, b);
}

// Returns the integer quotient or the remainder.
Value DivideWhole(bool isQuotient, const Type& result, const Value& a, const Value& b) {
  const std::int64_t x = NumberAs(a, result).value_or(MakeValue(0)).Integer();
  const std::int64_t y = NumberAs(b, result).value_or(MakeValue(0)).Integer();
  if (y == 0) throw ScriptError("division by zero");
  if (result.kind == TypeKind::kUInt64) {
    const auto ux = static_cast<std::uint64_t>(x), uy = static_cast<std::uint64_t>(y);
    return {result, static_cast<std::int64_t>(isQuotient ? ux / uy : ux % uy)};
  }
  if (y == -1) return {result, isQuotient ? static_cast<std::int64_t>(0 - static_cast<std::uint64_t>(x)) : 0};
  return {result, isQuotient ? x / y : x % y};
}

// Finds an operation on two numbers.
Operation FindArithmetic(std::string_view sign, const Type& a, const Type& b) {
  if (zkt::IsOneOf(sign, "Mod", "\\")) {
    const Type result = WholeType(a, b);
    const bool isQuotient = sign == "\\";
    return {result, [=](const Value& x, const Value& y) { return DivideWhole(isQuotient, result, x, y); }};
  }
  if (sign == "^")
    return {kDoubleType, [](const Value& x, const Value& y) { return MakeValue(std::pow(AsReal(x), AsReal(y))); }};
  const char letter = sign.front();
  return {ResultOfArithmetic(letter, a, b), [letter](const Value& x, const Value& y) { return Compute(letter, x, y); }};
}

bool CanCompare(std::string_view sign, const Operand& a, const Operand& b) {
  const bool isEquality = sign == "=" || sign == "<>";
  if (a.type.IsNumber() && b.type.IsNumber()) return true;
  if (a.type.kind == TypeKind::kVariant || b.type.kind == TypeKind::kVariant) return !a.type.isArray && !b.type.isArray;
  if (IsNil(a) || IsNil(b)) {
    const Type& other = IsNil(a) ? b.type : a.type;
    return isEquality && other != kStringType &&
           (other.IsReference() || IsNil(a) == IsNil(b) || other.Is(TypeKind::kPtr));
  }
  if (a.type == kStringType && b.type == kStringType) return true;
  if (a.type.Is(TypeKind::kObject) && b.type.Is(TypeKind::kObject)) {
    const bool isDate = a.type == b.type && zkt::IsOneOf(a.type.name, "Date", "DateTime");
    return isDate || (isEquality && (DerivesFrom(a.type, b.type) || DerivesFrom(b.type, a.type)));
  }
  return isEquality && a.type == b.type && !a.type.IsReference();
}

std::optional<Operation> FindComparison(std::string_view sign, const Operand& a, const Operand& b) {
  if (!CanCompare(sign, a, b)) return std::nullopt;
  if (a.type.Is(TypeKind::kPtr) || b.type.Is(TypeKind::kPtr))
    return Operation{kBooleanType, [isEqual = sign == "="](const Value& x, const Value& y) {
                       return TruthOf((x.Integer() == y.Integer()) == isEqual);  // Nil is stored as 0
                     }};
  return Operation{kBooleanType, [sign = std::string(sign)](const Value& x, const Value& y) {
                     const std::int64_t order = CompareValues(x, y);
                     const char actual = order < 0 ? '<' : order > 0 ? '>' : '=';
                     return TruthOf(sign.find(actual) != std::string::npos);
                   }};
}

// And, Or and Xor: logical for two Booleans, bitwise for two integers.
std::optional<Operation> FindLogic(std::string_view word, const Type& a, const Type& b) {
  const bool isBoolean = a.Is(TypeKind::kBoolean) && b.Is(TypeKind::kBoolean);
  if (!isBoolean && !(a.IsInteger() && b.IsInteger())) return std::nullopt;
  const char letter = zkt::IsOneOf(word, "And") ? '&' : zkt::IsOneOf(word, "Or") ? '|' : '^';
  const Type result = isBoolean ? kBooleanType : ResultOfArithmetic('+', a, b);
  return Operation{result, [letter, result](const Value& x, const Value& y) {
                     const std::int64_t i = x.Integer(), j = y.Integer();
                     return Value{result, letter == '&' ? i & j : letter == '|' ? i | j : i ^ j};
                   }};
}

std::optional<Operation> FindIs(const Operand& a, const Operand& b) {
  const auto isReference = [](const Operand& operand) {
    return IsNil(operand) || (operand.type.IsReference() && operand.type != kStringType);
  };
  if (!isReference(a) || !isReference(b)) return std::nullopt;
  return Operation{kBooleanType, [](const Value& x, const Value& y) {
                     const auto reference = [](const Value& value) {
                       return value.type.kind == TypeKind::kNothing ? nullptr : value.Reference();
                     };
                     return TruthOf(reference(x) == reference(y));
                   }};
}

}  // namespace

std::optional<Operation> FindOperation(std::string_view sign, const Operand& a, const Operand& b) {
  if (zkt::IsOneOf(sign, "And", "Or", "Xor")) return FindLogic(sign, a.type, b.type);
  if (zkt::IsOneOf(sign, "Is")) return FindIs(a, b);
  if (IsComparison(sign)) return FindComparison(sign, a, b);
  if (sign == "+" && a.type == kStringType && b.type == kStringType)
    return Operation{kStringType, [](const Value& x, const Value& y) { return MakeValue(x.Text() + y.Text()); }};
  if (!a.type.IsNumber() || !b.type.IsNumber()) return std::nullopt;
  return FindArithmetic(sign, a.type, b.type);
}

std::string OperandsOf(std::string_view sign) {
  if (zkt::IsOneOf(sign, "And", "Or", "Xor")) return "two Booleans or two integers";
  if (zkt::IsOneOf(sign, "Is")) return "two objects, or an object and Nil";
  if (sign == "+") return "two numbers or two Strings";
  if (zkt::IsOneOf(sign, "<", "<=", ">", ">=")) return "two numbers, two Strings or two dates";
  return IsComparison(sign) ? "two values of one kind" : "two numbers";
}

std::optional<Type> CommonType(const Operand& a, const Operand& b) {
  if (a.type == b.type) return a.type;
  if (a.type.IsNumber() && b.type.IsNumber()) return ResultOfArithmetic('+', a.type, b.type);
  if (IsNil(a) || IsNil(b)) {
    const Type& other = IsNil(a) ? b.type : a.type;
    if (other.IsReference() && other != kStringType) return other;
    return std::nullopt;
  }
  if (!a.type.Is(TypeKind::kObject) || !b.type.Is(TypeKind::kObject)) return std::nullopt;
  if (DerivesFrom(a.type, b.type)) return b.type;
  return DerivesFrom(b.type, a.type) ? a.type : kObjectType;
}

}  // namespace host
