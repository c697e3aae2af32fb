// Numbers as they are written, shown and turned into one another; nothing depends on the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/value.h"

namespace host {

// Digits with a minus sign perhaps: an Int64, or a UInt64 where only that has room. Throws ScriptError beyond.
Value ReadInteger(std::string_view text);

// A number with a fraction or an exponent. Throws ScriptError for what is none or too large.
Value ReadReal(std::string_view text);

// A number with a fraction as Currency, exactly, rounded half away from zero behind the fourth decimal; nothing if it
// has an exponent or does not fit.
std::optional<std::int64_t> ReadCurrency(std::string_view text);

std::string ShowReal(double value, int digits);
std::string ShowCurrency(std::int64_t scaled);

// Whether an integer is within the range of an integer type.
bool Fits(const Value& integer, Basic basic);

double AsReal(const Value& number);

// A number as another numeric type. Integers are cut to the width of the type; everything else has to be in its range,
// or there is nothing. Fractions are cut for integers, and rounded for Currency.
std::optional<Value> NumberAs(const Value& number, const Type& type);

// a sign b, for "+", "-", "*" and "/". Integers wrap, and stay unsigned if one is a UInt64; Currency is exact.
// Throws ScriptError for what are no numbers, and where Currency has no room.
Value Compute(char sign, const Value& a, const Value& b);

}  // namespace host
