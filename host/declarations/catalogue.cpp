#include "declarations/catalogue.h"

#include <algorithm>
#include <span>
#include <utility>

#include "core/classes.h"
#include "declarations/errors.h"

namespace host {

std::size_t Signature::RequiredCount() const {
  return static_cast<std::size_t>(std::count_if(
      parameters.begin(), parameters.end(), [](const Parameter& parameter) { return parameter.defaultValue.empty(); }));
}

bool Method::IsGlobal() const {
  return ownerKind == OwnerKind::kNone || (ownerKind == OwnerKind::kModule && (flags & zkt::kGlobalScope) != 0);
}

Catalogue::Catalogue(const Host& host) {
  // Types first: declarations name classes and delegates of other modules too.
  for (const zkt::REALmoduleDefinition* module : host.modules) {
    owners_.push_back(module->name);
    AddDelegateNames(module->name, module->delegates, module->delegateCount);
  }
  for (const zkt::REALclassDefinition* type : host.classes) {
    owners_.push_back(type->name);
    AddDelegateNames(type->name, type->delegates, type->delegateCount);
  }
  for (DelegateType& delegate : delegates_) delegate.signature = Read(delegate.signature.name.data());

  for (const zkt::REALmoduleDefinition* module : host.modules) {
    AddMethods(OwnerKind::kModule, module->name, module->methods, module->methodCount);
    AddProperties(OwnerKind::kModule, module->name, module->properties, module->propertyCount);
  }
  for (const ObjectClass* type : OwnClasses())
    for (const auto& [declaration, function] : type->scriptMethods)
      methods_.push_back({OwnerKind::kInstance, type->name, Read(declaration.c_str()), function, 0});
  for (const zkt::REALclassDefinition* type : host.classes) {
    AddMethods(OwnerKind::kInstance, type->name, type->methods, type->methodCount);
    AddMethods(OwnerKind::kShared, type->name, type->sharedMethods, type->sharedMethodCount);
    AddProperties(OwnerKind::kInstance, type->name, type->properties, type->propertyCount);
    AddProperties(OwnerKind::kShared, type->name, type->sharedProperties, type->sharedPropertyCount);
  }
  for (const zkt::REALclassDefinition* extension : host.classExtensions)
    AddMethods(OwnerKind::kClassExtension, extension->name, extension->methods, extension->methodCount);
  for (const zkt::REALmethodDefinition* method : host.globalMethods) AddMethods(OwnerKind::kNone, "", method, 1);
}

const DelegateType* Catalogue::FindDelegate(std::string_view name) const {
  const auto found = std::find_if(delegates_.begin(), delegates_.end(), [&](const DelegateType& delegate) {
    return zkt::IsSameName(delegate.signature.name, name);
  });
  return found != delegates_.end() ? &*found : nullptr;
}

const Property* Catalogue::FindProperty(OwnerKind kind, std::string_view owner, std::string_view name) const {
  const auto found = std::find_if(properties_.begin(), properties_.end(), [&](const Property& property) {
    return property.ownerKind == kind && zkt::IsSameName(property.owner, owner) && zkt::IsSameName(property.name, name);
  });
  return found != properties_.end() ? &*found : nullptr;
}

std::string_view Catalogue::FindOwner(std::string_view name) const {
  const auto found = std::find_if(owners_.begin(), owners_.end(),
                                  [&](std::string_view owner) { return zkt::IsSameName(owner, name); });
  return found != owners_.end() ? *found : std::string_view();
}

Type Catalogue::FindType(std::string_view name, bool isArray) const {
  const Basic basic = FindBasic(name);
  if (basic != Basic::kNothing && basic != Basic::kObject) return {basic, isArray, {}};
  if (zkt::IsSameName(name, "Object")) return {Basic::kObject, isArray, "Object"};
  // Classes that the host does not have yet are known by name, so that what names them can be declared.
  constexpr std::string_view kForeign[] = {"FolderItem", "Graphics"};
  for (const std::string_view foreign : kForeign)
    if (zkt::IsSameName(foreign, name)) return {Basic::kObject, isArray, foreign};
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

void Catalogue::AddMethods(OwnerKind kind, std::string_view owner, const zkt::REALmethodDefinition* methods,
                           std::uint64_t count) {
  for (const zkt::REALmethodDefinition& method : std::span(methods, count)) {
    Signature signature = Read(method.declaration);
    if (method.function != nullptr) methods_.push_back({kind, owner, signature, method.function, method.flags});
    if (method.setter == nullptr) continue;
    signature.parameters.push_back({"value", std::exchange(signature.result, {}), false, false, true, {}});
    methods_.push_back({kind, owner, std::move(signature), method.setter, method.flags});
  }
}

void Catalogue::AddProperties(OwnerKind kind, std::string_view owner, const zkt::REALproperty* properties,
                              std::uint64_t count) {
  for (const zkt::REALproperty& property : std::span(properties, count))
    properties_.push_back({kind, owner, property.name, FindType(property.type, false), property.getter, property.setter,
                           property.parameter});
}

void Catalogue::AddDelegateNames(std::string_view owner, const zkt::REALdelegate* delegates, std::uint64_t count) {
  for (const zkt::REALdelegate& delegate : std::span(delegates, count)) {
    DelegateType type{owner, {}};
    const std::string_view declaration = delegate.declaration;
    type.signature.name = declaration.substr(0, declaration.find_first_of(" ("));
    delegates_.push_back(type);
  }
}

}  // namespace host
