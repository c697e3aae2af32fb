// Compiles method calls: resolves overloads, and describes the mismatch if no overload fits.
#include <algorithm>
#include <utility>

#include "core/classes.h"
#include "core/text_order.h"
#include "declarations/suggestions.h"
#include "language/compiler.h"

namespace host {

namespace {

// The arguments of a call, converted for one candidate.
struct Match {
  const Candidate* candidate = nullptr;
  int cost = 0;
  std::vector<Code> arguments = {};
};

// Returns the argument for a parameter; null if the call omits it. An assigned value is always the last argument, even
// if others are omitted.
const Code* ArgumentFor(const Signature& signature, std::size_t parameter, const std::vector<Code>& arguments) {
  const std::size_t count = signature.parameters.size();
  const bool isAssigning = count > 0 && signature.parameters.back().isAssigns;
  if (isAssigning && parameter + 1 == count) return &arguments.back();
  return parameter + (isAssigning ? 1 : 0) < arguments.size() ? &arguments[parameter] : nullptr;
}

// Lists the parameter types, except that of an Extends parameter, in a form such as "Int32(), [Boolean]".
std::string ParametersOf(const Signature& signature) {
  std::string text;
  for (const Parameter& parameter : signature.parameters) {
    if (parameter.isExtends) continue;
    std::string name = NameOf(parameter.type);
    if (parameter.isByRef) name.insert(0, "ByRef ");
    if (parameter.isParamArray) name.insert(0, "ParamArray ");
    text += (text.empty() ? "" : ", ") + (parameter.defaultValue.empty() ? name : "[" + name + "]");
  }
  return text;
}

std::string TypesOf(const std::vector<Code>& arguments, std::size_t first) {
  std::string text;
  for (std::size_t i = first; i < arguments.size(); ++i) text += (i > first ? ", " : "") + NameOf(arguments[i]);
  return text;
}

std::string DescribeMismatch(const std::string& name, const std::vector<Candidate>& candidates,
                             const std::vector<Code>& arguments, bool isExtending) {
  const std::size_t first = isExtending ? 1 : 0;
  std::vector<const Signature*> shown;
  for (const Candidate& candidate : candidates) {
    const Signature& signature = *candidate.signature;
    if (!isExtending || signature.parameters.front().type == arguments.front().type) shown.push_back(&signature);
  }
  if (shown.empty() && arguments.front().type.Is(TypeKind::kVariant))
    return "Variant has no " + name + "; assign it to a variable of the type that it holds first";
  if (shown.empty()) {
    std::string types;
    for (const Candidate& candidate : candidates)
      types += (types.empty() ? "" : ", ") + NameOf(candidate.signature->parameters.front().type);
    return NameOf(arguments.front()) + " has no " + name + "; it extends " + types;
  }
  const auto& parameters = shown.front()->parameters;
  const bool isOfOne = shown.size() == 1 && parameters.size() == first + 1 && arguments.size() == first + 1;
  if (isOfOne && !parameters[first].isByRef && !parameters[first].isParamArray)
    return name + " takes " + WithArticle(NameOf(parameters[first].type)) + ", but got " + NameOf(arguments[first]) +
           HintFor(arguments[first], parameters[first].type);
  constexpr std::size_t kMostShown = 4;
  std::string text = name + " takes ";
  for (std::size_t i = 0; i < std::min(shown.size(), kMostShown); ++i)
    text += (i > 0 ? " or (" : "(") + ParametersOf(*shown[i]) + ")";
  if (shown.size() > kMostShown) text += " or one of " + std::to_string(shown.size() - kMostShown) + " others";
  return text + "; you passed (" + TypesOf(arguments, first) + ")";
}

}  // namespace

bool HasSameParameters(const Signature& a, const Signature& b) {
  return std::ranges::equal(a.parameters, b.parameters, [](const Parameter& x, const Parameter& y) {
    return x.type == y.type && x.isByRef == y.isByRef;
  });
}

bool IsSameType(const Signature& a, const Signature& b) { return a.result == b.result && HasSameParameters(a, b); }

std::vector<Candidate> Compiler::FindMethods(const MethodQuery& query) const {
  std::vector<Candidate> found;
  if (query.ownerKind == OwnerKind::kNone)
    for (const auto& function : declared_)
      if (Matches(function->signature, query)) found.push_back({&function->signature, function->call});
  for (const auto& function : program_.functions) {
    const bool isOwner = query.owner == function->owner || zkt::IsSameName(query.owner, function->owner);
    if (isOwner && Matches(function->signature, query) && query.ownerKind != OwnerKind::kInstance)
      // Look up `call` at run time, because the body of a later method is not compiled yet.
      found.push_back({&function->signature, [called = function.get()](const std::vector<Argument>& arguments) {
                         return called->call(arguments);
                       }});
  }
  for (const auto* const methods : {&program_.catalogue.Methods(), &program_.catalogue.FrameworkMethods()})
    for (const Method& method : *methods)
      if (Matches(method, query))
        found.push_back({&method.signature, [&method](const std::vector<Argument>& arguments) {
                           const FrameGuard guard;
                           return CallNative(method.function, arguments, method.signature.result);
                         }});
  return found;
}

std::optional<Code> Compiler::CompileCall(MethodQuery query, const Expression& expression, const Code* object,
                                          const Code* assigned) {
  query.isAssigning = assigned != nullptr;
  std::vector<Candidate> candidates = FindMethods(query);
  if (query.isAssigning && candidates.empty()) {
    query.isAssigning = false;
    candidates = FindMethods(query);
  }
  if (candidates.empty()) return std::nullopt;
  std::vector<Code> arguments = CompileAll(expression.arguments);
  if (query.isExtending) arguments.insert(arguments.begin(), *object);
  if (query.isAssigning) arguments.push_back(*assigned);
  const bool isSelf = !query.isExtending && object != nullptr;
  Code call = Call(expression.text, candidates, std::move(arguments), isSelf ? object : nullptr, query.isExtending,
                   expression.at);
  call.isAssigned = query.isAssigning;
  return call;
}

Code Compiler::Call(const std::string& name, const std::vector<Candidate>& candidates, std::vector<Code> arguments,
                    const Code* self, bool isExtending, Position at) const {
  // Converts the arguments for a candidate; nullopt if the candidate does not accept them.
  const auto match = [&](const Candidate& candidate) -> std::optional<Match> {
    const Signature& signature = *candidate.signature;
    const bool takesMore = !signature.parameters.empty() && signature.parameters.back().isParamArray;
    if ((arguments.size() > signature.parameters.size() && !takesMore) || arguments.size() < signature.RequiredCount())
      return std::nullopt;
    Match found{&candidate};
    for (std::size_t i = 0; i < signature.parameters.size(); ++i) {
      const Parameter& parameter = signature.parameters[i];
      if (parameter.isParamArray) {
        auto collected = TryCollect(arguments, i, parameter.type);
        if (!collected) return std::nullopt;
        found.arguments.push_back(std::move(collected->second));
        found.cost += collected->first;
        break;
      }
      const Code* const given = ArgumentFor(signature, i, arguments);
      if (given == nullptr) {
        found.arguments.push_back(
            MakeCode(parameter.type, at,
                     [value = DefaultArgument(parameter.defaultValue, parameter.type)](Frame&) { return value; }));
        found.cost += kFilledDefault;
        continue;
      }
      if (parameter.isByRef) {
        // A ByRef argument must be a variable of exactly the parameter's type.
        if (!given->variable || given->type != parameter.type) return std::nullopt;
        found.arguments.push_back(*given);
        continue;
      }
      auto converted = TryConvert(*given, parameter.type);
      const bool isBoxed = converted && (converted->first == kBoxed || converted->first == kUnboxed);
      if (!converted || (parameter.isExtends && isBoxed)) return std::nullopt;
      converted->second.variable = nullptr;
      found.arguments.push_back(std::move(converted->second));
      found.cost += converted->first;
    }
    return found;
  };
  std::optional<Match> best;
  bool isAmbiguous = false;
  for (const Candidate& candidate : candidates) {
    auto found = match(candidate);
    if (!found || (best && best->cost < found->cost)) continue;
    isAmbiguous = best && best->cost == found->cost;
    best = std::move(found);
  }
  if (!best) throw ScriptError(DescribeMismatch(name, candidates, arguments, isExtending), at);
  if (isAmbiguous)
    throw ScriptError(name + " is ambiguous with (" + TypesOf(arguments, isExtending ? 1 : 0) +
                          "); convert the arguments to the types of one overload",
                      at);
  const Type result = best->candidate->signature->result;
  auto run = [call = best->candidate->call, arguments = std::move(best->arguments),
              self = self != nullptr ? self->load : Load(), name](Frame& frame) {
    std::vector<Argument> values;
    if (self) values.push_back({self(frame)});
    if (self && values.front().value.Reference() == nullptr)
      throw XojoException("NilObjectException", name + " of Nil");
    for (const Code& argument : arguments) {
      Value* const variable = argument.variable ? &argument.variable(frame) : nullptr;
      values.push_back({variable != nullptr ? *variable : argument.load(frame), variable});
    }
    return call(values);
  };
  return MakeCode(result, at, std::move(run));
}

std::optional<std::pair<int, Code>> Compiler::TryCollect(const std::vector<Code>& arguments, std::size_t first,
                                                         const Type& array) const {
  int cost = kFilledDefault;  // so that a method without ParamArray is preferred
  std::vector<Load> elements;
  for (std::size_t i = first; i < arguments.size(); ++i) {
    auto converted = TryConvert(arguments[i], array.Element());
    if (!converted) return std::nullopt;
    cost += converted->first;
    elements.push_back(std::move(converted->second.load));
  }
  return std::pair(cost, MakeCode(array, {}, LoadArray(array.Element(), std::move(elements))));
}

Code Compiler::CompileNew(const Expression& expression) {
  const Position at = expression.at;
  const Type type = FindType({expression.text, false, at});
  const ObjectClass* const made = type.Is(TypeKind::kObject) ? FindClass(type.name) : nullptr;
  if (made == nullptr) throw ScriptError(expression.text + " is not a class", at);
  std::vector<Candidate> constructors;
  for (const ObjectClass* owner = made; owner != nullptr && constructors.empty(); owner = owner->super) {
    for (const Method& method : program_.catalogue.Methods())
      if (Matches(method, {OwnerKind::kInstance, owner->name, "Constructor"}) &&
          (method.flags & zkt::kPrivateScope) != 0)
        throw ScriptError("the constructor of " + made->name + " is private", at);
    constructors = FindMethods({OwnerKind::kInstance, owner->name, "Constructor"});
  }
  if (constructors.empty() && made->record == nullptr)
    throw ScriptError(made->name + " cannot be created with New" +
                          (made->name == "Graphics" ? "; use the Graphics of a Picture" : ""),
                      at);
  if (constructors.empty() && !expression.arguments.empty())
    throw ScriptError(made->name + " has no constructor that takes arguments", at);
  // The slot keeps the object alive while its constructor runs.
  const std::size_t slot = slotCount_++;
  const Code self = MakeCode(type, at, [slot, type](Frame& frame) {
    return frame.slots[slot].value = Value{type, ObjectRef(MakeObject(FindClass(type.name)))};
  });
  Load construct = self.load;
  if (!constructors.empty())
    construct = Call("New " + made->name, constructors, CompileAll(expression.arguments), &self, false, at).load;
  return MakeCode(type, at, [slot, construct](Frame& frame) {
    construct(frame);
    return std::exchange(frame.slots[slot].value, {});
  });
}

Code Compiler::CompileAddressOf(const Expression& expression) {
  Code code;
  code.at = expression.at;
  code.text = expression.text;
  std::vector<std::string_view> names;
  for (const auto& function : program_.functions) {
    if (function->at.line == 0) continue;  // a function of the host
    names.push_back(function->signature.name);
    if (IsSameIdentifier(function->signature.name, expression.text)) code.functions.push_back(function.get());
  }
  if (code.functions.empty())
    throw ScriptError("AddressOf takes a method of this script, but '" + expression.text + "' is not one" +
                          DidYouMean(expression.text, names),
                      expression.at);
  return code;
}

Code Compiler::CompileInvoke(const Code& object, const Expression& expression) {
  const Signature& signature = *program_.catalogue.FindDelegate(object.type.name);
  const auto call = [&signature](const std::vector<Argument>& arguments) {
    const FrameGuard guard;
    void* const invoker = arguments.front().value.Object()->invoker;
    return CallNative(invoker, arguments, signature.result);
  };
  return Call(std::string(signature.name), {{&signature, call}}, CompileAll(expression.arguments), &object, false,
              expression.at);
}

}  // namespace host
