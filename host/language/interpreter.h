// Compiles and runs Xojo source.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "language/compiler.h"

namespace host {

class Interpreter {
 public:
  // The catalogue has to outlive the interpreter; Print writes to `out`.
  Interpreter(const Catalogue& catalogue, std::ostream& out);
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  // Compiles the whole source and then runs it. Later sources see the variables and methods of earlier ones, and may
  // declare a variable again. Throws ScriptError for code that does not compile, of which nothing runs, and for what
  // the host cannot do; XojoException for an exception that nobody caught. `show` prints each line before what it
  // prints.
  void Run(std::string_view source, bool show = false);

  // What a name can be, for completion.
  std::vector<std::string_view> Names() const { return compiler_.Names(); }

 private:
  struct Statements {
    Block block;
    std::vector<std::pair<Step, int>> steps = {};  // with the last line of each statement
  };

  void AddFunction(std::string owner, const char* declaration, std::function<Value(const std::vector<Argument>&)> call);
  void Compile(Statements& statements);

  std::ostream& out_;
  Program program_;
  Compiler compiler_;
  Frame frame_;
  std::vector<std::unique_ptr<Statements>> sources_;  // compiled methods point into the trees
};

// "FILE:LINE:COLUMN: message"; without a file only the rest.
std::string Describe(const ScriptError& error, const std::string& file);

// "FILE:LINE: CLASS: message (error NUMBER)"; without a file only what follows the line.
std::string Describe(const XojoException& exception, const std::string& file);

}  // namespace host
