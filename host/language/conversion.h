// What a value may be used as, and how it is shown.
#pragma once

#include <optional>
#include <string>

#include "language/catalogue.h"
#include "language/native_call.h"

namespace host {

// What an expression gives.
struct Operand {
  Value value;
  Value* variable = nullptr;  // where it lies, if it is a variable
  // A number or Array(…) that is written out has no fixed type yet; Nil fits every reference.
  bool isLiteral = false;
  DelegateTarget target = {};  // of AddressOf
};

struct Converted {
  Value value;
  int cost;  // 0: it is of that type; the more, the less it suits
};

// The operand as a value of the type; nothing if it cannot be one.
std::optional<Converted> Convert(const Operand& operand, const Type& type, const Catalogue& catalogue);

// A literal as it stands in code or in a declaration: a number, a text, True, False, Nil.
std::optional<Operand> ReadLiteral(std::string_view text);

// The value as Print shows it.
std::string Show(const Value& value);

}  // namespace host
