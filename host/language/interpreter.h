// Runs straight-line Xojo code: declarations, assignments, calls, properties, Print.
#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <string_view>

#include "language/catalogue.h"

namespace host {

using Variables = std::map<std::string, Value, NameOrder>;

class Interpreter {
 public:
  // The catalogue has to outlive the interpreter; Print writes to `out`.
  Interpreter(const Catalogue& catalogue, std::ostream& out) : catalogue_(catalogue), out_(out) {}

  // Runs one line; nothing of it, if it cannot be read. Throws XojoException for an exception that the code raises,
  // ScriptError for code that is wrong.
  void RunLine(std::string_view line);

  // Runs all lines. An exception that a line raises is shown, and the next line runs; everything else that goes wrong
  // ends the script with a ScriptError that tells the line's number. `show` prints each line before what it prints.
  void RunScript(std::string_view script, bool show = false);

 private:
  const Catalogue& catalogue_;
  std::ostream& out_;
  Variables variables_;
};

}  // namespace host
