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
  // Statements up to a line that begins with one of the words. That line is not consumed.
  Block TakeBlock(std::initializer_list<std::string_view> ends);
  // What continues or ends a block: "Else", "Wend", "End If" or "#EndIf" of two tokens. Empty for anything else.
  std::string BlockWord() const;
  Statement TakeStatement(bool isOutermost);
  // A statement. The end of its last line is not consumed.
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
  // The parameters of a method, and the type of its result.
  void TakeSignature(FunctionDeclaration& function, bool isFunction);
  std::string TakeText();
  DeclareStatement TakeDeclare();
  FunctionDeclaration TakeFunction();
  // "Exception e As T" at the end catches exceptions of the whole method.
  Block TakeFunctionBody(std::string_view end);
};

}  // namespace host
