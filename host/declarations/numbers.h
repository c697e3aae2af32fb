// Reads, formats and converts numbers, independently of the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/value.h"

namespace host {

// Reads digits with an optional minus sign as Int64, or as UInt64 if the number fits only there. Throws ScriptError if
// it fits neither.
Value ReadInteger(std::string_view text);

// Reads a number with a fraction or an exponent. Throws ScriptError if it is malformed or too large.
Value ReadReal(std::string_view text);

// Reads a number with a fraction as Currency without converting it to Double. Rounds to four decimals, with halves
// rounded away from zero. Returns nullopt if the number has an exponent or does not fit.
std::optional<std::int64_t> ReadCurrency(std::string_view text);

std::string ShowReal(double value, int digits);
std::string ShowCurrency(std::int64_t scaled);

// Whether an integer fits in an integer type.
bool Fits(const Value& integer, TypeKind kind);

double AsReal(const Value& number);

// Converts a number to another numeric type. Integers converted to an integer type are truncated to its width; any
// other conversion to an integer type or Currency returns nullopt if the value is out of range. Fractions are truncated
// if the type is an integer type, and rounded if it is Currency.
std::optional<Value> NumberAs(const Value& number, const Type& type);

// Computes a + b, a - b, a * b or a / b. Integers wrap around, and the result is a UInt64 if either operand is one.
// Currency results are exact. Throws ScriptError if an operand is not a number, or if a Currency result does not fit.
Value Compute(char op, const Value& a, const Value& b);

}  // namespace host
