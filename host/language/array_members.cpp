// Implements the members of arrays for all element types.
#include <algorithm>
#include <list>
#include <utility>

#include "core/arrays.h"
#include "core/host.h"
#include "declarations/value_order.h"
#include "language/compiler.h"

namespace host {

namespace {

constexpr Type kInt32Type = {TypeKind::kInt32};

using Values = std::vector<Value>;

struct ArrayMember {
  std::string_view name;
  std::string_view parameters;  // one letter per parameter: 'e' for an element, 'i' for an Integer
  char result;                  // 'e' for an element, 'i' for an Int32, ' ' for none
  Value (*call)(Array* array, const Values& arguments);
  double since = 0;  // the first host version that has the member
  double before = 1.0e9;
};

Value Int32Of(std::int64_t value) { return {kInt32Type, value}; }

void RequireIndex(const Array* array, std::int64_t index, std::int64_t end) {
  if (index < 0 || index >= end || array == nullptr)
    throw XojoException("OutOfBoundsException", "index " + std::to_string(index));
}

Value Insert(Array* array, std::int64_t index, const Value& element) {
  RequireIndex(array, index, array->count + 1);
  if (InsertElement(array, index) == nullptr)
    throw XojoException("OutOfMemoryException", "not enough memory for the array");
  SetElement(array, index, element);
  return {};
}

Value Add(Array* array, const Values& values) { return Insert(array, array->count, values[0]); }
Value AddAt(Array* array, const Values& values) { return Insert(array, values[0].Integer(), values[1]); }
Value CountOf(Array* array, const Values&) { return Int32Of(array->count); }
Value LastIndex(Array* array, const Values&) { return Int32Of(UpperBound(array)); }
Value FirstIndex(Array*, const Values&) { return Int32Of(0); }

Value RemoveAt(Array* array, const Values& values) {
  RequireIndex(array, values[0].Integer(), array->count);
  RemoveElement(array, values[0].Integer());
  return {};
}

Value RemoveAll(Array* array, const Values&) {
  while (array->count > 0) RemoveElement(array, UpperBound(array));
  return {};
}

Value ResizeTo(Array* array, const Values& values) {
  const std::int64_t last = values[0].Integer();
  if (last < -1) throw XojoException("OutOfBoundsException", "index " + std::to_string(last));
  while (UpperBound(array) > last) RemoveElement(array, UpperBound(array));
  while (UpperBound(array) < last)
    if (InsertElement(array, array->count) == nullptr)
      throw XojoException("OutOfMemoryException", "not enough memory for the array");
  return {};
}

Value IndexOf(Array* array, const Values& values) {
  for (std::int64_t i = 0; i <= UpperBound(array); ++i)
    if (CompareValues(GetElement(array, i), values[0]) == 0) return Int32Of(i);
  return Int32Of(-1);
}

Value Pop(Array* array, const Values&) {
  RequireIndex(array, UpperBound(array), array->count);
  Value last = GetElement(array, UpperBound(array));
  RemoveElement(array, UpperBound(array));
  return last;
}

constexpr double kSince2019r2 = 2019.02;
constexpr double kSince2020r1 = 2020.01;

constexpr ArrayMember kMembers[] = {
    {"Count", "", 'i', CountOf},
    {"LastIndex", "", 'i', LastIndex, kSince2020r1},
    {"FirstIndex", "", 'i', FirstIndex, kSince2019r2},
    {"Add", "e", ' ', Add, kSince2020r1},
    {"AddAt", "ie", ' ', AddAt, kSince2020r1},
    {"RemoveAt", "i", ' ', RemoveAt, kSince2020r1},
    {"RemoveAll", "", ' ', RemoveAll, kSince2020r1},
    {"ResizeTo", "i", ' ', ResizeTo, kSince2019r2},
    {"IndexOf", "e", 'i', IndexOf},
    {"Pop", "", 'e', Pop},
    {"AddRow", "e", ' ', Add, kSince2019r2, kSince2020r1},
    {"AddRowAt", "ie", ' ', AddAt, kSince2019r2, kSince2020r1},
    {"RemoveRowAt", "i", ' ', RemoveAt, kSince2019r2, kSince2020r1},
    {"RemoveAllRows", "", ' ', RemoveAll, kSince2019r2, kSince2020r1},
    {"LastRowIndex", "", 'i', LastIndex, kSince2019r2, kSince2020r1},
    {"Append", "e", ' ', Add, 0, kSince2019r2},
    {"Insert", "ie", ' ', AddAt, 0, kSince2019r2},
    {"Remove", "i", ' ', RemoveAt, 0, kSince2019r2},
    {"UBound", "", 'i', LastIndex, 0, kSince2019r2},
};

Type TypeOf(char letter, const Type& array) {
  return letter == 'e' ? array.Element() : letter == 'i' ? kInt32Type : Type();
}

Array* RequireArray(const Value& value, const std::string& member) {
  if (value.Reference() == nullptr) throw XojoException("NilObjectException", member + " of an array that is Nil");
  return value.Array();
}

void SortBy(Array* array, const std::function<bool(const Value&, const Value&)>& isLess) {
  // With an inconsistent comparison, std::sort could read out of bounds. The merge sort of std::list only produces a
  // wrong order.
  std::list<Value> values;
  for (std::int64_t i = 0; i <= UpperBound(array); ++i) values.push_back(GetElement(array, i));
  values.sort(isLess);
  std::int64_t index = 0;
  for (const Value& value : values) SetElement(array, std::min(index++, UpperBound(array)), value);
}

}  // namespace

Load LoadArray(const Type& element, std::vector<Load> elements) {
  return [element, elements = std::move(elements)](Frame& frame) {
    ArrayRef array(MakeArray(element, static_cast<std::int64_t>(elements.size()) - 1));
    for (std::size_t i = 0; i < elements.size(); ++i)
      SetElement(array.Get(), static_cast<std::int64_t>(i), elements[i](frame));
    return Value{element.ArrayOf(), std::move(array)};
  };
}

std::optional<Code> Compiler::CompileArrayMember(const Code& array, const Expression& expression) {
  const std::string& name = expression.text;
  if (zkt::IsSameName(name, "Sort")) return CompileSort(array, expression);
  const double version = Host::Current().version;
  const auto* const member = std::ranges::find_if(kMembers, [&](const ArrayMember& candidate) {
    return zkt::IsSameName(candidate.name, name) && version >= candidate.since && version < candidate.before;
  });
  if (member == std::end(kMembers)) return std::nullopt;
  if (expression.arguments.size() != member->parameters.size()) {
    const std::size_t count = member->parameters.size();
    throw ScriptError(name + " takes " + std::to_string(count) + (count == 1 ? " argument" : " arguments") +
                          ", but got " + std::to_string(expression.arguments.size()),
                      expression.at);
  }
  std::vector<Load> arguments;
  for (std::size_t i = 0; i < expression.arguments.size(); ++i)
    arguments.push_back(Convert(CompileExpression(expression.arguments[i]),
                                member->parameters[i] == 'i' ? kIntegerType : array.type.Element(), name)
                            .load);
  auto call = [member, name, load = array.load, arguments = std::move(arguments)](Frame& frame) {
    const Value owner = load(frame);
    Values values;
    for (const Load& argument : arguments) values.push_back(argument(frame));
    return member->call(RequireArray(owner, name), values);
  };
  return MakeCode(TypeOf(member->result, array.type), expression.at, std::move(call));
}

// Compiles Sort, or Sort(AddressOf Compare), where Compare is a Function(a As T, b As T) As Integer.
Code Compiler::CompileSort(const Code& array, const Expression& expression) {
  const Type element = array.type.Element();
  std::function<bool(const Value&, const Value&)> isLess = [](const Value& a, const Value& b) {
    return CompareValues(a, b) < 0;
  };
  const std::vector<Code> arguments = CompileAll(expression.arguments);
  if (arguments.empty() && element.IsReference() && element != kStringType)
    throw ScriptError("Sort of " + NameOf(array.type) + " takes AddressOf a comparison method", expression.at);
  if (!arguments.empty()) {
    Signature wanted;
    wanted.parameters = {{"a", element, false, false, false, {}}, {"b", element, false, false, false, {}}};
    wanted.result = kIntegerType;
    const Function* compare = nullptr;
    for (const Function* function : arguments.front().functions)
      if (IsSameType(function->signature, wanted)) compare = function;
    if (compare == nullptr || arguments.size() > 1)
      throw ScriptError("Sort takes AddressOf a Function(" + NameOf(element) + ", " + NameOf(element) +
                            ") As Integer, but got " + NameOf(arguments.front()),
                        expression.at);
    isLess = [compare](const Value& a, const Value& b) { return compare->call({{a}, {b}}).Integer() < 0; };
  }
  return MakeCode({}, expression.at, [load = array.load, isLess](Frame& frame) {
    const Value owner = load(frame);
    SortBy(RequireArray(owner, "Sort"), isLess);
    return Value();
  });
}

}  // namespace host
