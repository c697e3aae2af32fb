#include "declarations/conversion.h"

#include <algorithm>
#include <cstdio>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/dates.h"
#include "core/strings.h"
#include "declarations/errors.h"
#include "declarations/numbers.h"

namespace host {

namespace {

constexpr Type kObject{Basic::kObject, false, "Object"};
constexpr Type kVariant{Basic::kVariant, false, {}};

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

Value Box(const Value& value) {
  ObjectRef box(MakeObject(FindClass("Variant")));
  *FindProperty(box.Get(), "Value") = value;
  return {{Basic::kVariant, false, {}}, Owned<Counted>(box)};
}

Value InVariant(const Value& value) {
  const bool isObject = value.type.IsReference() && value.type.basic != Basic::kString;
  return isObject ? Value{kVariant, value.payload} : Box(value);
}

const ObjectClass* ClassOf(const Value& value) {
  return value.Reference() != nullptr ? static_cast<REALobjectStruct*>(value.Reference())->type : nullptr;
}

std::optional<Converted> ConvertFromVariant(const Value& value, const Type& type, const Catalogue& catalogue) {
  const ObjectClass* const held = ClassOf(value);
  if (held == nullptr) return Converted{DefaultValue(type), kUnboxed};
  if (const Value* const boxed = FindProperty(static_cast<REALobjectStruct*>(value.Reference()), "Value");
      boxed != nullptr && held->IsA("Variant")) {
    auto converted = Convert({*boxed}, type, catalogue);
    if (converted) converted->cost += kUnboxed;
    return converted;
  }
  if (type.basic != Basic::kObject || !held->IsA(type.name)) return std::nullopt;
  return Converted{{type, value.payload}, kUnboxed};
}

// The array with every element as the type wants it.
std::optional<Converted> ConvertElements(const std::vector<Operand>& elements, const Type& type,
                                         const Catalogue& catalogue) {
  const Type elementType{type.basic, false, type.name};
  Owned<Array> array(MakeArray(elementType, static_cast<std::int64_t>(elements.size()) - 1));
  int cost = kSame;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const auto converted = Convert(elements[i], elementType, catalogue);
    if (!converted) return std::nullopt;
    cost = std::max(cost, converted->cost);
    SetElement(array.Get(), static_cast<std::int64_t>(i), converted->value);
  }
  return Converted{{type, Owned<Counted>(array)}, cost};
}

std::optional<Converted> ConvertArray(const Operand& operand, const Type& type, const Catalogue& catalogue) {
  const Value& value = operand.value;
  if (!value.type.isArray) return std::nullopt;
  if (!operand.elements.empty()) return ConvertElements(operand.elements, type, catalogue);
  const bool isSame = value.type.basic == type.basic && zkt::IsSameName(value.type.name, type.name);
  return isSame ? std::optional(Converted{value, kSame}) : std::nullopt;
}

// An object by the class that is declared for it; what may be of any class, by its own.
std::optional<Converted> ConvertObject(const Value& value, const Type& type) {
  const Type& from = value.type;
  const ObjectClass* const held = ClassOf(value);
  if (zkt::IsSameName(from.name, "Object"))
    return held == nullptr || held->IsA(type.name) ? std::optional(Converted{{type, value.payload}, kUnboxed})
                                                   : std::nullopt;
  int steps = 1;
  for (const ObjectClass* super = FindClass(from.name); super != nullptr; super = super->super, ++steps)
    if (super->super != nullptr && zkt::IsSameName(super->super->name, type.name))
      return Converted{{type, value.payload}, kDerived * steps};
  if (zkt::IsSameName(type.name, "Object")) return Converted{{type, value.payload}, kWider};
  return std::nullopt;
}

std::optional<Converted> ConvertFunction(const ReadyFunction& function, const Type& type, const Catalogue& catalogue) {
  if (type.basic != Basic::kDelegate || type.isArray) return std::nullopt;
  const Signature& signature = catalogue.FindDelegate(type.name)->signature;
  if (!function.suits(signature)) return std::nullopt;
  const auto target = [&function, result = signature.result](std::span<const Value> values) {
    const Value value = function.target(values);
    return result.IsInteger() ? *NumberAs(value, result) : value;
  };
  return Converted{{type, Owned<Counted>(MakeDelegate(signature, target))}, kSame};
}

// The type of an array that holds elements of both types.
Type CommonType(const Type& a, const Type& b) {
  if (a.basic == Basic::kNothing || (a.basic == b.basic && a.name == b.name)) return b;
  if (b.basic == Basic::kNothing) return a;
  if (a.IsInteger() && b.IsInteger()) return {Basic::kInt64, false, {}};
  if (a.IsNumber() && b.IsNumber()) return {Basic::kDouble, false, {}};
  if (a.basic == Basic::kObject && b.basic == Basic::kObject) return kObject;
  return kVariant;
}

std::string ShowInHex(const char* format, std::int64_t value) {
  char text[32];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  std::snprintf(text, sizeof text, format, static_cast<unsigned long long>(value));
#pragma GCC diagnostic pop
  return text;
}

std::string ShowArray(const Array* array) {
  std::string text;
  for (std::int64_t i = 0; i <= UpperBound(array); ++i) text += (i > 0 ? ", " : "") + Show(GetElement(array, i));
  return text;
}

std::string ShowReference(const Value& value) {
  Counted* const reference = value.Reference();
  if (value.type.basic == Basic::kString && !value.type.isArray)
    return ToUTF8(static_cast<const REALstringStruct*>(reference));
  if (reference == nullptr) return "Nil";
  if (value.type.isArray) return ShowArray(static_cast<const Array*>(reference));
  auto* const object = static_cast<REALobjectStruct*>(reference);
  if (object->type->IsA("Variant") && object->type->name == "Variant") return Show(*FindProperty(object, "Value"));
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
  if (value.type.basic == type.basic && zkt::IsSameName(value.type.name, type.name)) return Converted{value, kSame};
  if (type.basic == Basic::kVariant) return Converted{InVariant(value), kBoxed};
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
  if (type.basic == Basic::kNothing) type = kObject;
  // Numbers that are no real ones and texts beside Nil.
  for (const Operand& element : elements)
    if (element.value.type.basic == Basic::kNothing && (!type.IsReference() || type.basic == Basic::kString))
      type = kVariant;
  Owned<Array> array(MakeArray(type, static_cast<std::int64_t>(elements.size()) - 1));
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const Value& value = elements[i].value;
    const bool isSame = value.type.basic == type.basic;
    SetElement(array.Get(), static_cast<std::int64_t>(i),
               value.type.basic == Basic::kNothing ? DefaultValue(type)
               : isSame                            ? value
               : type.IsNumber()                   ? *NumberAs(value, type)
                                                   : InVariant(value));
  }
  Operand literal{{{type.basic, true, type.name}, Owned<Counted>(array)}, nullptr, true};
  literal.elements = std::move(elements);
  return literal;
}

std::optional<Operand> ReadWord(std::string_view word) {
  if (zkt::IsSameName(word, "True")) return Operand{{{Basic::kBoolean, false, {}}, std::int64_t{1}}};
  if (zkt::IsSameName(word, "False")) return Operand{{{Basic::kBoolean, false, {}}, std::int64_t{0}}};
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
      return ShowInHex("&c%06llX", value.Integer());
    case Basic::kCurrency:
      return ShowCurrency(value.Integer());
    case Basic::kDouble:
      return ShowReal(value.Real(), 15);
    case Basic::kSingle:
      return ShowReal(value.Real(), 7);
    case Basic::kPtr:
      return ShowInHex("&h%llX", value.Integer());
    case Basic::kUInt64:
      return std::to_string(static_cast<std::uint64_t>(value.Integer()));
    default:
      return std::to_string(value.Integer());
  }
}

}  // namespace host
