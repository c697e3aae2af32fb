#include "declarations/catalogue.h"

#include <algorithm>
#include <span>
#include <utility>

#include "core/classes.h"
#include "core/framework.h"
#include "declarations/errors.h"
#include "declarations/suggestions.h"

namespace host {

std::size_t Signature::RequiredCount() const {
  const auto isRequired = [](const Parameter& p) { return p.defaultValue.empty() && !p.isParamArray; };
  return static_cast<std::size_t>(std::ranges::count_if(parameters, isRequired));
}

bool Method::IsGlobal() const {
  return ownerKind == OwnerKind::kNone || (ownerKind == OwnerKind::kModule && (flags & zkt::kGlobalScope) != 0);
}

const Value* FindConstant(std::string_view name) {
  for (const ObjectClass* type : OwnClasses())
    for (const auto& [constant, value] : type->constants)
      if (zkt::IsSameName(type->name + "." + constant, name)) return &value;
  return nullptr;
}

std::string DeclarationOf(const Method& method) {
  const Signature& signature = method.signature;
  std::string parameters;
  for (const Parameter& parameter : signature.parameters)
    parameters += std::string(parameters.empty() ? "" : ", ") + (parameter.isExtends ? "Extends " : "") +
                  (parameter.isByRef ? "ByRef " : "") + (parameter.isAssigns ? "Assigns " : "") +
                  std::string(parameter.name) + " As " + NameOf(parameter.type) +
                  (parameter.defaultValue.empty() ? "" : " = " + std::string(parameter.defaultValue));
  return (method.owner.empty() || method.IsGlobal() ? "" : std::string(method.owner) + ".") +
         std::string(signature.name) + "(" + parameters + ")" +
         (signature.result.kind == TypeKind::kNothing ? "" : " As " + NameOf(signature.result));
}

Catalogue::Catalogue(const Host& host) {
  for (const zkt::REALmoduleDefinition* module : host.Modules()) owners_.push_back(module->name);
  for (const zkt::REALclassDefinition* type : host.Classes()) owners_.push_back(type->name);
  // Collect delegate names first, because declarations can refer to the delegates of any module.
  const std::vector<Member> members = MembersOf(host);
  for (const Member& member : members)
    if (const auto* const delegate = member.As<zkt::REALdelegate>())
      delegates_.push_back({.name = zkt::ParseDeclaration(delegate->declaration).name});
  for (Signature& delegate : delegates_) delegate = Read(delegate.name.data());
  for (const Member& member : members) {
    if (const auto* const method = member.As<zkt::REALmethodDefinition>()) AddMethod(member, *method);
    if (const auto* const property = member.As<zkt::REALproperty>())
      properties_.push_back({member.ownerKind, member.owner, property->name, FindType(property->type, false),
                             property->getter, property->setter, property->parameter});
  }
  AddFramework();
}

void Catalogue::AddFramework() {
  for (const ObjectClass* type : OwnClasses()) {
    owners_.push_back(type->name);
    for (const auto& [declaration, function] : type->scriptMethods)
      frameworkMethods_.push_back({OwnerKind::kInstance, type->name, Read(declaration.c_str()), function, 0});
  }
  for (const FrameworkMethod& method : host::FrameworkMethods()) {
    const bool isShared = *method.owner != '\0';
    if (isShared && !IsOwner(method.owner)) owners_.push_back(method.owner);
    frameworkMethods_.push_back(
        {isShared ? OwnerKind::kShared : OwnerKind::kNone, method.owner, Read(method.declaration), method.function, 0});
  }
}

const Signature* Catalogue::FindDelegate(std::string_view name) const {
  for (const Signature& delegate : delegates_)
    if (zkt::IsSameName(delegate.name, name)) return &delegate;
  return nullptr;
}

const Property* Catalogue::FindProperty(OwnerKind kind, std::string_view owner, std::string_view name) const {
  for (const Property& property : properties_)
    if (property.ownerKind == kind && zkt::IsSameName(property.owner, owner) && zkt::IsSameName(property.name, name))
      return &property;
  return nullptr;
}

bool Catalogue::IsOwner(std::string_view name) const {
  return std::ranges::any_of(owners_, [&](std::string_view owner) { return zkt::IsSameName(owner, name); });
}

std::optional<Type> Catalogue::TryFindType(std::string_view name, bool isArray) const {
  const TypeKind kind = FindTypeKind(name);
  if (kind != TypeKind::kNothing && kind != TypeKind::kObject) return Type{kind, isArray};
  if (const Signature* const delegate = FindDelegate(name)) return Type{TypeKind::kDelegate, isArray, delegate->name};
  for (const ObjectClass* type : OwnClasses())
    for (const auto& [constant, value] : type->constants)
      if (value.type.Is(TypeKind::kEnumeration) && zkt::IsSameName(value.type.name, name))
        return Type{TypeKind::kEnumeration, isArray, value.type.name};
  if (const ObjectClass* const type = FindClass(name)) return Type{TypeKind::kObject, isArray, type->name};
  return std::nullopt;
}

Type Catalogue::FindType(std::string_view name, bool isArray) const {
  if (const auto type = TryFindType(name, isArray)) return *type;
  for (const std::string_view known : {"Auto", "Byte", "CGFloat", "CriticalSection", "CString", "Dictionary", "Locale",
                                       "MemoryBlock", "Pair", "Semaphore", "Shell", "Text", "Thread", "TimeZone"})
    if (zkt::IsSameName(known, name)) throw ScriptError("the type " + std::string(known) + " is not supported here");
  std::vector<std::string_view> known = {"Boolean", "Color",  "Currency", "Double", "Integer", "Int8",
                                         "Int16",   "Int32",  "Int64",    "Single", "String",  "UInt8",
                                         "UInt16",  "UInt32", "UInt64",   "Ptr",    "Variant"};
  known.insert(known.end(), owners_.begin(), owners_.end());
  for (const Signature& delegate : delegates_) known.push_back(delegate.name);
  throw ScriptError("there is no type " + std::string(name) + DidYouMean(name, known));
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
