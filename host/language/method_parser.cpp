// Parses methods and Declare statements.
#include <utility>

#include "frame/catalogue/declaration_syntax.h"
#include "language/statement_parser.h"

namespace host {

DeclaredArgument StatementParser::TakeParameter() {
  DeclaredArgument parameter;
  if (IsWord("Assigns")) FailUnsupported("Assigns in a script");
  parameter.isExtends = TakeWord("Extends");
  parameter.isOptional = TakeWord("Optional");
  parameter.isParamArray = TakeWord("ParamArray");
  parameter.isByRef = !parameter.isParamArray && TakeWord("ByRef");
  if (!parameter.isByRef) TakeWord("ByVal");
  parameter.at = Current().at;
  parameter.name = RequireName();
  if (parameter.isParamArray && !IsSign("(")) FailExpecting("'()'");
  const bool isArray = TakeSymbol("(");
  if (isArray) RequireSign(")");
  RequireWord("As");
  parameter.type = TakeTypeName();
  parameter.type.isArray = isArray;
  const bool hasDefault = IsSign("=") || parameter.isOptional;
  if (hasDefault && parameter.isByRef) throw ScriptError("a ByRef parameter cannot have a default value", Current().at);
  if (TakeSymbol("=")) parameter.defaultValue = TakeExpression();
  return parameter;
}

void StatementParser::TakeSignature(FunctionDeclaration& function, bool isFunction) {
  if (TakeSymbol("(") && !TakeSymbol(")")) {
    do {
      function.parameters.push_back(TakeParameter());
    } while (TakeSymbol(","));
    RequireSign(")");
  }
  if (isFunction) {
    RequireWord("As");
    function.result = TakeTypeName();
    if (TakeSymbol("(")) {
      RequireSign(")");
      function.result->isArray = true;
    }
  }
}

std::string StatementParser::TakeText() {
  if (!Is(TokenKind::kText)) FailExpecting("a string");
  return Take().text;
}

DeclareStatement StatementParser::TakeDeclare() {
  const bool isFunction = IsWord("Function");
  if (!isFunction && !IsWord("Sub")) FailExpecting("'Function' or 'Sub'");
  Take();
  DeclareStatement statement{{RequireName(), {}, {}, {}}, "", ""};
  RequireWord("Lib");
  statement.library = TakeText();
  statement.symbol = TakeWord("Alias") ? TakeText() : statement.function.name;
  TakeSignature(statement.function, isFunction);
  return statement;
}

FunctionDeclaration StatementParser::TakeFunction() {
  const bool isFunction = zkt::IsSameName(Take().text, "Function");
  FunctionDeclaration function{RequireName(), {}, {}, {}};
  TakeSignature(function, isFunction);
  RequireLineEnd();
  function.body = TakeFunctionBody(isFunction ? "End Function" : "End Sub");
  Take();
  Take();
  return function;
}

Block StatementParser::TakeFunctionBody(std::string_view end) {
  const Position at = Current().at;
  Block body = TakeBlock({"Exception", end});
  if (!IsWord("Exception")) return body;
  TryStatement handled{std::move(body), {}, {}};
  while (TakeWord("Exception")) {
    handled.catches.push_back(TakeCatch());
    handled.catches.back().block = TakeBlock({"Exception", end});
  }
  Block whole;
  whole.push_back({at, at.line, std::move(handled)});
  return whole;
}

}  // namespace host
