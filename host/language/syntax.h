// The syntax tree of Xojo source. The compiler looks up the names and types in the tree.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "language/lexer.h"

namespace host {

struct TypeName {
  std::string name;  // may contain dots, as in "Picture.Formats"
  bool isArray = false;
  Position at = {};
};

enum class ExpressionKind {
  kLiteral,    // its kind is in `token`
  kName,       // a variable, method, module or class; with arguments, a call, a cast or an array element
  kMember,     // the same, as a member of `operands[0]`
  kNew,        // `text` is the class
  kAddressOf,  // `text` is the method
  kIsA,        // tests `operands[0]`; `text` is the class
  kNegative,   // minus `operands[0]`
  kNot,        // Not `operands[0]`
  kChain,      // operands with operators of the same precedence, left-associative
  kIf,         // If(condition, a, b)
  kConvert,    // CType(operands[0], text)
  kParentheses,
};

struct Expression {
  ExpressionKind kind = ExpressionKind::kName;
  Position at = {};
  std::string text = {};
  TokenKind token = TokenKind::kEnd;
  std::vector<Expression> operands = {};
  std::vector<std::string> operators = {};  // of a chain; one fewer than the operands
  bool hasArguments = false;                // whether parentheses follow, even empty ones
  std::vector<Expression> arguments = {};
};

struct Statement;
using Block = std::vector<Statement>;

struct DeclaredName {
  std::string name;
  Position at;
  bool isArray = false;
  std::optional<Expression> upperBound = {};
};

// Var a, b() As Integer = 1
struct Declaration {
  std::vector<DeclaredName> names;
  TypeName type = {};
  bool isNew = false;  // "As New T"; `initial` creates the object
  bool isStatic = false;
  std::optional<Expression> initial = {};
};

struct ConstantDeclaration {
  std::string name;
  std::optional<TypeName> type = {};
  Expression value;
};

struct Assignment {
  Expression target;
  Expression value;
};

struct CallStatement {
  Expression call;
  bool dropsResult;  // with the Call keyword
};

struct Branch {
  Expression condition;
  Block block;
};

struct IfStatement {
  std::vector<Branch> branches;
  Block otherwise;
  bool isForCompiler = false;  // true for #If
};

// The hidden variable that holds the value of the innermost Select Case. No source can refer to it.
inline constexpr const char* kSelectVariable = "Select Case";

struct SelectStatement {
  Expression subject;
  IfStatement cases;  // their conditions test kSelectVariable
};

struct ForStatement {
  Expression counter;
  std::optional<TypeName> type;  // set if the statement declares the counter
  Expression from, to;
  std::optional<Expression> step;
  bool isDown = false;
  Block block;
};

struct ForEachStatement {
  Expression element;
  std::optional<TypeName> type;
  Expression list;
  Block block;
};

// While and Do. Without a condition, the loop runs until a statement exits it.
struct LoopStatement {
  std::string word;                  // "While" or "Do"; Exit refers to the loop by this word
  std::optional<Expression> before;  // tested before each iteration: True continues a While loop, but ends a Do loop
  Block block;
  std::optional<Expression> after;  // tested after each iteration: True ends the loop
};

// Exit and Continue
struct JumpStatement {
  bool isExit;
  std::string word;      // the kind of loop; empty for the innermost loop
  std::string variable;  // the counter of a For loop
};

struct CatchBlock {
  std::string name;
  TypeName type;
  Block block;
};

struct TryStatement {
  Block body;
  std::vector<CatchBlock> catches;
  Block finally;
};

struct RaiseStatement {
  Expression exception;
};

struct ReturnStatement {
  std::optional<Expression> value;
};

struct DeclaredArgument {
  std::string name;
  TypeName type;
  Position at;
  bool isByRef = false;
  bool isExtends = false;
  bool isOptional = false;
  bool isParamArray = false;
  std::optional<Expression> defaultValue = {};
};

struct FunctionDeclaration {
  std::string name;
  std::vector<DeclaredArgument> parameters;
  std::optional<TypeName> result;
  Block body;
};

// Declare Function getpid Lib "libc.so.6" As Int32
struct DeclareStatement {
  FunctionDeclaration function;
  std::string library;
  std::string symbol;
};

using StatementContent =
    std::variant<Declaration, ConstantDeclaration, Assignment, CallStatement, IfStatement, SelectStatement,
                 ForStatement, ForEachStatement, LoopStatement, JumpStatement, TryStatement, RaiseStatement,
                 ReturnStatement, FunctionDeclaration, DeclareStatement>;

struct Statement {
  Position at;
  int lastLine;
  StatementContent content;
};

// Parses a complete source. Throws ScriptError for invalid, unsupported or too deeply nested code, and IncompleteError
// if the source ends too early.
Block Parse(std::string_view source);

}  // namespace host
