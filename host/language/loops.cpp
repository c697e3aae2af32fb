// Compiles For, For Each, While, Do, Exit and Continue.
#include <utility>

#include "core/arrays.h"
#include "core/text_order.h"
#include "declarations/value_order.h"
#include "language/compiler.h"
#include "language/operators.h"

namespace host {

namespace {

// The outcome of an iteration: whether the loop continues, and if not, where execution continues.
struct Round {
  bool goesOn = true;
  Flow flow = Flow::kNext;
};

Round RunRound(const std::pair<Steps, std::size_t>& loop, Frame& frame) {
  const Flow flow = Run(loop.first, frame);
  if (flow == Flow::kNext || (flow == Flow::kContinue && frame.loop == loop.second)) return {};
  return {false, flow == Flow::kExit && frame.loop == loop.second ? Flow::kNext : flow};
}

}  // namespace

std::pair<Steps, std::size_t> Compiler::CompileLoop(const Block& block, const std::string& word,
                                                    const std::string& variable) {
  const std::size_t number = ++loopCount_;
  loops_.push_back({number, word, variable});
  Steps steps = CompileScope(block);
  loops_.pop_back();
  return {std::move(steps), number};
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
  auto loop = CompileLoop(statement.block, "For", counter.text);
  Forget(outer);
  return [counter, start, last, step, loop = std::move(loop), isDown = statement.isDown](Frame& frame) {
    counter.store(frame, start.load(frame));
    for (;;) {
      const Value by = step(frame);
      const bool goesDown = isDown != (CompareValues(by, MakeValue(0)) < 0);
      const std::int64_t order = CompareValues(counter.load(frame), last.load(frame));
      if (goesDown ? order < 0 : order > 0) return Flow::kNext;
      if (const Round round = RunRound(loop, frame); !round.goesOn) return round.flow;
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
  const Code& source = AddVariable("For Each", list.type.Element());
  const Code converted = Convert(source, element.type, statement.element.text);
  const auto place = source.store;
  auto loop = CompileLoop(statement.block, "For", statement.element.text);
  Forget(outer);
  return [list = list.load, place, element, converted, loop = std::move(loop)](Frame& frame) {
    const Value array = list(frame);
    if (array.Reference() == nullptr) throw XojoException("NilObjectException", "For Each of an array that is Nil");
    for (std::int64_t i = 0; i <= UpperBound(array.Array()); ++i) {
      place(frame, GetElement(array.Array(), i));
      element.store(frame, converted.load(frame));
      if (const Round round = RunRound(loop, frame); !round.goesOn) return round.flow;
    }
    return Flow::kNext;
  };
}

Action Compiler::CompileContent(const LoopStatement& statement) {
  const auto compile = [this](const std::optional<Expression>& condition) {
    return condition ? CompileCondition(*condition) : Condition();
  };
  Condition whileTrue = compile(statement.whileTrue);
  Condition untilBefore = compile(statement.untilBefore);
  auto loop = CompileLoop(statement.block, statement.word, "");
  return [whileTrue, untilBefore, loop = std::move(loop), untilAfter = compile(statement.untilAfter)](Frame& frame) {
    for (;;) {
      if (whileTrue && !whileTrue(frame)) return Flow::kNext;
      if (untilBefore && untilBefore(frame)) return Flow::kNext;
      if (const Round round = RunRound(loop, frame); !round.goesOn) return round.flow;
      if (untilAfter && untilAfter(frame)) return Flow::kNext;
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
