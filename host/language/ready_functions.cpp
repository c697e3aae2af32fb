#include "language/ready_functions.h"

#include <csignal>
#include <vector>

#include "declarations/value_order.h"
#include "language/faults.h"

namespace host {

namespace {

std::int64_t Sign(auto a, auto b) { return a < b ? -1 : b < a ? 1 : 0; }

std::int64_t CompareLengths(const Value& a, const Value& b) { return Sign(a.Text().size(), b.Text().size()); }

DelegateTarget Comparison(std::int64_t (*compare)(const Value&, const Value&), int factor) {
  return [=](std::span<const Value> values) { return MakeValue(factor * compare(values[0], values[1])); };
}

Value DoNothing(std::span<const Value>) { return {}; }

Value CrashByAbort(std::span<const Value>) {
  std::raise(SIGABRT);
  return {};
}

bool IsOfTwoLike(const Signature& signature) {
  const auto& parameters = signature.parameters;
  if (parameters.size() != 2 || !signature.result.IsInteger()) return false;
  return !parameters[0].isByRef && !parameters[1].isByRef && !parameters[0].type.isArray &&
         parameters[0].type == parameters[1].type;
}

bool IsOfTwoTexts(const Signature& signature) {
  return IsOfTwoLike(signature) && signature.parameters[0].type.basic == Basic::kString;
}

bool HasNoParameters(const Signature& signature) {
  return signature.parameters.empty() && signature.result.basic == Basic::kNothing;
}

std::vector<ReadyFunction> WithFaults(std::vector<ReadyFunction> functions) {
  for (const Fault& fault : Faults()) {
    const auto target = [&fault](std::span<const Value>) {
      fault.commit();
      return Value();
    };
    functions.push_back({fault.name, HasNoParameters, target});
  }
  return functions;
}

}  // namespace

const ReadyFunction* FindReadyFunction(std::string_view name) {
  static const std::vector<ReadyFunction> functions = WithFaults({
      {"CompareAscending", IsOfTwoLike, Comparison(CompareValues, 1)},
      {"CompareDescending", IsOfTwoLike, Comparison(CompareValues, -1)},
      {"CompareByLength", IsOfTwoTexts, Comparison(CompareLengths, 1)},
      {"AlwaysZero", IsOfTwoLike, [](std::span<const Value>) { return MakeValue(0); }},
      {"DoNothing", HasNoParameters, DoNothing},
      {"CrashByAbort", HasNoParameters, CrashByAbort},
  });
  for (const ReadyFunction& function : functions)
    if (zkt::IsSameName(function.name, name)) return &function;
  return nullptr;
}

}  // namespace host
