// Runs straight-line Xojo code: declarations, assignments, calls, properties, Print.
#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>

#include "language/catalogue.h"
#include "language/conversion.h"

namespace host {

class Interpreter {
 public:
  // The catalogue has to outlive the interpreter; Print writes to `out`.
  Interpreter(const Catalogue& catalogue, std::ostream& out) : catalogue_(catalogue), out_(out) {}

  // Runs one line. Throws XojoException for an exception that the code raises, ScriptError for code that is wrong.
  void RunLine(std::string_view line);

  // Runs all lines. An exception that a line raises is shown, and the next line runs; code that is wrong ends the
  // script, with the line's number in the error.
  void RunScript(std::string_view script);

 private:
  friend class LineReader;

  const Catalogue& catalogue_;
  std::ostream& out_;
  std::map<std::string, Value, NameOrder> variables_;
};

}  // namespace host
