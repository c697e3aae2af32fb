#include "language/statement_parser.h"

#include <algorithm>
#include <utility>

#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

// Xojo statements that this host does not support.
constexpr std::string_view kUnsupportedStatements[] = {
    "AddHandler", "Break",  "Class",     "Delegate",  "Enum",       "Event",         "GoTo",
    "Interface",  "Module", "Namespace", "Property",  "Raiseevent", "RemoveHandler", "Structure",
    "Using",      "Shared", "Private",   "Protected", "Public",     "Global",        "With"};

std::string WrongBlockEnd(const std::string& wanted, const std::string& found) {
  return "expected " + wanted + ", but found '" + found + "'";
}

}  // namespace

Block StatementParser::Run() {
  Block block;
  while (SkipEmptyLines(), !Is(TokenKind::kEnd)) {
    if (IsWord("Exception")) FailUnsupported("Exception outside a method");
    if (const std::string word = BlockWord(); !word.empty())
      throw ScriptError("'" + word + "' belongs to no block", Current().at);
    block.push_back(TakeStatement(true));
  }
  return block;
}

void StatementParser::SkipEmptyLines() {
  for (;;) {
    const bool isPragma = IsSign("#") && zkt::IsSameName(Following().text, "Pragma");
    while (isPragma && !IsAtLineEnd()) Take();
    if (!Is(TokenKind::kLineEnd)) return;
    Take();
  }
}

Block StatementParser::TakeBlock(std::initializer_list<std::string_view> ends) {
  const Level level(*this);
  Block block;
  for (;;) {
    SkipEmptyLines();
    const std::string wanted = "'" + std::string(*(ends.end() - 1)) + "'";
    if (Is(TokenKind::kEnd)) FailExpecting(wanted);
    const std::string word = BlockWord();
    if (std::ranges::any_of(ends, [&](std::string_view end) { return zkt::IsSameName(end, word); })) return block;
    if (!word.empty()) throw ScriptError(WrongBlockEnd(wanted, word), Current().at);
    block.push_back(TakeStatement(false));
  }
}

std::string StatementParser::BlockWord() const {
  const std::string& word = Current().text;
  const std::string& following = Following().text;
  if (IsSign("#")) return zkt::IsOneOf(following, "ElseIf", "Else", "EndIf") ? word + following : "";
  if (IsWord("End")) return Following().kind == TokenKind::kWord ? word + " " + following : word;
  const bool isBlockWord =
      zkt::IsOneOf(word, "Case", "Catch", "Else", "ElseIf", "Exception", "Finally", "Loop", "Next", "Wend");
  return Is(TokenKind::kWord) && isBlockWord ? word : "";
}

Statement StatementParser::TakeStatement(bool isOutermost) {
  Statement statement = TakeLine(isOutermost);
  if (!Is(TokenKind::kLineEnd)) FailExpecting("the end of the line");
  statement.lastLine = Current().at.line;
  Take();
  return statement;
}

Statement StatementParser::TakeLine(bool isOutermost) {
  const Position at = Current().at;
  const auto made = [&](auto content) { return Statement{at, at.line, std::move(content)}; };
  if (Is(TokenKind::kWord))
    for (const std::string_view word : kUnsupportedStatements)
      if (IsWord(word)) FailUnsupported(word);
  if (TakeSymbol("#")) return made(TakeConditional());
  if (TakeWord("Var") || TakeWord("Dim")) return made(TakeDeclaration(false));
  if (TakeWord("Static")) return made(TakeDeclaration(true));
  if (TakeWord("Const")) return made(TakeConstant());
  if (TakeWord("If")) return made(TakeIf());
  if (TakeWord("Select")) return made(TakeSelect());
  if (TakeWord("For")) return TakeFor(at);
  if (TakeWord("While")) return made(TakeWhile());
  if (TakeWord("Do")) return made(TakeDo());
  if (TakeWord("Exit")) return made(TakeJump(true));
  if (TakeWord("Continue")) return made(TakeJump(false));
  if (TakeWord("Try")) return made(TakeTry());
  if (TakeWord("Raise")) return made(RaiseStatement{TakeExpression()});
  if (TakeWord("Return"))
    return made(ReturnStatement{IsAtLineEnd() || IsWord("Else") ? std::nullopt : std::optional(TakeExpression())});
  if (IsWord("Sub") || IsWord("Function")) {
    if (!isOutermost) throw ScriptError("a method cannot be declared inside a block", at);
    return made(TakeFunction());
  }
  if (TakeWord("Declare")) return made(TakeDeclare());
  if (IsWord("ReDim")) throw ScriptError("ReDim is not supported here; use ResizeTo", at);
  return TakeCallOrAssignment(at);
}

Statement StatementParser::TakeCallOrAssignment(Position at) {
  const bool dropsResult = TakeWord("Call");
  Expression target = TakeReference();
  const bool isName = target.kind == ExpressionKind::kName || target.kind == ExpressionKind::kMember;
  if (!isName) throw ScriptError("expected a statement; an expression alone does nothing", at);
  for (const char* const sign : {"+", "-", "*", "/"})
    if (IsSign(sign) && Following().kind == TokenKind::kSymbol && (Following().text == "=" || Following().text == sign))
      throw ScriptError("'" + std::string(sign) + Following().text + "' is not an operator; write x = x " + sign + " …",
                        Current().at);
  if (!dropsResult && TakeSymbol("=")) return {at, at.line, Assignment{std::move(target), TakeExpression()}};
  if (!target.hasArguments && !IsAtLineEnd() && !IsWord("Else")) {
    // A call that is a whole statement may omit the parentheses.
    target.arguments = TakeList();
    target.hasArguments = true;
  }
  return {at, at.line, CallStatement{std::move(target), dropsResult}};
}

DeclaredName StatementParser::TakeDeclaredName() {
  DeclaredName declared{"", Current().at};
  declared.name = RequireName();
  declared.isArray = TakeSymbol("(");
  if (!declared.isArray || TakeSymbol(")")) return declared;
  if (!IsSign(",")) declared.upperBound = TakeExpression();
  if (IsSign(",")) FailUnsupported("an array of several dimensions");
  RequireSign(")");
  return declared;
}

Declaration StatementParser::TakeDeclaration(bool isStatic) {
  Declaration declaration;
  declaration.isStatic = isStatic;
  do {
    declaration.names.push_back(TakeDeclaredName());
  } while (TakeSymbol(","));
  if (!IsWord("As")) FailExpecting("'As' and a type");
  Take();
  declaration.isNew = TakeWord("New");
  declaration.type = TakeTypeName();
  if (declaration.isNew && TakeSymbol("("))
    declaration.arguments = TakeListToParenthesis();
  else if (!declaration.isNew && TakeSymbol("="))
    declaration.initial = TakeExpression();
  return declaration;
}

ConstantDeclaration StatementParser::TakeConstant() {
  std::string name = RequireName();
  std::optional<TypeName> type;
  if (TakeWord("As")) type = TakeTypeName();
  RequireSign("=");
  return {std::move(name), std::move(type), TakeExpression()};
}

Block Parse(std::string_view source) { return StatementParser(SplitIntoTokens(source)).Run(); }

}  // namespace host
