// Finding and calling what the plug-in has declared: methods by their arguments, properties, constructors.
#pragma once

#include <string_view>
#include <vector>

#include "declarations/catalogue.h"
#include "declarations/conversion.h"

namespace host {

// Which methods to look for: those of a module, a class or an object, or those that can be called without an owner.
struct MethodQuery {
  OwnerKind ownerKind;
  std::string_view owner;
  std::string_view name;
  bool isExtending = false;  // called on its first argument
  bool isAssigning = false;  // its last argument follows "="
};

// Whether there is such a method, whatever its parameters.
bool HasMethod(const Catalogue& catalogue, const MethodQuery& query);

// Calls the one that suits the arguments best. `self` is the object of a member; what is extended is the first
// argument. Throws ScriptError if none suits.
Value CallMethod(const Catalogue& catalogue, const MethodQuery& query, const std::vector<Operand>& arguments,
                 const Value* self = nullptr);

// Makes an object of a class and runs the constructor that suits the arguments.
Value MakeNew(const Catalogue& catalogue, std::string_view className, const std::vector<Operand>& arguments);

// A property that a plug-in has declared. `self` is the object; null for properties of modules and shared properties.
Value GetProperty(const Property& property, REALobjectStruct* self);
void SetProperty(const Property& property, REALobjectStruct* self, const Value& value);

}  // namespace host
