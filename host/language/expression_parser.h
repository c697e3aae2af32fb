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
  // Parses arguments up to and including the closing parenthesis. The opening parenthesis has already been read.
  std::vector<Expression> TakeListToParenthesis();
  // Parses a name, call, array element or member. Every call and assignment begins with one of these.
  Expression TakeReference();
  TypeName TakeTypeName();

  // Counts a nesting level during its lifetime.
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
