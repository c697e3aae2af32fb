// The operand types and results of binary operators.
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

// Returns nullopt if the operator does not accept these operands.
std::optional<Operation> FindOperation(std::string_view sign, const Operand& a, const Operand& b);

// Returns a description of the operands that an operator accepts, such as "two numbers or two Strings".
std::string OperandsOf(std::string_view sign);

// Returns the type of If(condition, a, b); nullopt if a and b have no common type.
std::optional<Type> CommonType(const Operand& a, const Operand& b);

}  // namespace host
