// Parses expressions by recursive descent: each function calls the one for the next higher precedence.
#pragma once

#include "language/syntax.h"
#include "language/token_reader.h"

namespace host {

class ExpressionParser : public TokenReader {
 public:
  using TokenReader::TokenReader;

 protected:
  Expression TakeExpression();
  std::vector<Expression> TakeList();
  // The arguments after an opening parenthesis, up to and including the closing one.
  std::vector<Expression> TakeListToParenthesis();
  // A name, a call, an element or a member: the start of a statement.
  Expression TakeReference();
  TypeName TakeTypeName();

  // Counts a level of nesting while it exists.
  class Level {
   public:
    explicit Level(ExpressionParser& parser) : depth_(parser.depth_), outer_(parser.depth_) { Deepen(parser); }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { depth_ = outer_; }
    void Deepen(const ExpressionParser& parser);

   private:
    int& depth_;
    int outer_;
  };

 private:
  using Reader = Expression (ExpressionParser::*)();

  Expression TakeChain(std::initializer_list<std::string_view> operators, Reader takeOperand);
  Expression TakeConjunction();
  Expression TakeComparison();
  Expression TakeSum();
  Expression TakeProduct();
  Expression TakeNot();
  Expression TakeNegative();
  Expression TakePower();
  Expression TakeIsA();
  Expression TakeFirst();
  Expression TakeNew();
  Expression TakeIf();
  Expression TakeConvert();
  void TakeArguments(Expression& expression);

  int depth_ = 0;
};

}  // namespace host
