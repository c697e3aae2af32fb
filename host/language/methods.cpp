// Compiles methods and Declare statements.
#include <dlfcn.h>

#include <utility>

#include "core/text_order.h"
#include "language/compiler.h"

namespace host {

namespace {

// Formats a default value as it appears in a declaration.
std::string LiteralText(const Expression& value) {
  if (value.kind != ExpressionKind::kLiteral || value.token == TokenKind::kColor)
    throw ScriptError("a default value must be a literal", value.at);
  return value.token == TokenKind::kText ? "\"" + value.text + "\"" : value.text;
}

// Formats the initial value of a type as it appears in a declaration.
std::string InitialText(const Type& type) {
  if (type == kStringType) return "\"\"";
  return type == kBooleanType ? "False" : type.IsNumber() ? "0" : "Nil";
}

}  // namespace

std::unique_ptr<Function> Compiler::MakeFunction(const FunctionDeclaration& declaration) const {
  auto function = std::make_unique<Function>();
  Signature& signature = function->signature;
  signature.name = declaration.name;
  for (const DeclaredArgument& parameter : declaration.parameters) {
    const Type type = FindType(parameter.type);
    std::string_view defaultValue;
    if (parameter.isExtends && !signature.parameters.empty())
      throw ScriptError("only the first parameter can have Extends", parameter.at);
    if (!signature.parameters.empty() && signature.parameters.back().isParamArray)
      throw ScriptError("no parameter can follow ParamArray", parameter.at);
    if (parameter.defaultValue || parameter.isOptional) {
      defaultValue = function->defaults.emplace_back(parameter.defaultValue ? LiteralText(*parameter.defaultValue)
                                                                            : InitialText(type));
      if (!FindConversion(ReadDefault(defaultValue), type))
        throw ScriptError(parameter.name + " takes " + WithArticle(NameOf(type)) + ", but its default value is " +
                              std::string(defaultValue),
                          parameter.at);
    } else if (!parameter.isParamArray && !signature.parameters.empty() &&
               !signature.parameters.back().defaultValue.empty()) {
      throw ScriptError("parameters with default values must come last", parameter.at);
    }
    signature.parameters.push_back(
        {parameter.name, type, parameter.isByRef, parameter.isExtends, false, defaultValue, parameter.isParamArray});
  }
  if (declaration.result) signature.result = FindType(*declaration.result);
  return function;
}

Function& Compiler::Declare(Program& program, const FunctionDeclaration& declaration, Position at) {
  auto function = Compiler(program).MakeFunction(declaration);
  function->at = at;
  const Signature& signature = function->signature;
  for (const auto& other : program.functions)
    if (other->owner.empty() && IsSameIdentifier(other->signature.name, signature.name) &&
        HasSameParameters(other->signature, signature))
      throw ScriptError(declaration.name + " is already declared with these parameters", at);
  return *program.functions.emplace_back(std::move(function));
}

void Compiler::CompileBody(Program& program, const FunctionDeclaration& declaration, Function& function) {
  Compiler compiler(program);
  compiler.signature_ = &function.signature;
  std::vector<std::size_t> slots;
  for (const Parameter& parameter : function.signature.parameters) {
    slots.push_back(compiler.slotCount_);
    compiler.AddVariable(std::string(parameter.name), parameter.type, function.at);
  }
  Steps body = compiler.Compile(declaration.body);
  function.call = [body = std::move(body), slotCount = compiler.slotCount_, slots = std::move(slots),
                   result = function.signature.result](const std::vector<Argument>& arguments) {
    const FrameGuard guard;
    Frame& frame = FrameGuard::Begin();
    frame.slots.resize(slotCount);
    frame.result = DefaultValue(result);
    for (std::size_t i = 0; i < slots.size(); ++i) frame.slots[slots[i]] = {arguments[i].value, arguments[i].variable};
    Run(body, frame);
    return std::move(frame.result);
  };
}

Action Compiler::CompileContent(const DeclareStatement& statement) {
  auto function = MakeFunction(statement.function);
  for (const Parameter& parameter : function->signature.parameters)
    if (parameter.type.IsReference())
      throw ScriptError("a parameter of type " + NameOf(parameter.type) + " is not supported here in Declare");
  if (function->signature.result.IsReference())
    throw ScriptError("a result of type " + NameOf(function->signature.result) + " is not supported here in Declare");
  void* const library = ::dlopen(statement.library.c_str(), RTLD_NOW);
  void* const symbol = library != nullptr ? ::dlsym(library, statement.symbol.c_str()) : nullptr;
  if (library == nullptr) throw ScriptError("cannot load the library " + statement.library);
  if (symbol == nullptr) throw ScriptError(statement.library + " has no " + statement.symbol);
  function->call = [symbol, result = function->signature.result](const std::vector<Argument>& arguments) {
    const FrameGuard guard;
    return CallNative(symbol, arguments, result);
  };
  declared_.push_back(std::move(function));
  return [](Frame&) { return Flow::kNext; };
}

}  // namespace host
