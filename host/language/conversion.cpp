#include "language/conversion.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "core/arrays.h"
#include "core/strings.h"
#include "language/errors.h"
#include "language/lexer.h"

namespace host {

namespace {

constexpr double kCurrencyScale = 10000;

// Costs of what the language does by itself.
enum : int {
  kSame = 0,
  kDerived = 1,
  kWider = 1,
  kOtherWidth = 2,
  kToReal = 3,
  kBoxed = 4,
  kUnboxed = 5,
  kNarrower = 6
};

bool Fits(std::int64_t value, Basic basic) {
  switch (basic) {
    case Basic::kInt32:
      return value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
    case Basic::kUInt32:
      return value >= 0 && value <= std::numeric_limits<std::uint32_t>::max();
    case Basic::kUInt64:
      return value >= 0;
    default:
      return true;
  }
}

double AsReal(const Value& value) {
  if (value.type.IsReal()) return value.Real();
  if (value.type.basic == Basic::kCurrency) return static_cast<double>(value.Integer()) / kCurrencyScale;
  if (value.type.basic == Basic::kUInt64) return static_cast<double>(static_cast<std::uint64_t>(value.Integer()));
  return static_cast<double>(value.Integer());
}

// Reads what is written back in its width, so that a narrower type holds what it can.
Value Narrowed(const Value& value) {
  std::uint64_t place = 0;
  WriteNative(value, &place);
  return ReadNative(value.type, &place);
}

std::optional<Converted> ConvertNumber(const Operand& operand, const Type& type) {
  const Value& value = operand.value;
  if (type.IsReal()) {
    const int cost = !value.type.IsReal() ? kToReal : type.basic == Basic::kDouble ? kWider : kOtherWidth;
    return Converted{Narrowed({type, AsReal(value)}), cost};
  }
  if (type.basic == Basic::kCurrency)
    return Converted{{type, static_cast<std::int64_t>(std::llround(AsReal(value) * kCurrencyScale))}, kToReal};
  if (value.type.IsInteger()) {
    if (operand.isLiteral && !Fits(value.Integer(), type.basic)) return std::nullopt;
    return Converted{Narrowed({type, value.Integer()}), kOtherWidth};
  }
  return Converted{Narrowed({type, static_cast<std::int64_t>(AsReal(value))}), kNarrower};
}

Value Box(const Value& value) {
  ObjectRef box(MakeObject(FindClass("Variant")));
  *FindProperty(box.Get(), "Value") = value;
  return {{Basic::kVariant, false, {}}, Owned<Counted>(box)};
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

std::optional<Converted> ConvertArray(const Operand& operand, const Type& type, const Catalogue& catalogue) {
  const Value& value = operand.value;
  if (!value.type.isArray) return std::nullopt;
  if (value.type.basic == type.basic && value.type.name == type.name) return Converted{value, kSame};
  if (!operand.isLiteral) return std::nullopt;
  const auto* const source = static_cast<const Array*>(value.Reference());
  const Type element{type.basic, false, type.name};
  Owned<Array> result(MakeArray(element, UpperBound(source)));
  for (std::int64_t i = 0; i <= UpperBound(source); ++i) {
    const auto converted = Convert({GetElement(source, i), nullptr, true, {}}, element, catalogue);
    if (!converted) return std::nullopt;
    SetElement(result.Get(), i, converted->value);
  }
  return Converted{{type, Owned<Counted>(result)}, kOtherWidth};
}

std::string ShowReal(double value, int digits) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*g", digits, value);
  return text;
}

std::string ShowCurrency(std::int64_t scaled) {
  char text[64];
  std::snprintf(text, sizeof text, "%.4f", static_cast<double>(scaled) / kCurrencyScale);
  return text;
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
  return object->type->name;
}

}  // namespace

std::optional<Converted> Convert(const Operand& operand, const Type& type, const Catalogue& catalogue) {
  const Value& value = operand.value;
  if (operand.target) {
    if (type.basic != Basic::kDelegate || type.isArray) return std::nullopt;
    const ObjectRef delegate = MakeDelegate(catalogue.FindDelegate(type.name)->signature, operand.target);
    return Converted{{type, Owned<Counted>(delegate)}, kSame};
  }
  if (value.type.basic == Basic::kNothing)  // Nil
    return operand.isLiteral && type.IsReference() && (type.isArray || type.basic != Basic::kString)
               ? std::optional(Converted{DefaultValue(type), kDerived})
               : std::nullopt;
  if (type.isArray) return ConvertArray(operand, type, catalogue);
  if (value.type.isArray) return std::nullopt;
  if (value.type.basic == type.basic && value.type.name == type.name) return Converted{value, kSame};
  if (type.basic == Basic::kVariant)
    return Converted{
        value.type.IsReference() && value.type.basic != Basic::kString ? Value{type, value.payload} : Box(value),
        kBoxed};
  if (value.type.basic == Basic::kVariant) return ConvertFromVariant(value, type, catalogue);
  if (type.IsNumber() && value.type.IsNumber()) return ConvertNumber(operand, type);
  if (type.basic == Basic::kPtr && value.type.IsInteger()) return Converted{{type, value.payload}, kNarrower};
  if (type.basic == Basic::kObject && value.type.basic == Basic::kObject) {
    const ObjectClass* const held = ClassOf(value);
    if (held == nullptr || held->IsA(type.name)) return Converted{{type, value.payload}, kDerived};
  }
  return std::nullopt;
}

std::optional<Operand> ReadLiteral(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::vector<Token> tokens = SplitIntoTokens(isNegative ? text.substr(1) : text);
  if (tokens.size() != 2) return std::nullopt;
  const Token& token = tokens.front();
  const std::string number = (isNegative ? "-" : "") + token.text;
  switch (token.kind) {
    case TokenKind::kInteger:
      return Operand{MakeValue(std::int64_t{std::stoll(number)}), nullptr, true, {}};
    case TokenKind::kReal:
      return Operand{MakeValue(std::stod(number)), nullptr, true, {}};
    case TokenKind::kText:
      return Operand{MakeValue(std::string_view(token.text))};
    case TokenKind::kColor:
      return Operand{{{Basic::kColor, false, {}}, std::int64_t{std::stoll(token.text)}}};
    case TokenKind::kWord:
      if (zkt::IsSameName(token.text, "True")) return Operand{{{Basic::kBoolean, false, {}}, std::int64_t{1}}};
      if (zkt::IsSameName(token.text, "False")) return Operand{{{Basic::kBoolean, false, {}}, std::int64_t{0}}};
      if (zkt::IsSameName(token.text, "Nil")) return Operand{{}, nullptr, true, {}};
      return std::nullopt;
    default:
      return std::nullopt;
  }
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
