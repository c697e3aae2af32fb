// A line of Xojo code as a tree. It is complete before any of it runs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "declarations/conversion.h"

namespace host {

enum class ExpressionKind {
  kLiteral,
  kName,     // a variable, a method, a module or a class; with arguments a call, or an element of an array
  kMember,   // the same of what stands before the point
  kElement,  // of what the base gives
  kNew,
  kAddressOf,
  kChain,  // operands of one rank with the signs between them
};

struct Expression {
  ExpressionKind kind;
  std::string text = {};  // the name
  Operand literal = {};
  std::unique_ptr<Expression> base = {};   // what a member or an element belongs to
  std::vector<Expression> arguments = {};  // also the operands of a chain
  bool hasArguments = false;               // there are parentheses, with nothing in them perhaps
  std::string signs = {};                  // of a chain, one fewer than operands
};

struct DeclaredName {
  std::string name;
  bool isArray = false;
  std::unique_ptr<Expression> upperBound = {};  // of an array that has elements at once
};

// Names that share a type: a, b() As Integer = 1
struct DeclaredGroup {
  std::vector<DeclaredName> names;
  std::string typeName = {};
  bool isNew = false;
  std::vector<Expression> arguments = {};    // of the constructor
  std::unique_ptr<Expression> initial = {};  // null: none
};

enum class StatementKind { kNothing, kDeclare, kPrint, kCall, kAssign };

struct Statement {
  StatementKind kind = StatementKind::kNothing;
  std::vector<DeclaredGroup> groups = {};
  std::vector<Expression> expressions = {};  // what is printed; what is called; what is assigned to, and the value
};

// Reads a line. Throws ScriptError for what is no Xojo, and for what is nested too deeply.
Statement Parse(std::string_view line);

}  // namespace host
