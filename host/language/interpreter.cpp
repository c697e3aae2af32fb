#include "language/interpreter.h"

#include <limits>
#include <ostream>
#include <sstream>
#include <utility>

#include "core/arrays.h"
#include "declarations/errors.h"
#include "declarations/numbers.h"
#include "language/lexer.h"
#include "language/ready_functions.h"

namespace host {

namespace {

// A number that is written out is as exact as the Currency that it is computed with.
Value BesideCurrency(const Operand& operand, const Operand& other) {
  if (other.value.type.basic == Basic::kCurrency && !operand.digits.empty())
    if (const auto scaled = ReadCurrency(operand.digits)) return {kCurrencyType, *scaled};
  return operand.value;
}

Value Combine(char sign, const Operand& a, const Operand& b) {
  if (sign == '+' && a.value.type == kStringType && b.value.type == kStringType)
    return MakeValue(a.value.Text() + b.value.Text());
  if (sign == '+' || sign == '-') return Compute(sign, BesideCurrency(a, b), BesideCurrency(b, a));
  return Compute(sign, a.value, b.value);
}

}  // namespace

void Interpreter::RunLine(std::string_view line) {
  const Statement statement = Parse(line);
  switch (statement.kind) {
    case StatementKind::kNothing:
      return;
    case StatementKind::kDeclare:
      for (const DeclaredGroup& group : statement.groups) Declare(group);
      return;
    case StatementKind::kPrint:
      return Print(statement.expressions);
    case StatementKind::kCall:
      Load(statement.expressions.front());
      return;
    case StatementKind::kAssign:
      return Assign(statement.expressions[0], statement.expressions[1]);
  }
}

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

void Interpreter::Declare(const DeclaredGroup& group) {
  const Type plain = catalogue_.FindType(group.typeName, false);
  const std::optional<Operand> initial = group.initial ? std::optional(Load(*group.initial)) : std::nullopt;
  for (const DeclaredName& declared : group.names) {
    const Type type = declared.isArray ? plain.ArrayOf() : plain;
    Value value;
    if (group.isNew && declared.isArray) throw ScriptError("an array cannot be made with New");
    if (group.isNew)
      value = MakeNew(catalogue_, group.typeName, LoadAll(group.arguments));
    else if (initial)
      value = As(type, *initial);
    else
      value = declared.isArray ? MakeDeclaredArray(plain, declared.upperBound.get()) : DefaultValue(type);
    variables_[declared.name] = value;
  }
}

Value Interpreter::MakeDeclaredArray(const Type& type, const Expression* upperBound) {
  std::int64_t last = -1;
  if (upperBound != nullptr) last = As(kIntegerType, Load(*upperBound)).Integer();
  if (last < -1 || last >= std::numeric_limits<std::int32_t>::max())
    throw ScriptError("an array cannot have the upper bound " + std::to_string(last));
  ArrayRef array(MakeArray(type, last));
  if (!array) throw ScriptError("there is no memory for the array");
  return {type.ArrayOf(), std::move(array)};
}

void Interpreter::Print(const std::vector<Expression>& expressions) {
  std::string text;
  for (const Expression& expression : expressions)
    text += (&expression != expressions.data() ? " " : "") + Show(Load(expression).value);
  out_ << text << '\n';
}

void Interpreter::Assign(const Expression& target, const Expression& value) {
  if (target.kind == ExpressionKind::kElement) {
    const Operand base = Load(*target.base);
    const std::vector<Operand> arguments = LoadAll(target.arguments);
    return StoreElement(base, arguments, Load(value));
  }
  const Place place = Find(target);
  std::vector<Operand> arguments = LoadAll(target.arguments);
  if (place.method) {
    arguments.push_back(Load(value));
    Call(place, std::move(arguments), true);
  } else if (target.hasArguments && !place.builtIn) {
    const Operand array = LoadFrom(place);
    StoreElement(array, arguments, Load(value));
  } else {
    StoreTo(place, Load(value));
  }
}

Operand Interpreter::Load(const Expression& expression) {
  switch (expression.kind) {
    case ExpressionKind::kLiteral:
      return expression.literal;
    case ExpressionKind::kNew:
      return {MakeNew(catalogue_, expression.text, LoadAll(expression.arguments))};
    case ExpressionKind::kAddressOf: {
      const ReadyFunction* const function = FindReadyFunction(expression.text);
      if (function == nullptr) throw ScriptError("there is no function " + expression.text + " to take the address of");
      return {{}, nullptr, false, function};
    }
    case ExpressionKind::kChain:
      return LoadChain(expression);
    case ExpressionKind::kElement: {
      const Operand base = Load(*expression.base);
      return LoadElement(base, LoadAll(expression.arguments));
    }
    default:
      return LoadNamed(expression);
  }
}

Operand Interpreter::LoadChain(const Expression& expression) {
  Operand result = Load(expression.arguments.front());
  result.variable = nullptr;
  for (std::size_t i = 0; i < expression.signs.size(); ++i)
    result = {Combine(expression.signs[i], result, Load(expression.arguments[i + 1]))};
  return result;
}

Operand Interpreter::LoadNamed(const Expression& expression) {
  if (expression.kind == ExpressionKind::kName && !variables_.contains(expression.text)) {
    if (zkt::IsSameName(expression.text, "Array")) return MakeArrayLiteral(LoadAll(expression.arguments));
    if (zkt::IsSameName(expression.text, "EndOfLine")) return {MakeValue("\n")};
  }
  const Place place = Find(expression);
  if (place.builtIn) return *place.builtIn;
  std::vector<Operand> arguments = LoadAll(expression.arguments);
  if (place.method) return Call(place, std::move(arguments), false);
  Operand value = LoadFrom(place);
  return expression.hasArguments && !arguments.empty() ? LoadElement(value, arguments) : value;
}

std::vector<Operand> Interpreter::LoadAll(const std::vector<Expression>& expressions) {
  std::vector<Operand> operands;
  operands.reserve(expressions.size());
  for (const Expression& expression : expressions) operands.push_back(Load(expression));
  return operands;
}

Value Interpreter::As(const Type& type, const Operand& operand) const {
  const auto converted = Convert(operand, type, catalogue_);
  if (converted) return converted->value;
  const std::string shown =
      operand.function != nullptr ? "AddressOf " + std::string(operand.function->name) : Show(operand.value);
  throw ScriptError("cannot use " + shown + " as " + NameOf(type));
}

}  // namespace host
