// Runs straight-line Xojo code: declarations, assignments, calls, properties, Print.
#pragma once

#include <iosfwd>
#include <string_view>

#include "language/evaluator.h"

namespace host {

class Interpreter {
 public:
  // The catalogue has to outlive the interpreter; Print writes to `out`.
  Interpreter(const Catalogue& catalogue, std::ostream& out) : evaluator_(catalogue, out), out_(out) {}

  // Runs one line; nothing of it, if it cannot be read. Throws XojoException for an exception that the code raises,
  // ScriptError for code that is wrong.
  void RunLine(std::string_view line);

  // Runs all lines. An exception that a line raises is shown, and the next line runs; everything else that goes wrong
  // ends the script with a ScriptError that tells the line's number. `show` prints each line before what it prints.
  void RunScript(std::string_view script, bool show = false);

 private:
  Evaluator evaluator_;
  std::ostream& out_;
};

}  // namespace host
