// Binary operators: their operand types and their results.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "declarations/conversion.h"
#include "declarations/numbers.h"

namespace host {

struct Operation {
  Type result;
  std::function<Value(const Value&, const Value&)> run;
};

// Nothing if the operator does not accept these operands.
std::optional<Operation> FindOperation(std::string_view sign, const Operand& a, const Operand& b);

// The operands that an operator accepts, for messages: "two numbers or two Strings".
std::string OperandsOf(std::string_view sign);

// The type of If(condition, a, b); nothing if a and b have no common type.
std::optional<Type> CommonType(const Operand& a, const Operand& b);

}  // namespace host
