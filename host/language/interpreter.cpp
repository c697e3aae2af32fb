#include "language/interpreter.h"

#include <ostream>

#include "language/errors.h"
#include "language/evaluator.h"
#include "language/lexer.h"

namespace host {

void Interpreter::RunLine(std::string_view line) { Evaluator(catalogue_, out_, variables_).Run(Parse(line)); }

void Interpreter::RunScript(std::string_view script) {
  for (const ScriptLine& line : SplitIntoLines(script)) {
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
