// What a plug-in has registered, as Xojo understands it: methods, properties and delegates with their types.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/value.h"
#include "declarations/members.h"

namespace host {

struct Parameter {
  std::string_view name;
  Type type;
  bool isByRef;
  bool isExtends;
  bool isAssigns;                 // receives what follows "=" when the method is assigned to
  std::string_view defaultValue;  // a literal; empty for a required parameter
};

struct Signature {
  std::string_view name = {};
  std::vector<Parameter> parameters = {};
  Type result = {};

  std::size_t RequiredCount() const;
};

struct Method {
  OwnerKind ownerKind;
  std::string_view owner;
  Signature signature;
  void* function;
  std::uint32_t flags;

  // Whether it can be called without the name of its module.
  bool IsGlobal() const;
};

struct Property {
  OwnerKind ownerKind;
  std::string_view owner;
  std::string_view name;
  Type type;
  void* getter;
  void* setter;  // null: read-only
  std::int64_t parameter;
};

struct DelegateType {
  std::string_view owner;
  Signature signature;
};

class Catalogue {
 public:
  // Reads what is registered with the host, and what its own classes have for scripts. Throws ScriptError for a
  // declaration that Xojo could not compile.
  explicit Catalogue(const Host& host);

  const std::vector<Method>& Methods() const { return methods_; }
  const std::vector<Property>& Properties() const { return properties_; }

  const DelegateType* FindDelegate(std::string_view name) const;
  const Property* FindProperty(OwnerKind kind, std::string_view owner, std::string_view name) const;
  // The name of a module or class as it is declared; empty if there is none.
  std::string_view FindOwner(std::string_view name) const;

  // The built-in type, class or delegate with that name. Throws ScriptError for other names.
  Type FindType(std::string_view name, bool isArray) const;

 private:
  Signature Read(const char* declaration) const;
  void AddMethod(const Member& member, const zkt::REALmethodDefinition& method);

  std::vector<Method> methods_;
  std::vector<Property> properties_;
  std::vector<DelegateType> delegates_;
  std::vector<std::string_view> owners_;
};

}  // namespace host
