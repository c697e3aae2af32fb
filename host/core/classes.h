// Looks up classes by name: the host's own classes and those that plug-ins have registered.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "core/objects.h"

namespace host {

// Returns the built-in or registered class with that name; null if there is none. Tests may change its methods.
ObjectClass* FindClass(std::string_view name);

// The host's own classes.
const std::vector<ObjectClass*>& OwnClasses();

// Makes the class for a record that a plug-in registers, and stores the instance data offset in the record. The offset
// depends on `number`.
std::unique_ptr<ObjectClass> MakeClass(zkt::REALclassDefinition* record, std::size_t number);

}  // namespace host
