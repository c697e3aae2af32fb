// What a plug-in has registered, as Xojo understands it: methods, properties and delegates with their types.
#pragma once

#include <optional>
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
  bool isParamArray = false;      // an array of all further arguments
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

// The method as its declaration has it: "ToolsZKT.PickZKT(value As Int32) As Integer".
std::string DeclarationOf(const Method& method);

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

// A constant of an enumeration by its full name, "Picture.Formats.PNG"; null if there is none.
const Value* FindConstant(std::string_view name);

class Catalogue {
 public:
  // Reads what is registered with the host, and what its own classes have for scripts. Throws ScriptError for a
  // declaration that Xojo could not compile.
  explicit Catalogue(const Host& host);

  // What the plug-in declares, and what Xojo's framework declares.
  const std::vector<Method>& Methods() const { return methods_; }
  const std::vector<Method>& FrameworkMethods() const { return frameworkMethods_; }
  const std::vector<Property>& Properties() const { return properties_; }

  const DelegateType* FindDelegate(std::string_view name) const;
  const Property* FindProperty(OwnerKind kind, std::string_view owner, std::string_view name) const;
  // Whether a name stands for a module, a class or a type, with members of its own.
  bool IsOwner(std::string_view name) const;

  // The type that a name stands for: of the language, a class, an enumeration or a delegate. Throws ScriptError for
  // other names.
  Type FindType(std::string_view name, bool isArray) const;
  std::optional<Type> TryFindType(std::string_view name, bool isArray) const;

  // Reads a declaration. Throws ScriptError for one that Xojo could not compile.
  Signature Read(const char* declaration) const;

 private:
  void AddFramework(double version);
  void AddMethod(const Member& member, const zkt::REALmethodDefinition& method);

  std::vector<Method> methods_;
  std::vector<Method> frameworkMethods_;
  std::vector<Property> properties_;
  std::vector<DelegateType> delegates_;
  std::vector<std::string_view> owners_;  // modules and classes, as they are declared
};

}  // namespace host
