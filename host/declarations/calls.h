// Finds declared methods, and accesses the properties that plug-ins declare.
#pragma once

#include <string_view>

#include "declarations/catalogue.h"

namespace host {

// Selects methods by name: those of a module, a class or an object, or those that can be called without an owner.
struct MethodQuery {
  OwnerKind ownerKind;
  std::string_view owner;
  std::string_view name;
  bool isExtending = false;  // the method is called on its first argument
  bool isAssigning = false;  // the method's last argument follows "="
};

// Both functions check the name, whether the method is an extension, and whether the method takes an assigned value.
// The second function also checks the owner.
bool Matches(const Signature& signature, const MethodQuery& query);
bool Matches(const Method& method, const MethodQuery& query);

// Gets or sets a property that a plug-in has declared. `self` is the object; null for properties of modules and shared
// properties. A property that is set must have a setter.
Value GetProperty(const Property& property, REALobjectStruct* self);
void SetProperty(const Property& property, REALobjectStruct* self, const Value& value);

}  // namespace host
