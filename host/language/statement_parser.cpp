// Reads statements and blocks.
#include <algorithm>
#include <utility>

#include "frame/catalogue/declaration_syntax.h"
#include "language/expression_parser.h"

namespace host {

namespace {

// What exists in Xojo and cannot be used here.
constexpr std::string_view kUnsupportedStatements[] = {
    "AddHandler", "Break",    "Class", "Delegate",      "Enum",      "Event", "GoTo",  "Interface", "Module",
    "Namespace",  "Property", "Raiseevent", "RemoveHandler", "Structure", "Using", "Shared", "Private", "Protected",
    "Public", "Global", "With"};

class StatementParser : public ExpressionParser {
 public:
  using ExpressionParser::ExpressionParser;

  Block Run() {
    Block block;
    while (SkipEmptyLines(), !Is(TokenKind::kEnd)) block.push_back(TakeStatement(true));
    return block;
  }

 private:
  void SkipEmptyLines() {
    for (;;) {
      const bool isPragma = IsSign("#") && zkt::IsSameName(Following().text, "Pragma");
      while (isPragma && !IsAtLineEnd()) Take();
      if (!Is(TokenKind::kLineEnd)) return;
      Take();
    }
  }

  // Statements up to a line that begins with one of the words, which stays.
  Block TakeBlock(std::initializer_list<std::string_view> ends) {
    const Level level(*this);
    Block block;
    for (;;) {
      SkipEmptyLines();
      if (Is(TokenKind::kEnd)) FailExpecting("'" + std::string(*(ends.end() - 1)) + "'");
      if (std::ranges::any_of(ends, [this](std::string_view end) { return IsBlockEnd(end); })) return block;
      block.push_back(TakeStatement(false));
    }
  }

  // "End If" and "#Else" are two tokens.
  bool IsBlockEnd(std::string_view end) const {
    if (end.starts_with('#')) return IsSign("#") && zkt::IsSameName(Following().text, end.substr(1));
    if (!end.starts_with("End ")) return IsWord(end);
    return IsWord("End") && zkt::IsSameName(Following().text, end.substr(4));
  }

  Statement TakeStatement(bool isOutermost) {
    Statement statement = TakeLine(isOutermost);
    if (!Is(TokenKind::kLineEnd)) FailExpecting("the end of the line");
    statement.lastLine = Current().at.line;
    Take();
    return statement;
  }

  // A statement without the end of its last line.
  Statement TakeLine(bool isOutermost) {
    const Position at = Current().at;
    const auto made = [&](auto content) { return Statement{at, at.line, std::move(content)}; };
    if (Is(TokenKind::kWord))
      for (const std::string_view word : kUnsupportedStatements)
        if (IsWord(word)) FailUnsupported(word);
    if (TakeSign("#")) return made(TakeConditional());
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

  Statement TakeCallOrAssignment(Position at) {
    const bool dropsResult = TakeWord("Call");
    Expression target = TakeReference();
    const bool isName = target.kind == ExpressionKind::kName || target.kind == ExpressionKind::kMember;
    if (!isName) throw ScriptError("expected a statement; an expression alone does nothing", at);
    for (const char* const sign : {"+", "-", "*", "/"})
      if (IsSign(sign) && Following().kind == TokenKind::kSign && (Following().text == "=" || Following().text == sign))
        throw ScriptError("'" + std::string(sign) + Following().text + "' is not an operator; write x = x " + sign + " …",
                          Current().at);
    if (!dropsResult && TakeSign("="))
      return {at, at.line, Assignment{std::move(target), TakeExpression()}};
    if (!target.hasArguments && !IsAtLineEnd() && !IsWord("Else")) {
      // A line that is nothing but a call goes without parentheses.
      target.arguments = TakeList();
      target.hasArguments = true;
    }
    return {at, at.line, CallStatement{std::move(target), dropsResult}};
  }

  DeclaredName TakeDeclaredName() {
    DeclaredName declared{"", Current().at};
    declared.name = RequireName();
    declared.isArray = TakeSign("(");
    if (!declared.isArray || TakeSign(")")) return declared;
    if (!IsSign(",")) declared.upperBound = TakeExpression();
    if (IsSign(",")) FailUnsupported("an array of several dimensions");
    RequireSign(")");
    return declared;
  }

  Declaration TakeDeclaration(bool isStatic) {
    Declaration declaration;
    declaration.isStatic = isStatic;
    do {
      declaration.names.push_back(TakeDeclaredName());
    } while (TakeSign(","));
    if (!IsWord("As")) FailExpecting("'As' and a type");
    Take();
    declaration.isNew = TakeWord("New");
    declaration.type = TakeTypeName();
    if (declaration.isNew && TakeSign("("))
      declaration.arguments = TakeListToParenthesis();
    else if (!declaration.isNew && TakeSign("="))
      declaration.initial = TakeExpression();
    return declaration;
  }

  ConstantDeclaration TakeConstant() {
    std::string name = RequireName();
    std::optional<TypeName> type;
    if (TakeWord("As")) type = TakeTypeName();
    RequireSign("=");
    return {std::move(name), std::move(type), TakeExpression()};
  }

  IfStatement TakeIf() {
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

  // #If condition Then … #ElseIf … #Else … #EndIf
  IfStatement TakeConditional() {
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

  CaseTest TakeCaseTest() {
    if (TakeWord("IsA")) return {"IsA", std::nullopt, std::nullopt, TakeTypeName()};
    if (TakeWord("Is")) {
      if (!Is(TokenKind::kSign)) FailExpecting("a comparison");
      std::string comparison = Take().text;
      return {std::move(comparison), TakeExpression()};
    }
    Expression low = TakeExpression();
    if (TakeWord("To")) return {"To", std::move(low), TakeExpression()};
    return {"=", std::move(low)};
  }

  SelectStatement TakeSelect() {
    RequireWord("Case");
    SelectStatement statement{TakeExpression(), {}, {}};
    RequireLineEnd();
    SkipEmptyLines();
    while (IsWord("Case") && !zkt::IsSameName(Following().text, "Else")) {
      Take();
      SelectStatement::Case& added = statement.cases.emplace_back();
      do {
        added.tests.push_back(TakeCaseTest());
      } while (TakeSign(","));
      RequireLineEnd();
      added.block = TakeBlock({"Case", "Else", "End Select"});
    }
    if (IsWord("Case")) Take();
    if (TakeWord("Else")) {
      RequireLineEnd();
      statement.otherwise = TakeBlock({"End Select"});
    }
    RequireWord("End");
    RequireWord("Select");
    return statement;
  }

  Statement TakeFor(Position at) {
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
    ForStatement statement{std::move(counter), std::move(type), std::move(from), std::move(to), std::move(step), isDown, {}};
    statement.block = TakeLoopBlock(statement.counter);
    return {at, at.line, std::move(statement)};
  }

  Block TakeLoopBlock(const Expression& counter) {
    Block block = TakeBlock({"Next"});
    Take();
    if (!IsAtLineEnd() && !zkt::IsSameName(counter.text, Current().text)) FailExpecting("'" + counter.text + "'");
    if (!IsAtLineEnd()) Take();
    return block;
  }

  LoopStatement TakeWhile() {
    LoopStatement statement{"While", TakeExpression(), {}, {}, {}};
    RequireLineEnd();
    statement.block = TakeBlock({"Wend"});
    Take();
    return statement;
  }

  LoopStatement TakeDo() {
    const auto takeUntil = [this] {
      if (IsWord("While")) throw ScriptError("Do and Loop take no While; use Until", Current().at);
      return TakeWord("Until") ? std::optional(TakeExpression()) : std::nullopt;
    };
    LoopStatement statement{"Do", {}, takeUntil(), {}, {}};
    RequireLineEnd();
    statement.block = TakeBlock({"Loop"});
    Take();
    statement.untilAfter = takeUntil();
    return statement;
  }

  JumpStatement TakeJump(bool isExit) {
    JumpStatement jump{isExit, "", ""};
    for (const char* const word : {"For", "While", "Do"})
      if (TakeWord(word)) jump.word = word;
    if (jump.word == "For" && Is(TokenKind::kWord) && !IsWord("Else")) jump.variable = RequireName();
    if (IsWord("Sub") || IsWord("Function"))
      throw ScriptError("Exit " + Current().text + " is not in the language; use Return", Current().at);
    return jump;
  }

  CatchBlock TakeCatch() {
    CatchBlock handler;
    handler.type.name = "RuntimeException";
    if (!IsAtLineEnd()) handler.name = RequireName();
    if (TakeWord("As")) handler.type = TakeTypeName();
    RequireLineEnd();
    return handler;
  }

  TryStatement TakeTry() {
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

  DeclaredArgument TakeParameter() {
    DeclaredArgument parameter;
    for (const char* const word : {"ParamArray", "Extends", "Assigns", "Optional"})
      if (IsWord(word)) FailUnsupported(std::string(word) + " in a script");
    parameter.isByRef = TakeWord("ByRef");
    if (!parameter.isByRef) TakeWord("ByVal");
    parameter.at = Current().at;
    parameter.name = RequireName();
    const bool isArray = TakeSign("(");
    if (isArray) RequireSign(")");
    RequireWord("As");
    parameter.type = TakeTypeName();
    parameter.type.isArray = isArray;
    if (IsSign("=") && parameter.isByRef) throw ScriptError("a ByRef parameter takes no default value", Current().at);
    if (TakeSign("=")) parameter.defaultValue = TakeExpression();
    return parameter;
  }

  // The parameters of a method, and the type of its result.
  void TakeSignature(FunctionDeclaration& function, bool isFunction) {
    if (TakeSign("(") && !TakeSign(")")) {
      do {
        function.parameters.push_back(TakeParameter());
      } while (TakeSign(","));
      RequireSign(")");
    }
    if (isFunction) {
      RequireWord("As");
      function.result = TakeTypeName();
      if (TakeSign("(")) {
        RequireSign(")");
        function.result->isArray = true;
      }
    }
  }

  std::string TakeText() {
    if (!Is(TokenKind::kText)) FailExpecting("a string");
    return Take().text;
  }

  DeclareStatement TakeDeclare() {
    const bool isFunction = IsWord("Function");
    if (!isFunction && !IsWord("Sub")) FailExpecting("'Function' or 'Sub'");
    Take();
    DeclareStatement statement{{RequireName(), {}, {}, {}}, "", ""};
    RequireWord("Lib");
    statement.library = TakeText();
    statement.symbol = TakeWord("Alias") ? TakeText() : statement.function.name;
    TakeSignature(statement.function, isFunction);
    return statement;
  }

  FunctionDeclaration TakeFunction() {
    const bool isFunction = zkt::IsSameName(Take().text, "Function");
    FunctionDeclaration function{RequireName(), {}, {}, {}};
    TakeSignature(function, isFunction);
    RequireLineEnd();
    function.body = TakeFunctionBody(isFunction ? "End Function" : "End Sub");
    Take();
    Take();
    return function;
  }

  // "Exception e As T" at the end catches exceptions of the whole method.
  Block TakeFunctionBody(std::string_view end) {
    const Position at = Current().at;
    Block body = TakeBlock({"Exception", end});
    if (!IsWord("Exception")) return body;
    TryStatement handled{std::move(body), {}, {}};
    while (TakeWord("Exception")) {
      handled.catches.push_back(TakeCatch());
      handled.catches.back().block = TakeBlock({"Exception", end});
    }
    Block whole;
    whole.push_back({at, at.line, std::move(handled)});
    return whole;
  }
};

}  // namespace

Block Parse(std::string_view source) { return StatementParser(SplitIntoTokens(source)).Run(); }

}  // namespace host
