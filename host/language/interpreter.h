// Compiles and runs Xojo source.
#pragma once

#include <iosfwd>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "language/compiler.h"

namespace host {

class Interpreter {
 public:
  // The catalogue must outlive the interpreter. Print writes to `out`.
  Interpreter(const Catalogue& catalogue, std::ostream& out);
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  // Compiles the whole source and then runs it. Later sources see the variables and methods of earlier sources, and may
  // redeclare the variables. Throws ScriptError if the source does not compile, in which case nothing runs, or if it
  // uses an unsupported feature. Throws XojoException for an uncaught exception. With `show`, prints each line of code
  // before its output.
  void Run(std::string_view source, bool show = false);

  // All names that completion offers.
  std::vector<std::string_view> Names() const { return compiler_.Names(); }

 private:
  void AddFunction(std::string owner, const char* declaration, std::function<Value(const std::vector<Argument>&)> call);
  Steps Compile(const Block& block);

  std::ostream& out_;
  Program program_;
  Compiler compiler_;
  Frame frame_;
  std::list<Block> sources_;  // kept, because compiled methods point into these syntax trees
};

// Returns "FILE:LINE:COLUMN: message", or "LINE:COLUMN: message" if `file` is empty.
std::string Describe(const ScriptError& error, const std::string& file);

// Returns "FILE:LINE: CLASS: message (error NUMBER)", or "CLASS: message (error NUMBER)" if `file` is empty.
std::string Describe(const XojoException& exception, const std::string& file);

}  // namespace host
