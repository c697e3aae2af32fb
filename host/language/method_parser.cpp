// Parses methods and Declare statements.
#include <utility>

#include "language/parser.h"

namespace host {

DeclaredArgument Parser::TakeParameter() {
  DeclaredArgument parameter;
  if (Is("Assigns")) FailUnsupported("Assigns in a script");
  parameter.isExtends = Accept("Extends");
  parameter.isOptional = Accept("Optional");
  parameter.isParamArray = Accept("ParamArray");
  parameter.isByRef = !parameter.isParamArray && Accept("ByRef");
  if (!parameter.isByRef) Accept("ByVal");
  parameter.at = Current().at;
  parameter.name = RequireName();
  if (parameter.isParamArray && !Is("(")) FailExpecting("'()'");
  const bool isArray = Accept("(");
  if (isArray) Require(")");
  Require("As");
  parameter.type = TakeTypeName();
  parameter.type.isArray = isArray;
  const bool hasDefault = Is("=") || parameter.isOptional;
  if (hasDefault && parameter.isByRef) throw ScriptError("a ByRef parameter cannot have a default value", Current().at);
  if (Accept("=")) parameter.defaultValue = TakeExpression();
  return parameter;
}

void Parser::TakeSignature(FunctionDeclaration& function, bool isFunction) {
  if (Accept("(") && !Accept(")")) {
    do {
      function.parameters.push_back(TakeParameter());
    } while (Accept(","));
    Require(")");
  }
  if (isFunction) {
    Require("As");
    function.result = TakeTypeName();
    if (Accept("(")) {
      Require(")");
      function.result->isArray = true;
    }
  }
}

std::string Parser::TakeText() {
  if (!Is(TokenKind::kText)) FailExpecting("a string");
  return Take().text;
}

DeclareStatement Parser::TakeDeclare() {
  const bool isFunction = Is("Function");
  if (!isFunction && !Is("Sub")) FailExpecting("'Function' or 'Sub'");
  Take();
  DeclareStatement statement{{RequireName(), {}, {}, {}}, "", ""};
  Require("Lib");
  statement.library = TakeText();
  statement.symbol = Accept("Alias") ? TakeText() : statement.function.name;
  TakeSignature(statement.function, isFunction);
  return statement;
}

FunctionDeclaration Parser::TakeFunction() {
  const bool isFunction = Take().Is("Function");
  FunctionDeclaration function{RequireName(), {}, {}, {}};
  TakeSignature(function, isFunction);
  RequireLineEnd();
  const Position at = Current().at;
  // "Exception e As T" at the end of the body catches exceptions from the whole method.
  TryStatement handled;
  TakeHandlers(handled, {"Exception", isFunction ? "End Function" : "End Sub"});
  if (handled.catches.empty())
    function.body = std::move(handled.body);
  else
    function.body.push_back({at, at.line, std::move(handled)});
  return function;
}

}  // namespace host
