#include "declarations/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "declarations/errors.h"

namespace host {

namespace {

// Reads what is written back in its width, so that a narrower type holds what it can.
Value Narrowed(const Value& value) {
  std::uint64_t place = 0;
  WriteNative(value, &place);
  return ReadNative(value.type, &place);
}

template <class Integer>
std::optional<std::int64_t> CutTo(double real) {
  // Both bounds are powers of two, and so exact.
  const double end = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
  const double cut = std::trunc(real);
  if (!(cut >= static_cast<double>(std::numeric_limits<Integer>::min()) && cut < end)) return std::nullopt;
  return static_cast<std::int64_t>(static_cast<Integer>(cut));
}

std::optional<std::int64_t> CutTo(Basic basic, double real) {
  switch (basic) {
    case Basic::kInt32:
      return CutTo<std::int32_t>(real);
    case Basic::kUInt32:
      return CutTo<std::uint32_t>(real);
    case Basic::kUInt64:
      return CutTo<std::uint64_t>(real);
    default:
      return CutTo<std::int64_t>(real);
  }
}

std::optional<std::int64_t> ScaledToCurrency(const Value& number) {
  if (number.type.basic == Basic::kCurrency) return number.Integer();
  if (number.type.IsReal()) return CutTo<std::int64_t>(std::round(number.Real() * static_cast<double>(kCurrencyScale)));
  std::int64_t scaled = 0;
  if (!Fits(number, Basic::kInt64) || __builtin_mul_overflow(number.Integer(), kCurrencyScale, &scaled))
    return std::nullopt;
  return scaled;
}

Value ComputeCurrency(char sign, const Value& a, const Value& b) {
  // A product has one factor that is a whole number.
  const bool isScaled = sign != '*';
  const auto operand = [&](const Value& value) { return isScaled ? ScaledToCurrency(value) : value.Integer(); };
  const auto left = operand(a);
  const auto right = operand(b);
  std::int64_t result = 0;
  const bool isBeyond = !left || !right ||
                        (sign == '+'   ? __builtin_add_overflow(*left, *right, &result)
                         : sign == '-' ? __builtin_sub_overflow(*left, *right, &result)
                                       : __builtin_mul_overflow(*left, *right, &result));
  if (isBeyond) throw ScriptError("the result does not fit into Currency");
  return {kCurrencyType, result};
}

}  // namespace

Value ReadInteger(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::string_view digits = isNegative ? text.substr(1) : text;
  std::uint64_t magnitude = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (read.ec != std::errc() || read.ptr != digits.data() + digits.size() || (isNegative && magnitude > kMost + 1))
    throw ScriptError("cannot read the number " + std::string(text));
  if (isNegative) return MakeValue(static_cast<std::int64_t>(0 - magnitude));
  Value value = MakeValue(static_cast<std::int64_t>(magnitude));
  if (magnitude > kMost) value.type.basic = Basic::kUInt64;
  return value;
}

Value ReadReal(std::string_view text) {
  double real = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), real);
  if (read.ec != std::errc() || read.ptr != text.data() + text.size())
    throw ScriptError("cannot read the number " + std::string(text));
  return MakeValue(real);
}

std::optional<std::int64_t> ReadCurrency(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::string_view number = isNegative ? text.substr(1) : text;
  const std::size_t point = std::min(number.find('.'), number.size());
  std::string digits(number.substr(0, point));
  std::string decimals(number.substr(std::min(point + 1, number.size())));
  const bool isRoundedUp = decimals.size() > 4 && decimals[4] >= '5';
  decimals.resize(4, '0');
  digits += decimals;
  std::uint64_t scaled = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), scaled);
  if (number.find('e') != std::string_view::npos || read.ec != std::errc() || read.ptr != digits.data() + digits.size())
    return std::nullopt;
  scaled += isRoundedUp ? 1 : 0;
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (scaled > kMost + (isNegative ? 1 : 0)) return std::nullopt;
  return static_cast<std::int64_t>(isNegative ? 0 - scaled : scaled);
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

bool Fits(const Value& integer, Basic basic) {
  const std::int64_t value = integer.Integer();
  // Such a one shows as a negative number.
  if (integer.type.basic == Basic::kUInt64 && value < 0) return basic == Basic::kUInt64;
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

double AsReal(const Value& number) {
  if (number.type.IsReal()) return number.Real();
  if (number.type.basic == Basic::kCurrency)
    return static_cast<double>(number.Integer()) / static_cast<double>(kCurrencyScale);
  if (number.type.basic == Basic::kUInt64) return static_cast<double>(static_cast<std::uint64_t>(number.Integer()));
  return static_cast<double>(number.Integer());
}

std::optional<Value> NumberAs(const Value& number, const Type& type) {
  if (type.IsReal()) return Narrowed({type, AsReal(number)});
  if (number.type.IsInteger() && type.IsInteger()) return Narrowed({type, number.Integer()});
  if (type.basic == Basic::kCurrency) {
    const auto scaled = ScaledToCurrency(number);
    return scaled ? std::optional(Value{type, *scaled}) : std::nullopt;
  }
  if (number.type.basic == Basic::kCurrency) {
    const Value whole = MakeValue(number.Integer() / kCurrencyScale);
    return Fits(whole, type.basic) ? std::optional(Value{type, whole.payload}) : std::nullopt;
  }
  const auto cut = CutTo(type.basic, number.Real());
  return cut ? std::optional(Value{type, *cut}) : std::nullopt;
}

Value Compute(char sign, const Value& a, const Value& b) {
  if (!a.type.IsNumber() || !b.type.IsNumber()) throw ScriptError(std::string("cannot compute with ") + sign);
  if (sign == '/') return MakeValue(AsReal(a) / AsReal(b));
  const auto compute = [sign](auto x, auto y) { return sign == '+' ? x + y : sign == '-' ? x - y : x * y; };
  if (a.type.IsReal() || b.type.IsReal()) return MakeValue(compute(AsReal(a), AsReal(b)));
  const bool isCurrency = a.type.basic == Basic::kCurrency;
  if (isCurrency && b.type.basic == Basic::kCurrency && sign == '*') return MakeValue(AsReal(a) * AsReal(b));
  if (isCurrency || b.type.basic == Basic::kCurrency) return ComputeCurrency(sign, a, b);
  Value result = MakeValue(static_cast<std::int64_t>(
      compute(static_cast<std::uint64_t>(a.Integer()), static_cast<std::uint64_t>(b.Integer()))));
  if (a.type.basic == Basic::kUInt64 || b.type.basic == Basic::kUInt64) result.type.basic = Basic::kUInt64;
  return result;
}

}  // namespace host
