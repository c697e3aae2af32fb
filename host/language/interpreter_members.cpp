// What names and members stand for, and the elements of arrays.
#include <utility>

#include "core/arrays.h"
#include "core/classes.h"
#include "declarations/errors.h"
#include "language/interpreter.h"

namespace host {

namespace {

REALobjectStruct* ObjectOf(const Value& value) {
  return value.type.Is(Basic::kObject) || value.type.Is(Basic::kVariant) ? value.Object() : nullptr;
}

[[noreturn]] void ThrowNil(std::string_view member) {
  throw XojoException({"NilObjectException", std::string(member) + " of Nil", 0});
}

Array* ArrayOf(const Value& value) {
  if (value.Reference() == nullptr) throw XojoException({"NilObjectException", "the array is Nil", 0});
  return value.Array();
}

// A constant of an enumeration: FolderItem.PathModes.Native
std::optional<Operand> FindConstant(const Expression& enumeration, const std::string& name) {
  if (enumeration.kind != ExpressionKind::kMember || enumeration.base->kind != ExpressionKind::kName)
    return std::nullopt;
  const ObjectClass* const type = FindClass(enumeration.base->text);
  if (type == nullptr) return std::nullopt;
  const auto constant = type->constants.find(enumeration.text + "." + name);
  return constant != type->constants.end() ? std::optional(Operand{constant->second}) : std::nullopt;
}

}  // namespace

Interpreter::Place Interpreter::Find(const Expression& expression) {
  const std::string& name = expression.text;
  if (expression.kind == ExpressionKind::kMember) {
    const Expression& base = *expression.base;
    if (auto constant = FindConstant(base, name)) return {.builtIn = std::move(constant)};
    if (base.kind == ExpressionKind::kName && !base.hasArguments && !variables_.contains(base.text))
      if (const std::string_view owner = catalogue_.FindOwner(base.text); !owner.empty()) return FindOwned(owner, name);
    const Operand operand = Load(base);
    if (auto builtIn = LoadBuiltIn(operand, expression)) return {.builtIn = std::move(builtIn)};
    return FindMember(operand, name);
  }
  if (const auto found = variables_.find(name); found != variables_.end()) return {.value = &found->second};
  const MethodQuery query{OwnerKind::kNone, {}, name};
  if (!HasMethod(query)) throw ScriptError("there is no " + name);
  return {.method = query};
}

std::optional<Interpreter::Place> Interpreter::FindDeclared(OwnerKind kind, std::string_view owner,
                                                            std::string_view name) const {
  if (const Property* const property = catalogue_.FindProperty(kind, owner, name)) return Place{.property = property};
  const MethodQuery query{kind, owner, name};
  return HasMethod(query) ? std::optional(Place{.method = query}) : std::nullopt;
}

// What a module has, or a class without an object.
Interpreter::Place Interpreter::FindOwned(std::string_view owner, std::string_view name) const {
  for (const OwnerKind kind : {OwnerKind::kModule, OwnerKind::kShared})
    if (const auto place = FindDeclared(kind, owner, name)) return *place;
  throw ScriptError(std::string(owner) + " has no " + std::string(name));
}

Interpreter::Place Interpreter::FindMember(const Operand& base, std::string_view name) const {
  const Value& value = base.value;
  REALobjectStruct* const object = ObjectOf(value);
  const ObjectClass* const type = object != nullptr               ? object->type
                                  : value.type.Is(Basic::kObject) ? FindClass(value.type.name)
                                                                  : nullptr;
  if (auto place = FindInClass(type, base, name)) return *place;
  if (Value* const held = FindProperty(object, name)) return {.value = held, .heldName = name, .owner = base};
  const MethodQuery extension{OwnerKind::kNone, {}, name, true};
  if (HasMethod(extension)) return {.method = extension, .owner = base};
  const bool isNilObject = value.type.basic >= Basic::kVariant && value.Reference() == nullptr;
  if (isNilObject) ThrowNil(name);
  throw ScriptError(NameOf(value.type) + " has no " + std::string(name));
}

// What the class and those that it derives from have been declared with.
std::optional<Interpreter::Place> Interpreter::FindInClass(const ObjectClass* type, const Operand& base,
                                                           std::string_view name) const {
  for (; type != nullptr; type = type->super) {
    if (const auto shared = FindDeclared(OwnerKind::kShared, type->name, name)) return shared;
    for (const OwnerKind kind : {OwnerKind::kInstance, OwnerKind::kClassExtension})
      if (auto place = FindDeclared(kind, type->name, name)) {
        if (ObjectOf(base.value) == nullptr) ThrowNil(name);
        place->owner = base;
        return place;
      }
  }
  return std::nullopt;
}

// Whether there is a method of that name to be called or to be assigned to.
bool Interpreter::HasMethod(MethodQuery query) const {
  if (host::HasMethod(catalogue_, query)) return true;
  query.isAssigning = true;
  return host::HasMethod(catalogue_, query);
}

// What the language itself has: members of arrays and texts.
std::optional<Operand> Interpreter::LoadBuiltIn(const Operand& base, const Expression& expression) {
  const Value& value = base.value;
  const auto isNamed = [&](std::string_view name) { return zkt::IsSameName(expression.text, name); };
  if (value.type.isArray && isNamed("Count")) return Operand{MakeValue(UpperBound(ArrayOf(value)) + 1)};
  if (value.type.isArray && isNamed("LastIndex")) return Operand{MakeValue(UpperBound(ArrayOf(value)))};
  if (value.type == kStringType && isNamed("Bytes")) return Operand{MakeValue(value.Text().size())};
  if (!value.type.isArray || !isNamed("Add")) return std::nullopt;
  if (expression.arguments.size() != 1) throw ScriptError("Add takes one element");
  Array* const array = ArrayOf(value);
  const Value element = As(array->elementType, Load(expression.arguments.front()));
  if (InsertElement(array, UpperBound(array) + 1) == nullptr) throw ScriptError("there is no memory for the array");
  SetElement(array, UpperBound(array), element);
  return Operand{};
}

Operand Interpreter::LoadFrom(const Place& place) {
  if (place.property != nullptr) return {GetProperty(*place.property, ObjectOf(place.owner.value))};
  return {*place.value, place.heldName.empty() ? place.value : nullptr};
}

void Interpreter::StoreTo(const Place& place, const Operand& operand) {
  if (place.builtIn) throw ScriptError("this cannot be assigned");
  REALobjectStruct* const owner = ObjectOf(place.owner.value);
  const Value value = As(place.property != nullptr ? place.property->type : place.value->type, operand);
  if (place.property != nullptr)
    SetProperty(*place.property, owner, value);
  else if (place.heldName.empty())
    *place.value = value;
  else if (!AssignProperty(owner, place.heldName, value))
    throw ScriptError(std::string(place.heldName) + " is read-only");
}

Operand Interpreter::Call(const Place& place, std::vector<Operand> arguments, bool isAssigning) {
  MethodQuery query = *place.method;
  query.isAssigning = isAssigning;
  if (isAssigning && !host::HasMethod(catalogue_, query)) throw ScriptError("this cannot be assigned");
  if (query.isExtending) arguments.insert(arguments.begin(), place.owner);
  const bool isOfObject = query.ownerKind == OwnerKind::kInstance || query.ownerKind == OwnerKind::kClassExtension;
  return {CallMethod(catalogue_, query, arguments, isOfObject ? &place.owner.value : nullptr)};
}

Operand Interpreter::LoadElement(const Operand& base, const std::vector<Operand>& arguments) {
  const std::int64_t index = IndexIn(base, arguments);
  return {GetElement(ArrayOf(base.value), index)};
}

void Interpreter::StoreElement(const Operand& base, const std::vector<Operand>& arguments, const Operand& operand) {
  const std::int64_t index = IndexIn(base, arguments);
  Array* const array = ArrayOf(base.value);
  SetElement(array, index, As(array->elementType, operand));
}

std::int64_t Interpreter::IndexIn(const Operand& base, const std::vector<Operand>& arguments) const {
  if (!base.value.type.isArray) throw ScriptError(NameOf(base.value.type) + " has no elements");
  if (arguments.size() != 1) throw ScriptError("an array has one index");
  const std::int64_t index = As(kIntegerType, arguments.front()).Integer();
  if (index < 0 || index > UpperBound(ArrayOf(base.value)))
    throw XojoException({"OutOfBoundsException", "index " + std::to_string(index), 0});
  return index;
}

}  // namespace host
