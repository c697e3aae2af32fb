// Parses If, Select Case, loops, Exit, Continue and Try.
#include <utility>

#include "core/text_order.h"
#include "language/parser.h"

namespace host {

IfStatement Parser::TakeIf(bool isForCompiler) {
  const Ends ends = {"ElseIf", "Else", "End If"};
  const Ends endsForCompiler = {"#ElseIf", "#Else", "#EndIf"};
  IfStatement statement;
  statement.isForCompiler = isForCompiler;
  // The suffix of the end that was read is the same for If and #If. It is empty in the first branch.
  std::string_view end;
  do {
    Branch& branch = statement.branches.emplace_back();
    branch.condition = TakeExpression();
    Require("Then");
    if (!isForCompiler && end.empty() && !IsAtLineEnd()) {
      branch.block.push_back(TakeStatement(false));
      if (Accept("Else")) statement.otherwise.push_back(TakeStatement(false));
      return statement;
    }
    RequireLineEnd();
    end = TakeBlock(branch.block, isForCompiler ? endsForCompiler : ends);
  } while (end.ends_with("ElseIf"));
  if (end.ends_with("Else")) {
    RequireLineEnd();
    TakeBlock(statement.otherwise, {isForCompiler ? "#EndIf" : "End If"});
  }
  return statement;
}

Expression Parser::TakeCaseTest() {
  Expression subject{ExpressionKind::kName, Current().at, kSelectVariable};
  if (Accept("IsA")) {
    Expression test{ExpressionKind::kIsA, Current().at, TakeTypeName().name};
    test.operands.push_back(std::move(subject));
    return test;
  }
  if (Accept("Is")) {
    if (!zkt::IsOneOf(Current().text, "=", "<>", "<", "<=", ">", ">=") || !Is(TokenKind::kSymbol))
      FailExpecting("a comparison");
    const std::string comparison = Take().text;
    return MakeChain(std::move(subject), comparison, TakeExpression());
  }
  Expression value = TakeExpression();
  if (!Accept("To")) return MakeChain(std::move(subject), "=", std::move(value));
  Expression isLowEnough = MakeChain(subject, "<=", TakeExpression());
  return MakeChain(MakeChain(std::move(subject), ">=", std::move(value)), "And", std::move(isLowEnough));
}

SelectStatement Parser::TakeSelect() {
  const Ends ends = {"Case", "Else", "End Select"};
  Require("Case");
  SelectStatement statement{TakeExpression(), {}};
  RequireLineEnd();
  SkipEmptyLines();
  if (!Is("Case") && !Is("Else") && !Is("End")) FailExpecting("'Case'");
  // Reads the first word. No statement precedes it, so the block stays empty.
  std::string_view end = TakeBlock(statement.cases.otherwise, ends);
  while (end == "Case" && !Accept("Else")) {
    Branch& branch = statement.cases.branches.emplace_back();
    branch.condition = {ExpressionKind::kChain, Current().at};
    do {
      branch.condition.operands.push_back(TakeCaseTest());
    } while (Accept(","));
    branch.condition.operators.assign(branch.condition.operands.size() - 1, "Or");
    RequireLineEnd();
    end = TakeBlock(branch.block, ends);
  }
  if (end == "End Select") return statement;
  RequireLineEnd();
  TakeBlock(statement.cases.otherwise, {"End Select"});
  return statement;
}

ForStatement Parser::TakeFor() {
  ForStatement statement;
  statement.counter = TakeReference();
  if (Accept("As")) statement.type = TakeTypeName();
  Require("=");
  statement.from = TakeExpression();
  statement.isDown = Accept("DownTo");
  if (!statement.isDown) Require("To");
  statement.to = TakeExpression();
  if (Accept("Step")) statement.step = TakeExpression();
  TakeLoopBlock(statement.block, statement.counter.text);
  return statement;
}

ForEachStatement Parser::TakeForEach() {
  ForEachStatement statement;
  statement.element.at = Current().at;
  statement.element.text = RequireName();
  if (Accept("As")) statement.type = TakeTypeName();
  Require("In");
  statement.list = TakeExpression();
  TakeLoopBlock(statement.block, statement.element.text);
  return statement;
}

void Parser::TakeLoopBlock(Block& block, const std::string& counter) {
  RequireLineEnd();
  TakeBlock(block, {"Next"});
  if (IsAtLineEnd()) return;
  if (!IsSameIdentifier(counter, Current().text)) FailExpecting("'" + counter + "'");
  Take();
}

LoopStatement Parser::TakeWhile() {
  LoopStatement statement{"While", TakeExpression(), {}, {}};
  RequireLineEnd();
  TakeBlock(statement.block, {"Wend"});
  return statement;
}

LoopStatement Parser::TakeDo() {
  const auto takeUntil = [this] {
    if (Is("While")) throw ScriptError("Do and Loop do not support While; use Until", Current().at);
    return Accept("Until") ? std::optional(TakeExpression()) : std::nullopt;
  };
  LoopStatement statement{"Do", takeUntil(), {}, {}};
  RequireLineEnd();
  TakeBlock(statement.block, {"Loop"});
  statement.after = takeUntil();
  return statement;
}

JumpStatement Parser::TakeJump(bool isExit) {
  JumpStatement jump{isExit, "", ""};
  for (const char* const word : {"For", "While", "Do"})
    if (Accept(word)) jump.word = word;
  if (jump.word == "For" && Is(TokenKind::kWord) && !Is("Else")) jump.variable = RequireName();
  if (Is("Sub") || Is("Function"))
    throw ScriptError("Exit " + Current().text + " is not in the language; use Return", Current().at);
  return jump;
}

TryStatement Parser::TakeTry() {
  RequireLineEnd();
  TryStatement statement;
  if (TakeHandlers(statement, {"Catch", "Finally", "End Try"}) == "Finally") {
    RequireLineEnd();
    TakeBlock(statement.finally, {"End Try"});
  }
  return statement;
}

std::string_view Parser::TakeHandlers(TryStatement& statement, Ends ends) {
  const std::string_view handlerWord = *ends.begin();
  std::string_view end = TakeBlock(statement.body, ends);
  while (end == handlerWord) {
    CatchBlock& handler = statement.catches.emplace_back();
    handler.type.name = "RuntimeException";
    if (!IsAtLineEnd()) handler.name = RequireName();
    if (Accept("As")) handler.type = TakeTypeName();
    RequireLineEnd();
    end = TakeBlock(handler.block, ends);
  }
  return end;
}

}  // namespace host
