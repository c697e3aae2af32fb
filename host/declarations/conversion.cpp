#include "declarations/conversion.h"

#include <algorithm>
#include <utility>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/dates.h"
#include "declarations/errors.h"
#include "declarations/numbers.h"

namespace host {

namespace {

int CostOfNumber(const Operand& operand, const Type& type) {
  const Type& from = operand.value.type;
  if (from.IsInteger() && type.IsInteger()) {
    const bool isUnsigned = type.basic == Basic::kUInt32 || type.basic == Basic::kUInt64;
    if (operand.isLiteral) return isUnsigned ? kUnsignedLiteralFits : kLiteralFits;
    const bool isWider = (type.basic == Basic::kInt64 && from.basic != Basic::kUInt64) ||
                         (type.basic == Basic::kUInt64 && from.basic == Basic::kUInt32);
    return isWider ? kWider : kNarrower;
  }
  if (from.IsReal() && type.IsReal())
    return type.basic == Basic::kDouble ? kWider : operand.isLiteral ? kLiteralFits : kNarrower;
  if (type.IsReal()) return type.basic == Basic::kDouble ? kToReal : kToSingle;
  return type.basic == Basic::kCurrency ? kToCurrency : kCut;
}

std::optional<Converted> ConvertNumber(const Operand& operand, const Type& type) {
  const Value& value = operand.value;
  if (operand.isLiteral && value.type.IsInteger() && type.IsInteger() && !Fits(value, type.basic)) return std::nullopt;
  std::optional<Value> number;
  if (type.basic == Basic::kCurrency && !operand.digits.empty())
    if (const auto scaled = ReadCurrency(operand.digits)) number = Value{type, *scaled};
  if (!number) number = NumberAs(value, type);
  if (!number) return std::nullopt;
  return Converted{*number, CostOfNumber(operand, type)};
}

std::optional<Converted> ConvertFromVariant(const Value& value, const Type& type, const Catalogue& catalogue) {
  if (value.Reference() == nullptr) return Converted{DefaultValue(type), kUnboxed};
  if (const Value& held = Unboxed(value); &held != &value) {
    auto converted = Convert({held}, type, catalogue);
    if (converted) converted->cost += kUnboxed;
    return converted;
  }
  if (type.basic != Basic::kObject || !value.Object()->type->IsA(type.name)) return std::nullopt;
  return Converted{{type, value.payload}, kUnboxed};
}

// The array with every element as the type wants it.
std::optional<Converted> ConvertElements(const std::vector<Operand>& elements, const Type& type,
                                         const Catalogue& catalogue) {
  ArrayRef array(MakeArray(type.Element(), static_cast<std::int64_t>(elements.size()) - 1));
  int cost = kSame;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const auto converted = Convert(elements[i], type.Element(), catalogue);
    if (!converted) return std::nullopt;
    cost = std::max(cost, converted->cost);
    SetElement(array.Get(), static_cast<std::int64_t>(i), converted->value);
  }
  return Converted{{type, std::move(array)}, cost};
}

std::optional<Converted> ConvertArray(const Operand& operand, const Type& type, const Catalogue& catalogue) {
  const Value& value = operand.value;
  if (!value.type.isArray) return std::nullopt;
  if (!operand.elements.empty()) return ConvertElements(operand.elements, type, catalogue);
  return value.type == type ? std::optional(Converted{value, kSame}) : std::nullopt;
}

// An object by the class that is declared for it; what may be of any class, by its own.
std::optional<Converted> ConvertObject(const Value& value, const Type& type) {
  const Type& from = value.type;
  if (from == kObjectType) {
    const bool suits = value.Reference() == nullptr || value.Object()->type->IsA(type.name);
    return suits ? std::optional(Converted{{type, value.payload}, kUnboxed}) : std::nullopt;
  }
  int steps = 1;
  for (const ObjectClass* super = FindClass(from.name); super != nullptr; super = super->super, ++steps)
    if (super->super != nullptr && zkt::IsSameName(super->super->name, type.name))
      return Converted{{type, value.payload}, kDerived * steps};
  if (type == kObjectType) return Converted{{type, value.payload}, kWider};
  return std::nullopt;
}

std::optional<Converted> ConvertFunction(const ReadyFunction& function, const Type& type, const Catalogue& catalogue) {
  if (!type.Is(Basic::kDelegate)) return std::nullopt;
  const Signature& signature = catalogue.FindDelegate(type.name)->signature;
  if (!function.suits(signature)) return std::nullopt;
  const auto target = [&function, result = signature.result](std::span<const Value> values) {
    const Value value = function.target(values);
    return result.IsInteger() ? *NumberAs(value, result) : value;
  };
  return Converted{{type, MakeDelegate(signature, target)}, kSame};
}

// The type of an array that holds elements of both types.
Type CommonType(const Type& a, const Type& b) {
  if (a.basic == Basic::kNothing || a == b) return b;
  if (b.basic == Basic::kNothing) return a;
  if (a.IsInteger() && b.IsInteger()) return kIntegerType;
  if (a.IsNumber() && b.IsNumber()) return kDoubleType;
  if (a.basic == Basic::kObject && b.basic == Basic::kObject) return kObjectType;
  return kVariantType;
}

std::string ShowArray(const Array* array) {
  std::string text;
  for (std::int64_t i = 0; i <= UpperBound(array); ++i) text += (i > 0 ? ", " : "") + Show(GetElement(array, i));
  return text;
}

std::string ShowReference(const Value& value) {
  if (value.type.Is(Basic::kString)) return value.Text();
  if (value.Reference() == nullptr) return "Nil";
  if (value.type.isArray) return ShowArray(value.Array());
  if (const Value& held = Unboxed(value); &held != &value) return Show(held);
  REALobjectStruct* const object = value.Object();
  return IsDate(object->type) ? DateText(object) : object->type->name;
}

}  // namespace

std::optional<Converted> Convert(const Operand& operand, const Type& type, const Catalogue& catalogue) {
  const Value& value = operand.value;
  if (operand.function != nullptr) return ConvertFunction(*operand.function, type, catalogue);
  if (value.type.basic == Basic::kNothing) {  // Nil
    const bool canBeNil =
        type.isArray || type.basic == Basic::kPtr || (type.IsReference() && type.basic != Basic::kString);
    return operand.isLiteral && canBeNil ? std::optional(Converted{DefaultValue(type), kDerived}) : std::nullopt;
  }
  if (type.isArray) return ConvertArray(operand, type, catalogue);
  if (value.type.isArray) return std::nullopt;
  if (value.type == type) return Converted{value, kSame};
  if (type.basic == Basic::kVariant) return Converted{Boxed(value), kBoxed};
  if (value.type.basic == Basic::kVariant) return ConvertFromVariant(value, type, catalogue);
  if (type.IsNumber() && value.type.IsNumber()) return ConvertNumber(operand, type);
  if (type.basic == Basic::kPtr && value.type.IsInteger()) return Converted{{type, value.payload}, kNarrower};
  if (type.basic == Basic::kObject && value.type.basic == Basic::kObject) return ConvertObject(value, type);
  return std::nullopt;
}

Operand MakeArrayLiteral(std::vector<Operand> elements) {
  if (elements.empty()) throw ScriptError("Array needs elements");
  Type type;
  for (const Operand& element : elements) {
    if (element.value.type.isArray || element.function != nullptr)
      throw ScriptError("this cannot be an element of Array");
    type = CommonType(type, element.value.type);
  }
  if (type.basic == Basic::kNothing) type = kObjectType;
  // Numbers that are no real ones and texts beside Nil.
  for (const Operand& element : elements)
    if (element.value.type.basic == Basic::kNothing && (!type.IsReference() || type.basic == Basic::kString))
      type = kVariantType;
  ArrayRef array(MakeArray(type, static_cast<std::int64_t>(elements.size()) - 1));
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const Value& value = elements[i].value;
    const bool isSame = value.type.basic == type.basic;
    SetElement(array.Get(), static_cast<std::int64_t>(i),
               value.type.basic == Basic::kNothing ? DefaultValue(type)
               : isSame                            ? value
               : type.IsNumber()                   ? *NumberAs(value, type)
                                                   : Boxed(value));
  }
  Operand literal{{type.ArrayOf(), std::move(array)}, nullptr, true};
  literal.elements = std::move(elements);
  return literal;
}

std::optional<Operand> ReadWord(std::string_view word) {
  if (zkt::IsSameName(word, "True")) return Operand{{kBooleanType, std::int64_t{1}}};
  if (zkt::IsSameName(word, "False")) return Operand{{kBooleanType, std::int64_t{0}}};
  if (zkt::IsSameName(word, "Nil")) return Operand{{}, nullptr, true};
  return std::nullopt;
}

Operand ReadNumber(std::string_view text) {
  if (text.find_first_of(".e") == std::string_view::npos) return {ReadInteger(text), nullptr, true};
  return {ReadReal(text), nullptr, true, nullptr, std::string(text)};
}

Operand ReadDefault(std::string_view literal) {
  if (literal.starts_with('"')) return {MakeValue(literal.substr(1, literal.size() - 2))};
  const auto word = ReadWord(literal);
  return word ? *word : ReadNumber(literal);
}

std::string Show(const Value& value) {
  if (value.type.IsReference()) return ShowReference(value);
  switch (value.type.basic) {
    case Basic::kNothing:
      return "Nil";
    case Basic::kBoolean:
      return value.Integer() != 0 ? "True" : "False";
    case Basic::kColor:
      return "&c" + ToHex(static_cast<std::uint64_t>(value.Integer()), 6);
    case Basic::kCurrency:
      return ShowCurrency(value.Integer());
    case Basic::kDouble:
      return ShowReal(value.Real(), 15);
    case Basic::kSingle:
      return ShowReal(value.Real(), 7);
    case Basic::kPtr:
      return "&h" + ToHex(static_cast<std::uint64_t>(value.Integer()));
    case Basic::kUInt64:
      return std::to_string(static_cast<std::uint64_t>(value.Integer()));
    default:
      return std::to_string(value.Integer());
  }
}

}  // namespace host
