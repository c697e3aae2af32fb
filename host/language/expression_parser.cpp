#include "language/parser.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

// Bounds the recursion depth, because the tree is parsed, compiled, run and destroyed recursively.
constexpr int kDeepestNesting = 200;

// The left-associative operators, from the lowest precedence to the highest.
constexpr std::string_view kOperators[][7] = {
    {"Or", "Xor"}, {"And"}, {"=", "<", ">", "<=", ">=", "<>", "Is"}, {"+", "-"}, {"*", "/", "\\", "Mod"}};

template <class... Operands>
Expression Make(ExpressionKind kind, Position at, Operands... operands) {
  Expression expression{kind, at};
  (expression.operands.push_back(std::move(operands)), ...);
  return expression;
}

}  // namespace

void Parser::Level::Deepen(const Parser& parser) {
  if (++depth_ > kDeepestNesting) throw ScriptError("the code is nested too deeply", parser.Current().at);
}

Expression Parser::TakeExpression() {
  const Level level(*this);
  Expression expression = TakeChain(0);
  if (Is(":")) FailUnsupported("':', which makes a Pair,");
  return expression;
}

Expression Parser::MakeChain(Expression left, std::string sign, Expression right) {
  const Position at = left.at;
  Expression chain = Make(ExpressionKind::kChain, at, std::move(left), std::move(right));
  chain.operators.push_back(std::move(sign));
  return chain;
}

Expression Parser::TakeChain(std::size_t precedence) {
  if (precedence == std::size(kOperators)) return TakeNot();
  const auto isOperator = [&] {
    return std::ranges::any_of(kOperators[precedence], [&](std::string_view text) { return Is(text); });
  };
  Expression first = TakeChain(precedence + 1);
  if (!isOperator()) return first;
  const Position at = first.at;
  Expression chain = Make(ExpressionKind::kChain, at, std::move(first));
  while (isOperator()) {
    if (Is("Is") && Following().Is("Not")) throw ScriptError("'Is Not' is not an operator; use '<>'", Current().at);
    chain.operators.push_back(Take().text);
    chain.operands.push_back(TakeChain(precedence + 1));
  }
  return chain;
}

Expression Parser::TakeNot() {
  const Position at = Current().at;
  if (!Accept("Not")) return TakeNegative();
  const Level level(*this);
  return Make(ExpressionKind::kNot, at, TakeNot());
}

Expression Parser::TakeNegative() {
  const Position at = Current().at;
  if (!Accept("-")) return TakePower();
  const Level level(*this);
  // A minus sign is part of the numeric literal after it, unless the literal is followed by "^", which binds more
  // tightly.
  const bool isPower = Is(TokenKind::kNumber) && Following().Is("^");
  if (!Is(TokenKind::kNumber) || isPower) return Make(ExpressionKind::kNegative, at, TakeNegative());
  Expression literal = TakePower();
  literal.text.insert(0, "-");
  return literal;
}

Expression Parser::TakePower() {
  Expression base = TakeIsA();
  if (!Accept("^")) return base;
  const Level level(*this);
  return MakeChain(std::move(base), "^", TakeNegative());
}

Expression Parser::TakeIsA() {
  Expression object = TakeReference();
  if (!Accept("IsA")) return object;
  const Position at = object.at;
  Expression test = Make(ExpressionKind::kIsA, at, std::move(object));
  test.text = TakeTypeName().name;
  return test;
}

Expression Parser::TakeReference() {
  Level level(*this);
  Expression reference = TakeFirst();
  for (;;) {
    if (Is("(") && (reference.kind == ExpressionKind::kParentheses || reference.hasArguments))
      throw ScriptError("a result cannot be indexed; assign it to a variable first", Current().at);
    if (!Accept(".")) return reference;
    if (reference.kind != ExpressionKind::kName && reference.kind != ExpressionKind::kMember)
      throw ScriptError(std::string("a member of ") +
                            (reference.kind == ExpressionKind::kNew           ? "a New expression"
                             : reference.kind == ExpressionKind::kParentheses ? "an expression in parentheses"
                                                                              : "this expression") +
                            " cannot be accessed; assign it to a variable first",
                        Current().at);
    level.Deepen(*this);
    const Position at = Current().at;
    Expression member = Make(ExpressionKind::kMember, at, std::move(reference));
    member.text = RequireMemberName();
    TakeArguments(member);
    reference = std::move(member);
  }
}

void Parser::TakeArguments(Expression& expression) {
  expression.hasArguments = Accept("(");
  if (expression.hasArguments) expression.arguments = TakeListToParenthesis();
}

Expression Parser::TakeFirst() {
  const Position at = Current().at;
  if (Accept("(")) {
    Expression inner = TakeExpression();
    Require(")");
    return Make(ExpressionKind::kParentheses, at, std::move(inner));
  }
  const TokenKind kind = Current().kind;
  const bool isNamed = Is("True") || Is("False") || Is("Nil");
  if (isNamed || kind == TokenKind::kNumber || kind == TokenKind::kUnsigned || kind == TokenKind::kText ||
      kind == TokenKind::kColor)
    return Expression{ExpressionKind::kLiteral, at, Take().text, kind};
  if (kind != TokenKind::kWord) FailExpecting("an expression");
  if (Is("WeakAddressOf") || Is("Self") || Is("Me") || Is("Super")) FailUnsupported(Current().text);
  if (Accept("AddressOf")) {
    Expression address{ExpressionKind::kAddressOf, at, RequireName()};
    if (Is(".")) FailUnsupported("AddressOf a member");
    return address;
  }
  if (Accept("New")) return TakeNew();
  if (Accept("If")) return TakeChoice();
  if (Accept("CType")) return TakeConvert();
  const bool isArray = Is("Array");
  Expression named{ExpressionKind::kName, at, isArray ? Take().text : RequireName()};
  TakeArguments(named);
  if (isArray && !named.hasArguments) FailExpecting("'(' and the elements");
  return named;
}

Expression Parser::TakeNew() {
  Expression created{ExpressionKind::kNew, Current().at};
  created.text = TakeTypeName().name;
  TakeArguments(created);
  return created;
}

Expression Parser::TakeChoice() {
  Expression choice{ExpressionKind::kIf, Current().at};
  Require("(");
  choice.operands = TakeListToParenthesis();
  if (choice.operands.size() != 3) throw ScriptError("If takes a condition and two values", choice.at);
  return choice;
}

Expression Parser::TakeConvert() {
  const Position at = Current().at;
  Require("(");
  Expression converted = Make(ExpressionKind::kConvert, at, TakeExpression());
  Require(",");
  converted.text = TakeTypeName().name;
  Require(")");
  return converted;
}

std::vector<Expression> Parser::TakeList() {
  std::vector<Expression> list;
  do {
    list.push_back(TakeExpression());
  } while (Accept(","));
  return list;
}

std::vector<Expression> Parser::TakeListToParenthesis() {
  std::vector<Expression> list;
  if (!Is(")")) list = TakeList();
  Require(")");
  return list;
}

TypeName Parser::TakeTypeName() {
  TypeName type{"", false, Current().at};
  if (!Is(TokenKind::kWord)) FailExpecting("a type");
  type.name = Accept("Object") ? "Object" : RequireName();
  while (Accept(".")) type.name += "." + RequireMemberName();
  return type;
}

}  // namespace host
