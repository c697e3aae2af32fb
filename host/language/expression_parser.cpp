#include "language/expression_parser.h"

#include <algorithm>
#include <utility>

#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

// Bounds the recursion depth, because the tree is parsed, compiled, run and destroyed recursively.
constexpr int kDeepestNesting = 200;

template <class... Operands>
Expression Make(ExpressionKind kind, Position at, Operands... operands) {
  Expression expression{kind, at};
  (expression.operands.push_back(std::move(operands)), ...);
  return expression;
}

}  // namespace

void ExpressionParser::Level::Deepen(const ExpressionParser& parser) {
  if (++depth_ > kDeepestNesting) throw ScriptError("the code is nested too deeply", parser.Current().at);
}

Expression ExpressionParser::TakeExpression() {
  const Level level(*this);
  Expression expression = TakeChain({"Or", "Xor"}, &ExpressionParser::TakeConjunction);
  if (IsSign(":")) FailUnsupported("':', which makes a Pair,");
  return expression;
}

Expression ExpressionParser::TakeChain(std::initializer_list<std::string_view> operators, Reader takeOperand) {
  const auto isOperator = [&] {
    return std::ranges::any_of(operators, [&](std::string_view text) { return IsSign(text) || IsWord(text); });
  };
  Expression first = (this->*takeOperand)();
  if (!isOperator()) return first;
  const Position at = first.at;
  Expression chain = Make(ExpressionKind::kChain, at, std::move(first));
  while (isOperator()) {
    if (IsWord("Is") && zkt::IsSameName(Following().text, "Not"))
      throw ScriptError("'Is Not' is not an operator; use '<>'", Current().at);
    chain.operators.push_back(Take().text);
    chain.operands.push_back((this->*takeOperand)());
  }
  return chain;
}

Expression ExpressionParser::TakeConjunction() { return TakeChain({"And"}, &ExpressionParser::TakeComparison); }

Expression ExpressionParser::TakeComparison() {
  return TakeChain({"=", "<", ">", "<=", ">=", "<>", "Is"}, &ExpressionParser::TakeSum);
}

Expression ExpressionParser::TakeSum() { return TakeChain({"+", "-"}, &ExpressionParser::TakeProduct); }

Expression ExpressionParser::TakeProduct() { return TakeChain({"*", "/", "\\", "Mod"}, &ExpressionParser::TakeNot); }

Expression ExpressionParser::TakeNot() {
  const Position at = Current().at;
  if (!TakeWord("Not")) return TakeNegative();
  const Level level(*this);
  return Make(ExpressionKind::kNot, at, TakeNot());
}

Expression ExpressionParser::TakeNegative() {
  const Position at = Current().at;
  if (!TakeSymbol("-")) return TakePower();
  const Level level(*this);
  // A minus sign is part of the numeric literal after it, unless the literal is followed by "^", which binds more
  // tightly.
  const bool isPower = Is(TokenKind::kNumber) && Following().kind == TokenKind::kSymbol && Following().text == "^";
  if (!Is(TokenKind::kNumber) || isPower) return Make(ExpressionKind::kNegative, at, TakeNegative());
  Expression literal = TakePower();
  literal.text.insert(0, "-");
  return literal;
}

Expression ExpressionParser::TakePower() {
  Expression base = TakeIsA();
  if (!TakeSymbol("^")) return base;
  const Level level(*this);
  const Position at = base.at;
  Expression power = Make(ExpressionKind::kChain, at, std::move(base), TakeNegative());
  power.operators.emplace_back("^");
  return power;
}

Expression ExpressionParser::TakeIsA() {
  Expression object = TakeReference();
  if (!TakeWord("IsA")) return object;
  const Position at = object.at;
  Expression test = Make(ExpressionKind::kIsA, at, std::move(object));
  test.text = TakeTypeName().name;
  return test;
}

Expression ExpressionParser::TakeReference() {
  Level level(*this);
  Expression reference = TakeFirst();
  for (;;) {
    if (IsSign("(") && (reference.kind == ExpressionKind::kParentheses || reference.hasArguments))
      throw ScriptError("a result cannot be indexed; assign it to a variable first", Current().at);
    if (!TakeSymbol(".")) return reference;
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

void ExpressionParser::TakeArguments(Expression& expression) {
  expression.hasArguments = TakeSymbol("(");
  if (expression.hasArguments) expression.arguments = TakeListToParenthesis();
}

Expression ExpressionParser::TakeFirst() {
  const Position at = Current().at;
  if (TakeSymbol("(")) {
    Expression inner = TakeExpression();
    RequireSign(")");
    return Make(ExpressionKind::kParentheses, at, std::move(inner));
  }
  const TokenKind kind = Current().kind;
  const bool isNamed = IsWord("True") || IsWord("False") || IsWord("Nil");
  if (isNamed || kind == TokenKind::kNumber || kind == TokenKind::kUnsigned || kind == TokenKind::kText ||
      kind == TokenKind::kColor)
    return Expression{ExpressionKind::kLiteral, at, Take().text, kind};
  if (kind != TokenKind::kWord) FailExpecting("an expression");
  if (IsWord("WeakAddressOf") || IsWord("Self") || IsWord("Me") || IsWord("Super")) FailUnsupported(Current().text);
  if (TakeWord("AddressOf")) {
    Expression address{ExpressionKind::kAddressOf, at, RequireName()};
    if (IsSign(".")) FailUnsupported("AddressOf a member");
    return address;
  }
  if (TakeWord("New")) return TakeNew();
  if (TakeWord("If")) return TakeIf();
  if (TakeWord("CType")) return TakeConvert();
  const bool isArray = IsWord("Array");
  Expression named{ExpressionKind::kName, at, isArray ? Take().text : RequireName()};
  TakeArguments(named);
  if (isArray && !named.hasArguments) FailExpecting("'(' and the elements");
  return named;
}

Expression ExpressionParser::TakeNew() {
  Expression created{ExpressionKind::kNew, Current().at};
  created.text = TakeTypeName().name;
  TakeArguments(created);
  return created;
}

Expression ExpressionParser::TakeIf() {
  Expression choice{ExpressionKind::kIf, Current().at};
  RequireSign("(");
  choice.operands = TakeListToParenthesis();
  if (choice.operands.size() != 3) throw ScriptError("If takes a condition and two values", choice.at);
  return choice;
}

Expression ExpressionParser::TakeConvert() {
  const Position at = Current().at;
  RequireSign("(");
  Expression converted = Make(ExpressionKind::kConvert, at, TakeExpression());
  RequireSign(",");
  converted.text = TakeTypeName().name;
  RequireSign(")");
  return converted;
}

std::vector<Expression> ExpressionParser::TakeList() {
  std::vector<Expression> list;
  do {
    list.push_back(TakeExpression());
  } while (TakeSymbol(","));
  return list;
}

std::vector<Expression> ExpressionParser::TakeListToParenthesis() {
  std::vector<Expression> list;
  if (!IsSign(")")) list = TakeList();
  RequireSign(")");
  return list;
}

TypeName ExpressionParser::TakeTypeName() {
  TypeName type{"", false, Current().at};
  if (TakeWord("Object")) {
    type.name = "Object";
  } else {
    if (!Is(TokenKind::kWord)) FailExpecting("a type");
    type.name = RequireName();
  }
  while (TakeSymbol(".")) type.name += "." + RequireMemberName();
  return type;
}

}  // namespace host
