#include "declarations/catalogue.h"

#include <algorithm>
#include <span>
#include <utility>

#include "core/classes.h"
#include "declarations/errors.h"

namespace host {

namespace {

template <class Items, class Matches>
const auto* FindIn(const Items& items, Matches matches) {
  const auto found = std::ranges::find_if(items, matches);
  return found != items.end() ? &*found : nullptr;
}

}  // namespace

std::size_t Signature::RequiredCount() const {
  return static_cast<std::size_t>(std::ranges::count(parameters, "", &Parameter::defaultValue));
}

bool Method::IsGlobal() const {
  return ownerKind == OwnerKind::kNone || (ownerKind == OwnerKind::kModule && (flags & zkt::kGlobalScope) != 0);
}

Catalogue::Catalogue(const Host& host) {
  for (const zkt::REALmoduleDefinition* module : host.Modules()) owners_.push_back(module->name);
  for (const zkt::REALclassDefinition* type : host.Classes()) owners_.push_back(type->name);
  // Collect the names of delegates first, because declarations refer to them, even those of other modules.
  const std::vector<Member> members = MembersOf(host);
  for (const Member& member : members)
    if (const auto* const delegate = member.As<zkt::REALdelegate>())
      delegates_.push_back({member.owner, {.name = NameIn(delegate->declaration)}});
  for (DelegateType& delegate : delegates_) delegate.signature = Read(delegate.signature.name.data());
  for (const ObjectClass* type : OwnClasses())
    for (const auto& [declaration, function] : type->scriptMethods)
      methods_.push_back({OwnerKind::kInstance, type->name, Read(declaration.c_str()), function, 0});
  for (const Member& member : members) {
    if (const auto* const method = member.As<zkt::REALmethodDefinition>()) AddMethod(member, *method);
    if (const auto* const property = member.As<zkt::REALproperty>())
      properties_.push_back({member.ownerKind, member.owner, property->name, FindType(property->type, false),
                             property->getter, property->setter, property->parameter});
  }
}

const DelegateType* Catalogue::FindDelegate(std::string_view name) const {
  return FindIn(delegates_,
                [&](const DelegateType& delegate) { return zkt::IsSameName(delegate.signature.name, name); });
}

const Property* Catalogue::FindProperty(OwnerKind kind, std::string_view owner, std::string_view name) const {
  return FindIn(properties_, [&](const Property& property) {
    return property.ownerKind == kind && zkt::IsSameName(property.owner, owner) && zkt::IsSameName(property.name, name);
  });
}

std::string_view Catalogue::FindOwner(std::string_view name) const {
  const auto* const found = FindIn(owners_, [&](std::string_view owner) { return zkt::IsSameName(owner, name); });
  return found != nullptr ? *found : std::string_view();
}

Type Catalogue::FindType(std::string_view name, bool isArray) const {
  const Basic basic = FindBasic(name);
  if (basic != Basic::kNothing && basic != Basic::kObject) return {basic, isArray};
  if (const DelegateType* const delegate = FindDelegate(name))
    return {Basic::kDelegate, isArray, delegate->signature.name};
  if (const ObjectClass* const type = FindClass(name)) return {Basic::kObject, isArray, type->name};
  throw ScriptError("there is no type " + std::string(name));
}

Signature Catalogue::Read(const char* declaration) const {
  const zkt::ParsedDeclaration parsed = zkt::ParseDeclaration(declaration);
  if (!parsed.IsValid()) throw ScriptError("cannot compile \"" + std::string(declaration) + "\": " + parsed.trouble);
  Signature signature;
  signature.name = parsed.name;
  for (const zkt::DeclaredParameter& parameter : std::span(parsed.parameters).first(parsed.parameterCount))
    signature.parameters.push_back({parameter.name, FindType(parameter.type.name, parameter.type.isArray),
                                    parameter.isByRef, parameter.isExtends, parameter.isAssigns,
                                    parameter.defaultValue});
  if (!parsed.result.name.empty()) signature.result = FindType(parsed.result.name, parsed.result.isArray);
  return signature;
}

void Catalogue::AddMethod(const Member& member, const zkt::REALmethodDefinition& method) {
  Method added{member.ownerKind, member.owner, Read(method.declaration), method.function, method.flags};
  if (method.function != nullptr) methods_.push_back(added);
  if (method.setter == nullptr) return;
  added.function = method.setter;
  added.signature.parameters.push_back({"value", std::exchange(added.signature.result, {}), false, false, true, {}});
  methods_.push_back(std::move(added));
}

}  // namespace host
