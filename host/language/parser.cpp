#include <utility>

#include "declarations/errors.h"
#include "declarations/numbers.h"
#include "language/lexer.h"
#include "language/syntax.h"

namespace host {

namespace {

// The tree is read, run and destroyed recursively.
constexpr int kDeepestNesting = 200;

Operand LiteralOf(const Token& token) {
  if (token.kind == TokenKind::kText) return {MakeValue(token.text)};
  if (token.kind == TokenKind::kNumber) return ReadNumber(token.text);
  return {{kColorType, ReadInteger(token.text).Integer()}};
}

class Parser {
 public:
  explicit Parser(std::string_view line) : tokens_(SplitIntoTokens(line)) {}

  Statement Run() {
    Statement statement = TakeStatement();
    if (Current().kind != TokenKind::kEnd) throw ScriptError("cannot read on at " + Current().text);
    return statement;
  }

 private:
  // A level of the tree, and those that it grows by, for as long as its part of the line is read.
  class Level {
   public:
    explicit Level(int& depth) : depth_(depth), outer_(depth) { Deepen(); }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { depth_ = outer_; }
    void Deepen() {
      if (++depth_ > kDeepestNesting) throw ScriptError("this is nested too deeply");
    }

   private:
    int& depth_;
    int outer_;
  };

  const Token& Current() const { return tokens_[next_]; }

  bool IsSign(char sign) const { return Current().kind == TokenKind::kSign && Current().text[0] == sign; }

  bool TakeSign(char sign) {
    if (!IsSign(sign)) return false;
    ++next_;
    return true;
  }

  bool TakeWord(std::string_view word) {
    if (Current().kind != TokenKind::kWord || !zkt::IsSameName(Current().text, word)) return false;
    ++next_;
    return true;
  }

  void RequireSign(char sign) {
    if (!TakeSign(sign)) throw ScriptError(std::string("missing ") + sign);
  }

  std::string TakeName() {
    if (Current().kind != TokenKind::kWord) throw ScriptError("missing a name");
    return tokens_[next_++].text;
  }

  template <class Take>
  auto TakeSeparated(Take take) {
    std::vector<decltype(take())> all;
    do {
      all.push_back(take());
    } while (TakeSign(','));
    return all;
  }

  Statement TakeStatement() {
    if (Current().kind == TokenKind::kEnd) return {};
    if (TakeWord("Var") || TakeWord("Dim"))
      return {StatementKind::kDeclare, TakeSeparated([this] { return TakeGroup(); })};
    if (TakeWord("Print")) {
      if (Current().kind == TokenKind::kEnd) return {StatementKind::kPrint};
      return {StatementKind::kPrint, {}, TakeList()};
    }
    TakeWord("Call");
    Statement statement{StatementKind::kCall};
    statement.expressions.push_back(TakeReference());
    Expression& target = statement.expressions.front();
    const bool isName = target.kind == ExpressionKind::kName || target.kind == ExpressionKind::kMember;
    if (TakeSign('=')) {
      if (!isName && target.kind != ExpressionKind::kElement) throw ScriptError("this cannot be assigned");
      statement.kind = StatementKind::kAssign;
      statement.expressions.push_back(TakeExpression());
    } else if (isName && !target.hasArguments && Current().kind != TokenKind::kEnd) {
      // A line that is nothing but a call goes without parentheses.
      target.arguments = TakeList();
      target.hasArguments = true;
    }
    return statement;
  }

  DeclaredName TakeDeclaredName() {
    DeclaredName declared{TakeName()};
    declared.isArray = TakeSign('(');
    if (!declared.isArray || TakeSign(')')) return declared;
    declared.upperBound = std::make_unique<Expression>(TakeExpression());
    RequireSign(')');
    return declared;
  }

  DeclaredGroup TakeGroup() {
    DeclaredGroup group{TakeSeparated([this] { return TakeDeclaredName(); })};
    if (!TakeWord("As")) throw ScriptError("missing As and a type");
    group.isNew = TakeWord("New");
    group.typeName = TakeName();
    if (group.isNew && TakeSign('('))
      group.arguments = TakeListToParenthesis();
    else if (!group.isNew && TakeSign('='))
      group.initial = std::make_unique<Expression>(TakeExpression());
    return group;
  }

  std::vector<Expression> TakeList() {
    return TakeSeparated([this] { return TakeExpression(); });
  }

  std::vector<Expression> TakeListToParenthesis() {
    std::vector<Expression> list;
    if (!IsSign(')')) list = TakeList();
    RequireSign(')');
    return list;
  }

  // Operands with signs of one rank between them, from left to right.
  template <class TakeOperand>
  Expression TakeChain(char first, char second, TakeOperand takeOperand) {
    Expression operand = takeOperand();
    if (!IsSign(first) && !IsSign(second)) return operand;
    Expression chain{ExpressionKind::kChain};
    chain.arguments.push_back(std::move(operand));
    while (IsSign(first) || IsSign(second)) {
      chain.signs += Current().text;
      ++next_;
      chain.arguments.push_back(takeOperand());
    }
    return chain;
  }

  Expression TakeExpression() {
    const Level level(depth_);
    return TakeChain('+', '-', [this] { return TakeChain('*', '/', [this] { return TakeFactor(); }); });
  }

  Expression TakeFactor() {
    if (!TakeSign('-')) return TakeReference();
    const Level level(depth_);
    if (Current().kind == TokenKind::kNumber)
      return Expression{ExpressionKind::kLiteral, {}, ReadNumber("-" + tokens_[next_++].text)};
    Expression negative{ExpressionKind::kChain};
    negative.signs = "-";
    negative.arguments.push_back({ExpressionKind::kLiteral, {}, {MakeValue(0)}});
    negative.arguments.push_back(TakeFactor());
    return negative;
  }

  // A literal, a name, or an expression in parentheses, and what is done with it behind points and in parentheses.
  Expression TakeReference() {
    Level level(depth_);
    Expression reference = TakeFirst();
    for (;;) {
      const bool isMember = TakeSign('.');
      if (!isMember && !TakeSign('(')) return reference;
      level.Deepen();
      Expression outer{isMember ? ExpressionKind::kMember : ExpressionKind::kElement};
      outer.base = std::make_unique<Expression>(std::move(reference));
      if (isMember) {
        outer.text = TakeName();
        TakeArguments(outer);
      } else {
        outer.arguments = TakeListToParenthesis();
      }
      reference = std::move(outer);
    }
  }

  void TakeArguments(Expression& expression) {
    expression.hasArguments = TakeSign('(');
    if (expression.hasArguments) expression.arguments = TakeListToParenthesis();
  }

  Expression TakeFirst() {
    if (TakeSign('(')) {
      Expression inner = TakeExpression();
      RequireSign(')');
      // A variable in parentheses is a value like any other.
      Expression value{ExpressionKind::kChain};
      value.arguments.push_back(std::move(inner));
      return value;
    }
    const Token& token = Current();
    if (token.kind != TokenKind::kNumber && token.kind != TokenKind::kText && token.kind != TokenKind::kColor)
      return TakeNamed();
    ++next_;
    return Expression{ExpressionKind::kLiteral, {}, LiteralOf(token)};
  }

  Expression TakeNamed() {
    if (TakeWord("AddressOf")) return Expression{ExpressionKind::kAddressOf, TakeName()};
    const bool isNew = TakeWord("New");
    Expression named{isNew ? ExpressionKind::kNew : ExpressionKind::kName, TakeName()};
    if (!isNew)
      if (auto literal = ReadWord(named.text)) return Expression{ExpressionKind::kLiteral, {}, std::move(*literal)};
    TakeArguments(named);
    return named;
  }

  std::vector<Token> tokens_;
  std::size_t next_ = 0;
  int depth_ = 0;
};

}  // namespace

Statement Parse(std::string_view line) { return Parser(line).Run(); }

}  // namespace host
