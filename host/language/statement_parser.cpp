// Parses the lines of a block, declarations, calls and assignments.
#include <utility>

#include "frame/catalogue/declaration_syntax.h"
#include "language/parser.h"

namespace host {

namespace {

// Xojo statements that this host does not support.
constexpr std::string_view kUnsupportedStatements[] = {
    "AddHandler", "Break",  "Class",     "Delegate",  "Enum",       "Event",         "GoTo",
    "Interface",  "Module", "Namespace", "Property",  "RaiseEvent", "RemoveHandler", "Structure",
    "Using",      "Shared", "Private",   "Protected", "Public",     "Global",        "With"};

}  // namespace

Block Parser::Run() {
  Block block;
  while (SkipEmptyLines(), !Is(TokenKind::kEnd)) {
    if (Is("Exception")) FailUnsupported("Exception outside a method");
    if (const std::string word = BlockWord(); !word.empty())
      throw ScriptError("'" + word + "' belongs to no block", Current().at);
    block.push_back(TakeStatement(true));
    RequireLineEnd();
  }
  return block;
}

void Parser::SkipEmptyLines() {
  for (;;) {
    const bool isPragma = Is("#") && Following().Is("Pragma");
    while (isPragma && !IsAtLineEnd()) Take();
    if (!Is(TokenKind::kLineEnd)) return;
    Take();
  }
}

std::string_view Parser::TakeBlock(Block& block, Ends ends) {
  const Level level(*this);
  const std::string wanted = "'" + std::string(*(ends.end() - 1)) + "'";
  for (;;) {
    SkipEmptyLines();
    if (Is(TokenKind::kEnd)) FailExpecting(wanted);
    const std::string word = BlockWord();
    for (const std::string_view end : ends)
      if (zkt::IsSameName(end, word)) {
        if (Take().text != word) Take();  // the end is two tokens
        return end;
      }
    if (!word.empty()) FailExpecting(wanted, word);
    block.push_back(TakeStatement(false));
    RequireLineEnd();
  }
}

std::string Parser::BlockWord() const {
  const std::string& word = Current().text;
  const std::string& following = Following().text;
  if (Is("#")) return zkt::IsOneOf(following, "ElseIf", "Else", "EndIf") ? word + following : "";
  if (Is("End")) return Following().kind == TokenKind::kWord ? word + " " + following : word;
  const bool isBlockWord =
      zkt::IsOneOf(word, "Case", "Catch", "Else", "ElseIf", "Exception", "Finally", "Loop", "Next", "Wend");
  return Is(TokenKind::kWord) && isBlockWord ? word : "";
}

Statement Parser::TakeStatement(bool isOutermost) {
  const Position at = Current().at;
  StatementContent content = TakeContent(isOutermost);
  return {at, Current().at.line, std::move(content)};
}

StatementContent Parser::TakeContent(bool isOutermost) {
  for (const std::string_view word : kUnsupportedStatements)
    if (Is(word)) FailUnsupported(word);
  if (Accept("#")) {
    if (!Accept("If")) FailExpecting("'If' or 'Pragma'");
    return TakeIf(true);
  }
  if (Accept("Var") || Accept("Dim")) return TakeDeclaration(false);
  if (Accept("Static")) return TakeDeclaration(true);
  if (Accept("Const")) return TakeConstant();
  if (Accept("If")) return TakeIf(false);
  if (Accept("Select")) return TakeSelect();
  if (Accept("For")) {
    if (Accept("Each")) return TakeForEach();
    return TakeFor();
  }
  if (Accept("While")) return TakeWhile();
  if (Accept("Do")) return TakeDo();
  if (Accept("Exit")) return TakeJump(true);
  if (Accept("Continue")) return TakeJump(false);
  if (Accept("Try")) return TakeTry();
  if (Accept("Raise")) return RaiseStatement{TakeExpression()};
  if (Accept("Return"))
    return ReturnStatement{IsAtLineEnd() || Is("Else") ? std::nullopt : std::optional(TakeExpression())};
  if (Is("Sub") || Is("Function")) {
    if (!isOutermost) throw ScriptError("a method cannot be declared inside a block", Current().at);
    return TakeFunction();
  }
  if (Accept("Declare")) return TakeDeclare();
  if (Is("ReDim")) throw ScriptError("ReDim is not supported here; use ResizeTo", Current().at);
  return TakeCallOrAssignment();
}

StatementContent Parser::TakeCallOrAssignment() {
  const Position at = Current().at;
  const bool dropsResult = Accept("Call");
  Expression target = TakeReference();
  const bool isName = target.kind == ExpressionKind::kName || target.kind == ExpressionKind::kMember;
  if (!isName) throw ScriptError("expected a statement; an expression alone does nothing", at);
  for (const char* const sign : {"+", "-", "*", "/"})
    if (Is(sign) && (Following().Is("=") || Following().Is(sign)))
      throw ScriptError("'" + std::string(sign) + Following().text + "' is not an operator; write x = x " + sign + " …",
                        Current().at);
  if (!dropsResult && Accept("=")) return Assignment{std::move(target), TakeExpression()};
  if (!target.hasArguments && !IsAtLineEnd() && !Is("Else")) {
    // A call that is a whole statement may omit the parentheses.
    target.arguments = TakeList();
    target.hasArguments = true;
  }
  return CallStatement{std::move(target), dropsResult};
}

DeclaredName Parser::TakeDeclaredName() {
  DeclaredName declared{"", Current().at};
  declared.name = RequireName();
  declared.isArray = Accept("(");
  if (!declared.isArray || Accept(")")) return declared;
  if (!Is(",")) declared.upperBound = TakeExpression();
  if (Is(",")) FailUnsupported("an array of several dimensions");
  Require(")");
  return declared;
}

Declaration Parser::TakeDeclaration(bool isStatic) {
  Declaration declaration;
  declaration.isStatic = isStatic;
  do {
    declaration.names.push_back(TakeDeclaredName());
  } while (Accept(","));
  if (!Is("As")) FailExpecting("'As' and a type");
  Take();
  declaration.isNew = Accept("New");
  if (declaration.isNew) {
    declaration.initial = TakeNew();
    declaration.type = {declaration.initial->text, false, declaration.initial->at};
    return declaration;
  }
  declaration.type = TakeTypeName();
  if (Accept("=")) declaration.initial = TakeExpression();
  return declaration;
}

ConstantDeclaration Parser::TakeConstant() {
  std::string name = RequireName();
  std::optional<TypeName> type;
  if (Accept("As")) type = TakeTypeName();
  Require("=");
  return {std::move(name), std::move(type), TakeExpression()};
}

Block Parse(std::string_view source) { return Parser(SplitIntoTokens(source)).Run(); }

}  // namespace host
