#include "declarations/calls.h"

#include "core/text_order.h"
#include "declarations/native_call.h"

namespace host {

namespace {

void* StandardPlace(const Property& property, REALobjectStruct* self) {
  const zkt::REALclassDefinition* record = self->type->record;
  for (const ObjectClass* type = self->type; type != nullptr; type = type->super)
    if (zkt::IsSameName(type->name, property.owner)) record = type->record;
  return reinterpret_cast<char*>(self) + record->forSystemUse + static_cast<std::int32_t>(property.parameter);
}

// Instance accessors take the object and the property's parameter. Module accessors and shared accessors take neither.
std::vector<Argument> AccessorArguments(const Property& property, REALobjectStruct* self) {
  if (self == nullptr) return {};
  return {{{kObjectType, Retained(self)}}, {MakeValue(property.parameter)}};
}

}  // namespace

bool Matches(const Signature& signature, const MethodQuery& query) {
  const auto& parameters = signature.parameters;
  return IsSameIdentifier(signature.name, query.name) &&
         query.isAssigning == (!parameters.empty() && parameters.back().isAssigns) &&
         query.isExtending == (!parameters.empty() && parameters.front().isExtends);
}

bool Matches(const Method& method, const MethodQuery& query) {
  if (!Matches(method.signature, query)) return false;
  // A query without an owner matches every method that can be called without one.
  if (query.ownerKind == OwnerKind::kNone) return method.IsGlobal();
  return method.ownerKind == query.ownerKind && zkt::IsSameName(method.owner, query.owner);
}

Value GetProperty(const Property& property, REALobjectStruct* self) {
  if (property.getter == zkt::kStandardAccessor) return ReadNative(property.type, StandardPlace(property, self));
  return CallNative(property.getter, AccessorArguments(property, self), property.type);
}

void SetProperty(const Property& property, REALobjectStruct* self, const Value& value) {
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
