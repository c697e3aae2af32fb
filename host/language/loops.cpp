// Compiles For, For Each, While, Do, Exit and Continue.
#include <utility>

#include "core/arrays.h"
#include "core/text_order.h"
#include "declarations/numbers.h"
#include "declarations/value_order.h"
#include "language/compiler.h"

namespace host {

Compiler::Iteration Compiler::CompileLoop(const Block& block, const std::string& word, const std::string& variable) {
  const std::size_t number = ++loopCount_;
  loops_.push_back({number, word, variable});
  Steps steps = CompileScope(block);
  loops_.pop_back();
  return [number, steps = std::move(steps)](Frame& frame) -> std::optional<Flow> {
    const Flow flow = Run(steps, frame);
    const bool isThisLoop = frame.loop == number;
    if (flow == Flow::kNext || (flow == Flow::kContinue && isThisLoop)) return std::nullopt;
    return flow == Flow::kExit && isThisLoop ? Flow::kNext : flow;
  };
}

Code Compiler::CompileCounter(const Expression& counter, const std::optional<TypeName>& type) {
  if (type) return AddVariable(counter.text, FindType(*type), counter.at);
  Code code = CompileExpression(counter);
  if (!code.store)
    throw ScriptError("For takes a variable, but " + counter.text + " cannot be assigned to", counter.at);
  return code;
}

Action Compiler::CompileContent(const ForStatement& statement) {
  const std::size_t outer = variables_.size();
  const Code from = CompileExpression(statement.from);
  const Code counter = CompileCounter(statement.counter, statement.type);
  if (!counter.type.IsNumber()) throw ScriptError("For takes a number, but got " + NameOf(counter.type));
  const Code start = Convert(from, counter.type, counter.text);
  const Code last = Convert(CompileExpression(statement.to), counter.type, "To");
  Load step = [type = counter.type](Frame&) { return *NumberAs(MakeValue(1), type); };
  if (statement.step) step = Convert(CompileExpression(*statement.step), counter.type, "Step").load;
  auto iterate = CompileLoop(statement.block, "For", counter.text);
  Forget(outer);
  return [counter, start, last, step, iterate = std::move(iterate), isDown = statement.isDown](Frame& frame) {
    counter.store(frame, start.load(frame));
    for (;;) {
      const Value by = step(frame);
      const bool goesDown = isDown != (CompareValues(by, MakeValue(0)) < 0);
      const std::int64_t order = CompareValues(counter.load(frame), last.load(frame));
      if (goesDown ? order < 0 : order > 0) return Flow::kNext;
      if (const auto flow = iterate(frame)) return *flow;
      const Value next = Compute(isDown ? '-' : '+', counter.load(frame), by);
      const auto fitting = NumberAs(next, counter.type);
      if (!fitting) throw ScriptError("the counter " + counter.text + " is out of range for its type");
      counter.store(frame, *fitting);
    }
  };
}

Action Compiler::CompileContent(const ForEachStatement& statement) {
  const std::size_t outer = variables_.size();
  const Code list = CompileExpression(statement.list);
  if (!list.type.isArray) throw ScriptError("For Each takes an array, but got " + NameOf(list));
  const Code element = CompileCounter(statement.element, statement.type);
  // The loop stores each element in a hidden variable, and the conversion reads the element from there.
  const Code& source = Shadow("For Each", list.type.Element());
  const Code converted = Convert(source, element.type, statement.element.text);
  const auto place = source.store;
  auto iterate = CompileLoop(statement.block, "For", statement.element.text);
  Forget(outer);
  return [list = list.load, place, element, converted, iterate = std::move(iterate)](Frame& frame) {
    const Value array = list(frame);
    if (array.Reference() == nullptr) throw XojoException("NilObjectException", "For Each of an array that is Nil");
    for (std::int64_t i = 0; i <= UpperBound(array.Array()); ++i) {
      place(frame, GetElement(array.Array(), i));
      element.store(frame, converted.load(frame));
      if (const auto flow = iterate(frame)) return *flow;
    }
    return Flow::kNext;
  };
}

Action Compiler::CompileContent(const LoopStatement& statement) {
  const auto compile = [this](const std::optional<Expression>& condition) {
    return condition ? CompileCondition(*condition) : Condition();
  };
  const bool isWhile = statement.word == "While";
  Condition before = compile(statement.before);
  auto iterate = CompileLoop(statement.block, statement.word, "");
  return [isWhile, before, iterate = std::move(iterate), after = compile(statement.after)](Frame& frame) {
    for (;;) {
      if (before && before(frame) != isWhile) return Flow::kNext;
      if (const auto flow = iterate(frame)) return *flow;
      if (after && after(frame)) return Flow::kNext;
    }
  };
}

Action Compiler::CompileContent(const JumpStatement& statement) {
  const std::string name = std::string(statement.isExit ? "Exit" : "Continue") +
                           (statement.word.empty() ? "" : " " + statement.word) +
                           (statement.variable.empty() ? "" : " " + statement.variable);
  for (auto loop = loops_.rbegin(); loop != loops_.rend(); ++loop) {
    if (!statement.word.empty() && loop->word != statement.word) continue;
    if (!statement.variable.empty() && !IsSameIdentifier(loop->variable, statement.variable)) continue;
    return [number = loop->number, flow = statement.isExit ? Flow::kExit : Flow::kContinue](Frame& frame) {
      frame.loop = number;
      return flow;
    };
  }
  throw ScriptError(name + " is not inside a matching loop");
}

}  // namespace host
