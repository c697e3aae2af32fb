// Compiles declarations, assignments, calls, conditions and exception handling.
#include <limits>
#include <utility>

#include "core/arrays.h"
#include "core/classes.h"
#include "language/compiler.h"

namespace host {

namespace {

constexpr Type kExceptionType = {TypeKind::kObject, false, "RuntimeException"};

Value MakeDeclaredArray(const Type& type, std::int64_t last) {
  ArrayRef array(MakeArray(type.Element(), last));
  if (!array) throw XojoException("OutOfMemoryException", "not enough memory for the array");
  return {type, std::move(array)};
}

// Returns an action that evaluates an expression and discards its value.
Action Discard(Load load) {
  return [load = std::move(load)](Frame& frame) {
    load(frame);
    return Flow::kNext;
  };
}

// Returns the object that scripts catch. Creates it if the exception was raised without an object.
ObjectRef ObjectOf(const RaisedException& raised) {
  if (raised.object) return raised.object;
  ObjectRef object(MakeObject(FindClass(raised.className)));
  SetContent(object.Get(), raised.message, raised.errorNumber);
  return object;
}

}  // namespace

void Compiler::BeginSource() {
  redeclarableCount_ = variables_.size();
  openBlocks_ = 0;
  loops_.clear();
}

Steps Compiler::Compile(const Block& block) {
  Steps steps;
  for (const Statement& statement : block) steps.push_back(Compile(statement));
  return steps;
}

Step Compiler::Compile(const Statement& statement) try {
  const auto compile = [&](const auto& content) { return CompileContent(content); };
  return {statement.at, std::visit(compile, statement.content)};
} catch (ScriptError& error) {
  error.NotePosition(statement.at);
  throw;
}

// Variables are in scope until the end of their block.
Steps Compiler::CompileScope(const Block& block) {
  const std::size_t outer = variables_.size();
  ++openBlocks_;
  Steps steps = Compile(block);
  --openBlocks_;
  Forget(outer);
  return steps;
}

Action Compiler::CompileContent(const Declaration& declaration) {
  if (declaration.isNew && (declaration.names.size() > 1 || declaration.names.front().isArray))
    throw ScriptError("As New can declare only one variable, and not an array");
  std::vector<std::pair<Code, Load>> made;
  for (const DeclaredName& name : declaration.names) {
    TypeName typeName = declaration.type;
    typeName.isArray = name.isArray;
    const Type type = FindType(typeName);
    Load initial = CompileInitial(declaration, name, type);
    Code& variable = AddVariable(name.name, type, name.at);
    if (declaration.isStatic) {
      const auto fixed = std::make_shared<std::optional<Value>>();
      variable.PlaceIn([fixed, initial](Frame& frame) -> Value& {
        if (!*fixed) *fixed = initial(frame);
        return **fixed;
      });
      initial = variable.load;
    }
    made.emplace_back(variable, std::move(initial));
  }
  return [made = std::move(made)](Frame& frame) {
    for (const auto& [variable, initial] : made) variable.store(frame, initial(frame));
    return Flow::kNext;
  };
}

Load Compiler::CompileInitial(const Declaration& declaration, const DeclaredName& name, const Type& type) {
  if (declaration.initial) return Convert(CompileExpression(*declaration.initial), type, name.name).load;
  if (!name.isArray) return [type](Frame&) { return DefaultValue(type); };
  std::int64_t last = -1;
  if (name.upperBound) {
    const Code bound = CompileExpression(*name.upperBound);
    if (!bound.constant)
      throw ScriptError("the size of an array must be a constant; use ResizeTo for other sizes", bound.at);
    const Code converted = Convert(bound, kIntegerType, "the size of an array");
    last = converted.constant->Integer();
    if (last < -1 || last >= std::numeric_limits<std::int32_t>::max())
      throw ScriptError("an array cannot have the upper bound " + std::to_string(last), bound.at);
  }
  return [type, last](Frame&) { return MakeDeclaredArray(type, last); };
}

Action Compiler::CompileContent(const ConstantDeclaration& declaration) {
  Code value = CompileExpression(declaration.value);
  if (!value.constant) throw ScriptError("the value of Const " + declaration.name + " must be a constant", value.at);
  if (declaration.type) value = Convert(value, FindType(*declaration.type), declaration.name);
  Code& constant = AddVariable(declaration.name, value.type);
  constant = WithoutVariable(std::move(value));
  constant.text = declaration.name;
  return [](Frame&) { return Flow::kNext; };
}

Action Compiler::CompileContent(const Assignment& assignment) {
  const Code value = CompileExpression(assignment.value);
  const Code target = CompileExpression(assignment.target, &value);
  if (target.isAssigned) return Discard(target.load);
  if (!target.store) throw ScriptError(assignment.target.text + " cannot be assigned to");
  const Code converted = Convert(value, target.type, assignment.target.text);
  return [store = target.store, load = converted.load](Frame& frame) {
    store(frame, load(frame));
    return Flow::kNext;
  };
}

Action Compiler::CompileContent(const CallStatement& statement) {
  const std::string& name = statement.call.text;
  const Code call = CompileExpression(statement.call);
  if (call.variable || call.constant || call.store)
    throw ScriptError("expected a statement, but found the value " + name);
  if (call.type.kind != TypeKind::kNothing && !statement.dropsResult)
    throw ScriptError(name + " returns " + WithArticle(NameOf(call.type)) +
                      ", which must be used; write Call before it to discard the value");
  return Discard(call.load);
}

Action Compiler::CompileContent(const IfStatement& statement) {
  if (statement.isForCompiler) return CompileForCompiler(statement);
  std::vector<std::pair<Condition, Steps>> branches;
  for (const Branch& branch : statement.branches) {
    Condition condition = CompileCondition(branch.condition);
    branches.emplace_back(std::move(condition), CompileScope(branch.block));
  }
  return [branches = std::move(branches), otherwise = CompileScope(statement.otherwise)](Frame& frame) {
    for (const auto& [condition, steps] : branches)
      if (condition(frame)) return Run(steps, frame);
    return Run(otherwise, frame);
  };
}

// Only the chosen branch is compiled. #If does not open a scope.
Action Compiler::CompileForCompiler(const IfStatement& statement) {
  const Block* chosen = &statement.otherwise;
  for (const Branch& branch : statement.branches) {
    const Code condition = Convert(CompileExpression(branch.condition), kBooleanType, "#If");
    if (!condition.constant) throw ScriptError("the condition of #If must be a constant", condition.at);
    if (condition.constant->Integer() == 0) continue;
    chosen = &branch.block;
    break;
  }
  return [steps = Compile(*chosen)](Frame& frame) { return Run(steps, frame); };
}

Condition Compiler::CompileCondition(const Expression& expression) {
  const Code condition = Convert(CompileExpression(expression), kBooleanType, "a condition");
  return [load = condition.load](Frame& frame) { return load(frame).Integer() != 0; };
}

Action Compiler::CompileContent(const SelectStatement& statement) {
  const Code value = CompileExpression(statement.subject);
  if (value.type.kind == TypeKind::kNothing) throw ScriptError("Select Case takes a value, but got " + NameOf(value));
  const std::size_t outer = variables_.size();
  const auto store = Shadow(kSelectVariable, value.type).store;
  Action choose = CompileContent(statement.cases);
  Forget(outer);
  return [load = value.load, store, choose = std::move(choose)](Frame& frame) {
    store(frame, load(frame));
    return choose(frame);
  };
}

Action Compiler::CompileContent(const TryStatement& statement) {
  struct Handler {
    std::string_view className;
    Code variable;
    Steps steps;
  };
  Steps body = CompileScope(statement.body);
  std::vector<Handler> handlers;
  for (const CatchBlock& block : statement.catches) {
    const Type type = FindType(block.type);
    if (!type.Is(TypeKind::kObject) || !DerivesFrom(type, kExceptionType))
      throw ScriptError("Catch takes an exception class, but got " + NameOf(type), block.type.at);
    const std::size_t outer = variables_.size();
    Code variable;
    const bool hasType = block.type.at.line > 0;
    if (!block.name.empty())
      variable = hasType ? AddVariable(block.name, type, block.type.at) : Shadow(block.name, type);
    handlers.push_back({type.name, variable, CompileScope(block.block)});
    Forget(outer);
  }
  return [body = std::move(body), handlers = std::move(handlers),
          finally = CompileScope(statement.finally)](Frame& frame) {
    Flow flow = Flow::kNext;
    std::exception_ptr pending;
    const Handler* handler = nullptr;
    try {
      flow = Run(body, frame);
    } catch (const XojoException& exception) {
      pending = std::current_exception();
      const ObjectRef object = ObjectOf(exception.Raised());
      for (const Handler& candidate : handlers)
        if (handler == nullptr && object->type->IsA(candidate.className)) handler = &candidate;
      if (handler != nullptr && handler->variable.store)
        handler->variable.store(frame, {handler->variable.type, Ref<RefCounted>(object)});
    }
    if (handler != nullptr) try {
        pending = nullptr;
        flow = Run(handler->steps, frame);
      } catch (const XojoException&) {
        pending = std::current_exception();
      }
    if (const Flow last = Run(finally, frame); last != Flow::kNext) return last;
    if (pending) std::rethrow_exception(pending);
    return flow;
  };
}

Action Compiler::CompileContent(const RaiseStatement& statement) {
  const Code exception = Convert(CompileExpression(statement.exception), kExceptionType, "Raise");
  return [load = exception.load](Frame& frame) -> Flow {
    const Value value = load(frame);
    if (value.Reference() == nullptr) throw XojoException("NilObjectException", "Raise of Nil");
    throw XojoException(Describe(Retained(value.Object())));
  };
}

Action Compiler::CompileContent(const ReturnStatement& statement) {
  const Type result = signature_ != nullptr ? signature_->result : Type();
  if (!statement.value) {
    if (result.kind != TypeKind::kNothing)
      throw ScriptError("Return takes " + WithArticle(NameOf(result)) + ", the method's result");
    return [](Frame&) { return Flow::kReturn; };
  }
  if (result.kind == TypeKind::kNothing) throw ScriptError("a Sub returns no value");
  const Code value = Convert(CompileExpression(*statement.value), result, "Return");
  return [load = value.load](Frame& frame) {
    frame.result = load(frame);
    return Flow::kReturn;
  };
}

// Generates no code, because methods are compiled before the other statements of the script.
Action Compiler::CompileContent(const FunctionDeclaration& /*declaration*/) {
  return [](Frame&) { return Flow::kNext; };
}

}  // namespace host
