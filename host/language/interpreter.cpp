#include "language/interpreter.h"

#include <ostream>
#include <sstream>

#include "declarations/errors.h"
#include "language/lexer.h"

namespace host {

void Interpreter::RunLine(std::string_view line) { evaluator_.Run(Parse(line)); }

void Interpreter::RunScript(std::string_view script, bool show) {
  std::istringstream source{std::string(script)};
  int shown = 0;
  for (const ScriptLine& line : SplitIntoLines(script)) {
    for (std::string text; show && shown < line.number && std::getline(source, text); ++shown)
      out_ << (text.starts_with('\'') ? "\n" : "  > ") << text << '\n';
    try {
      RunLine(line.text);
    } catch (const XojoException& exception) {
      out_ << exception.what() << '\n';
    } catch (const std::exception& error) {
      throw ScriptError("line " + std::to_string(line.number) + ": " + error.what());
    }
  }
}

}  // namespace host
