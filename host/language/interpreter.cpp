#include "language/interpreter.h"

#include <iostream>
#include <sstream>
#include <utility>

namespace host {

namespace {

std::string InputLine() {
  std::string line;
  std::getline(std::cin, line);
  return line;
}

// Prints the lines of the source as they run.
class Listing {
 public:
  Listing(std::string_view source, std::ostream& out) : source_{std::string(source)}, out_(out) {}

  void ShowTo(int lastLine) {
    for (std::string text; shown_ < lastLine && std::getline(source_, text); ++shown_)
      out_ << (text.starts_with('\'') ? "\n" : "  > ") << text << '\n';
  }

 private:
  std::istringstream source_;
  std::ostream& out_;
  int shown_ = 0;
};

}  // namespace

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
  AddFunction("", "Input As String", [](const std::vector<Argument>&) { return MakeValue(InputLine()); });
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
  Statements& statements = *sources_.emplace_back(std::make_unique<Statements>(Statements{Parse(source)}));
  compiler_.AllowRedeclaration();
  const std::size_t variableCount = compiler_.VariableCount();
  const std::size_t functionCount = program_.functions.size();
  try {
    Compile(statements);
  } catch (...) {
    compiler_.Forget(variableCount);
    program_.functions.resize(functionCount);
    throw;
  }
  frame_.slots.resize(compiler_.SlotCount());
  Listing listing(source, out_);
  for (const auto& [step, lastLine] : statements.steps) {
    if (show) listing.ShowTo(lastLine);
    if (host::Run({step}, frame_) == Flow::kReturn) return;
  }
}

void Interpreter::Compile(Statements& statements) {
  std::vector<std::pair<const FunctionDeclaration*, Function*>> methods;
  for (const Statement& statement : statements.block)
    if (const auto* const method = std::get_if<FunctionDeclaration>(&statement.content))
      methods.emplace_back(method, &Compiler::Declare(program_, *method, statement.at));
  for (const auto& [declaration, function] : methods) Compiler::CompileBody(program_, *declaration, *function);
  for (const Statement& statement : statements.block)
    statements.steps.emplace_back(compiler_.Compile(statement), statement.lastLine);
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
