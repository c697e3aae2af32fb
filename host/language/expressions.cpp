// Compiles literals, operators and conversions.
#include <utility>

#include "core/classes.h"
#include "declarations/numbers.h"
#include "language/compiler.h"
#include "language/operators.h"

namespace host {

namespace {

// Evaluates a constant expression, which needs no variables.
Value Evaluate(const Load& load) {
  Frame frame;
  return load(frame);
}

// An operator and its right operand.
struct Link {
  std::function<Value(const Value&, const Value&)> run;
  Load load;
  std::optional<bool> stopsAt;  // for And and Or: the left value that decides the result
};

Value RunChain(const Load& first, const std::vector<Link>& links, Frame& frame) {
  Value value = first(frame);
  for (const Link& link : links) {
    if (link.stopsAt && (value.Integer() != 0) == *link.stopsAt) continue;
    value = link.run(value, link.load(frame));
  }
  return value;
}

// Returns the element type of Array(…): the narrowest type that holds all elements.
Type ElementType(const std::vector<Code>& elements) {
  Operand common = elements.front();
  for (const Code& element : elements) {
    if (element.type.isArray || !element.functions.empty() ||
        (element.type.kind == TypeKind::kNothing && !element.isLiteral))
      throw ScriptError(NameOf(element) + " cannot be an element of Array", element.at);
    const auto type = CommonType(common, element);
    common.type = type ? *type : kVariantType;
    common.isLiteral = common.type.kind == TypeKind::kNothing;
    if (!type) break;
  }
  return common.type.kind == TypeKind::kNothing ? kObjectType : common.type;
}

}  // namespace

Code Compiler::CompileExpression(const Expression& expression, const Code* assigned) {
  switch (expression.kind) {
    case ExpressionKind::kLiteral:
      return CompileLiteral(expression);
    case ExpressionKind::kName:
      return CompileName(expression, assigned);
    case ExpressionKind::kMember:
      return CompileMember(expression, assigned);
    case ExpressionKind::kNew:
      return CompileNew(expression);
    case ExpressionKind::kAddressOf:
      return CompileAddressOf(expression);
    case ExpressionKind::kIsA:
      return CompileIsA(expression);
    case ExpressionKind::kNegative:
      return CompileNegative(expression);
    case ExpressionKind::kNot:
      return CompileNot(expression);
    case ExpressionKind::kChain:
      return CompileChain(expression);
    case ExpressionKind::kIf:
      return CompileIf(expression);
    case ExpressionKind::kConvert:
      return CompileConvert(expression);
    case ExpressionKind::kParentheses:
      break;
  }
  // A variable in parentheses is a value: it cannot be assigned to or passed ByRef.
  return WithoutVariable(CompileExpression(expression.operands.front()));
}

std::vector<Code> Compiler::CompileAll(const std::vector<Expression>& expressions) {
  std::vector<Code> all;
  all.reserve(expressions.size());
  for (const Expression& expression : expressions) all.push_back(CompileExpression(expression));
  return all;
}

Code Compiler::CompileLiteral(const Expression& expression) try {
  const std::string& text = expression.text;
  switch (expression.token) {
    case TokenKind::kText:
      return MakeConstant({kStringType, MakeValue(text)}, expression.at);
    case TokenKind::kColor:
      return MakeConstant({kColorType, Value{kColorType, ReadInteger(text).Integer()}}, expression.at);
    case TokenKind::kNumber:
      return MakeConstant(ReadNumber(text), expression.at);
    case TokenKind::kUnsigned: {
      const Type type{TypeKind::kUInt64};
      return MakeConstant({type, Value{type, ReadInteger(text).Integer()}, true}, expression.at);
    }
    default:
      return MakeConstant(*ReadWord(text), expression.at);
  }
} catch (ScriptError& error) {
  error.NotePosition(expression.at);
  throw;
}

Code Compiler::CompileChain(const Expression& expression) {
  Code result = CompileExpression(expression.operands.front());
  Load first = result.load;
  std::vector<Link> links;
  // A literal next to a Currency is read as a Currency, so that it keeps its exact value.
  const auto makeExact = [this](Code& number, const Code& other) {
    if (number.digits.empty() || other.type != kCurrencyType) return;
    if (auto converted = TryConvert(number, kCurrencyType)) number = std::move(converted->second);
  };
  for (std::size_t i = 0; i < expression.operators.size(); ++i) {
    const std::string& sign = expression.operators[i];
    Code right = CompileExpression(expression.operands[i + 1]);
    if (sign == "+" || sign == "-") {
      makeExact(right, result);
      makeExact(result, right);
      if (links.empty()) first = result.load;
    }
    const auto operation = FindOperation(sign, result, right);
    if (!operation) {
      const bool isLeftWrong = right.type == kStringType && result.type != kStringType;
      const bool mixesTexts = sign == "+" && (isLeftWrong || result.type == kStringType);
      throw ScriptError("'" + sign + "' takes " + OperandsOf(sign) + ", but got " + NameOf(result) + " and " +
                            NameOf(right) + (mixesTexts ? HintFor(isLeftWrong ? result : right, kStringType) : ""),
                        right.at);
    }
    const bool isAnd = zkt::IsSameName(sign, "And");
    std::optional<bool> stopsAt;
    if (operation->result == kBooleanType && (isAnd || zkt::IsSameName(sign, "Or"))) stopsAt = !isAnd;
    links.push_back({operation->run, right.load, stopsAt});
    const bool isConstant = result.constant && right.constant;
    Code next = MakeCode(operation->result, expression.at, {});
    if (isConstant) next.constant = operation->run(*result.constant, *right.constant);
    result = std::move(next);
  }
  result.load = [first, links = std::move(links)](Frame& frame) { return RunChain(first, links, frame); };
  return result;
}

Code Compiler::CompileNegative(const Expression& expression) {
  const Code operand = CompileExpression(expression.operands.front());
  if (!operand.type.IsNumber()) throw ScriptError("'-' takes a number, but got " + NameOf(operand), expression.at);
  const Type type = FindOperation("-", {kIntegerType}, operand)->result;
  Code code = MakeCode(type, expression.at,
                       [load = operand.load](Frame& frame) { return Compute('-', MakeValue(0), load(frame)); });
  if (operand.constant) code.constant = Evaluate(code.load);
  return code;
}

Code Compiler::CompileNot(const Expression& expression) {
  const Code operand = CompileExpression(expression.operands.front());
  const bool isBoolean = operand.type.Is(TypeKind::kBoolean);
  if (!isBoolean && !operand.type.IsInteger())
    throw ScriptError("Not takes a Boolean or an integer, but got " + NameOf(operand), expression.at);
  Code code = MakeCode(operand.type, expression.at, [isBoolean, load = operand.load](Frame& frame) {
    Value value = load(frame);
    value.payload = isBoolean ? std::int64_t{value.Integer() == 0} : ~value.Integer();
    return isBoolean ? value : *NumberAs(value, value.type);
  });
  if (operand.constant) code.constant = Evaluate(code.load);
  return code;
}

Code Compiler::CompileIsA(const Expression& expression) {
  const Code object = CompileExpression(expression.operands.front());
  const Type type = FindType({expression.text, false, expression.at});
  if (!object.type.Is(TypeKind::kObject) && !object.type.Is(TypeKind::kVariant))
    throw ScriptError("IsA takes an object, but got " + NameOf(object), expression.at);
  if (!type.Is(TypeKind::kObject)) throw ScriptError(expression.text + " is not a class", expression.at);
  return MakeCode(kBooleanType, expression.at, [load = object.load, type](Frame& frame) {
    const Value value = load(frame);
    const bool isA = value.Reference() != nullptr && value.Object()->type->IsA(type.name);
    return Value{kBooleanType, std::int64_t{isA}};
  });
}

Code Compiler::CompileIf(const Expression& expression) {
  const Condition condition = CompileCondition(expression.operands[0]);
  const Code a = CompileExpression(expression.operands[1]);
  const Code b = CompileExpression(expression.operands[2]);
  const auto type = CommonType(a, b);
  if (!type || type->kind == TypeKind::kNothing)
    throw ScriptError("If takes two values of the same type, but got " + NameOf(a) + " and " + NameOf(b),
                      expression.at);
  const Load yes = Convert(a, *type, "If").load;
  const Load no = Convert(b, *type, "If").load;
  return MakeCode(*type, expression.at, [=](Frame& frame) { return condition(frame) ? yes(frame) : no(frame); });
}

Code Compiler::CompileConvert(const Expression& expression) {
  Code code = CompileExpression(expression.operands.front());
  const Type type = FindType({expression.text, false, expression.at});
  const bool isWhole = code.type.IsInteger() || code.type.Is(TypeKind::kEnumeration);
  if (type.Is(TypeKind::kEnumeration) ? !isWhole : !type.IsNumber() || !(code.type.IsNumber() || isWhole))
    throw ScriptError("CType does not convert " + NameOf(code) + " to " + NameOf(type), expression.at);
  code.isLiteral = false;
  if (code.type.Is(TypeKind::kEnumeration) || type.Is(TypeKind::kEnumeration))
    return MakeCode(type, code.at, [load = code.load, type](Frame& frame) { return Value{type, load(frame).payload}; });
  return Convert(code, type, "CType");
}

Code Compiler::CompileArray(const Expression& expression) {
  std::vector<Code> elements = CompileAll(expression.arguments);
  if (elements.empty())
    throw ScriptError("Array takes at least one element; declare an empty array as a()", expression.at);
  const Type type = ElementType(elements);
  std::vector<Load> loads;
  loads.reserve(elements.size());
  for (const Code& element : elements) loads.push_back(Convert(element, type, "Array").load);
  Code code = MakeCode(type.ArrayOf(), expression.at, LoadArray(type, std::move(loads)));
  code.text = "Array";
  return code;
}

std::optional<std::pair<int, Code>> Compiler::TryConvert(const Code& code, const Type& type) const {
  Code converted = WithoutVariable(code);
  converted.type = type;
  converted.functions.clear();
  if (!code.functions.empty()) {
    if (!type.Is(TypeKind::kDelegate)) return std::nullopt;
    const Signature& wanted = *program_.catalogue.FindDelegate(type.name);
    for (const Function* function : code.functions) {
      if (!IsSameType(function->signature, wanted)) continue;
      converted.load = [function, type, &wanted](Frame&) {
        const auto target = [function](std::span<const Value> values) {
          std::vector<Argument> arguments;
          for (const Value& value : values) arguments.push_back({value});
          return function->call(arguments);
        };
        return Value{type, Ref<RefCounted>(MakeDelegate(wanted, target))};
      };
      return std::pair(int{kSame}, converted);
    }
    return std::nullopt;
  }
  const auto conversion = FindConversion(code, type);
  if (!conversion) return std::nullopt;
  if (conversion->convert) {
    converted.load = [load = code.load, convert = conversion->convert](Frame& frame) { return convert(load(frame)); };
    converted.isLiteral = false;
    if (code.constant) converted.constant = conversion->convert(*code.constant);
  }
  return std::pair(conversion->cost, converted);
}

Code Compiler::Convert(const Code& code, const Type& type, const std::string& what) const {
  if (auto converted = TryConvert(code, type)) return std::move(converted->second);
  const std::string wanted = type.isArray ? NameOf(type) : WithArticle(NameOf(type));
  throw ScriptError(what + " takes " + wanted + ", but got " + NameOf(code) + HintFor(code, type), code.at);
}

}  // namespace host
