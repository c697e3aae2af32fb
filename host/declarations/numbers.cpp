#include "declarations/numbers.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <locale>
#include <sstream>

#include "declarations/errors.h"

namespace host {

namespace {

// Truncates the value to the width of its type by writing it and reading it back.
Value InItsWidth(const Value& value) {
  std::uint64_t place = 0;
  WriteNative(value, &place);
  return ReadNative(value.type, &place);
}

// Reads an integer that spans the whole string.
template <class Integer>
std::optional<Integer> ReadWhole(std::string_view text) {
  Integer number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() && read.ptr == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// Holds every signed or unsigned 64-bit integer, and the product of any two signed 64-bit integers.
using Wide = __int128;

Wide WideOf(const Value& integer) {
  const std::int64_t bits = integer.Integer();
  return integer.type.kind == TypeKind::kUInt64 ? Wide{static_cast<std::uint64_t>(bits)} : Wide{bits};
}

bool IsInRange(Wide value, TypeKind kind) {
  return WideOf(InItsWidth({{kind}, static_cast<std::int64_t>(value)})) == value;
}

std::optional<std::int64_t> Narrowed(Wide value, TypeKind kind) {
  return IsInRange(value, kind) ? std::optional(static_cast<std::int64_t>(value)) : std::nullopt;
}

std::optional<std::int64_t> Cut(double real, TypeKind kind) {
  if (!(std::abs(real) < 0x1p65)) return std::nullopt;
  return Narrowed(static_cast<Wide>(real), kind);
}

std::optional<std::int64_t> ScaledToCurrency(const Value& number) {
  if (number.type.kind == TypeKind::kCurrency) return number.Integer();
  if (number.type.IsReal()) return Cut(std::round(number.Real() * double{kCurrencyScale}), TypeKind::kInt64);
  return Narrowed(WideOf(number) * kCurrencyScale, TypeKind::kInt64);
}

Value ComputeCurrency(char op, const Value& a, const Value& b) {
  // In a product, one factor is an unscaled integer.
  const auto operand = [&](const Value& value) { return op != '*' ? ScaledToCurrency(value) : value.Integer(); };
  const std::optional<Wide> left = operand(a);
  const std::optional<Wide> right = operand(b);
  std::optional<std::int64_t> result;
  if (left && right)
    result = Narrowed(op == '+' ? *left + *right : op == '-' ? *left - *right : *left * *right, TypeKind::kInt64);
  if (!result) throw ScriptError("the result does not fit in Currency");
  return {kCurrencyType, *result};
}

}  // namespace

Value ReadInteger(std::string_view text) {
  if (const auto number = ReadWhole<std::int64_t>(text)) return MakeValue(*number);
  const auto number = ReadWhole<std::uint64_t>(text);
  if (!number) throw ScriptError("cannot read the number " + std::string(text));
  return {{TypeKind::kUInt64}, static_cast<std::int64_t>(*number)};
}

Value ReadReal(std::string_view text) {
  // libc++ has no std::from_chars for floating-point numbers.
  std::istringstream stream{std::string(text)};
  stream.imbue(std::locale::classic());
  double real = 0;
  if (!(stream >> real) || stream.peek() != EOF) throw ScriptError("cannot read the number " + std::string(text));
  return MakeValue(real);
}

std::optional<std::int64_t> ReadCurrency(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::string_view number = isNegative ? text.substr(1) : text;
  const std::size_t point = std::min(number.find('.'), number.size());
  std::string decimals(number.substr(std::min(point + 1, number.size())));
  const bool isRoundedUp = decimals.size() > 4 && decimals[4] >= '5';
  decimals.resize(4, '0');
  const auto scaled = ReadWhole<std::uint64_t>(std::string(number.substr(0, point)) + decimals);
  if (number.find('e') != std::string_view::npos || !scaled) return std::nullopt;
  const Wide rounded = Wide{*scaled} + (isRoundedUp ? 1 : 0);
  return Narrowed(isNegative ? -rounded : rounded, TypeKind::kInt64);
}

std::string ShowReal(double value, int digits) {
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits);
  return {text, end.ptr};
}

std::string ShowCurrency(std::int64_t scaled) {
  const auto bits = static_cast<std::uint64_t>(scaled);
  std::string digits = std::to_string(scaled < 0 ? 0 - bits : bits);
  if (digits.size() < 5) digits.insert(0, 5 - digits.size(), '0');
  digits.insert(digits.size() - 4, ".");
  return (scaled < 0 ? "-" : "") + digits;
}

bool Fits(const Value& integer, TypeKind kind) { return IsInRange(WideOf(integer), kind); }

double AsReal(const Value& number) {
  if (number.type.IsReal()) return number.Real();
  const auto real = static_cast<double>(WideOf(number));
  return number.type.kind == TypeKind::kCurrency ? real / double{kCurrencyScale} : real;
}

std::optional<Value> NumberAs(const Value& number, const Type& type) {
  if (type.IsReal()) return InItsWidth({type, AsReal(number)});
  if (number.type.IsInteger() && type.IsInteger()) return InItsWidth({type, number.Integer()});
  if (type.kind == TypeKind::kCurrency) {
    const auto scaled = ScaledToCurrency(number);
    return scaled ? std::optional(Value{type, *scaled}) : std::nullopt;
  }
  const auto cut =
      number.type.IsReal() ? Cut(number.Real(), type.kind) : Narrowed(number.Integer() / kCurrencyScale, type.kind);
  return cut ? std::optional(Value{type, *cut}) : std::nullopt;
}

Value Compute(char op, const Value& a, const Value& b) {
  if (!a.type.IsNumber() || !b.type.IsNumber()) throw ScriptError(std::string("cannot compute with ") + op);
  if (op == '/') return MakeValue(AsReal(a) / AsReal(b));
  const auto compute = [op](auto x, auto y) { return op == '+' ? x + y : op == '-' ? x - y : x * y; };
  if (a.type.IsReal() || b.type.IsReal()) return MakeValue(compute(AsReal(a), AsReal(b)));
  const bool isCurrency = a.type.kind == TypeKind::kCurrency;
  if (isCurrency && b.type.kind == TypeKind::kCurrency && op == '*') return MakeValue(AsReal(a) * AsReal(b));
  if (isCurrency || b.type.kind == TypeKind::kCurrency) return ComputeCurrency(op, a, b);
  Value result = MakeValue(static_cast<std::int64_t>(
      compute(static_cast<std::uint64_t>(a.Integer()), static_cast<std::uint64_t>(b.Integer()))));
  if (a.type.kind == TypeKind::kUInt64 || b.type.kind == TypeKind::kUInt64) result.type.kind = TypeKind::kUInt64;
  return result;
}

}  // namespace host
