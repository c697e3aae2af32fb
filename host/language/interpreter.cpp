#include "language/interpreter.h"

#include <iostream>
#include <sstream>
#include <utility>

namespace host {

Interpreter::Interpreter(const Catalogue& catalogue, std::ostream& out)
    : out_(out), program_{catalogue}, compiler_(program_) {
  const auto write = [this](const char* end) {
    return [this, end](const std::vector<Argument>& arguments) {
      out_ << arguments.front().value.Text() << end;
      return Value();
    };
  };
  AddFunction("", "Print(text As String)", write("\n"));
  AddFunction("", "MessageBox(text As String)", write("\n"));
  AddFunction("System", "DebugLog(text As String)", write("\n"));
  AddFunction("", "Input As String", [](const std::vector<Argument>&) {
    std::string line;
    std::getline(std::cin, line);
    return MakeValue(line);
  });
  AddFunction("StdOut", "WriteLine(text As String)", write("\n"));
  AddFunction("StdOut", "Write(text As String)", write(""));
}

void Interpreter::AddFunction(std::string owner, const char* declaration,
                              std::function<Value(const std::vector<Argument>&)> call) {
  auto function = std::make_unique<Function>();
  function->owner = std::move(owner);
  function->signature = program_.catalogue.Read(declaration);
  function->call = std::move(call);
  program_.functions.push_back(std::move(function));
}

void Interpreter::Run(std::string_view source, bool show) {
  const Block& block = sources_.emplace_back(Parse(source));
  compiler_.BeginSource();
  const std::size_t variableCount = compiler_.VariableCount();
  const std::size_t functionCount = program_.functions.size();
  Steps steps;
  try {
    steps = Compile(block);
  } catch (...) {
    compiler_.Forget(variableCount);
    program_.functions.resize(functionCount);
    throw;
  }
  frame_.slots.resize(compiler_.SlotCount());
  std::istringstream lines{std::string(source)};
  int shown = 0;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    for (std::string line; show && shown < block[i].lastLine && std::getline(lines, line); ++shown)
      out_ << (line.starts_with('\'') ? "\n" : "  > ") << line << '\n';
    if (host::Run({steps[i]}, frame_) == Flow::kReturn) return;
  }
}

Steps Interpreter::Compile(const Block& block) {
  std::vector<std::pair<const FunctionDeclaration*, Function*>> methods;
  for (const Statement& statement : block)
    if (const auto* const method = std::get_if<FunctionDeclaration>(&statement.content))
      methods.emplace_back(method, &Compiler::Declare(program_, *method, statement.at));
  for (const auto& [declaration, function] : methods) Compiler::CompileBody(program_, *declaration, *function);
  return compiler_.Compile(block);
}

std::string Describe(const ScriptError& error, const std::string& file) {
  std::string where = file.empty() ? "" : file + ":";
  if (error.At().line > 0) where += std::to_string(error.At().line) + ":" + std::to_string(error.At().column) + ":";
  return where + (where.empty() ? "" : " ") + error.what();
}

std::string Describe(const XojoException& exception, const std::string& file) {
  if (file.empty()) return exception.what();
  return file + ":" + (exception.Line() > 0 ? std::to_string(exception.Line()) + ":" : "") + " " + exception.what();
}

}  // namespace host
