// Objects of the host: an instance of a class, with properties by name.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>

#include "core/counted.h"
#include "core/strings.h"

namespace host {

struct ObjectClass;

using PropertyValue = std::variant<std::int64_t, StringRef>;

struct ObjectClass {
  std::string name;
  const ObjectClass* super;
  // The properties of an instance with what they hold at first; those of the super class belong to them.
  std::map<std::string, PropertyValue> properties;
};

// The class of that name, or null.
const ObjectClass* FindClass(std::string_view name);

}  // namespace host

struct REALobjectStruct : host::Counted {
  const host::ObjectClass* type;
  std::map<std::string, host::PropertyValue>* properties;
};

namespace host {

// Makes an instance that carries one reference for the caller.
REALobjectStruct* MakeObject(const ObjectClass* type);

// The property of an object if there is one of that type, else null.
template <class Value>
Value* FindProperty(REALobjectStruct* object, const char* name) {
  if (object == nullptr || name == nullptr) return nullptr;
  const auto found = object->properties->find(name);
  return found != object->properties->end() ? std::get_if<Value>(&found->second) : nullptr;
}

// Releases what the object holds.
void DestroyContent(REALobjectStruct* object);

}  // namespace host
