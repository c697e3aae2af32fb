// Parses conditions, loops and Try statements.
#include <utility>

#include "core/text_order.h"
#include "frame/catalogue/declaration_syntax.h"
#include "language/statement_parser.h"

namespace host {

IfStatement StatementParser::TakeIf() {
  IfStatement statement;
  Expression condition = TakeExpression();
  RequireWord("Then");
  if (!IsAtLineEnd()) {
    statement.branches.push_back({std::move(condition), {}});
    statement.branches.back().block.push_back(TakeLine(false));
    if (TakeWord("Else")) statement.otherwise.push_back(TakeLine(false));
    return statement;
  }
  for (;;) {
    Take();
    statement.branches.push_back({std::move(condition), TakeBlock({"ElseIf", "Else", "End If"})});
    if (!TakeWord("ElseIf")) break;
    condition = TakeExpression();
    RequireWord("Then");
    if (!Is(TokenKind::kLineEnd)) FailExpecting("the end of the line");
  }
  if (TakeWord("Else")) {
    RequireLineEnd();
    statement.otherwise = TakeBlock({"End If"});
  }
  Take();
  Take();
  return statement;
}

IfStatement StatementParser::TakeConditional() {
  if (!TakeWord("If")) FailExpecting("'If' or 'Pragma'");
  IfStatement statement;
  statement.isForCompiler = true;
  do {
    Expression condition = TakeExpression();
    RequireWord("Then");
    RequireLineEnd();
    statement.branches.push_back({std::move(condition), TakeBlock({"#ElseIf", "#Else", "#EndIf"})});
    Take();
  } while (TakeWord("ElseIf"));
  if (TakeWord("Else")) {
    RequireLineEnd();
    statement.otherwise = TakeBlock({"#EndIf"});
    Take();
  }
  Take();
  return statement;
}

CaseTest StatementParser::TakeCaseTest() {
  if (TakeWord("IsA")) return {"IsA", std::nullopt, std::nullopt, TakeTypeName()};
  if (TakeWord("Is")) {
    if (!Is(TokenKind::kSymbol)) FailExpecting("a comparison");
    std::string comparison = Take().text;
    return {std::move(comparison), TakeExpression()};
  }
  Expression low = TakeExpression();
  if (TakeWord("To")) return {"To", std::move(low), TakeExpression()};
  return {"=", std::move(low)};
}

SelectStatement StatementParser::TakeSelect() {
  RequireWord("Case");
  SelectStatement statement{TakeExpression(), {}, {}};
  RequireLineEnd();
  SkipEmptyLines();
  while (IsWord("Case") && !zkt::IsSameName(Following().text, "Else")) {
    Take();
    SelectStatement::Case& added = statement.cases.emplace_back();
    do {
      added.tests.push_back(TakeCaseTest());
    } while (TakeSymbol(","));
    RequireLineEnd();
    added.block = TakeBlock({"Case", "Else", "End Select"});
  }
  if (IsWord("Case")) Take();
  if (TakeWord("Else")) {
    RequireLineEnd();
    statement.otherwise = TakeBlock({"End Select"});
  }
  if (!TakeWord("End")) FailExpecting("'Case'");
  RequireWord("Select");
  return statement;
}

Statement StatementParser::TakeFor(Position at) {
  const bool isEach = TakeWord("Each");
  const Position counterAt = Current().at;
  Expression counter = isEach ? Expression{ExpressionKind::kName, counterAt, RequireName()} : TakeReference();
  std::optional<TypeName> type;
  if (TakeWord("As")) type = TakeTypeName();
  if (isEach) {
    RequireWord("In");
    ForEachStatement statement{std::move(counter), std::move(type), TakeExpression(), {}};
    RequireLineEnd();
    statement.block = TakeLoopBlock(statement.element);
    return {at, at.line, std::move(statement)};
  }
  RequireSign("=");
  Expression from = TakeExpression();
  const bool isDown = TakeWord("DownTo");
  if (!isDown) RequireWord("To");
  Expression to = TakeExpression();
  std::optional<Expression> step;
  if (TakeWord("Step")) step = TakeExpression();
  RequireLineEnd();
  ForStatement statement{
      std::move(counter), std::move(type), std::move(from), std::move(to), std::move(step), isDown, {}};
  statement.block = TakeLoopBlock(statement.counter);
  return {at, at.line, std::move(statement)};
}

Block StatementParser::TakeLoopBlock(const Expression& counter) {
  Block block = TakeBlock({"Next"});
  Take();
  if (!IsAtLineEnd() && !IsSameIdentifier(counter.text, Current().text)) FailExpecting("'" + counter.text + "'");
  if (!IsAtLineEnd()) Take();
  return block;
}

LoopStatement StatementParser::TakeWhile() {
  LoopStatement statement{"While", TakeExpression(), {}, {}, {}};
  RequireLineEnd();
  statement.block = TakeBlock({"Wend"});
  Take();
  return statement;
}

LoopStatement StatementParser::TakeDo() {
  const auto takeUntil = [this] {
    if (IsWord("While")) throw ScriptError("Do and Loop do not support While; use Until", Current().at);
    return TakeWord("Until") ? std::optional(TakeExpression()) : std::nullopt;
  };
  LoopStatement statement{"Do", {}, takeUntil(), {}, {}};
  RequireLineEnd();
  statement.block = TakeBlock({"Loop"});
  Take();
  statement.untilAfter = takeUntil();
  return statement;
}

JumpStatement StatementParser::TakeJump(bool isExit) {
  JumpStatement jump{isExit, "", ""};
  for (const char* const word : {"For", "While", "Do"})
    if (TakeWord(word)) jump.word = word;
  if (jump.word == "For" && Is(TokenKind::kWord) && !IsWord("Else")) jump.variable = RequireName();
  if (IsWord("Sub") || IsWord("Function"))
    throw ScriptError("Exit " + Current().text + " is not in the language; use Return", Current().at);
  return jump;
}

CatchBlock StatementParser::TakeCatch() {
  CatchBlock handler;
  handler.type.name = "RuntimeException";
  if (!IsAtLineEnd()) handler.name = RequireName();
  if (TakeWord("As")) handler.type = TakeTypeName();
  RequireLineEnd();
  return handler;
}

TryStatement StatementParser::TakeTry() {
  RequireLineEnd();
  TryStatement statement{TakeBlock({"Catch", "Finally", "End Try"}), {}, {}};
  while (TakeWord("Catch")) {
    statement.catches.push_back(TakeCatch());
    statement.catches.back().block = TakeBlock({"Catch", "Finally", "End Try"});
  }
  if (TakeWord("Finally")) {
    RequireLineEnd();
    statement.finally = TakeBlock({"End Try"});
  }
  Take();
  Take();
  return statement;
}

}  // namespace host
