#include "declarations/calls.h"

#include <optional>

#include "core/classes.h"
#include "declarations/errors.h"
#include "declarations/native_call.h"

namespace host {

namespace {

bool Matches(const Method& method, const MethodQuery& query) {
  if (!zkt::IsSameName(method.signature.name, query.name)) return false;
  const auto& parameters = method.signature.parameters;
  if (query.isAssigning != (!parameters.empty() && parameters.back().isAssigns)) return false;
  if (query.isExtending != (!parameters.empty() && parameters.front().isExtends)) return false;
  // Without an owner, every method qualifies that can be called without one.
  if (query.ownerKind == OwnerKind::kNone) return method.IsGlobal();
  return method.ownerKind == query.ownerKind && zkt::IsSameName(method.owner, query.owner);
}

struct PreparedCall {
  std::vector<Argument> arguments;
  int cost = 0;
};

// The arguments as the method wants them; nothing if they do not suit.
std::optional<PreparedCall> Prepare(const Catalogue& catalogue, const Signature& signature,
                                    const std::vector<Operand>& operands) {
  const std::size_t count = signature.parameters.size();
  if (operands.size() > count || operands.size() < signature.RequiredCount()) return std::nullopt;
  // What is assigned is the last argument, whichever before it are left out.
  const bool isAssigning = count > 0 && signature.parameters.back().isAssigns;
  const auto operandOf = [&](std::size_t i) -> const Operand* {
    if (isAssigning && i + 1 == count) return &operands.back();
    return i + (isAssigning ? 1 : 0) < operands.size() ? &operands[i] : nullptr;
  };
  PreparedCall call;
  for (std::size_t i = 0; i < count; ++i) {
    const Parameter& parameter = signature.parameters[i];
    const Operand* const given = operandOf(i);
    if (parameter.isByRef) {
      // What is passed by reference is a variable of the very type.
      if (given == nullptr || given->variable == nullptr) return std::nullopt;
      if (given->variable->type != parameter.type) return std::nullopt;
      call.arguments.push_back({*given->variable, given->variable});
      continue;
    }
    const auto converted =
        Convert(given != nullptr ? *given : ReadDefault(parameter.defaultValue), parameter.type, catalogue);
    if (!converted) return std::nullopt;
    call.cost += given != nullptr ? converted->cost : kFilledDefault;
    call.arguments.push_back({converted->value});
  }
  return call;
}

void* StandardPlace(const Property& property, REALobjectStruct* self) {
  const zkt::REALclassDefinition* record = self->type->record;
  for (const ObjectClass* type = self->type; type != nullptr; type = type->super)
    if (zkt::IsSameName(type->name, property.owner)) record = type->record;
  return reinterpret_cast<char*>(self) + record->forSystemUse + static_cast<std::int32_t>(property.parameter);
}

// Accessors of objects take the object and the parameter; accessors of modules and shared accessors take neither.
std::vector<Argument> AccessorArguments(const Property& property, REALobjectStruct* self) {
  if (self == nullptr) return {};
  return {{{kObjectType, Retained(self)}}, {MakeValue(property.parameter)}};
}

}  // namespace

bool HasMethod(const Catalogue& catalogue, const MethodQuery& query) {
  for (const Method& method : catalogue.Methods())
    if (Matches(method, query)) return true;
  return false;
}

Value CallMethod(const Catalogue& catalogue, const MethodQuery& query, const std::vector<Operand>& arguments,
                 const Value* self) {
  const Method* best = nullptr;
  std::optional<PreparedCall> bestCall;
  bool isAmbiguous = false;
  for (const Method& method : catalogue.Methods()) {
    if (!Matches(method, query)) continue;
    auto call = Prepare(catalogue, method.signature, arguments);
    if (!call || (bestCall && bestCall->cost < call->cost)) continue;
    isAmbiguous = bestCall && bestCall->cost == call->cost && best->function != method.function;
    best = &method;
    bestCall = std::move(call);
  }
  if (best == nullptr) throw ScriptError("no " + std::string(query.name) + " takes these arguments");
  if (isAmbiguous) throw ScriptError(std::string(query.name) + " is ambiguous with these arguments");
  if (self != nullptr) bestCall->arguments.insert(bestCall->arguments.begin(), Argument{*self});
  return CallNative(best->function, bestCall->arguments, best->signature.result);
}

Value MakeNew(const Catalogue& catalogue, std::string_view className, const std::vector<Operand>& arguments) {
  const ObjectClass* const type = FindClass(className);
  if (type == nullptr) throw ScriptError("there is no class " + std::string(className));
  const MethodQuery constructor{OwnerKind::kInstance, type->name, "Constructor"};
  for (const Method& method : catalogue.Methods())
    if (Matches(method, constructor) && (method.flags & zkt::kPrivateScope) != 0)
      throw ScriptError("the constructor of " + type->name + " is private");
  Value object{{Basic::kObject, false, type->name}, ObjectRef(MakeObject(type))};
  if (HasMethod(catalogue, constructor))
    CallMethod(catalogue, constructor, arguments, &object);
  else if (!arguments.empty())
    throw ScriptError(type->name + " has no constructor that takes arguments");
  return object;
}

Value GetProperty(const Property& property, REALobjectStruct* self) {
  if (property.getter == zkt::kStandardAccessor) return ReadNative(property.type, StandardPlace(property, self));
  return CallNative(property.getter, AccessorArguments(property, self), property.type);
}

void SetProperty(const Property& property, REALobjectStruct* self, const Value& value) {
  if (property.setter == nullptr) throw ScriptError(std::string(property.name) + " is read-only");
  if (property.setter == zkt::kStandardAccessor) {
    void* const place = StandardPlace(property, self);
    const Value former = ReadNative(property.type, place);
    if (value.type.IsReference()) {
      Retain(value.Reference());
      Release(former.Reference());
    }
    return WriteNative(value, place);
  }
  std::vector<Argument> arguments = AccessorArguments(property, self);
  arguments.push_back({value});
  CallNative(property.setter, arguments, {});
}

}  // namespace host
