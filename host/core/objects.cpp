#include "core/objects.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

namespace host {

namespace {

using InstanceFunction = void (*)(REALobjectStruct*);

// Visits the plug-in records from the class up to its root class.
template <class Visit>
void ForEachRecord(const ObjectClass* type, Visit visit) {
  for (; type != nullptr; type = type->super)
    if (type->record != nullptr) visit(*type->record);
}

ObjectClass* const gDelegateClass = new ObjectClass{.name = "Delegate"};
ObjectClass* const gVariantClass = new ObjectClass{.name = "Variant", .properties = {{"Value", {}}}};

std::string_view WithoutAlias(const ObjectClass& type, std::string_view name) {
  const auto alias = type.aliases.find(name);
  return alias != type.aliases.end() ? alias->second : name;
}

std::string Describe(const RefCounted* value) {
  return "object of class " + static_cast<const REALobjectStruct*>(value)->type->name;
}

// Finalizers run while the object is still usable.
void DestroyContent(RefCounted* value) {
  auto* const object = static_cast<REALobjectStruct*>(value);
  ForEachRecord(object->type, [&](const zkt::REALclassDefinition& record) {
    if (record.destructor != nullptr) reinterpret_cast<InstanceFunction>(record.destructor)(object);
  });
  // Finalizers of the values may still read this object. Its memory is freed without a destructor call, so nothing that
  // needs one may remain.
  const auto properties = std::exchange(object->properties, {});
  const auto target = std::exchange(object->target, nullptr);
}

}  // namespace

const RefCountedKind kObjectKind = {"object", Describe, DestroyContent};

bool ObjectClass::IsA(std::string_view className) const {
  if (zkt::IsSameName(className, "Object")) return true;
  for (const ObjectClass* type = this; type != nullptr; type = type->super)
    if (zkt::IsSameName(type->name, className)) return true;
  return false;
}

std::vector<ObjectClass*> BasicClasses() {
  return {new ObjectClass{.name = "Object", .scriptMethods = {{"Constructor()", Address(&ConstructNothing)}}},
          gDelegateClass, gVariantClass};
}

REALobjectStruct* MakeObject(const ObjectClass* type) {
  std::size_t size = sizeof(REALobjectStruct);
  ForEachRecord(type, [&](const zkt::REALclassDefinition& record) {
    size = std::max<std::size_t>(size, record.forSystemUse + record.dataSize);
  });
  void* const memory = std::calloc(1, size);
  if (memory == nullptr) return nullptr;
  auto* const object = new (memory) REALobjectStruct{{}, type, type->properties};
  Track(object, kObjectKind);
  if (type->initialize != nullptr) type->initialize(object);
  ForEachRecord(type, [&](const zkt::REALclassDefinition& record) {
    if (record.constructor != nullptr) reinterpret_cast<InstanceFunction>(record.constructor)(object);
  });
  return object;
}

ObjectRef MakeNativeDelegate(void* invoker, std::shared_ptr<void> target) {
  ObjectRef delegate(MakeObject(gDelegateClass));
  delegate->invoker = invoker;
  delegate->target = std::move(target);
  return delegate;
}

Value Boxed(const Value& value) {
  if (value.type.IsReference() && value.type.kind != TypeKind::kString) return {kVariantType, value.payload};
  ObjectRef box(MakeObject(gVariantClass));
  *FindProperty(box.Get(), "Value") = value;
  return {kVariantType, std::move(box)};
}

const Value& Unboxed(const Value& value) {
  const bool isObject = value.type.Is(TypeKind::kVariant) || value.type.Is(TypeKind::kObject);
  const bool isBox = isObject && value.Reference() != nullptr && value.Object()->type == gVariantClass;
  return isBox ? *FindProperty(value.Object(), "Value") : value;
}

void* FindMethod(const REALobjectStruct* object, const std::string& declaration) {
  for (const ObjectClass* type = object != nullptr ? object->type : nullptr; type != nullptr; type = type->super)
    if (const auto found = type->methods.find(declaration); found != type->methods.end()) return found->second;
  return nullptr;
}

const Value* FindDefault(const ObjectClass& type, std::string_view name) {
  const auto found = type.properties.find(WithoutAlias(type, name));
  return found != type.properties.end() ? &found->second : nullptr;
}

Value* FindProperty(REALobjectStruct* object, std::string_view name) {
  if (object == nullptr) return nullptr;
  const auto found = object->properties.find(WithoutAlias(*object->type, name));
  return found != object->properties.end() ? &found->second : nullptr;
}

bool AssignProperty(REALobjectStruct* object, std::string_view name, const Value& value) {
  Value* const property = FindProperty(object, name);
  if (property == nullptr || property->type.kind != value.type.kind || object->type->isReadOnly) return false;
  if (object->type->assign != nullptr) return object->type->assign(object, name, value);
  *property = value;
  return true;
}

}  // namespace host
