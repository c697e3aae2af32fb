// Parses Xojo source by recursive descent.
#pragma once

#include <initializer_list>

#include "language/syntax.h"
#include "language/token_reader.h"

namespace host {

class Parser : TokenReader {
 public:
  using TokenReader::TokenReader;

  // Parses the whole source.
  Block Run();

 private:
  // The words that end a block, such as "Else" and "End If".
  using Ends = std::initializer_list<std::string_view>;

  // Counts a nesting level during its lifetime.
  class Level {
   public:
    explicit Level(Parser& parser) : depth_(parser.depth_), outer_(parser.depth_) { Deepen(parser); }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { depth_ = outer_; }
    void Deepen(const Parser& parser);

   private:
    int& depth_;
    int outer_;
  };

  // Expressions: expression_parser.cpp
  static Expression MakeChain(Expression left, std::string sign, Expression right);
  Expression TakeExpression();
  // Parses operators of this precedence or a higher one.
  Expression TakeChain(std::size_t precedence);
  Expression TakeNot();
  Expression TakeNegative();
  Expression TakePower();
  Expression TakeIsA();
  // Parses a name, call, array element or member. Every call and assignment begins with one of these.
  Expression TakeReference();
  Expression TakeFirst();
  Expression TakeNew();
  Expression TakeChoice();
  Expression TakeConvert();
  void TakeArguments(Expression& expression);
  std::vector<Expression> TakeList();
  // Parses arguments up to and including the closing parenthesis. The opening parenthesis has already been read.
  std::vector<Expression> TakeListToParenthesis();
  TypeName TakeTypeName();

  // Statements: statement_parser.cpp
  void SkipEmptyLines();
  // Appends the statements up to a line that begins with one of `ends`, reads that end, and returns it. Error messages
  // name the last of `ends`, which closes the whole block.
  std::string_view TakeBlock(Block& block, Ends ends);
  // Returns the next words if they continue or end a block, such as "Else", "End If", or "#EndIf", which is two tokens.
  // Otherwise returns an empty string.
  std::string BlockWord() const;
  // Parses a statement, but not the end of its last line.
  Statement TakeStatement(bool isOutermost);
  StatementContent TakeContent(bool isOutermost);
  StatementContent TakeCallOrAssignment();
  DeclaredName TakeDeclaredName();
  Declaration TakeDeclaration(bool isStatic);
  ConstantDeclaration TakeConstant();

  // Blocks: block_parser.cpp
  IfStatement TakeIf(bool isForCompiler);
  // Parses a test such as "1", "2 To 5", "Is >= 8" or "IsA C" as a condition on kSelectVariable.
  Expression TakeCaseTest();
  SelectStatement TakeSelect();
  ForStatement TakeFor();
  ForEachStatement TakeForEach();
  void TakeLoopBlock(Block& block, const std::string& counter);
  LoopStatement TakeWhile();
  LoopStatement TakeDo();
  JumpStatement TakeJump(bool isExit);
  TryStatement TakeTry();
  // Parses the body and the handlers of a Try statement or method. The first of `ends` begins a handler. Returns the
  // end that follows the last handler.
  std::string_view TakeHandlers(TryStatement& statement, Ends ends);

  // Methods: method_parser.cpp
  DeclaredArgument TakeParameter();
  // Parses the parameters of a method, and the type of its result.
  void TakeSignature(FunctionDeclaration& function, bool isFunction);
  std::string TakeText();
  DeclareStatement TakeDeclare();
  FunctionDeclaration TakeFunction();

  int depth_ = 0;
};

}  // namespace host
