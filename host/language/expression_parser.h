// Reads expressions. The operators' precedence follows the order of the functions: each reads what binds tighter.
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
  // The list behind an opening parenthesis, with the closing one.
  std::vector<Expression> TakeListToParenthesis();
  // A name, a call, an element or a member: what a statement may begin with.
  Expression TakeReference();
  TypeName TakeTypeName();

  // A level of the tree, for as long as its part of the source is read.
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
