#include "declarations/conversion.h"

#include <utility>

#include "core/classes.h"
#include "core/dates.h"
#include "declarations/errors.h"
#include "declarations/numbers.h"

namespace host {

namespace {

int CostOfNumber(const Operand& operand, const Type& type) {
  const Type& from = operand.type;
  if (from.IsInteger() && type.IsInteger()) {
    if (operand.isLiteral) return type.IsUnsigned() ? kUnsignedLiteralFits : kLiteralFits;
    const bool isWider = (type.kind == TypeKind::kInt64 && from.kind != TypeKind::kUInt64) ||
                         (type.kind == TypeKind::kUInt64 && from.kind == TypeKind::kUInt32);
    return isWider ? kWider : kNarrower;
  }
  if (from.IsReal() && type.IsReal())
    return type.kind == TypeKind::kDouble ? kWider : operand.isLiteral ? kLiteralFits : kNarrower;
  if (type.IsReal()) return type.kind == TypeKind::kDouble ? kToReal : kToSingle;
  return type.kind == TypeKind::kCurrency ? kToCurrency : kCut;
}

Value ConvertNumber(const Value& value, const Type& type) {
  if (auto number = NumberAs(value, type)) return std::move(*number);
  throw ScriptError(Show(value) + " does not fit in " + NameOf(type));
}

std::optional<Conversion> FindNumberConversion(const Operand& operand, const Type& type) {
  const int cost = CostOfNumber(operand, type);
  if (operand.isLiteral && operand.constant) {
    if (type.kind == TypeKind::kCurrency && !operand.digits.empty()) {
      const auto scaled = ReadCurrency(operand.digits);
      if (!scaled) return std::nullopt;
      return Conversion{cost, [value = Value{type, *scaled}](const Value&) { return value; }};
    }
    const bool isWhole = operand.type.IsInteger() && type.IsInteger();
    if (isWhole ? !Fits(*operand.constant, type.kind) : !NumberAs(*operand.constant, type)) return std::nullopt;
  }
  return Conversion{cost, [type](const Value& value) { return ConvertNumber(value, type); }};
}

// Returns the number of inheritance steps from `derived` to `base`; nullopt if `derived` does not derive from `base`.
std::optional<int> StepsBetween(const Type& derived, const Type& base) {
  int steps = 0;
  for (const ObjectClass* type = FindClass(derived.name); type != nullptr; type = type->super, ++steps)
    if (zkt::IsSameName(type->name, base.name)) return steps;
  return std::nullopt;
}

std::optional<Conversion> FindObjectConversion(const Type& from, const Type& type) {
  const auto retype = [type](const Value& value) { return Value{type, value.payload}; };
  if (const auto steps = StepsBetween(from, type)) return Conversion{kDerived * *steps, retype};
  return type == kObjectType ? std::optional(Conversion{kWider, retype}) : std::nullopt;
}

}  // namespace

bool DerivesFrom(const Type& a, const Type& b) { return b == kObjectType || StepsBetween(a, b).has_value(); }

std::optional<Conversion> FindConversion(const Operand& operand, const Type& type) {
  const Type& from = operand.type;
  if (from.kind == TypeKind::kNothing) {  // Nil
    const bool canBeNil =
        type.isArray || type.kind == TypeKind::kPtr || (type.IsReference() && type.kind != TypeKind::kString);
    if (!operand.isLiteral || !canBeNil) return std::nullopt;
    return Conversion{kDerived, [type](const Value&) { return DefaultValue(type); }};
  }
  if (from == type) return Conversion{kSame};
  if (type.isArray || from.isArray) return std::nullopt;
  if (type.kind == TypeKind::kVariant) return Conversion{kBoxed, Boxed};
  if (from.kind == TypeKind::kVariant)
    return Conversion{kUnboxed, [type](const Value& value) { return FromVariant(value, type); }};
  if (type.IsNumber() && from.IsNumber()) return FindNumberConversion(operand, type);
  if (type.kind == TypeKind::kObject && from.kind == TypeKind::kObject) return FindObjectConversion(from, type);
  return std::nullopt;
}

Value FromVariant(const Value& variant, const Type& type) {
  if (variant.Reference() == nullptr) return DefaultValue(type);
  const Value& held = Unboxed(variant);
  const bool isObject = &held == &variant;
  if (!isObject && held.type == type) return held;
  if (!isObject && held.type.IsNumber() && type.IsNumber()) return ConvertNumber(held, type);
  if (!isObject && type == kStringType) return MakeValue(Show(held));
  if (isObject && type.Is(TypeKind::kObject) && variant.Object()->type->IsA(type.name)) return {type, variant.payload};
  throw XojoException(
      "TypeMismatchException",
      "the Variant holds " + (isObject ? variant.Object()->type->name : NameOf(held.type)) + ", not " + NameOf(type));
}

std::optional<Operand> ReadWord(std::string_view word) {
  if (zkt::IsSameName(word, "True")) return Operand{kBooleanType, Value{kBooleanType, std::int64_t{1}}};
  if (zkt::IsSameName(word, "False")) return Operand{kBooleanType, Value{kBooleanType, std::int64_t{0}}};
  if (zkt::IsSameName(word, "Nil")) return Operand{{}, Value{}, true};
  return std::nullopt;
}

Operand ReadNumber(std::string_view text) {
  const bool isWhole = text.find_first_of(".e") == std::string_view::npos;
  Value value = isWhole ? ReadInteger(text) : ReadReal(text);
  const Type type = value.type;
  return {type, std::move(value), true, isWhole ? "" : std::string(text)};
}

Operand ReadDefault(std::string_view literal) {
  if (literal.starts_with('"')) return {kStringType, MakeValue(literal.substr(1, literal.size() - 2))};
  const auto word = ReadWord(literal);
  return word ? *word : ReadNumber(literal);
}

Value DefaultArgument(std::string_view literal, const Type& type) {
  const Operand operand = ReadDefault(literal);
  const auto conversion = FindConversion(operand, type);
  if (!conversion)
    throw ScriptError("the default value " + std::string(literal) + " does not match the type " + NameOf(type));
  return conversion->Apply(*operand.constant);
}

std::string Show(const Value& value) {
  switch (value.type.kind) {
    case TypeKind::kNothing:
      return "Nil";
    case TypeKind::kBoolean:
      return value.Integer() != 0 ? "True" : "False";
    case TypeKind::kColor:
      return "&c" + ToHex(static_cast<std::uint64_t>(value.Integer()), 6);
    case TypeKind::kCurrency:
      return ShowCurrency(value.Integer());
    case TypeKind::kDouble:
      return ShowReal(value.Real(), 15);
    case TypeKind::kSingle:
      return ShowReal(value.Real(), 7);
    case TypeKind::kPtr:
      return "&h" + ToHex(static_cast<std::uint64_t>(value.Integer()));
    case TypeKind::kUInt64:
      return std::to_string(static_cast<std::uint64_t>(value.Integer()));
    case TypeKind::kString:
      return value.Text();
    default:
      break;
  }
  if (!value.type.IsReference()) return std::to_string(value.Integer());
  if (value.Reference() == nullptr) return "Nil";
  if (const Value& held = Unboxed(value); &held != &value) return Show(held);
  REALobjectStruct* const object = value.Object();
  return IsDate(object->type) ? DateText(object) : object->type->name;
}

}  // namespace host
