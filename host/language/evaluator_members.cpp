// What names and members stand for, and the elements of arrays.
#include <utility>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/folder_items.h"
#include "declarations/errors.h"
#include "language/evaluator.h"

namespace host {

namespace {

REALobjectStruct* ObjectOf(const Value& value) {
  return value.type.Is(Basic::kObject) || value.type.Is(Basic::kVariant) ? value.Object() : nullptr;
}

Array* ArrayOf(const Value& value) {
  if (value.Reference() == nullptr) throw XojoException({"NilObjectException", "the array is Nil", 0});
  return value.Array();
}

// What the enumerations of the host's own classes have.
std::optional<Operand> FindConstant(const Expression& enumeration, std::string_view name) {
  static constexpr std::pair<std::string_view, PathMode> kPathModes[] = {
      {"Native", PathMode::kNative}, {"Shell", PathMode::kShell}, {"URL", PathMode::kURL}};
  const bool isPathModes =
      enumeration.kind == ExpressionKind::kMember && zkt::IsSameName(enumeration.text, "PathModes") &&
      enumeration.base->kind == ExpressionKind::kName && zkt::IsSameName(enumeration.base->text, "FolderItem");
  if (!isPathModes) return std::nullopt;
  for (const auto& [constant, mode] : kPathModes)
    if (zkt::IsSameName(constant, name)) return Operand{MakeValue(static_cast<int>(mode))};
  return std::nullopt;
}

}  // namespace

Evaluator::Place Evaluator::Find(const Expression& expression) {
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
  if (const auto found = variables_.find(name); found != variables_.end()) return {.variable = &found->second};
  const MethodQuery query{OwnerKind::kNone, {}, name};
  if (!HasMethod(query)) throw ScriptError("there is no " + name);
  return {.method = query};
}

// What a module has, or a class without an object.
Evaluator::Place Evaluator::FindOwned(std::string_view owner, std::string_view name) const {
  for (const OwnerKind kind : {OwnerKind::kModule, OwnerKind::kShared}) {
    if (const Property* const property = catalogue_.FindProperty(kind, owner, name)) return {.property = property};
    if (const MethodQuery query{kind, owner, name}; HasMethod(query)) return {.method = query};
  }
  throw ScriptError(std::string(owner) + " has no " + std::string(name));
}

Evaluator::Place Evaluator::FindMember(const Operand& base, std::string_view name) const {
  const Value& value = base.value;
  REALobjectStruct* const object = ObjectOf(value);
  const ObjectClass* const type = object != nullptr               ? object->type
                                  : value.type.Is(Basic::kObject) ? FindClass(value.type.name)
                                                                  : nullptr;
  if (auto place = FindInClass(type, base, name)) return *place;
  if (Value* const held = FindProperty(object, name)) return {.held = held, .heldName = name, .owner = base};
  const MethodQuery extension{OwnerKind::kNone, {}, name, true};
  if (HasMethod(extension)) return {.method = extension, .owner = base};
  const bool isNilObject = value.type.basic >= Basic::kVariant && value.Reference() == nullptr;
  if (isNilObject) throw XojoException({"NilObjectException", std::string(name) + " of Nil", 0});
  throw ScriptError(NameOf(value.type) + " has no " + std::string(name));
}

// What the class and those that it derives from have been declared with.
std::optional<Evaluator::Place> Evaluator::FindInClass(const ObjectClass* type, const Operand& base,
                                                       std::string_view name) const {
  for (; type != nullptr; type = type->super) {
    if (const Property* const shared = catalogue_.FindProperty(OwnerKind::kShared, type->name, name))
      return Place{.property = shared};
    if (const MethodQuery query{OwnerKind::kShared, type->name, name}; HasMethod(query)) return Place{.method = query};
    const Property* const property = catalogue_.FindProperty(OwnerKind::kInstance, type->name, name);
    std::optional<MethodQuery> method;
    for (const OwnerKind kind : {OwnerKind::kInstance, OwnerKind::kClassExtension})
      if (const MethodQuery query{kind, type->name, name}; !method && HasMethod(query)) method = query;
    if (property == nullptr && !method) continue;
    if (ObjectOf(base.value) == nullptr) throw XojoException({"NilObjectException", std::string(name) + " of Nil", 0});
    if (property != nullptr) return Place{.property = property, .owner = base};
    return Place{.method = method, .owner = base};
  }
  return std::nullopt;
}

// Whether there is a method of that name to be called or to be assigned to.
bool Evaluator::HasMethod(MethodQuery query) const {
  if (host::HasMethod(catalogue_, query)) return true;
  query.isAssigning = true;
  return host::HasMethod(catalogue_, query);
}

// What the language itself has: members of arrays and texts.
std::optional<Operand> Evaluator::LoadBuiltIn(const Operand& base, const Expression& expression) {
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

Operand Evaluator::LoadFrom(const Place& place) {
  if (place.variable != nullptr) return {*place.variable, place.variable};
  if (place.property != nullptr) return {GetProperty(*place.property, ObjectOf(place.owner.value))};
  return {*place.held};
}

void Evaluator::StoreTo(const Place& place, const Operand& operand) {
  if (place.builtIn) throw ScriptError("this cannot be assigned");
  if (place.property != nullptr)
    return SetProperty(*place.property, ObjectOf(place.owner.value), As(place.property->type, operand));
  if (place.variable != nullptr) {
    *place.variable = As(place.variable->type, operand);
    return;
  }
  if (!AssignProperty(ObjectOf(place.owner.value), place.heldName, As(place.held->type, operand)))
    throw ScriptError(std::string(place.heldName) + " is read-only");
}

Operand Evaluator::Call(const Place& place, std::vector<Operand> arguments, bool isAssigning) {
  MethodQuery query = *place.method;
  query.isAssigning = isAssigning;
  if (isAssigning && !host::HasMethod(catalogue_, query)) throw ScriptError("this cannot be assigned");
  if (query.isExtending) arguments.insert(arguments.begin(), place.owner);
  const bool isOfObject = query.ownerKind == OwnerKind::kInstance || query.ownerKind == OwnerKind::kClassExtension;
  return {CallMethod(catalogue_, query, arguments, isOfObject ? &place.owner.value : nullptr)};
}

Operand Evaluator::LoadElement(const Operand& base, const std::vector<Operand>& arguments) {
  const std::int64_t index = IndexIn(base, arguments);
  return {GetElement(ArrayOf(base.value), index)};
}

void Evaluator::StoreElement(const Operand& base, const std::vector<Operand>& arguments, const Operand& operand) {
  const std::int64_t index = IndexIn(base, arguments);
  Array* const array = ArrayOf(base.value);
  SetElement(array, index, As(array->elementType, operand));
}

std::int64_t Evaluator::IndexIn(const Operand& base, const std::vector<Operand>& arguments) const {
  if (!base.value.type.isArray) throw ScriptError(NameOf(base.value.type) + " has no elements");
  if (arguments.size() != 1) throw ScriptError("an array has one index");
  const std::int64_t index = As(kIntegerType, arguments.front()).Integer();
  if (index < 0 || index > UpperBound(ArrayOf(base.value)))
    throw XojoException({"OutOfBoundsException", "index " + std::to_string(index), 0});
  return index;
}

}  // namespace host
