#include "language/token_reader.h"

#include <algorithm>

#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

// clang-format off
constexpr std::string_view kReservedWords[] = {
    "AddHandler", "AddressOf", "And", "Array", "As", "Assigns", "Break", "ByRef", "ByVal", "Call", "Case", "Catch",
    "Class", "Const", "Continue", "CType", "Declare", "Delegate", "Dim", "Do", "DownTo", "Each", "Else", "ElseIf",
    "End", "Enum", "Event", "Exception", "Exit", "Extends", "False", "Finally", "For", "Function", "Global", "GoTo",
    "Handles", "If", "Implements", "In", "Inherits", "Interface", "Is", "IsA", "Lib", "Loop", "Me", "Mod", "Module",
    "Namespace", "New", "Next", "Nil", "Not", "Object", "Of", "Optional", "Or", "ParamArray", "Private", "Property",
    "Protected", "Public", "Raise", "RaiseEvent", "ReDim", "Rem", "RemoveHandler", "Return", "Select", "Self",
    "Shared", "Static", "Step", "Structure", "Sub", "Super", "Then", "To", "True", "Try", "Until", "Using", "Var",
    "WeakAddressOf", "Wend", "While", "With", "Xor"};
// clang-format on

bool IsReservedWord(std::string_view word) {
  return std::ranges::any_of(kReservedWords,
                             [&](std::string_view reserved) { return zkt::IsSameName(reserved, word); });
}

std::string Quoted(const Token& token) {
  if (token.kind == TokenKind::kLineEnd || token.kind == TokenKind::kEnd) return "the end of the line";
  return token.kind == TokenKind::kText ? "\"" + token.text + "\"" : "'" + token.text + "'";
}

}  // namespace

bool TokenReader::Accept(std::string_view text) {
  if (!Is(text)) return false;
  ++next_;
  return true;
}

void TokenReader::Require(std::string_view text) {
  if (!Accept(text)) FailExpecting("'" + std::string(text) + "'");
}

std::string TokenReader::RequireName() {
  if (!Is(TokenKind::kWord)) FailExpecting("a name");
  if (IsReservedWord(Current().text))
    throw ScriptError("expected a name, but '" + Current().text + "' is a reserved word", Current().at);
  return Take().text;
}

std::string TokenReader::RequireMemberName() {
  if (!Is(TokenKind::kWord)) FailExpecting("a name after '.'");
  return Take().text;
}

void TokenReader::RequireLineEnd() {
  if (!Is(TokenKind::kLineEnd)) FailExpecting("the end of the line");
  ++next_;
}

void TokenReader::FailExpecting(const std::string& wanted, const std::string& found) const {
  if (Is(TokenKind::kEnd))
    throw IncompleteError("expected " + wanted + ", but found the end of the script", Current().at);
  throw ScriptError("expected " + wanted + ", but found " + (found.empty() ? Quoted(Current()) : "'" + found + "'"),
                    Current().at);
}

void TokenReader::FailUnsupported(std::string_view feature) const {
  throw ScriptError(std::string(feature) + " is not supported here", Current().at);
}

}  // namespace host
