// Parses statements and blocks.
#pragma once

#include "language/expression_parser.h"

namespace host {

class StatementParser : public ExpressionParser {
 public:
  using ExpressionParser::ExpressionParser;

  // Parses the whole source.
  Block Run();

 private:
  // Lines.
  void SkipEmptyLines();
  // Parses statements up to, but not including, a line that begins with one of `ends`.
  Block TakeBlock(std::initializer_list<std::string_view> ends);
  // Returns the next words if they continue or end a block, such as "Else", "End If", or "#EndIf", which is two tokens.
  // Otherwise returns an empty string.
  std::string BlockWord() const;
  Statement TakeStatement(bool isOutermost);
  // Parses a statement, but not the end of its last line.
  Statement TakeLine(bool isOutermost);
  Statement TakeCallOrAssignment(Position at);
  DeclaredName TakeDeclaredName();
  Declaration TakeDeclaration(bool isStatic);
  ConstantDeclaration TakeConstant();

  // Blocks: block_parser.cpp
  IfStatement TakeIf();
  // #If condition Then … #ElseIf … #Else … #EndIf
  IfStatement TakeConditional();
  CaseTest TakeCaseTest();
  SelectStatement TakeSelect();
  Statement TakeFor(Position at);
  Block TakeLoopBlock(const Expression& counter);
  LoopStatement TakeWhile();
  LoopStatement TakeDo();
  JumpStatement TakeJump(bool isExit);
  CatchBlock TakeCatch();
  TryStatement TakeTry();

  // Methods: method_parser.cpp
  DeclaredArgument TakeParameter();
  // Parses the parameters of a method, and the type of its result.
  void TakeSignature(FunctionDeclaration& function, bool isFunction);
  std::string TakeText();
  DeclareStatement TakeDeclare();
  FunctionDeclaration TakeFunction();
  // Parses the body of a method. "Exception e As T" at its end catches exceptions from the whole method.
  Block TakeFunctionBody(std::string_view end);
};

}  // namespace host
