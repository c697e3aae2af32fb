// The operators of two values: which types they take, and what they compute.
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

// Nothing if the operator does not take the two together.
std::optional<Operation> FindOperation(std::string_view sign, const Operand& a, const Operand& b);

// What the operator takes: "two numbers or two Strings".
std::string OperandsOf(std::string_view sign);

// The type of a value that is one of two; nothing if they have none in common.
std::optional<Type> CommonType(const Operand& a, const Operand& b);

}  // namespace host
