// A plug-in's registrations as Xojo sees them: methods, properties and delegates with their types.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/value.h"
#include "services/members.h"

namespace host {

struct Parameter {
  std::string_view name;
  Type type;
  bool isByRef;
  bool isExtends;
  bool isAssigns;                 // receives the value after "=" when a script assigns to the method
  std::string_view defaultValue;  // a literal; empty for a required parameter
  bool isParamArray = false;      // an array of all remaining arguments
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

  // Whether the method can be called without its module's name.
  bool IsGlobal() const;
};

// Returns the method's full declaration, such as "ToolsZKT.PickZKT(value As Int32) As Integer".
std::string DeclarationOf(const Method& method);

struct Property {
  OwnerKind ownerKind;
  std::string_view owner;
  std::string_view name;
  Type type;
  void* getter;
  void* setter;  // null if the property is read-only
  std::int64_t parameter;
};

// Returns an enumeration constant by its full name, such as "Picture.Formats.PNG"; null if there is none.
const Value* FindConstant(std::string_view name);

class Catalogue {
 public:
  // Reads the host's registrations and the script methods of the host's own classes. Throws ScriptError for a
  // declaration that Xojo could not compile.
  explicit Catalogue(const Host& host);

  // The methods that the plug-in declares, and the methods of Xojo's framework.
  const std::vector<Method>& Methods() const { return methods_; }
  const std::vector<Method>& FrameworkMethods() const { return frameworkMethods_; }
  const std::vector<Property>& Properties() const { return properties_; }

  const Signature* FindDelegate(std::string_view name) const;
  const Property* FindProperty(OwnerKind kind, std::string_view owner, std::string_view name) const;
  // Whether the name is that of a module or class, so that a dot and a member can follow it.
  bool IsOwner(std::string_view name) const;

  // Returns the type with that name: a built-in type, class, enumeration or delegate. For other names, FindType throws
  // ScriptError and TryFindType returns nullopt.
  Type FindType(std::string_view name, bool isArray) const;
  std::optional<Type> TryFindType(std::string_view name, bool isArray) const;

  // Reads a declaration. Throws ScriptError if Xojo could not compile it.
  Signature Read(const char* declaration) const;

 private:
  void AddFramework();
  void AddMethod(const Member& member, const zkt::REALmethodDefinition& method);

  std::vector<Method> methods_;
  std::vector<Method> frameworkMethods_;
  std::vector<Property> properties_;
  std::vector<Signature> delegates_;
  std::vector<std::string_view> owners_;  // names of modules and classes
};

}  // namespace host
